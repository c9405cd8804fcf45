#include <fiscal/receipttext.h>

#include <fiscal/fiscalfindings.h>
#include <fiscal/fiscalrecord.h>
#include <fiscal/receipttape.h>

#include <molvacore/fiscaltypes.h>

#include <QDateTime>
#include <QMap>

namespace {

QString text(const QVariantMap &map, int tag)
{
    return map.value(FiscalTag::key(tag)).toString().trimmed();
}

int number(const QVariantMap &map, int tag)
{
    return map.value(FiscalTag::key(tag)).toInt();
}

QString sum(const QVariantMap &map, int tag)
{
    return FiscalFindings::rubles(map.value(FiscalTag::key(tag)).toLongLong());
}

QString phones(const QVariantMap &map, int tag)
{
    return map.value(FiscalTag::key(tag)).toStringList().join(QStringLiteral(", "));
}

QString settlementSign(int value)
{
    static const QStringList names{QStringLiteral("ПРИХОД"), QStringLiteral("ВОЗВРАТ ПРИХОДА"),
                                   QStringLiteral("РАСХОД"), QStringLiteral("ВОЗВРАТ РАСХОДА")};
    return names.value(value - 1);
}

QString taxSystem(int value)
{
    switch (static_cast<FDTax>(value)) {
    case FDTax::General:
        return QStringLiteral("ОСН");
    case FDTax::SimplifiedIncome:
        return QStringLiteral("УСН доход");
    case FDTax::SimplifiedIncomeExpense:
        return QStringLiteral("УСН доход - расход");
    case FDTax::ImputedIncome:
        return QStringLiteral("ЕНВД");
    case FDTax::Agricultural:
        return QStringLiteral("ЕСХН");
    case FDTax::Patent:
        return QStringLiteral("ПСН");
    }
    return QString::number(value);
}

QString vatRate(int value)
{
    static const QStringList names{
        QStringLiteral("НДС 20%"),    QStringLiteral("НДС 10%"),
        QStringLiteral("НДС 20/120"), QStringLiteral("НДС 10/110"),
        QStringLiteral("НДС 0%"),     QStringLiteral("НДС не облагается"),
        QStringLiteral("НДС 5%"),     QStringLiteral("НДС 7%"),
        QStringLiteral("НДС 5/105"),  QStringLiteral("НДС 7/107"),
        QStringLiteral("НДС 22%"),    QStringLiteral("НДС 22/122")};
    return names.value(value - 1, QStringLiteral("НДС: код %1").arg(value));
}

QString itemType(int value)
{
    static const QMap<int, QString> names{
        {static_cast<int>(PaymentItemType::Goods), QStringLiteral("ТОВАР")},
        {static_cast<int>(PaymentItemType::Work), QStringLiteral("РАБОТА")},
        {static_cast<int>(PaymentItemType::Service), QStringLiteral("УСЛУГА")},
        {static_cast<int>(PaymentItemType::Payment), QStringLiteral("ПЛАТЕЖ")},
        {static_cast<int>(PaymentItemType::AgentCommission),
         QStringLiteral("АГЕНТСКОЕ ВОЗНАГРАЖДЕНИЕ")},
        {static_cast<int>(PaymentItemType::Payout), QStringLiteral("ВЫПЛАТА")}};
    return names.value(value, QStringLiteral("ПРЕДМЕТ РАСЧЕТА %1").arg(value));
}

QString method(int value)
{
    static const QStringList names{QStringLiteral("ПРЕДОПЛАТА 100%"),
                                   QStringLiteral("ПРЕДОПЛАТА"),
                                   QStringLiteral("АВАНС"),
                                   QStringLiteral("ПОЛНЫЙ РАСЧЕТ"),
                                   QStringLiteral("ЧАСТИЧНЫЙ РАСЧЕТ И КРЕДИТ"),
                                   QStringLiteral("ПЕРЕДАЧА В КРЕДИТ"),
                                   QStringLiteral("ОПЛАТА КРЕДИТА")};
    return names.value(value - 1, QStringLiteral("СПОСОБ РАСЧЕТА %1").arg(value));
}

QString agentSign(int value)
{
    switch (static_cast<AgentFlag>(value)) {
    case AgentFlag::None:
        return QString();
    case AgentFlag::BankPayAgent:
        return QStringLiteral("БАНК. ПЛ. АГЕНТ");
    case AgentFlag::BankPaySubagent:
        return QStringLiteral("БАНК. ПЛ. СУБАГЕНТ");
    case AgentFlag::PayAgent:
        return QStringLiteral("ПЛ. АГЕНТ");
    case AgentFlag::PaySubagent:
        return QStringLiteral("ПЛ. СУБАГЕНТ");
    case AgentFlag::Attorney:
        return QStringLiteral("ПОВЕРЕННЫЙ");
    case AgentFlag::CommissionAgent:
        return QStringLiteral("КОМИССИОНЕР");
    case AgentFlag::OtherAgent:
        return QStringLiteral("АГЕНТ");
    }
    return QString::number(value);
}

/// Prints a name and its value unless the value is empty.
void named(ReceiptTape *tape, const QString &name, const QString &value, int indent = 0)
{
    if (!value.isEmpty())
        tape->columns(name, value, indent);
}

void printAgent(ReceiptTape *tape, const QVariantMap &line)
{
    const QString sign = agentSign(number(line, FiscalTag::ItemAgentSign));
    if (sign.isEmpty())
        return;
    tape->left(sign, 2);
    const QVariantMap agent = line.value(FiscalTag::key(FiscalTag::AgentData)).toMap();
    const QVariantMap supplier = line.value(FiscalTag::key(FiscalTag::SupplierData)).toMap();
    named(tape, QStringLiteral("ОП. АГЕНТА"), text(agent, FiscalTag::BankAgentOperation), 2);
    named(tape, QStringLiteral("ТЛФ. ПЛ. АГЕНТА"), phones(agent, FiscalTag::PayAgentPhone), 2);
    named(tape, QStringLiteral("ТЛФ. ОП. ПР. ПЛАТЕЖА"), phones(agent, FiscalTag::PayOperatorPhone),
          2);
    named(tape, QStringLiteral("ОП. ПЕРЕВОДА"), text(agent, FiscalTag::TransferOperatorName), 2);
    named(tape, QStringLiteral("ИНН ОП. ПЕРЕВОДА"), text(agent, FiscalTag::TransferOperatorInn), 2);
    named(tape, QStringLiteral("АДР. ОП. ПЕРЕВОДА"),
          text(agent, FiscalTag::TransferOperatorAddress), 2);
    named(tape, QStringLiteral("ТЛФ. ОП. ПЕРЕВОДА"),
          phones(agent, FiscalTag::TransferOperatorPhone), 2);
    named(tape, QStringLiteral("ПОСТАВЩИК"), text(supplier, FiscalTag::SupplierName), 2);
    named(tape, QStringLiteral("ТЛФ. ПОСТАВЩИКА"), phones(supplier, FiscalTag::SupplierPhone), 2);
    named(tape, QStringLiteral("ИНН ПОСТАВЩИКА"), text(line, FiscalTag::SupplierInn), 2);
}

void printLine(ReceiptTape *tape, const QVariantMap &line, int position)
{
    const QString name = text(line, FiscalTag::ItemName);
    const int how = number(line, FiscalTag::CalculationMethod);
    tape->left(QStringLiteral("%1. %2").arg(QString::number(position),
                                            name.isEmpty() ? method(how) : name));
    tape->columns(
        QStringLiteral("%1 x %2").arg(text(line, FiscalTag::Quantity), sum(line, FiscalTag::Price)),
        QLatin1Char('=') + sum(line, FiscalTag::ItemCost));
    tape->left(vatRate(number(line, FiscalTag::VatRate)), 2);
    tape->left(
        QStringLiteral("%1, %2").arg(itemType(number(line, FiscalTag::ItemType)), method(how)), 2);
    printAgent(tape, line);
}

void printHeading(ReceiptTape *tape, const QVariantMap &document)
{
    tape->centered(QStringLiteral("КАССОВЫЙ ЧЕК"));
    tape->centered(settlementSign(number(document, FiscalTag::SettlementSign)));
    const QVariantMap attribute = document.value(FiscalTag::key(FiscalTag::UserAttribute)).toMap();
    named(tape, text(attribute, FiscalTag::UserAttributeName),
          text(attribute, FiscalTag::UserAttributeValue));
    const QStringList printable = document.value(QStringLiteral("printable")).toStringList();
    for (const QString &line : printable) {
        const int tab = line.indexOf(QLatin1Char('\t'));
        if (tab < 0)
            tape->left(line);
        else
            tape->columns(line.left(tab), line.mid(tab + 1));
    }
}

void printTotals(ReceiptTape *tape, const QVariantMap &document)
{
    tape->rule();
    tape->columns(QStringLiteral("ИТОГ"), QLatin1Char('=') + sum(document, FiscalTag::Total));
    tape->columns(QStringLiteral("НАЛИЧНЫМИ"),
                  QLatin1Char('=') + sum(document, FiscalTag::CashSum));
    tape->columns(QStringLiteral("БЕЗНАЛИЧНЫМИ"),
                  QLatin1Char('=') + sum(document, FiscalTag::CashlessSum));
    tape->rule();
    named(tape, QStringLiteral("СНО"), taxSystem(number(document, FiscalTag::TaxSystem)));
    named(tape, QStringLiteral("ПОКУПАТЕЛЬ"), text(document, FiscalTag::Buyer));
    named(tape, QStringLiteral("ИНН ПОКУПАТЕЛЯ"), text(document, FiscalTag::BuyerInn));
    named(tape, QStringLiteral("ТЛФ./ПОЧТА ПОКУПАТЕЛЯ"), text(document, FiscalTag::ClientContact));
    named(tape, QStringLiteral("КАССИР"), text(document, FiscalTag::Cashier));
    named(tape, QStringLiteral("ИНН"), text(document, FiscalTag::UserInn));
    named(tape, QStringLiteral("РН ККТ"), text(document, FiscalTag::RegisterNumber));
}

void printFiscal(ReceiptTape *tape, const QVariantMap &data)
{
    const QDateTime time =
        QDateTime::fromString(data.value(FiscalData::TIME).toString(), Qt::ISODate);
    tape->columns(QStringLiteral("СМЕНА %1").arg(data.value(FiscalData::SHIFT).toString()),
                  QStringLiteral("ЧЕК %1").arg(data.value(FiscalData::RECEIPT).toString()));
    tape->columns(QStringLiteral("ДАТА"), time.toString(QStringLiteral("dd.MM.yyyy HH:mm")));
    tape->columns(QStringLiteral("ФН"), data.value(FiscalData::STORAGE).toString());
    tape->columns(QStringLiteral("ФД"), data.value(FiscalData::NUMBER).toString());
    tape->columns(QStringLiteral("ФП"), data.value(FiscalData::SIGN).toString());
}

} // namespace

ReceiptText::ReceiptText(const QVariantMap &document, const QVariantMap &data)
    : m_qr(data.value(FiscalData::QR).toString())
{
    ReceiptTape tape(WIDTH);
    printHeading(&tape, document);
    tape.rule();
    const QVariantList items = document.value(FiscalTag::key(FiscalTag::Item)).toList();
    for (int i = 0; i < items.size(); ++i)
        printLine(&tape, items.at(i).toMap(), i + 1);
    printTotals(&tape, document);
    if (!data.isEmpty())
        printFiscal(&tape, data);
    m_lines = tape.lines();
}

QString ReceiptText::text() const
{
    return m_lines.join(QLatin1Char('\n'));
}
