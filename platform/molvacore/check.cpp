#include <molvacore/check.h>

#include <QVector>

#include <algorithm>
#include <tuple>

class Check::Data : public QSharedData
{
public:
    CheckAdditionalParameter additionalUserParameter;
    QString clientPhone;
    QString buyer;
    QString buyerInn;

    auto tied() const { return std::tie(additionalUserParameter, clientPhone, buyer, buyerInn); }
};

namespace {

constexpr int kopecksPerRouble = 100;
/// Two payments of one kopeck each, which have no payment records.
constexpr qint64 largestRemainder = 2;

qint64 kopecks(const basix::FixNumber &sum)
{
    return sum.rescaled(kopecksPerRouble).value();
}

/// FiscalTag::key() of every tag, made once.
const QString &keyOf(int tag)
{
    constexpr int firstTag = 1000;
    constexpr int count = 300;
    static const QVector<QString> keys = [] {
        QVector<QString> texts;
        texts.reserve(count);
        for (int i = 0; i < count; ++i)
            texts.append(FiscalTag::key(firstTag + i));
        return texts;
    }();
    return keys.at(tag - firstTag);
}

/// Tags have four digits and are put in ascending order wherever many are put: the place of the
/// next one is the end of the map.
void put(QVariantMap &map, int tag, const QVariant &value)
{
    map.insert(map.cend(), keyOf(tag), value);
}

void putText(QVariantMap &map, int tag, const QString &text)
{
    if (!text.isEmpty())
        put(map, tag, text);
}

/// The field of a taxpayer number is 12 characters wide; the 10 digits of an organisation are
/// padded with blanks.
void putInn(QVariantMap &map, int tag, const QString &inn)
{
    const QString trimmed = inn.trimmed();
    putText(map, tag, trimmed.size() == 10 ? trimmed.leftJustified(12) : trimmed);
}

bool isDigits(const QString &text)
{
    return !text.isEmpty() && std::all_of(text.cbegin(), text.cend(), [](QChar c) {
        return c >= QLatin1Char('0') && c <= QLatin1Char('9');
    });
}

/// "+" and digits. A national number (10 digits, or 11 with the leading 8 of domestic dialling)
/// gets the code of the country. What is no phone stays as it is.
QString asPhone(const QString &text)
{
    QString phone = text.trimmed();
    for (const QLatin1Char mark :
         {QLatin1Char(' '), QLatin1Char('('), QLatin1Char(')'), QLatin1Char('-')})
        phone.remove(mark);
    if (phone.startsWith(QLatin1Char('+')) && isDigits(phone.mid(1)))
        return phone;
    if (!isDigits(phone))
        return text.trimmed();
    if (phone.size() == 10)
        return QStringLiteral("+7") + phone;
    if (phone.size() == 11 && phone.startsWith(QLatin1Char('8')))
        return QStringLiteral("+7") + phone.mid(1);
    return QLatin1Char('+') + phone;
}

void putPhones(QVariantMap &map, int tag, const QStringList &phones)
{
    QVariantList list;
    for (const QString &text : phones) {
        const QString phone = asPhone(text);
        if (!phone.isEmpty())
            list.append(phone);
    }
    if (!list.isEmpty())
        put(map, tag, list);
}

void putMap(QVariantMap &map, int tag, const QVariantMap &nested)
{
    if (!nested.isEmpty())
        put(map, tag, nested);
}

QVariantMap agentMap(const AgentData &agent)
{
    QVariantMap map;
    if (agent.isEmpty())
        return map;
    const QLatin1Char comma(',');
    putText(map, FiscalTag::TransferOperatorAddress, agent.transferOperatorAddress());
    putInn(map, FiscalTag::TransferOperatorInn, agent.transferOperatorInn());
    putText(map, FiscalTag::TransferOperatorName, agent.transferOperatorName());
    putText(map, FiscalTag::BankAgentOperation, agent.paymentAgengOperation());
    putPhones(map, FiscalTag::PayAgentPhone, agent.paymentAgengPhone().split(comma));
    putPhones(map, FiscalTag::PayOperatorPhone, agent.paymentOperatorPhone().split(comma));
    putPhones(map, FiscalTag::TransferOperatorPhone, agent.transferOperatorPhone().split(comma));
    return map;
}

QVariantMap supplierMap(const ProviderData &provider)
{
    QVariantMap map;
    putPhones(map, FiscalTag::SupplierPhone, provider.phones());
    putText(map, FiscalTag::SupplierName, provider.name());
    return map;
}

/// Makes the maps of a receipt's lines one after the other. Lines of one receipt mostly have the
/// same agent and supplier: their maps are made once and shared.
class LineMaps
{
public:
    QVariantMap next(const CheckOperation &operation)
    {
        useAgent(operation.agent());
        useSupplier(operation.provider());

        QVariantMap map;
        put(map, FiscalTag::Quantity, operation.quantity().toString());
        putText(map, FiscalTag::ItemName, operation.itemName());
        put(map, FiscalTag::ItemCost, kopecks(operation.cost()));
        put(map, FiscalTag::Price, kopecks(operation.price()));
        if (operation.taxNumber() != 0)
            put(map, FiscalTag::VatRate, static_cast<int>(operation.taxNumber()));
        put(map, FiscalTag::ItemType, static_cast<int>(operation.itemType()));
        put(map, FiscalTag::CalculationMethod, static_cast<int>(operation.method()));
        if (operation.agentFlag() != AgentFlag::None)
            put(map, FiscalTag::ItemAgentSign, static_cast<int>(operation.agentFlag()));
        putMap(map, FiscalTag::AgentData, m_agentMap);
        putMap(map, FiscalTag::SupplierData, m_supplierMap);
        putInn(map, FiscalTag::SupplierInn, operation.providerInn());
        return map;
    }

private:
    void useAgent(const AgentData &agent)
    {
        if (agent == m_agent)
            return;
        m_agent = agent;
        m_agentMap = agentMap(agent);
    }
    void useSupplier(const ProviderData &supplier)
    {
        if (supplier == m_supplier)
            return;
        m_supplier = supplier;
        m_supplierMap = supplierMap(supplier);
    }

