#pragma once

#include <molvacore/molvacore_global.h>

#include <QMetaType>
#include <QString>
#include <QStringList>

/// The supplier of what a receipt line sells (tag 1224): name (1225) and phones (1171).
class MOLVACORE_EXPORT ProviderData
{
public:
    ProviderData() = default;
    ProviderData(const QString &name, const QStringList &phones);

    QString name() const { return m_name; }
    void setName(const QString &name) { m_name = name; }
    QStringList phones() const { return m_phones; }
    void setPhones(const QStringList &phones) { m_phones = phones; }
    /// No name and no phone with any text in it.
    bool isEmpty() const;

    friend bool operator==(const ProviderData &a, const ProviderData &b)
    {
        return a.m_name == b.m_name && a.m_phones == b.m_phones;
    }
    friend bool operator!=(const ProviderData &a, const ProviderData &b) { return !(a == b); }

private:
    QString m_name;
    QStringList m_phones;
};

Q_DECLARE_METATYPE(ProviderData)
