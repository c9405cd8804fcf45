#pragma once

#include <fiscal/fiscalrecord.h>

#include <QVector>
#include <QtGlobal>

class ChargeJournal;
class FiscalJournal;
class PaymentsStore;
struct ChargeRecord;

/// Finds out which receipt and which pay pack a card charge went into, and writes that to the
/// charge journal. Nothing that was found out once is changed.
///
/// Neither the terminal nor the register knows the other, so the sum and the order of time decide:
/// a receipt takes the newest charge of its card sum that was made before it and not longer than a
/// shift ago; one that the cashier was told of comes before one with an unknown outcome.
class ChargeMatcher final
{
public:
    /// Everything must be open and outlive the matcher.
    ChargeMatcher(ChargeJournal &charges, FiscalJournal &fiscal, PaymentsStore &payments);

    void matchReceipt(const ReceiptHead &receipt);
    void matchReceipt(qint64 number);
    void matchPack(qint64 packId);
    /// Packs of charges whose receipt is known.
    void matchPacks();

private:
    ChargeJournal &m_charges;
    FiscalJournal &m_fiscal;
    PaymentsStore &m_payments;
};
