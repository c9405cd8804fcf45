#include <bus/messagebody.h>

#include <bus/wiretext.h>

#include <QMutex>
#include <QMutexLocker>

/// What the copies of a body that began as fields share.
struct MessageBody::Fields
{
    explicit Fields(const QVariantMap &fields) : map(fields) {}

    QMutex lock;
    QVariantMap map;
    QByteArray text;
    bool isText = false;
};

namespace {

/// A node of a map or a list with its variant.
constexpr qint64 PER_VALUE = 48;

qint64 weightOf(const QVariant &value)
{
    qint64 weight = PER_VALUE;
    switch (value.userType()) {
    case QMetaType::QString:
        return weight + 2 * value.toString().size();
    case QMetaType::QVariantList: {
        const QVariantList list = value.toList();
        for (const QVariant &inner : list)
            weight += weightOf(inner);
        return weight;
    }
    case QMetaType::QVariantMap: {
        const QVariantMap map = value.toMap();
        for (auto it = map.cbegin(); it != map.cend(); ++it)
            weight += 2 * it.key().size() + weightOf(it.value());
        return weight;
    }
    default:
        return weight;
    }
}

} // namespace

MessageBody::MessageBody(const QByteArray &text) : m_text(text) {}

MessageBody MessageBody::ofFields(const QVariantMap &fields)
{
    MessageBody body;
    body.m_fields = QSharedPointer<Fields>::create(fields);
    return body;
}

QByteArray MessageBody::bytes() const
{
    if (!m_fields)
        return m_text;
    const QMutexLocker locker(&m_fields->lock);
    if (!m_fields->isText) {
        QString error;
        m_fields->text = WireText::encode(m_fields->map, &error).value_or(QByteArray());
        Q_ASSERT(error.isEmpty());
        m_fields->isText = true;
        m_fields->map.clear();
    }
    return m_fields->text;
}

std::optional<QVariantMap> MessageBody::fields() const
{
    if (!m_fields)
        return std::nullopt;
    const QMutexLocker locker(&m_fields->lock);
    return m_fields->isText ? std::nullopt : std::make_optional(m_fields->map);
}

qint64 MessageBody::weight() const
{
    if (!m_fields)
        return m_text.size();
    const QMutexLocker locker(&m_fields->lock);
    return m_fields->isText ? m_fields->text.size() : weightOf(m_fields->map);
}
