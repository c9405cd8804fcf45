#include <fiscal/fiscallinechecker.h>

#include <fiscal/fiscalfindings.h>

#include <basixcore/fixnumber.h>

#include <molvacore/fiscaltypes.h>

namespace {

/// Quantity in thousandths, or -1 for what is not a number with at most six decimals.
qint64 quantityOf(const QString &text, int *multiplier)
{
    const int point = text.indexOf(QLatin1Char('.'));
    const int decimals = point < 0 ? 0 : text.size() - point - 1;
    const QString digits = point < 0 ? text : text.left(point) + text.mid(point + 1);
    if (!FiscalFindings::isDigits(digits) || decimals > 6 || digits.size() > 15 || point == 0)
        return -1;
    *multiplier = 1;
    for (int i = 0; i < decimals; ++i)
        *multiplier *= 10;
    return digits.toLongLong();
}

} // namespace

FiscalLineChecker::FiscalLineChecker(const QVariantMap &line, int number)
    : m_line(line), m_number(number)
{
}

bool FiscalLineChecker::has(int tag) const
{
    return m_line.contains(FiscalTag::key(tag));
}

int FiscalLineChecker::number(int tag) const
{
    return m_line.value(FiscalTag::key(tag)).toInt();
}

void FiscalLineChecker::check(FiscalFindings *found)
{
    found->setPlace(QStringLiteral("строка %1").arg(m_number));
    checkName(found);
    checkArithmetic(found);
    // Rates 7 to 10 exist since 2025, 11 and 12 since 2026.
    found->integerOf(m_line, FiscalTag::VatRate, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12},
                     QStringLiteral("ставка НДС"));
    found->integerOf(m_line, FiscalTag::CalculationMethod, {1, 2, 3, 4, 5, 6, 7},
                     QStringLiteral("признак способа расчёта"));
    found->integerOf(m_line, FiscalTag::ItemType,
                     {1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12, 13, 14, 15, 16,
                      17, 18, 19, 20, 21, 22, 23, 24, 25, 26, 27, 30, 31, 32, 33},
                     QStringLiteral("признак предмета расчёта"));
    checkAgent(found);
    const int bytes = FiscalFindings::bytesOf(m_line);
    if (bytes > FiscalDocumentChecker::MAX_ITEM_BYTES) {
        found->error(FiscalTag::Item,
                     QStringLiteral("строка слишком велика: около %1 байт при допустимых %2")
                         .arg(QString::number(bytes),
                              QString::number(FiscalDocumentChecker::MAX_ITEM_BYTES)));
    }
    found->setPlace(QString());
}

void FiscalLineChecker::checkName(FiscalFindings *found) const
{
    const bool advance =
        number(FiscalTag::CalculationMethod) == static_cast<int>(PaymentMethod::Advance);
    if (!advance)
        found->required(m_line, FiscalTag::ItemName, QStringLiteral("наименование"));
    found->text(m_line, FiscalTag::ItemName, 128, QStringLiteral("наименование"));
}

void FiscalLineChecker::checkArithmetic(FiscalFindings *found)
{
    qint64 price = 0;
    const bool priced = found->required(m_line, FiscalTag::Price, QStringLiteral("цена")) &&
                        found->money(m_line, FiscalTag::Price, QStringLiteral("цена"), &price);
    const bool costed =
        found->required(m_line, FiscalTag::ItemCost, QStringLiteral("стоимость")) &&
        found->money(m_line, FiscalTag::ItemCost, QStringLiteral("стоимость"), &m_cost);
    if (!found->required(m_line, FiscalTag::Quantity, QStringLiteral("количество")))
        return;
    int multiplier = 1;
    const QString text = m_line.value(FiscalTag::key(FiscalTag::Quantity)).toString();
    const qint64 quantity = quantityOf(text, &multiplier);
    if (quantity <= 0) {
        found->error(FiscalTag::Quantity,
                     QStringLiteral("недопустимое количество «%1»").arg(text.left(40)));
        return;
    }
    if (!priced || !costed)
        return;
    // Both sides fit a long double's 64-bit mantissa for every sum that passed the checks above.
    const long double exact = static_cast<long double>(price) * quantity / multiplier;
    const long double difference = exact - static_cast<long double>(m_cost);
    if (difference > 1.0L || difference < -1.0L) {
        found->error(FiscalTag::ItemCost,
                     QStringLiteral("стоимость %1 не равна цене %2, умноженной на количество %3")
                         .arg(FiscalFindings::rubles(m_cost), FiscalFindings::rubles(price), text));
    }
}

