#include <recovery/chargematcher.h>

#include <fiscal/fiscaljournal.h>
#include <payments/chargejournal.h>
#include <payments/paymentsstore.h>

namespace {

constexpr int SHIFT_SECONDS = 24 * 60 * 60;
/// The register's clock may be off by that much (54-FZ, order ЕД-7-20/662@, tag 1012).
constexpr int CLOCK_SECONDS = 5 * 60;
constexpr int INCOME = 1;

bool mayBelong(const ChargeRecord &charge, const ReceiptHead &receipt)
{
    const qint64 seconds = charge.time.secsTo(receipt.time);
    return charge.amount.value() == receipt.cashless && seconds >= -CLOCK_SECONDS
        && seconds <= SHIFT_SECONDS;
}

} // namespace

ChargeMatcher::ChargeMatcher(ChargeJournal &charges, FiscalJournal &fiscal, PaymentsStore &payments)
    : m_charges(charges), m_fiscal(fiscal), m_payments(payments)
{
}

void ChargeMatcher::matchReceipt(const ReceiptHead &receipt)
{
    if (receipt.cashless <= 0 || receipt.settlementSign != INCOME)
        return;
    const QVector<ChargeRecord> charges = m_charges.unexplained();
    const ChargeRecord *best = nullptr;
    for (const ChargeRecord &charge : charges) {
        if (mayBelong(charge, receipt) && (!best || charge.answered || !best->answered))
            best = &charge;
    }
    if (!best || m_charges.chargeOfReceipt(m_fiscal.storageNumber(), receipt.number))
        return;
    m_charges.attachReceipt(best->id, m_fiscal.storageNumber(), receipt.number);
}

void ChargeMatcher::matchReceipt(qint64 number)
{
    if (const auto receipt = m_fiscal.head(number))
        matchReceipt(*receipt);
}

void ChargeMatcher::matchPack(qint64 packId)
{
    const auto pack = m_payments.record(packId);
    if (!pack || pack->card.value() <= 0)
        return;
    const auto charge =
        m_charges.chargeOfReceipt(pack->fiscalStorage, pack->fiscalDocument.toLongLong());
    if (charge && charge->packId == 0)
        m_charges.attachPack(charge->id, packId);
}

void ChargeMatcher::matchPacks()
{
    const QVector<ChargeRecord> charges = m_charges.withoutPack();
    for (const ChargeRecord &charge : charges) {
        const auto pack = m_payments.packOfReceipt(charge.fiscalStorage, charge.fiscalDocument);
        if (pack)
            m_charges.attachPack(charge.id, pack->packId);
    }
}