    AgentData m_agent;
    QVariantMap m_agentMap;
    ProviderData m_supplier;
    QVariantMap m_supplierMap;
};

void putSums(QVariantMap &map, const QList<CheckOperation> &operations,
             const QList<CheckPayment> &payments, MoneyType defaultMoneyType)
{
    basix::FixNumber total;
    for (const CheckOperation &operation : operations)
        total += basix::FixNumber(kopecksPerRouble, kopecks(operation.cost()));
    basix::FixNumber cash;
    basix::FixNumber cashless;
    const auto partOf = [&](MoneyType type) -> basix::FixNumber & {
        switch (type) {
        case MoneyType::Cash:
            return cash;
        case MoneyType::Card:
            break;
        }
        return cashless;
    };
    for (const CheckPayment &payment : payments)
        partOf(payment.moneyType()) += payment.sum();

    const basix::FixNumber uncovered = total - cash - cashless;
    if (uncovered.value() > 0 && uncovered.value() <= largestRemainder)
        partOf(defaultMoneyType) += uncovered;
    map.insert(keyOf(FiscalTag::Total), total.value());
    map.insert(keyOf(FiscalTag::CashSum), cash.value());
    map.insert(keyOf(FiscalTag::CashlessSum), cashless.value());
}

} // namespace

Check::Check() : m_data(new Data) {}

Check::Check(const Check &other) = default;
Check &Check::operator=(const Check &other) = default;
Check::~Check() = default;

CheckAdditionalParameter Check::additionalUserParameter() const
{
    return m_data->additionalUserParameter;
}

void Check::setAdditionalUserParameter(const CheckAdditionalParameter &parameter)
{
    m_data->additionalUserParameter = parameter;
}

QString Check::clientPhone() const
{
    return m_data->clientPhone;
}

void Check::setClientPhone(const QString &clientPhone)
{
    m_data->clientPhone = clientPhone;
}

QString Check::buyer() const
{
    return m_data->buyer;
}

void Check::setBuyer(const QString &buyer)
{
    m_data->buyer = buyer;
}

QString Check::buyerInn() const
{
    return m_data->buyerInn;
}

void Check::setBuyerInn(const QString &buyerInn)
{
    m_data->buyerInn = buyerInn;
}

QVariantMap Check::toDocument(bool electronicOnly, MoneyType defaultMoneyType,
                              bool withPrintableData) const
{
    QVariantMap document;
    document.insert(keyOf(FiscalTag::SettlementSign), static_cast<int>(type()));
    document.insert(keyOf(FiscalTag::TaxSystem), static_cast<int>(tax()));
    putText(document, FiscalTag::Cashier, cashier());
    const QString contact = clientPhone();
    putText(document, FiscalTag::ClientContact,
            contact.contains(QLatin1Char('@')) ? contact : asPhone(contact));
    putInn(document, FiscalTag::UserInn, userInn());
    putText(document, FiscalTag::RegisterNumber, regNumber());
    putText(document, FiscalTag::Buyer, buyer());
    putInn(document, FiscalTag::BuyerInn, buyerInn());

    QVariantMap attribute;
    putText(attribute, FiscalTag::UserAttributeName, additionalUserParameter().name());
    putText(attribute, FiscalTag::UserAttributeValue, additionalUserParameter().value());
    putMap(document, FiscalTag::UserAttribute, attribute);

    const QList<CheckOperation> lines = operations();
    QVariantList lineMaps;
    lineMaps.reserve(lines.size());
    LineMaps maps;
    for (const CheckOperation &line : lines)
        lineMaps.append(maps.next(line));
    document.insert(keyOf(FiscalTag::Item), lineMaps);
    putSums(document, lines, payments(), defaultMoneyType);

    document.insert(QStringLiteral("electronic"), electronicOnly);
    document.insert(QStringLiteral("checkType"), static_cast<int>(checkType()));
    if (withPrintableData)
        document.insert(QStringLiteral("printable"), printableData());
    return document;
}

bool Check::operator==(const Check &other) const
{
    return BaseCheck::operator==(other)
        && (m_data == other.m_data || m_data->tied() == other.m_data->tied());
}
