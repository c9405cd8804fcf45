#include <molvacore/onlinekkmprofile.h>

#include <tuple>

class OnlineKkmProfile::Data : public QSharedData
{
public:
    qint64 id = 0;
    QString name;
    OnlineKkmInfo defaultInfo;
    QMap<qint64, OnlineKkmInfo> groupInfos;
    QMap<qint64, OnlineKkmInfo> providerInfos;

    auto tied() const { return std::tie(id, name, defaultInfo, groupInfos, providerInfos); }
};

OnlineKkmProfile::OnlineKkmProfile() : m_data(new Data) {}

OnlineKkmProfile::OnlineKkmProfile(const OnlineKkmProfile &other) = default;
OnlineKkmProfile &OnlineKkmProfile::operator=(const OnlineKkmProfile &other) = default;
OnlineKkmProfile::~OnlineKkmProfile() = default;

qint64 OnlineKkmProfile::id() const
{
    return m_data->id;
}

void OnlineKkmProfile::setId(qint64 id)
{
    m_data->id = id;
}

QString OnlineKkmProfile::name() const
{
    return m_data->name;
}

void OnlineKkmProfile::setName(const QString &name)
{
    m_data->name = name;
}

OnlineKkmInfo OnlineKkmProfile::getKkmInfo(qint64 groupId, qint64 providerId) const
{
    const auto provider = m_data->providerInfos.constFind(providerId);
    if (provider != m_data->providerInfos.constEnd())
        return *provider;
    return m_data->groupInfos.value(groupId, m_data->defaultInfo);
}

OnlineKkmInfo OnlineKkmProfile::defaultKkmInfo() const
{
    return m_data->defaultInfo;
}

void OnlineKkmProfile::setDefaultKkmInfo(const OnlineKkmInfo &info)
{
    m_data->defaultInfo = info;
}

QMap<qint64, OnlineKkmInfo> OnlineKkmProfile::groupKkmInfos() const
{
    return m_data->groupInfos;
}

void OnlineKkmProfile::setGroupKkmInfo(qint64 groupId, const OnlineKkmInfo &info)
{
    m_data->groupInfos.insert(groupId, info);
}

QMap<qint64, OnlineKkmInfo> OnlineKkmProfile::providerKkmInfos() const
{
    return m_data->providerInfos;
}

void OnlineKkmProfile::setProviderKkmInfo(qint64 providerId, const OnlineKkmInfo &info)
{
    m_data->providerInfos.insert(providerId, info);
}

bool OnlineKkmProfile::operator==(const OnlineKkmProfile &other) const
{
    return m_data == other.m_data || m_data->tied() == other.m_data->tied();
}
