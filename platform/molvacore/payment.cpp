#include <molvacore/payment.h>

#include <tuple>

class Payment::Data : public QSharedData
{
public:
    QDateTime created;
    QString account;
    qint64 currencyId = 0;
    basix::FixNumber summ;
    Provider provider;

    auto tied() const { return std::tie(created, account, currencyId, provider); }
};

Payment::Payment() : m_data(new Data) {}

Payment::Payment(const Payment &other) = default;
Payment &Payment::operator=(const Payment &other) = default;
Payment::~Payment() = default;

QDateTime Payment::created() const
{
    return m_data->created;
}

void Payment::setCreated(const QDateTime &created)
{
    m_data->created = created;
}

QString Payment::account() const
{
    return m_data->account;
}

void Payment::setAccount(const QString &account)
{
    m_data->account = account;
}

qint64 Payment::currencyId() const
{
    return m_data->currencyId;
}

void Payment::setCurrencyId(qint64 currencyId)
{
    m_data->currencyId = currencyId;
}

basix::FixNumber Payment::summ() const
{
    return m_data->summ;
}

void Payment::setSumm(const basix::FixNumber &summ)
{
    m_data->summ = summ;
}

Provider Payment::providerData() const
{
    return m_data->provider;
}

void Payment::setProviderData(const Provider &provider, bool withParameters)
{
    m_data->provider = provider;
    if (!withParameters)
        m_data->provider.setParameters({});
}

bool Payment::isEmpty() const
{
    return *this == Payment();
}

bool Payment::operator==(const Payment &other) const
{
    return m_data == other.m_data
        || (m_data->tied() == other.m_data->tied() && m_data->summ.isIdentical(other.m_data->summ));
}
