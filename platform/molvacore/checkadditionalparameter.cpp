#include <molvacore/checkadditionalparameter.h>

CheckAdditionalParameter::CheckAdditionalParameter(const QString &name, const QString &value)
    : m_name(name), m_value(value)
{
}