void FiscalLineChecker::checkAgent(FiscalFindings *found) const
{
    if (!has(FiscalTag::ItemAgentSign)) {
        for (int tag : {FiscalTag::AgentData, FiscalTag::SupplierData, FiscalTag::SupplierInn}) {
            if (has(tag))
                found->error(tag,
                             QStringLiteral("данные агента или поставщика без признака агента"));
        }
        return;
    }
    found->integerOf(m_line, FiscalTag::ItemAgentSign, {1, 2, 4, 8, 16, 32, 64},
                     QStringLiteral("признак агента"));
    found->required(m_line, FiscalTag::SupplierInn, QStringLiteral("ИНН поставщика"));
    found->inn(m_line, FiscalTag::SupplierInn, QStringLiteral("ИНН поставщика"));

    const QVariantMap supplier = m_line.value(FiscalTag::key(FiscalTag::SupplierData)).toMap();
    found->required(supplier, FiscalTag::SupplierName, QStringLiteral("наименование поставщика"));
    found->text(supplier, FiscalTag::SupplierName, 256, QStringLiteral("наименование поставщика"));
    found->phones(supplier, FiscalTag::SupplierPhone, QStringLiteral("телефон поставщика"));
    if (supplier.value(FiscalTag::key(FiscalTag::SupplierPhone)).toList().isEmpty())
        found->warning(FiscalTag::SupplierPhone, QStringLiteral("нет телефона поставщика"));

    const QVariantMap agent = m_line.value(FiscalTag::key(FiscalTag::AgentData)).toMap();
    found->phones(agent, FiscalTag::PayAgentPhone, QStringLiteral("телефон платёжного агента"));
    found->phones(agent, FiscalTag::PayOperatorPhone,
                  QStringLiteral("телефон оператора по приёму платежей"));
    found->phones(agent, FiscalTag::TransferOperatorPhone,
                  QStringLiteral("телефон оператора перевода"));
    const int sign = number(FiscalTag::ItemAgentSign);
    if (sign == static_cast<int>(AgentFlag::PayAgent) ||
        sign == static_cast<int>(AgentFlag::PaySubagent))
        checkPaymentAgent(found);
    if (sign == static_cast<int>(AgentFlag::BankPayAgent) ||
        sign == static_cast<int>(AgentFlag::BankPaySubagent))
        checkBankAgent(found);
}

void FiscalLineChecker::checkPaymentAgent(FiscalFindings *found) const
{
    const QVariantMap agent = m_line.value(FiscalTag::key(FiscalTag::AgentData)).toMap();
    if (!agent.contains(FiscalTag::key(FiscalTag::PayAgentPhone)))
        found->warning(FiscalTag::PayAgentPhone, QStringLiteral("нет телефона платёжного агента"));
    if (!agent.contains(FiscalTag::key(FiscalTag::PayOperatorPhone)))
        found->warning(FiscalTag::PayOperatorPhone,
                       QStringLiteral("нет телефона оператора по приёму платежей"));
    for (int tag : {FiscalTag::BankAgentOperation, FiscalTag::TransferOperatorName,
                    FiscalTag::TransferOperatorInn, FiscalTag::TransferOperatorAddress}) {
        if (agent.contains(FiscalTag::key(tag)))
            found->error(
                tag, QStringLiteral("реквизит банковского агента при признаке платёжного агента"));
    }
}

void FiscalLineChecker::checkBankAgent(FiscalFindings *found) const
{
    const QVariantMap agent = m_line.value(FiscalTag::key(FiscalTag::AgentData)).toMap();
    found->required(agent, FiscalTag::BankAgentOperation,
                    QStringLiteral("операция банковского агента"));
    found->required(agent, FiscalTag::TransferOperatorName,
                    QStringLiteral("наименование оператора перевода"));
    found->required(agent, FiscalTag::TransferOperatorAddress,
                    QStringLiteral("адрес оператора перевода"));
    found->required(agent, FiscalTag::TransferOperatorInn,
                    QStringLiteral("ИНН оператора перевода"));
    found->text(agent, FiscalTag::BankAgentOperation, 24,
                QStringLiteral("операция банковского агента"));
    found->text(agent, FiscalTag::TransferOperatorName, 64,
                QStringLiteral("наименование оператора перевода"));
    found->text(agent, FiscalTag::TransferOperatorAddress, 256,
                QStringLiteral("адрес оператора перевода"));
    found->inn(agent, FiscalTag::TransferOperatorInn, QStringLiteral("ИНН оператора перевода"));
    if (!agent.contains(FiscalTag::key(FiscalTag::TransferOperatorPhone)))
        found->warning(FiscalTag::TransferOperatorPhone,
                       QStringLiteral("нет телефона оператора перевода"));
}
