#pragma once

#include <molvacore/cardchargelog.h>

#include <basixcore/fixnumber.h>

#include <QDateTime>
#include <QObject>
#include <QString>
#include <QVector>

#include <memory>
#include <optional>

namespace basix {
class SqliteDatabase;
}
class SqlStatement;

/// A charge of a card as the journal keeps it, with what it turned out to be for.
struct ChargeRecord
{
    qint64 id = 0;
    QDateTime time;
    basix::FixNumber amount;
    QString terminal;
    QString rrn;
    QString authCode;
    /// False: the card was charged, but the cashier was told that the outcome is unknown.
    bool answered = true;
    /// The receipt that names the charge: fiscal storage and document; empty and 0 for none.
    QString fiscalStorage;
    qint64 fiscalDocument = 0;
    /// The pay pack that holds the charge, 0 for none.
    qint64 packId = 0;
    /// When the money went back to the card; invalid for a charge that stands.
    QDateTime refunded;
    QString refundRrn;
};

/// Charges that this workstation's card terminals made, in one SQLite file: the terminal's side of
/// the story, kept by nobody else once the process is gone.
///
/// Use it from the thread that created it; the card terminals must work in that thread too.
/// Operations answer false or nothing when the file is not open or fails; lastError() then holds a
/// Russian text.
class ChargeJournal final : public QObject
{
    Q_OBJECT

public:
    explicit ChargeJournal(QObject *parent = nullptr);
    ~ChargeJournal() override;

    bool open(const QString &file);
    bool isOpen() const;
    QString lastError() const { return m_error; }

    /// From now on every charge of this process is on the disk before the terminal answers the one
    /// who asked for it. A charge that cannot be stored stays in memory and in the trace and is
    /// stored with the next one or by storeUnkept().
    void follow(CardChargeLog &log);
    /// Charges that are not on the disk yet.
    int unkept() const { return m_unkept.size(); }
    bool storeUnkept();

    /// The same charge again is true and changes nothing.
    bool note(const CardCharge &charge);

    std::optional<ChargeRecord> charge(qint64 id);
    std::optional<ChargeRecord> chargeOfReceipt(const QString &storage, qint64 document);
    /// Charges that stand and belong to no receipt, oldest first.
    QVector<ChargeRecord> unexplained();
    /// Charges with a receipt and no pack.
    QVector<ChargeRecord> withoutPack();
    /// Newest first.
    QVector<ChargeRecord> charges(int offset, int limit);
    int count();
    /// Sums in kopecks: everything charged, and what of it went back.
    qint64 chargedTotal();
    qint64 refundedTotal();

    /// A charge that has another receipt, or was refunded, is not attached.
    bool attachReceipt(qint64 id, const QString &storage, qint64 document);
    bool attachPack(qint64 id, qint64 packId);

    /// Gives the money back on the emulated terminal and keeps the operation. Refused for a charge
    /// that has a receipt (the buyer's money is then returned by a return receipt), or was refunded
    /// already.
    bool refund(qint64 id, const QDateTime &when);

signals:
    void noted(qint64 id);
    /// The card is charged and the journal could not be written; `error` is a Russian text.
    void notKept(const CardCharge &charge, const QString &error);
    void refunded(qint64 id);

private:
    void onCharged(const CardCharge &charge);
    bool run(SqlStatement &statement);
    QVector<ChargeRecord> select(const QString &rest, const QVariantList &values);
    qint64 number(const QString &sql);

    std::unique_ptr<basix::SqliteDatabase> m_database;
    QVector<CardCharge> m_unkept;
    QString m_error;
};
