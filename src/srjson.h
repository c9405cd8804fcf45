#pragma once

#include <QByteArray>
#include <QVariant>

namespace SrJson {

/// A list or map as JSON text in UTF-8 without white space.
QByteArray compact(const QVariant &value);

} // namespace SrJson
