#pragma once

#include <molvacore/molvacore_global.h>

#include <QMetaType>
#include <QString>

/// A named value that a payment to a provider carries, such as "account".
class MOLVACORE_EXPORT ProviderParameter
{
public:
    ProviderParameter() = default;
    ProviderParameter(const QString &name, const QString &title, const QString &value = QString());

    QString name() const { return m_name; }
    void setName(const QString &name) { m_name = name; }
    QString title() const { return m_title; }
    void setTitle(const QString &title) { m_title = title; }
    QString value() const { return m_value; }
    void setValue(const QString &value) { m_value = value; }

    friend bool operator==(const ProviderParameter &a, const ProviderParameter &b)
    {
        return a.m_name == b.m_name && a.m_title == b.m_title && a.m_value == b.m_value;
    }
    friend bool operator!=(const ProviderParameter &a, const ProviderParameter &b)
    {
        return !(a == b);
    }

private:
    QString m_name;
    QString m_title;
    QString m_value;
};

Q_DECLARE_METATYPE(ProviderParameter)
