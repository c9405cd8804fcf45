#pragma once

#include <bus/busjournalentry.h>

#include <QElapsedTimer>
#include <QHash>
#include <QObject>
#include <QString>
#include <QVariant>
#include <QVector>

#include <deque>

class MessageBus;

/// The newest messages of a bus in both directions, each answer matched with its request by the id
/// that both carry: "uid" of an account request, the id of a pay pack.
///
/// Bounded by count and by bytes of memory: the oldest messages go first, the newest always stays.
/// An answer belongs to the oldest request with its id that has no answer yet; when all of them
/// have one it is a repeated answer to the last.
class BusJournal final : public QObject
{
    Q_OBJECT

public:
    static constexpr int MOST_MESSAGES = 2000;
    static constexpr qint64 MOST_BYTES = 64 * 1024 * 1024;

    explicit BusJournal(int mostMessages = MOST_MESSAGES, qint64 mostBytes = MOST_BYTES,
                        QObject *parent = nullptr);
    ~BusJournal() override;

    /// Notes what crosses `bus` from now on.
    void follow(MessageBus &bus);
    void clear();

    int size() const { return int(m_entries.size()); }
    /// `index` counts from the oldest message that is still here.
    const BusJournalEntry &at(int index) const { return m_entries.at(std::size_t(index)); }
    /// Null for a number that is not here, or no longer.
    const BusJournalEntry *find(qint64 number) const;

signals:
    /// The newest message was added. What had to go for it has gone before, see dropped().
    void appended();
    /// The oldest `count` messages are gone; clear() drops all.
    void dropped(int count);
    /// Another message has told something new about this one.
    void changed(qint64 number);

private:
    void note(const BusMessage &message);
    void noteSent(BusJournalEntry &entry, const QString &id);
    void noteArrived(BusJournalEntry &arrived);
    void settle(const QString &destination, const QVariant &data, const QString &refusal);
    BusJournalEntry *entry(qint64 number);
    void makeRoom(qint64 weight);
    void dropOldest(int count);

    int m_mostMessages;
    qint64 m_mostBytes;
    std::deque<BusJournalEntry> m_entries;
    qint64 m_bytes = 0;
    qint64 m_lastNumber = 0;
    /// Numbers of the requests that carry an id, oldest first.
    QHash<QString, QVector<qint64>> m_requests;
    /// By number: when a request was sent, on a clock that is never set back.
    QHash<qint64, qint64> m_sentAt;
    QHash<qint64, QString> m_ids;
    QElapsedTimer m_clock;
};
