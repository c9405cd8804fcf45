#pragma once

#include <molvacore/molvacore_global.h>
#include <molvacore/provider.h>

#include <basixcore/fixnumber.h>

#include <QDateTime>
#include <QMetaType>
#include <QSharedDataPointer>
#include <QString>

/// One payment to one provider.
class MOLVACORE_EXPORT Payment
{
public:
    Payment();
    Payment(const Payment &other);
    Payment &operator=(const Payment &other);
    ~Payment();

    /// A copy of the record, with its own parameters.
    Provider providerData() const;
    /// Without parameters the record is stored with an empty list of them.
    void setProviderData(const Provider &provider, bool withParameters);

    /// Nothing was ever set: the payment equals a default-constructed one.
    bool isEmpty() const;

    QDateTime created() const;
    void setCreated(const QDateTime &created);
    /// The payer's account or contract at the provider.
    QString account() const;
    void setAccount(const QString &account);
    /// Number of the currency in ISO 4217.
    qint64 currencyId() const;
    void setCurrencyId(qint64 currencyId);
    basix::FixNumber summ() const;
    void setSumm(const basix::FixNumber &summ);

    bool operator==(const Payment &other) const;
    bool operator!=(const Payment &other) const { return !(*this == other); }

private:
    class Data;
    QSharedDataPointer<Data> m_data;
};

Q_DECLARE_METATYPE(Payment)
