#pragma once

#include <basixcore/fixnumber.h>

#include <QString>
#include <QVariantMap>

/// A request to the billing service, as it is sent over the host's bus and kept until its answer
/// comes.
class SRRequest
{
public:
    enum ERequestType : int {
        NoRequest = 0,
        AccountData = 1, ///< the data of an account or contract
    };

    /// Destination of every request on the bus.
    static const QString DESTINATION;
    /// "msgType" of the messages that answer requests.
    static const QString REPLY;
    /// Billing's function code of an account data request.
    static const QString GET_DATA;

    ERequestType type() const { return m_type; }
    void setType(const ERequestType &type) { m_type = type; }
    QString function() const { return m_function; }
    void setFunction(const QString &function) { m_function = function; }
    /// Decimal text of a signed 64-bit number; answers carry it back.
    QString uid() const { return m_uid; }
    void setUid(const QString &uid) { m_uid = uid; }
    QMap<QString, QVariant> data() const { return m_data; }
    void setData(const QMap<QString, QVariant> &data) { m_data = data; }
    /// Number of the currency in ISO 4217.
    int currencyId() const { return m_currencyId; }
    void setCurrencyId(const int &currencyId) { m_currencyId = currencyId; }
    /// Provider::workProviderId().
    qint64 providerId() const { return m_providerId; }
    void setProviderId(const qint64 &providerId) { m_providerId = providerId; }
    /// The amount that the payer plans to pay; zero when not given.
    basix::FixNumber sum() const { return m_sum; }
    void setSum(const basix::FixNumber &sum) { m_sum = sum; }

    /// Has a type, a function and a uid.
    bool isValid() const;
    /// Gives the request a fresh uid; call it after everything else is set. `boxId` is
    /// BoxInfo::boxId().
    void generateUid(qint64 boxId);
    /// The body of the message: the data and, over keys of the same name, what identifies the
    /// request. "summ" is there only for a positive sum. Billing relies on the types: "providerId"
    /// has 64 bits, "currencyId" is an int, "summ" a double.
    QVariantMap toMap() const;

    bool operator==(const SRRequest &other) const;
    bool operator!=(const SRRequest &other) const { return !(*this == other); }

private:
    ERequestType m_type = NoRequest;
    QString m_function;
    QString m_uid;
    QMap<QString, QVariant> m_data;
    int m_currencyId = 0;
    qint64 m_providerId = 0;
    basix::FixNumber m_sum;
};
