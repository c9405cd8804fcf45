#include "democount.h"

#include "buspacks.h"

#include <app/terminalcontext.h>

#include <molvacore/cardchargelog.h>
#include <molvacore/fiscaltag.h>

DemoCount DemoCount::now(TerminalContext &context)
{
    DemoCount count;
    count.charged = CardChargeLog::total().value();
    count.receiptTotal = context.fiscalJournal().receiptTotal();
    count.receipts = context.fiscalJournal().receiptCount();
    count.saved = context.payments().count(PaymentFilter());
    // What billing elsewhere holds is known by what it confirmed.
    PaymentFilter confirmed;
    confirmed.state = int(PackState::Acknowledged);
    count.posted = context.billingIsOwn() ? context.billing().packCount()
                                          : context.payments().count(confirmed);
    return count;
}

DemoCount DemoCount::since(const DemoCount &before) const
{
    DemoCount difference;
    difference.charged = charged - before.charged;
    difference.receiptTotal = receiptTotal - before.receiptTotal;
    difference.receipts = receipts - before.receipts;
    difference.saved = saved - before.saved;
    difference.posted = posted - before.posted;
    return difference;
}

DemoVerdict::DemoVerdict(TerminalContext &context, const DemoCount &count, qint64 busMoment)
    : m_count(count)
{
    expect(QStringLiteral("чеков в журнале кассы"), 1, count.receipts);
    expect(QStringLiteral("пачек в хранилище платежей"), 1, count.saved);
    expect(QStringLiteral("пачек, принятых биллингом"), 1, count.posted);
    if (count.saved < 1)
        return;

    const PaymentRecord pack = context.payments().records(PaymentFilter(), 0, 1).value(0);
    m_packId = pack.packId;
    m_fiscalNumber = pack.fiscalDocument.toLongLong();
    m_amount = pack.sum.value();
    m_cash = pack.cash.value();
    m_card = pack.card.value();
    expect(QStringLiteral("наличными и картой вместе, против суммы пачки"), m_amount,
           m_cash + m_card);
    expect(QStringLiteral("списано с карты, против пачки"), m_card, count.charged);
    expect(QStringLiteral("сумма чека, против пачки"), m_amount, count.receiptTotal);

    const auto receipt = context.fiscalJournal().record(m_fiscalNumber);
    const QVariantMap document = receipt ? receipt->document : QVariantMap();
    expect(QStringLiteral("наличными в чеке"), m_cash,
           document.value(FiscalTag::key(FiscalTag::CashSum)).toLongLong());
    expect(QStringLiteral("безналичными в чеке"), m_card,
           document.value(FiscalTag::key(FiscalTag::CashlessSum)).toLongLong());

    compareWithBus(context, busMoment);
    if (!context.billingIsOwn())
        return;
    qint64 taken = 0;
    const QString id = QString::number(m_packId);
    for (const TakenPayment &payment : context.billing().takenPayments(id))
        taken += payment.sum;
    expect(QStringLiteral("сумма, принятая биллингом"), m_amount, taken);
    expect(QStringLiteral("та же пачка у биллинга"), 1, context.billing().hasPack(id) ? 1 : 0);
}

void DemoVerdict::compareWithBus(TerminalContext &context, qint64 busMoment)
{
    const BusPacks bus = BusPacks::since(context.busJournal(), busMoment);
    m_disagreements += bus.problems();
    expect(QStringLiteral("пачек на шине"), 1, bus.packs().size());
    const BusPacks::Pack *pack = bus.find(m_packId);
    expect(QStringLiteral("та же пачка на шине"), 1, pack ? 1 : 0);
    if (!pack)
        return;
    expect(QStringLiteral("сумма пачки на шине"), m_amount, pack->amount);
    expect(QStringLiteral("наличными в пачке на шине"), m_cash, pack->cash);
    expect(QStringLiteral("картой в пачке на шине"), m_card, pack->card);
    const QVector<qint64> stored =
        BusPacks::sumsOf(context.payments().pack(m_packId).value_or(QVariantMap()));
    expect(QStringLiteral("платежей в пачке на шине"), stored.size(), pack->sums.size());
    for (int i = 0; i < qMin(stored.size(), pack->sums.size()); ++i)
        expect(QStringLiteral("платёж %1 в пачке на шине").arg(i + 1), stored.at(i),
               pack->sums.at(i));
}

QJsonObject DemoVerdict::summary() const
{
    return {
        {QStringLiteral("charged"), m_count.charged},   {QStringLiteral("cash"), m_cash},
        {QStringLiteral("receipts"), m_count.receipts}, {QStringLiteral("saved"), m_count.saved},
        {QStringLiteral("posted"), m_count.posted},     {QStringLiteral("amount"), m_amount}};
}

void DemoVerdict::expect(const QString &what, qint64 expected, qint64 found)
{
    if (expected != found) {
        m_disagreements.append(QStringLiteral("%1: ожидалось %2, найдено %3")
                                   .arg(what, QString::number(expected), QString::number(found)));
    }
}
