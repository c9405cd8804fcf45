#pragma once

#include <payments/journalquery.h>
#include <payments/paymentrecord.h>

#include <QString>
#include <QVariantList>
#include <QVariantMap>
#include <QVector>

#include <memory>
#include <optional>

namespace basix {
class SqliteDatabase;
}
class SqlStatement;
class SqlStatements;

/// Pay packs of this workstation in one SQLite file. What save() returned true for survives a crash
/// and a power cut.
///
/// Every operation answers false or nothing when the file is not open or fails; lastError() then
/// holds a Russian text. Use it from the thread that created it.
class PaymentsStore final
{
public:
    PaymentsStore();
    ~PaymentsStore();
    PaymentsStore(const PaymentsStore &) = delete;
    PaymentsStore &operator=(const PaymentsStore &) = delete;

    bool open(const QString &file);
    bool isOpen() const;
    QString lastError() const;

    /// Stores a pack with its full map. A pack that is stored already with the same content is true
    /// and changes nothing; another content under the same id is refused.
    ///
    /// A receipt belongs to one pack. When the pack of a receipt was recovered meanwhile, the
    /// payment's own pack over the same account and money is true and changes nothing; any other
    /// pack with that receipt is refused.
    bool save(const PaymentRecord &record, const QVariantMap &pack);
    /// Moves a pack forward; a state it has already reached is true and changes nothing.
    bool advance(qint64 packId, PackState state);
    bool setLastError(qint64 packId, const QString &error);

    std::optional<PaymentRecord> record(qint64 packId);
    std::optional<QVariantMap> pack(qint64 packId);
    /// Packs the bus has not taken, oldest first. None with a lastError(): they could not be read.
    QVector<qint64> unposted();
    /// The same for those that the bus took and billing has not confirmed.
    QVector<qint64> unacknowledged();

    /// Nothing with an empty lastError() means that no pack has this receipt.
    std::optional<PaymentRecord> packOfReceipt(const QString &storage, qint64 document);
    /// Packs whose receipts are these fiscal documents of the storage, bounds included.
    QVector<PaymentRecord> packsOfReceipts(const QString &storage, qint64 first, qint64 last);
    /// Packs without a receipt, and unfinished ones whose receipt is in another fiscal storage.
    QVector<PaymentRecord> packsWithoutReceipt(const QString &storage);

    /// Whether page() is quick in another order than that of time: so few payments pass the filter
    /// that they can be sorted for every page.
    bool canSort(const PaymentFilter &filter);
    /// The first page of the journal, or the one that follows the payment `after`. In the order of
    /// time it takes as long for a million payments as for a hundred, whatever the filter.
    QVector<PaymentRecord> page(const PaymentFilter &filter, const PaymentOrder &order,
                                const PaymentRecord *after, int limit);
    /// Newest first. Reads and throws away what stands before `offset`.
    QVector<PaymentRecord> records(const PaymentFilter &filter, int offset, int limit);
    /// Walks over everything that it counts.
    int count(const PaymentFilter &filter);

private:
    bool ready();
    bool run(SqlStatement &statement);
    bool isSamePayment(const PaymentRecord &stored, const PaymentRecord &record);
    bool run(SqlStatement &statement, const QVariantList &values);
    QVector<qint64> numbersIn(PackState first, PackState last);
    QVector<PaymentRecord> readAll(const QString &sql, const QVariantList &values);
    std::optional<JournalQuery::Matches> matchesOf(const QString &account);

    std::unique_ptr<basix::SqliteDatabase> m_database;
    std::unique_ptr<SqlStatements> m_statements;
    QString m_error;
};
