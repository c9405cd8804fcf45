#include <molvacore/agentdata.h>

#include <tuple>

class AgentData::Data : public QSharedData
{
public:
    QString paymentAgengOperation;
    QString paymentAgengPhone;
    QString paymentOperatorPhone;
    QString transferOperatorAddress;
    QString transferOperatorInn;
    QString transferOperatorName;
    QString transferOperatorPhone;

    auto tied() const
    {
        return std::tie(paymentAgengOperation, paymentAgengPhone, paymentOperatorPhone,
                        transferOperatorAddress, transferOperatorInn, transferOperatorName,
                        transferOperatorPhone);
    }
};

// Most lines of a receipt have no agent: they share one empty record.
AgentData::AgentData()
{
    static const QSharedDataPointer<Data> empty(new Data);
    m_data = empty;
}

AgentData::AgentData(const AgentData &other) = default;
AgentData &AgentData::operator=(const AgentData &other) = default;
AgentData::~AgentData() = default;

QString AgentData::paymentAgengOperation() const
{
    return m_data->paymentAgengOperation;
}

void AgentData::setPaymentAgengOperation(const QString &paymentAgengOperation)
{
    m_data->paymentAgengOperation = paymentAgengOperation;
}

QString AgentData::paymentAgengPhone() const
{
    return m_data->paymentAgengPhone;
}

void AgentData::setPaymentAgengPhone(const QString &paymentAgengPhone)
{
    m_data->paymentAgengPhone = paymentAgengPhone;
}

QString AgentData::paymentOperatorPhone() const
{
    return m_data->paymentOperatorPhone;
}

void AgentData::setPaymentOperatorPhone(const QString &paymentOperatorPhone)
{
    m_data->paymentOperatorPhone = paymentOperatorPhone;
}

QString AgentData::transferOperatorAddress() const
{
    return m_data->transferOperatorAddress;
}

void AgentData::setTransferOperatorAddress(const QString &transferOperatorAddress)
{
    m_data->transferOperatorAddress = transferOperatorAddress;
}

QString AgentData::transferOperatorInn() const
{
    return m_data->transferOperatorInn;
}

void AgentData::setTransferOperatorInn(const QString &transferOperatorInn)
{
    m_data->transferOperatorInn = transferOperatorInn;
}

QString AgentData::transferOperatorName() const
{
    return m_data->transferOperatorName;
}

void AgentData::setTransferOperatorName(const QString &transferOperatorName)
{
    m_data->transferOperatorName = transferOperatorName;
}

QString AgentData::transferOperatorPhone() const
{
    return m_data->transferOperatorPhone;
}

void AgentData::setTransferOperatorPhone(const QString &transferOperatorPhone)
{
    m_data->transferOperatorPhone = transferOperatorPhone;
}

bool AgentData::isEmpty() const
{
    return *this == AgentData();
}

bool AgentData::operator==(const AgentData &other) const
{
    return m_data == other.m_data || m_data->tied() == other.m_data->tied();
}
