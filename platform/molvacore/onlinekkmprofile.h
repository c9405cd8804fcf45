#pragma once

#include <molvacore/molvacore_global.h>
#include <molvacore/onlinekkminfo.h>

#include <QMap>
#include <QMetaType>
#include <QSharedDataPointer>
#include <QString>

/// A profile of online cash registers: one record for all payments, with exceptions for groups and
/// single providers.
class MOLVACORE_EXPORT OnlineKkmProfile
{
public:
    OnlineKkmProfile();
    OnlineKkmProfile(const OnlineKkmProfile &other);
    OnlineKkmProfile &operator=(const OnlineKkmProfile &other);
    ~OnlineKkmProfile();

    bool isValid() const { return id() > 0; }

    /// The record of the provider if there is one, else that of its group, else the profile's
    /// default.
    OnlineKkmInfo getKkmInfo(qint64 groupId, qint64 providerId) const;

    OnlineKkmInfo defaultKkmInfo() const;
    void setDefaultKkmInfo(const OnlineKkmInfo &info);
    QMap<qint64, OnlineKkmInfo> groupKkmInfos() const;
    void setGroupKkmInfo(qint64 groupId, const OnlineKkmInfo &info);
    QMap<qint64, OnlineKkmInfo> providerKkmInfos() const;
    void setProviderKkmInfo(qint64 providerId, const OnlineKkmInfo &info);

    qint64 id() const;
    void setId(qint64 id);
    QString name() const;
    void setName(const QString &name);

    bool operator==(const OnlineKkmProfile &other) const;
    bool operator!=(const OnlineKkmProfile &other) const { return !(*this == other); }

private:
    class Data;
    QSharedDataPointer<Data> m_data;
};

Q_DECLARE_METATYPE(OnlineKkmProfile)
