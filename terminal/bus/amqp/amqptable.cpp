#include <bus/amqp/amqptable.h>

amqp_bytes_t AmqpBytes::view(const QByteArray &bytes)
{
    amqp_bytes_t result;
    result.len = static_cast<size_t>(bytes.size());
    result.bytes = const_cast<char *>(bytes.constData());
    return result;
}

QByteArray AmqpBytes::copy(const amqp_bytes_t &bytes)
{
    return QByteArray(static_cast<const char *>(bytes.bytes), static_cast<int>(bytes.len));
}

QString AmqpBytes::text(const amqp_bytes_t &bytes)
{
    return QString::fromUtf8(static_cast<const char *>(bytes.bytes), static_cast<int>(bytes.len));
}

AmqpTable::AmqpTable(const QVariantMap &values)
{
    // The entries point at the texts' bytes, which stay in place while no text is changed.
    m_texts.reserve(values.size() * 2);
    m_entries.reserve(values.size());
    for (auto it = values.cbegin(); it != values.cend(); ++it) {
        amqp_table_entry_t entry;
        m_texts.append(it.key().toUtf8());
        entry.key = AmqpBytes::view(m_texts.constLast());
        switch (it.value().userType()) {
        case QMetaType::Bool:
            entry.value.kind = AMQP_FIELD_KIND_BOOLEAN;
            entry.value.value.boolean = it.value().toBool();
            break;
        case QMetaType::Int:
        case QMetaType::LongLong:
            entry.value.kind = AMQP_FIELD_KIND_I64;
            entry.value.value.i64 = it.value().toLongLong();
            break;
        default:
            m_texts.append(it.value().toString().toUtf8());
            entry.value.kind = AMQP_FIELD_KIND_UTF8;
            entry.value.value.bytes = AmqpBytes::view(m_texts.constLast());
            break;
        }
        m_entries.append(entry);
    }
    m_table.num_entries = m_entries.size();
    m_table.entries = m_entries.data();
}

QVariantMap AmqpTable::read(const amqp_table_t &table)
{
    QVariantMap values;
    for (int i = 0; i < table.num_entries; ++i) {
        const amqp_table_entry_t &entry = table.entries[i];
        const QString key = AmqpBytes::text(entry.key);
        switch (entry.value.kind) {
        case AMQP_FIELD_KIND_UTF8:
        case AMQP_FIELD_KIND_BYTES:
            values.insert(key, AmqpBytes::text(entry.value.value.bytes));
            break;
        case AMQP_FIELD_KIND_BOOLEAN:
            values.insert(key, entry.value.value.boolean != 0);
            break;
        case AMQP_FIELD_KIND_I32:
            values.insert(key, entry.value.value.i32);
            break;
        case AMQP_FIELD_KIND_I64:
            values.insert(key, static_cast<qint64>(entry.value.value.i64));
            break;
        default:
            break;
        }
    }
    return values;
}
