#include "bill.h"

#include <QLocale>
#include <QPair>

namespace {

QVector<Bill::Line> linesOf(const QVector<BillingServiceLine> &services)
{
    QVector<Bill::Line> lines;
    for (const BillingServiceLine &service : services)
        lines.append({service.name, service.charge, service.topay - service.charge, service.topay});
    return lines;
}

qint64 sumInCode(const Bill::Wish &wish, qint64 due)
{
    if (wish.withoutSum)
        return 0;
    return qMax<qint64>(0, wish.sum.value_or(due));
}

QString typewritten(const QString &text, CodeEncoding encoding)
{
    static const QVector<QPair<QString, QString>> replacements{
        {QStringLiteral("«"), QStringLiteral("\"")},
        {QStringLiteral("»"), QStringLiteral("\"")},
        {QStringLiteral("№"), QStringLiteral("N")},
        {QStringLiteral("—"), QStringLiteral("-")},
        {QStringLiteral("–"), QStringLiteral("-")},
        {QStringLiteral("₽"), QStringLiteral("руб.")}};
    QString result = text;
    for (const auto &replacement : replacements) {
        if (!CodeEncodings::lacking(replacement.first, encoding).isEmpty())
            result.replace(replacement.first, replacement.second);
    }
    return result;
}

} // namespace

QVector<PaymentCode::Field> Bill::payee()
{
    return {{QStringLiteral("Name"), QStringLiteral("АО «Селмар Ривенхолд»")},
            {QStringLiteral("PersonalAcc"), QStringLiteral("40702810000000004107")},
            {QStringLiteral("BankName"), QStringLiteral("АО «Приреченский Банк», г. Приреченск")},
            {QStringLiteral("BIC"), QStringLiteral("040000999")},
            {QStringLiteral("CorrespAcc"), QStringLiteral("30101810000000000999")},
            {QStringLiteral("PayeeINN"), QStringLiteral("0012003461")},
            {QStringLiteral("KPP"), QStringLiteral("001201001")}};
}

Bill Bill::forPerson(const BillingAccount &account, const Wish &wish)
{
    Bill bill;
    bill.m_number = account.number;
    bill.m_payer = account.fio;
    bill.m_address = account.address;
    bill.m_period = wish.period;
    bill.m_lines = linesOf(account.services);
    for (const BillingMeter &meter : account.meters)
        bill.m_meters.append({meter.name, meter.lastValue});
    for (const Line &line : qAsConst(bill.m_lines))
        bill.m_total += line.topay;
    bill.m_codeSum = sumInCode(wish, bill.m_total);
    return bill;
}

Bill Bill::forDocument(const BillingAccount &contract, const BillingDocument &document,
                       const Wish &wish)
{
    Bill bill;
    bill.m_legal = true;
    bill.m_number = contract.number;
    bill.m_document = document.number;
    bill.m_payer = contract.fio;
    bill.m_address = contract.address;
    bill.m_inn = contract.inn;
    bill.m_period = wish.period;
    bill.m_lines = linesOf(document.services);
    bill.m_total = document.topay;
    bill.m_codeSum = sumInCode(wish, document.topay);
    return bill;
}

QString Bill::title() const
{
    return m_legal ? QStringLiteral("Счёт на оплату № %1").arg(m_document)
                   : QStringLiteral("Квитанция за %1").arg(periodText());
}

QString Bill::periodText() const
{
    const QLocale russian(QLocale::Russian, QLocale::RussianFederation);
    return QStringLiteral("%1 %2").arg(russian.standaloneMonthName(m_period.month()).toLower(),
                                       QString::number(m_period.year()));
}

PaymentCode Bill::code(CodeEncoding encoding) const
{
    PaymentCode code;
    const auto set = [&code, encoding](const char *name, const QString &value) {
        code.setField(QLatin1String(name), typewritten(value, encoding));
    };
    for (const PaymentCode::Field &field : payee())
        code.setField(field.name, typewritten(field.value, encoding));
    if (m_codeSum > 0)
        set("Sum", QString::number(m_codeSum));
    set("PersAcc", m_number);
    if (m_legal) {
        set("BarCode", m_document);
        set("PayerINN", m_inn);
        set("Purpose", QStringLiteral("Оплата по договору %1, счёт %2").arg(m_number, m_document));
    } else {
        set("PaymPeriod", m_period.toString(QStringLiteral("MM.yyyy")));
        const QStringList names = m_payer.split(QLatin1Char(' '), Qt::SkipEmptyParts);
        const bool person = names.size() == 3;
        set("LastName", person ? names.at(0) : m_payer);
        set("FirstName", person ? names.at(1) : QString());
        set("MiddleName", person ? names.at(2) : QString());
        set("PayerAddress", m_address);
        set("Purpose",
            QStringLiteral("Оплата за воду по счёту %1 за %2").arg(m_number, periodText()));
    }
    set("TechCode", QStringLiteral("02"));
    return code;
}
