#pragma once

#include <QString>
#include <QVariantMap>

/// The text in which a store keeps a map, and compares it with what it kept before.
namespace JsonText {

QString compact(const QVariantMap &map);

} // namespace JsonText
