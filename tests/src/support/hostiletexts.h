#pragma once

#include "canary.h"

#include <QPair>
#include <QString>
#include <QVector>

/// Names and titles that a broken or hostile billing could send.
namespace HostileTexts {

using Named = QPair<const char *, QString>;

/// One text of each kind; "CANARY" stands for an address.
QVector<Named> all();
/// `text` with "CANARY" replaced by the addresses of `canary`, once for each of them.
QString pointingAt(const Canary &canary, const QString &text);

} // namespace HostileTexts
