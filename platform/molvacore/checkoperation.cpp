#include <molvacore/checkoperation.h>

#include <tuple>

class CheckOperation::Data : public QSharedData
{
public:
    QString itemName;
    basix::FixNumber quantity{1000, 1000};
    basix::FixNumber price;
    unsigned char taxNumber = 0;
    PaymentMethod method = PaymentMethod::FullPayment;
    PaymentItemType itemType = PaymentItemType::Service;
    AgentFlag agentFlag = AgentFlag::None;
    ProviderData provider;
    QString providerInn;
    AgentData agent;

    auto tied() const
    {
        return std::tie(itemName, taxNumber, method, itemType, agentFlag, provider, providerInn,
                        agent);
    }
};

CheckOperation::CheckOperation() : m_data(new Data) {}

CheckOperation::CheckOperation(const CheckOperation &other) = default;
CheckOperation &CheckOperation::operator=(const CheckOperation &other) = default;
CheckOperation::~CheckOperation() = default;

QString CheckOperation::itemName() const
{
    return m_data->itemName;
}

void CheckOperation::setItemName(const QString &itemName)
{
    m_data->itemName = itemName;
}

basix::FixNumber CheckOperation::quantity() const
{
    return m_data->quantity;
}

void CheckOperation::setQuantity(const basix::FixNumber &quantity)
{
    m_data->quantity = quantity;
}

basix::FixNumber CheckOperation::price() const
{
    return m_data->price;
}

void CheckOperation::setPrice(const basix::FixNumber &price)
{
    m_data->price = price;
}

unsigned char CheckOperation::taxNumber() const
{
    return m_data->taxNumber;
}

void CheckOperation::setTaxNumber(unsigned char taxNumber)
{
    m_data->taxNumber = taxNumber;
}

PaymentMethod CheckOperation::method() const
{
    return m_data->method;
}

void CheckOperation::setMethod(PaymentMethod method)
{
    m_data->method = method;
}

PaymentItemType CheckOperation::itemType() const
{
    return m_data->itemType;
}

void CheckOperation::setItemType(PaymentItemType itemType)
{
    m_data->itemType = itemType;
}

AgentFlag CheckOperation::agentFlag() const
{
    return m_data->agentFlag;
}

void CheckOperation::setAgentFlag(AgentFlag agentFlag)
{
    m_data->agentFlag = agentFlag;
}

ProviderData CheckOperation::provider() const
{
    return m_data->provider;
}

void CheckOperation::setProvider(const ProviderData &provider)
{
    m_data->provider = provider;
}

QString CheckOperation::providerInn() const
{
    return m_data->providerInn;
}

void CheckOperation::setProviderInn(const QString &providerInn)
{
    m_data->providerInn = providerInn;
}

AgentData CheckOperation::agent() const
{
    return m_data->agent;
}

void CheckOperation::setAgent(const AgentData &agent)
{
    m_data->agent = agent;
}

basix::FixNumber CheckOperation::cost() const
{
    return m_data->price.multiplied(m_data->quantity);
}

bool CheckOperation::operator==(const CheckOperation &other) const
{
    return m_data == other.m_data
        || (m_data->tied() == other.m_data->tied()
            && m_data->quantity.isIdentical(other.m_data->quantity)
            && m_data->price.isIdentical(other.m_data->price));
}
