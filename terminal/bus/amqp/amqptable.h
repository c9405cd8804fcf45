#pragma once

#include <QByteArray>
#include <QString>
#include <QVariantMap>
#include <QVector>

#include <amqp.h>

/// Conversions between Qt's types and those of the protocol library. What they return points into
/// their argument and is good for as long as that stands unchanged.
namespace AmqpBytes {

amqp_bytes_t view(const QByteArray &bytes);
QByteArray copy(const amqp_bytes_t &bytes);
QString text(const amqp_bytes_t &bytes);

} // namespace AmqpBytes

/// A table of headers or arguments with the storage that it points into.
class AmqpTable final
{
public:
    explicit AmqpTable(const QVariantMap &values);
    AmqpTable(const AmqpTable &) = delete;
    AmqpTable &operator=(const AmqpTable &) = delete;

    amqp_table_t table() const { return m_table; }

    static QVariantMap read(const amqp_table_t &table);

private:
    QVector<QByteArray> m_texts;
    QVector<amqp_table_entry_t> m_entries;
    amqp_table_t m_table;
};
