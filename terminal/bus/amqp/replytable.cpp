#include <bus/amqp/replytable.h>

QString ReplyTable::expect(Kind kind, const QString &name, quint64 token, qint64 now)
{
    QString id = name;
    if (id.isEmpty() || m_expected.contains(id))
        id = QStringLiteral("%1#%2").arg(name, QString::number(token));
    Entry entry;
    entry.kind = kind;
    entry.token = token;
    entry.since = now;
    m_expected.insert(id, entry);
    m_names.insert(token, id);
    return id;
}

bool ReplyTable::isExpected(Kind kind, const QString &correlationId) const
{
    const auto it = m_expected.constFind(correlationId);
    return it != m_expected.cend() && it->kind == kind && !it->held;
}

std::optional<ReplyTable::Answer> ReplyTable::take(const QString &correlationId,
                                                   const Answer &answer)
{
    const auto it = m_expected.find(correlationId);
    if (it == m_expected.end())
        return std::nullopt;
    if (!it->confirmed) {
        it->held = answer;
        return std::nullopt;
    }
    m_names.remove(it->token);
    m_expected.erase(it);
    return answer;
}

std::optional<ReplyTable::Answer> ReplyTable::confirmed(quint64 token)
{
    const auto it = m_expected.find(m_names.value(token));
    if (it == m_expected.end() || it->token != token)
        return std::nullopt;
    it->confirmed = true;
    const std::optional<Answer> held = it->held;
    if (held)
        forget(token);
    return held;
}

void ReplyTable::forget(quint64 token)
{
    m_expected.remove(m_names.take(token));
}

void ReplyTable::clear()
{
    m_expected.clear();
    m_names.clear();
}

void ReplyTable::dropOld(qint64 now)
{
    for (auto it = m_expected.begin(); it != m_expected.end();) {
        if (it->kind == Kind::Request && now - it->since > REQUEST_LIFE_MS) {
            m_names.remove(it->token);
            it = m_expected.erase(it);
        } else {
            ++it;
        }
    }
}
