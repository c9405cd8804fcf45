#pragma once

#include <molvacore/molvacore_global.h>

#include <QMetaType>
#include <QString>

/// The receipt profile of a box.
class MOLVACORE_EXPORT PaymentCheckProfile
{
public:
    /// An invalid profile: id 0, no name.
    PaymentCheckProfile() = default;
    PaymentCheckProfile(qint64 id, const QString &name);

    bool isValid() const { return m_id > 0; }
    qint64 id() const { return m_id; }
    void setId(qint64 id) { m_id = id; }
    QString name() const { return m_name; }
    void setName(const QString &name) { m_name = name; }

    friend bool operator==(const PaymentCheckProfile &a, const PaymentCheckProfile &b)
    {
        return a.m_id == b.m_id && a.m_name == b.m_name;
    }
    friend bool operator!=(const PaymentCheckProfile &a, const PaymentCheckProfile &b)
    {
        return !(a == b);
    }

private:
    qint64 m_id = 0;
    QString m_name;
};

Q_DECLARE_METATYPE(PaymentCheckProfile)
