#pragma once

#include <QByteArray>
#include <QString>
#include <QVariantMap>

#include <optional>

/// Looks at JSON text that came from outside before anything else reads it.
namespace MessageCheck {

constexpr int LARGEST_BYTES = 8 * 1024 * 1024;
constexpr int DEEPEST_NESTING = 64;

/// Reads a map. Nothing, with a Russian text, for a text that is too large, not UTF-8, nested too
/// deep, not JSON or not a map, or that names one key twice in one map: readers disagree about
/// which of the two counts, and Qt's loses memory over it.
std::optional<QVariantMap> read(const QByteArray &body, QString *error);

} // namespace MessageCheck
