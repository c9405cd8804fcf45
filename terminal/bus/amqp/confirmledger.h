#pragma once

#include <QMap>
#include <QString>
#include <QVector>
#include <QtGlobal>

/// What became of messages published on one channel with publisher confirms.
///
/// The broker numbers publishes from 1 and settles them by number, in any order, one at a time or
/// all up to a number. A message that it could not route comes back first and is confirmed after
/// that: it counts as returned.
class ConfirmLedger final
{
public:
    enum class Result { Confirmed, Rejected, Returned };

    struct Outcome
    {
        quint64 token = 0;
        Result result = Result::Confirmed;
        /// The broker's reason for a return.
        QString text;
    };

    /// Call in the order of publishing; `token` is the caller's name for the message.
    void published(quint64 token, qint64 timeMs);
    void returned(quint64 token, const QString &text);
    /// Numbers that are not open are ignored.
    QVector<Outcome> settle(quint64 number, bool multiple, bool positive);
    /// Empties the ledger for a new channel; answers with the tokens whose fate is unknown, oldest
    /// first.
    QVector<quint64> abandon();

    bool isEmpty() const { return m_open.isEmpty(); }
    int size() const { return m_open.size(); }
    /// `timeMs` of the oldest open message; meaningless when empty.
    qint64 oldestTime() const { return m_open.isEmpty() ? 0 : m_open.first().time; }

private:
    struct Entry
    {
        quint64 token = 0;
        qint64 time = 0;
        bool returned = false;
        QString text;
    };

    Outcome outcome(const Entry &entry, bool positive) const;

    quint64 m_last = 0;
    QMap<quint64, Entry> m_open;
};
