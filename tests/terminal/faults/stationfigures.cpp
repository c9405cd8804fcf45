#include "stationfigures.h"

#include <app/terminalcontext.h>

#include <QJsonArray>

namespace {

constexpr int EVERYTHING = 1000000;

} // namespace

QJsonObject stationFigures(TerminalContext &context, BillingDatabase &billing)
{
    QJsonArray packs;
    qint64 cash = 0;
    qint64 card = 0;
    qint64 billed = 0;
    int recovered = 0;
    const QVector<PaymentRecord> records = context.payments().records({}, 0, EVERYTHING);
    for (const PaymentRecord &record : records) {
        packs.append(QString::number(record.packId));
        cash += record.cash.value();
        card += record.card.value();
        recovered += record.recovered ? 1 : 0;
        const auto taken = billing.takenPayments(QString::number(record.packId));
        for (const TakenPayment &payment : taken)
            billed += payment.sum;
    }
    QJsonArray receipts;
    qint64 cashless = 0;
    for (const ReceiptHead &receipt : context.fiscalJournal().heads(0, EVERYTHING)) {
        receipts.append(QString::number(receipt.number));
        cashless += receipt.cashless;
    }
    QJsonArray charges;
    for (const ChargeRecord &charge : context.charges().charges(0, EVERYTHING))
        charges.append(charge.rrn);
    const auto account = billing.account(SampleAccount::Payer::Individual, SampleNumber::ORDINARY);
    return {{QStringLiteral("charged"), context.charges().chargedTotal()},
            {QStringLiteral("refunded"), context.charges().refundedTotal()},
            {QStringLiteral("receiptTotal"), context.fiscalJournal().receiptTotal()},
            {QStringLiteral("receiptCashless"), cashless},
            {QStringLiteral("packCash"), cash},
            {QStringLiteral("packCard"), card},
            {QStringLiteral("billed"), billed},
            {QStringLiteral("billedPacks"), billing.packCount()},
            {QStringLiteral("debt"), account ? account->debt : 0},
            {QStringLiteral("recovered"), recovered},
            {QStringLiteral("charges"), charges},
            {QStringLiteral("receipts"), receipts},
            {QStringLiteral("packs"), packs}};
}
