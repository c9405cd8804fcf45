#pragma once

#include <bus/terminalexport.h>

#include <QByteArray>
#include <QSharedPointer>
#include <QVariantMap>

#include <optional>

/// The body of a message: JSON text in UTF-8, byte for byte as it crosses the bus.
///
/// A message between two ends of one process begins as the fields that cross; their text is made
/// when somebody first asks for it, and takes their place. Copies share what they hold, in whatever
/// threads they are.
class TERMINAL_EXPORT MessageBody final
{
public:
    MessageBody() = default;
    MessageBody(const QByteArray &text);
    /// `fields` as CrossedFields made them.
    static MessageBody ofFields(const QVariantMap &fields);

    /// The text; empty when the message could not be turned into JSON.
    QByteArray bytes() const;
    /// The fields, as long as nobody has asked for their text. Null for a body that arrived as
    /// text.
    std::optional<QVariantMap> fields() const;
    /// About how many bytes of memory the body takes; makes no text.
    qint64 weight() const;

private:
    struct Fields;

    QByteArray m_text;
    QSharedPointer<Fields> m_fields;
};
