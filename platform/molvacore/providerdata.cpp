#include <molvacore/providerdata.h>

#include <algorithm>

ProviderData::ProviderData(const QString &name, const QStringList &phones)
    : m_name(name), m_phones(phones)
{
}

bool ProviderData::isEmpty() const
{
    return m_name.isEmpty()
        && std::all_of(m_phones.cbegin(), m_phones.cend(),
                       [](const QString &phone) { return phone.isEmpty(); });
}
