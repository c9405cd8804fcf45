#pragma once

#include <QVariantMap>

class PayPack;

/// The form of a pack outside the process, as PayPack::packToFullMap() documents it.
namespace PayPackMap {

QVariantMap write(const PayPack &pack);
/// False leaves `pack` with what was read so far.
bool read(const QVariantMap &map, PayPack &pack);

} // namespace PayPackMap
