#pragma once

#include <QJsonObject>
#include <QString>
#include <QStringList>
#include <QtGlobal>

class TerminalContext;

/// One payment, counted where each of its traces is kept: the card emulator's log of charges, the
/// store of pay packs, the register's journal, the bus and billing's database. No number is taken
/// from the plugin's windows.
///
/// Amounts are whole kopecks. A count of a payment is the difference of what is there after it and
/// before it.
struct DemoCount
{
    qint64 charged = 0;      ///< card emulator
    qint64 receiptTotal = 0; ///< register
    int receipts = 0;        ///< register
    int saved = 0;           ///< store
    int posted = 0;          ///< billing

    static DemoCount now(TerminalContext &context);
    DemoCount since(const DemoCount &before) const;
};

/// What became of the payment that was taken last, and whether all who know of it agree.
class DemoVerdict
{
public:
    /// `count`: what this payment added. `busMoment`: of the bus journal before it, see BusPacks.
    DemoVerdict(TerminalContext &context, const DemoCount &count, qint64 busMoment);

    bool agrees() const { return m_disagreements.isEmpty(); }
    QStringList disagreements() const { return m_disagreements; }
    /// {charged, cash, receipts, saved, posted, amount}: kopecks and counts.
    QJsonObject summary() const;
    qint64 packId() const { return m_packId; }
    qint64 fiscalNumber() const { return m_fiscalNumber; }

private:
    void expect(const QString &what, qint64 expected, qint64 found);
    void compareWithBus(TerminalContext &context, qint64 busMoment);

    DemoCount m_count;
    qint64 m_packId = 0;
    qint64 m_fiscalNumber = 0;
    qint64 m_amount = 0;
    qint64 m_cash = 0;
    qint64 m_card = 0;
    QStringList m_disagreements;
};
