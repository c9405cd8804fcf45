#pragma once

#include <billing/billingdatabase.h>
#include <billing/paypackreader.h>

#include <QString>
#include <QVariantMap>

namespace basix {
class SqliteDatabase;
}
class SqlStatement;

/// Takes one pay pack into the billing database: the pack, its payments, its readings and the new
/// balances in one transaction.
class BillingPackIntake final
{
public:
    explicit BillingPackIntake(basix::SqliteDatabase &database);

    /// A pack whose id is known is AlreadyTaken if it is the same pack and Refused if it holds
    /// something else.
    BillingDatabase::Taking take(const QVariantMap &pack);
    QString error() const { return m_error; }

private:
    bool store(const ReceivedPack &pack, const QString &body);
    bool storePayment(const QString &packId, int position, const ReceivedPack::Payment &payment);
    bool applyBalances(int payer, const ReceivedPack::Payment &payment, const QString &document,
                       bool *allocated);
    bool applyLines(int payer, const ReceivedPack::Payment &payment, const QString &document);
    bool storeReadings(const QString &packId, int position, int payer,
                       const ReceivedPack::Payment &payment);
    bool run(SqlStatement &statement);

    basix::SqliteDatabase &m_database;
    QString m_error;
};
