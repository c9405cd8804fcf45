#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVariantMap>
#include <QVector>
#include <QtGlobal>

class BusJournal;

/// The pay packs that crossed the bus after a moment, read from the messages as they were sent and
/// not from what the workstation keeps.
///
/// A pack may cross more than once, under the same id and with the same content; it counts once. A
/// message that the bus refused did not cross. Amounts are whole kopecks.
class BusPacks final
{
public:
    struct Pack
    {
        qint64 id = 0;
        qint64 amount = 0; ///< of its payments
        qint64 cash = 0;   ///< of its operations, as is the card's part
        qint64 card = 0;
        QVector<qint64> sums = {}; ///< of its payments, one by one

        bool operator==(const Pack &other) const;
    };

    /// The moment that since() takes: the number of the newest message.
    static qint64 moment(const BusJournal &journal);
    static BusPacks since(const BusJournal &journal, qint64 moment);

    /// What a pack's payments amount to, one by one.
    static QVector<qint64> sumsOf(const QVariantMap &pack);

    /// In the order in which they crossed first.
    const QVector<Pack> &packs() const { return m_packs; }
    /// Null when no such pack crossed.
    const Pack *find(qint64 id) const;
    qint64 amount() const;
    /// Russian texts: a pack that cannot be read, one that changed under its id, and messages that
    /// the journal no longer has. Empty when every pack was seen and is what it was.
    const QStringList &problems() const { return m_problems; }

private:
    BusPacks() = default;
    void take(const QByteArray &body);

    QVector<Pack> m_packs;
    QStringList m_problems;
};
