#include <molvacore/providerparameter.h>

ProviderParameter::ProviderParameter(const QString &name, const QString &title,
                                     const QString &value)
    : m_name(name), m_title(title), m_value(value)
{
}
