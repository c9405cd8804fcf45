#include <bus/amqp/confirmledger.h>

void ConfirmLedger::published(quint64 token, qint64 timeMs)
{
    Entry entry;
    entry.token = token;
    entry.time = timeMs;
    m_open.insert(++m_last, entry);
}

void ConfirmLedger::returned(quint64 token, const QString &text)
{
    for (Entry &entry : m_open) {
        if (entry.token != token)
            continue;
        entry.returned = true;
        entry.text = text;
        return;
    }
}

ConfirmLedger::Outcome ConfirmLedger::outcome(const Entry &entry, bool positive) const
{
    if (entry.returned)
        return {entry.token, Result::Returned, entry.text};
    return {entry.token, positive ? Result::Confirmed : Result::Rejected, QString()};
}

QVector<ConfirmLedger::Outcome> ConfirmLedger::settle(quint64 number, bool multiple, bool positive)
{
    QVector<Outcome> settled;
    if (!multiple) {
        const auto it = m_open.find(number);
        if (it != m_open.end()) {
            settled.append(outcome(*it, positive));
            m_open.erase(it);
        }
        return settled;
    }
    // The protocol's 0 means everything that is open.
    while (!m_open.isEmpty() && (number == 0 || m_open.firstKey() <= number)) {
        settled.append(outcome(m_open.first(), positive));
        m_open.erase(m_open.begin());
    }
    return settled;
}

QVector<quint64> ConfirmLedger::abandon()
{
    QVector<quint64> tokens;
    for (const Entry &entry : qAsConst(m_open))
        tokens.append(entry.token);
    m_open.clear();
    m_last = 0;
    return tokens;
}
