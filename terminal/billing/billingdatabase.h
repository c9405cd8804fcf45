#pragma once

#include <billing/billingrecords.h>

#include <QPair>
#include <QString>
#include <QVariantMap>
#include <QVector>

#include <memory>
#include <optional>

namespace basix {
class SqliteDatabase;
}

/// The utility's own data in one SQLite file: accounts, contracts, meters, and the pay packs it has
/// taken.
///
/// A new file is filled with the sample accounts. Every operation answers false or nothing when the
/// file is not open or fails; lastError() then holds a Russian text. Use it from the thread that
/// created it.
class BillingDatabase final
{
public:
    enum class Taking { Taken, AlreadyTaken, Refused };

    BillingDatabase();
    ~BillingDatabase();
    BillingDatabase(const BillingDatabase &) = delete;
    BillingDatabase &operator=(const BillingDatabase &) = delete;

    bool open(const QString &file);
    bool isOpen() const;
    QString lastError() const;

    /// Nothing with an empty lastError() means that billing does not know the number.
    std::optional<BillingAccount> account(SampleAccount::Payer payer, const QString &number);
    bool saveAccount(const BillingAccount &account);

    /// Fields of one kind of record ("account", "contract", "service", "counter", "document") in
    /// the order they are sent in.
    QVector<BillingField> fields(const QString &record);

    /// Takes a pay pack and applies it to the balances, all or nothing, at most once for each pack
    /// id. A refused pack has changed nothing; lastError() says why.
    Taking takePack(const QVariantMap &pack);

    int packCount();
    bool hasPack(const QString &packId);
    QVector<TakenPayment> takenPayments(const QString &packId);
    /// Readings that came with a pack and differ from the last one known: meter id and value. One
    /// below the last is kept here but does not change the meter.
    QVector<QPair<qint64, qint64>> takenReadings(const QString &packId);

private:
    bool ready();

    std::unique_ptr<basix::SqliteDatabase> m_database;
    QString m_error;
};
