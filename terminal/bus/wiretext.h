#pragma once

#include <bus/terminalexport.h>

#include <QByteArray>
#include <QString>
#include <QVariant>
#include <QVariantMap>
#include <QtGlobal>

#include <optional>

/// The form in which a message crosses the bus: compact JSON text in UTF-8.
///
/// A byte array becomes the text that it holds, an integer stays an integer, an integer beyond 2^53
/// becomes decimal text (readers that keep numbers as doubles would change its last digits), a time
/// becomes ISO 8601 text. A value that JSON cannot carry (an object pointer, infinity, bytes that
/// are not UTF-8) makes encoding fail: a message never crosses altered.
namespace WireText {

/// `data` must be a map. On failure the result is empty and `error` holds a Russian text that names
/// the key.
TERMINAL_EXPORT std::optional<QByteArray> encode(const QVariant &data, QString *error);
/// On failure the result is empty and `error` holds a Russian text.
TERMINAL_EXPORT std::optional<QVariantMap> decode(const QByteArray &body, QString *error);

/// All of `body` as text, readable or not: Qt ends a text at a null character unless it is told the
/// length, and what stands before it may be a message by itself.
QString toText(const QByteArray &body);

/// Whether an integer crosses as a number; another one crosses as its decimal text.
bool isExact(qint64 number);

} // namespace WireText
