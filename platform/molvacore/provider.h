#pragma once

#include <molvacore/molvacore_global.h>
#include <molvacore/providerparameter.h>

#include <QList>
#include <QMetaType>
#include <QSharedDataPointer>
#include <QSharedPointer>
#include <QString>

/// A record of the catalogue of providers.
///
/// Copies share the plain fields but never a parameter: a copy has parameter objects of its own.
class MOLVACORE_EXPORT Provider
{
public:
    Provider();
    Provider(const Provider &other);
    Provider &operator=(const Provider &other);
    ~Provider();

    qint64 id() const;
    void setId(qint64 id);
    /// The id that the provider has at the processing centre.
    qint64 workProviderId() const;
    void setWorkProviderId(qint64 workProviderId);
    qint64 groupId() const;
    void setGroupId(qint64 groupId);
    /// The name on receipts and in window titles.
    QString checkName() const;
    void setCheckName(const QString &checkName);
    QString name() const;
    void setName(const QString &name);
    QString legalName() const;
    void setLegalName(const QString &legalName);
    QString inn() const;
    void setInn(const QString &inn);
    /// Separated by commas.
    QString phones() const;
    void setPhones(const QString &phones);

    /// The objects of this provider, in order: a value set through one of them is set in this
    /// provider and in no copy of it, whether the copy was made before or after.
    QList<QSharedPointer<ProviderParameter>> parameters() const { return m_parameters; }
    /// Replaces all parameters with copies of the given ones; null pointers are left out.
    void setParameters(const QList<QSharedPointer<ProviderParameter>> &parameters);
    /// Appends a copy; a second parameter of the same name is kept beside the first.
    void addParameter(const ProviderParameter &parameter);

    /// Parameters are compared by what they hold.
    bool operator==(const Provider &other) const;
    bool operator!=(const Provider &other) const { return !(*this == other); }

private:
    class Data;
    QSharedDataPointer<Data> m_data;
    QList<QSharedPointer<ProviderParameter>> m_parameters;
};

Q_DECLARE_METATYPE(Provider)
