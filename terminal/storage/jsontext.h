#pragma once

#include <QByteArray>
#include <QString>
#include <QVariantMap>

/// The text in which a store keeps a map, and compares it with what it kept before.
namespace JsonText {

QString compact(const QVariantMap &map);
/// The same in the bytes of the file.
QByteArray compactUtf8(const QVariantMap &map);

} // namespace JsonText
