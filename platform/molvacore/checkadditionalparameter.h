#pragma once

#include <molvacore/molvacore_global.h>

#include <QMetaType>
#include <QString>

/// The additional user attribute of a receipt (tag 1084): name (1085) and value (1086).
class MOLVACORE_EXPORT CheckAdditionalParameter
{
public:
    CheckAdditionalParameter() = default;
    CheckAdditionalParameter(const QString &name, const QString &value);

    QString name() const { return m_name; }
    void setName(const QString &name) { m_name = name; }
    QString value() const { return m_value; }
    void setValue(const QString &value) { m_value = value; }

    friend bool operator==(const CheckAdditionalParameter &a, const CheckAdditionalParameter &b)
    {
        return a.m_name == b.m_name && a.m_value == b.m_value;
    }
    friend bool operator!=(const CheckAdditionalParameter &a, const CheckAdditionalParameter &b)
    {
        return !(a == b);
    }

private:
    QString m_name;
    QString m_value;
};

Q_DECLARE_METATYPE(CheckAdditionalParameter)
