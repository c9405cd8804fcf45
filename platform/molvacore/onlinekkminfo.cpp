#include <molvacore/onlinekkminfo.h>

#include <tuple>

class OnlineKkmInfo::Data : public QSharedData
{
public:
    QString additionalProp;
    QString additionalPropValue;
    FDTax taxSystem = FDTax::General;
    unsigned char taxRate = 0;
    PaymentMethod defaultCalcType = PaymentMethod::FullPayment;
    AgentFlag agentSign = AgentFlag::None;
    QString payAgentOp;
    QString payAgentPhone;
    QString payOperatorPhone;
    QString transferOperatorAddress;
    QString transferOperatorInn;
    QString transferOperatorName;
    QString transferOperatorPhone;

    auto tied() const
    {
        return std::tie(additionalProp, additionalPropValue, taxSystem, taxRate, defaultCalcType,
                        agentSign, payAgentOp, payAgentPhone, payOperatorPhone,
                        transferOperatorAddress, transferOperatorInn, transferOperatorName,
                        transferOperatorPhone);
    }
};

OnlineKkmInfo::OnlineKkmInfo() : m_data(new Data) {}

OnlineKkmInfo::OnlineKkmInfo(const OnlineKkmInfo &other) = default;
OnlineKkmInfo &OnlineKkmInfo::operator=(const OnlineKkmInfo &other) = default;
OnlineKkmInfo::~OnlineKkmInfo() = default;

QString OnlineKkmInfo::additionalProp() const
{
    return m_data->additionalProp;
}

void OnlineKkmInfo::setAdditionalProp(const QString &additionalProp)
{
    m_data->additionalProp = additionalProp;
}

QString OnlineKkmInfo::additionalPropValue() const
{
    return m_data->additionalPropValue;
}

void OnlineKkmInfo::setAdditionalPropValue(const QString &additionalPropValue)
{
    m_data->additionalPropValue = additionalPropValue;
}

FDTax OnlineKkmInfo::taxSystem() const
{
    return m_data->taxSystem;
}

void OnlineKkmInfo::setTaxSystem(FDTax taxSystem)
{
    m_data->taxSystem = taxSystem;
}

unsigned char OnlineKkmInfo::taxRate() const
{
    return m_data->taxRate;
}

void OnlineKkmInfo::setTaxRate(unsigned char taxRate)
{
    m_data->taxRate = taxRate;
}

PaymentMethod OnlineKkmInfo::defaultCalcType() const
{
    return m_data->defaultCalcType;
}

void OnlineKkmInfo::setDefaultCalcType(PaymentMethod defaultCalcType)
{
    m_data->defaultCalcType = defaultCalcType;
}

AgentFlag OnlineKkmInfo::agentSign() const
{
    return m_data->agentSign;
}

void OnlineKkmInfo::setAgentSign(AgentFlag agentSign)
{
    m_data->agentSign = agentSign;
}

QString OnlineKkmInfo::payAgentOp() const
{
    return m_data->payAgentOp;
}

void OnlineKkmInfo::setPayAgentOp(const QString &payAgentOp)
{
    m_data->payAgentOp = payAgentOp;
}

QString OnlineKkmInfo::payAgentPhone() const
{
    return m_data->payAgentPhone;
}

void OnlineKkmInfo::setPayAgentPhone(const QString &payAgentPhone)
{
    m_data->payAgentPhone = payAgentPhone;
}

QString OnlineKkmInfo::payOperatorPhone() const
{
    return m_data->payOperatorPhone;
}

void OnlineKkmInfo::setPayOperatorPhone(const QString &payOperatorPhone)
{
    m_data->payOperatorPhone = payOperatorPhone;
}

QString OnlineKkmInfo::transferOperatorAddress() const
{
    return m_data->transferOperatorAddress;
}

void OnlineKkmInfo::setTransferOperatorAddress(const QString &transferOperatorAddress)
{
    m_data->transferOperatorAddress = transferOperatorAddress;
}

QString OnlineKkmInfo::transferOperatorInn() const
{
    return m_data->transferOperatorInn;
}

void OnlineKkmInfo::setTransferOperatorInn(const QString &transferOperatorInn)
{
    m_data->transferOperatorInn = transferOperatorInn;
}

QString OnlineKkmInfo::transferOperatorName() const
{
    return m_data->transferOperatorName;
}

void OnlineKkmInfo::setTransferOperatorName(const QString &transferOperatorName)
{
    m_data->transferOperatorName = transferOperatorName;
}

QString OnlineKkmInfo::transferOperatorPhone() const
{
    return m_data->transferOperatorPhone;
}

void OnlineKkmInfo::setTransferOperatorPhone(const QString &transferOperatorPhone)
{
    m_data->transferOperatorPhone = transferOperatorPhone;
}

bool OnlineKkmInfo::operator==(const OnlineKkmInfo &other) const
{
    return m_data == other.m_data || m_data->tied() == other.m_data->tied();
}
