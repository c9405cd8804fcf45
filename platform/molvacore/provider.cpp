#include <molvacore/provider.h>

#include <algorithm>
#include <tuple>

class Provider::Data : public QSharedData
{
public:
    qint64 id = 0;
    qint64 workProviderId = 0;
    qint64 groupId = 0;
    QString checkName;
    QString name;
    QString legalName;
    QString inn;
    QString phones;

    auto tied() const
    {
        return std::tie(id, workProviderId, groupId, checkName, name, legalName, inn, phones);
    }
};

namespace {

QList<QSharedPointer<ProviderParameter>>
copied(const QList<QSharedPointer<ProviderParameter>> &parameters)
{
    QList<QSharedPointer<ProviderParameter>> copies;
    copies.reserve(parameters.size());
    for (const QSharedPointer<ProviderParameter> &parameter : parameters) {
        if (parameter)
            copies.append(QSharedPointer<ProviderParameter>::create(*parameter));
    }
    return copies;
}

} // namespace

Provider::Provider() : m_data(new Data) {}

Provider::Provider(const Provider &other)
    : m_data(other.m_data), m_parameters(copied(other.m_parameters))
{
}

Provider &Provider::operator=(const Provider &other)
{
    if (this != &other) {
        m_data = other.m_data;
        m_parameters = copied(other.m_parameters);
    }
    return *this;
}

Provider::~Provider() = default;

qint64 Provider::id() const
{
    return m_data->id;
}

void Provider::setId(qint64 id)
{
    m_data->id = id;
}

qint64 Provider::workProviderId() const
{
    return m_data->workProviderId;
}

void Provider::setWorkProviderId(qint64 workProviderId)
{
    m_data->workProviderId = workProviderId;
}

qint64 Provider::groupId() const
{
    return m_data->groupId;
}

void Provider::setGroupId(qint64 groupId)
{
    m_data->groupId = groupId;
}

QString Provider::checkName() const
{
    return m_data->checkName;
}

void Provider::setCheckName(const QString &checkName)
{
    m_data->checkName = checkName;
}

QString Provider::name() const
{
    return m_data->name;
}

void Provider::setName(const QString &name)
{
    m_data->name = name;
}

QString Provider::legalName() const
{
    return m_data->legalName;
}

void Provider::setLegalName(const QString &legalName)
{
    m_data->legalName = legalName;
}

QString Provider::inn() const
{
    return m_data->inn;
}

void Provider::setInn(const QString &inn)
{
    m_data->inn = inn;
}

QString Provider::phones() const
{
    return m_data->phones;
}

void Provider::setPhones(const QString &phones)
{
    m_data->phones = phones;
}

void Provider::setParameters(const QList<QSharedPointer<ProviderParameter>> &parameters)
{
    m_parameters = copied(parameters);
}

void Provider::addParameter(const ProviderParameter &parameter)
{
    m_parameters.append(QSharedPointer<ProviderParameter>::create(parameter));
}

bool Provider::operator==(const Provider &other) const
{
    return (m_data == other.m_data || m_data->tied() == other.m_data->tied())
        && std::equal(m_parameters.cbegin(), m_parameters.cend(), other.m_parameters.cbegin(),
                      other.m_parameters.cend(),
                      [](const auto &a, const auto &b) { return *a == *b; });
}
