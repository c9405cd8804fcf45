#pragma once

#include <fiscal/fiscalrecord.h>

#include <QString>
#include <QVector>

#include <memory>
#include <optional>

namespace basix {
class SqliteDatabase;
}
class SqlStatements;

/// The register's fiscal storage: an append-only list of documents in its own SQLite file, durable
/// before append() returns.
///
/// It outlives the register that writes it: the plugin destroys the register it was given, the
/// journal stays with the terminal.
class FiscalJournal final
{
public:
    FiscalJournal();
    ~FiscalJournal();
    FiscalJournal(const FiscalJournal &) = delete;
    FiscalJournal &operator=(const FiscalJournal &) = delete;

    bool open(const QString &file);
    bool isOpen() const;
    QString lastError() const;

    /// 16 digits, made when the file was created.
    QString storageNumber() const;

    /// Stores a record under the next number, if that number is still record.number; false
    /// otherwise.
    bool append(const FiscalRecord &record);
    qint64 nextNumber();

    /// The last report that opened a shift, if no later one closed it.
    std::optional<FiscalRecord> openShift();
    int lastShift();
    int lastReceiptInShift(int shift);

    /// Nothing with an empty lastError() means that there is none; so for findByDocumentNumber().
    std::optional<FiscalRecord> record(qint64 number);
    /// The receipt handed in under this number; the newest of several.
    std::optional<FiscalRecord> findByDocumentNumber(const QString &documentNumber);
    /// Newest first.
    QVector<FiscalRecord> receipts(int offset, int limit);
    /// Oldest first, those after the document `after`.
    QVector<ReceiptHead> heads(qint64 after, int limit);
    std::optional<ReceiptHead> head(qint64 number);
    int receiptCount();
    /// Sum of all receipts in kopecks.
    qint64 receiptTotal();

private:
    std::unique_ptr<basix::SqliteDatabase> m_database;
    std::unique_ptr<SqlStatements> m_statements;
    QString m_storage;
    QString m_error;
};
