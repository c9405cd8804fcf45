#pragma once

#include <molvacore/molvacore_global.h>
#include <molvacore/payment.h>
#include <molvacore/paypackoperation.h>

#include <QDateTime>
#include <QList>
#include <QMetaType>
#include <QSharedDataPointer>
#include <QVariantList>
#include <QVariantMap>

/// What one visit of a payer comes to: payments, the money for them, and the receipt.
///
/// The id is the pack's identity wherever it goes: who receives a pack takes it once per id. Copies
/// keep it.
class MOLVACORE_EXPORT PayPack
{
public:
    /// A fresh id from PaymentI64IdGenerator, created now.
    PayPack();
    PayPack(const PayPack &other);
    PayPack &operator=(const PayPack &other);
    ~PayPack();

    /// Above zero.
    qint64 id() const;
    void setId(qint64 id);
    QDateTime created() const;
    void setCreated(const QDateTime &created);

    QList<Payment> payments() const;
    void setPayments(const QList<Payment> &payments);
    void addPayment(const Payment &payment);

    QList<PayPackOperation> operations() const;
    void setOperations(const QList<PayPackOperation> &operations);
    void addCardOperations(const basix::FixNumber &sum, const basix::Currency &currency,
                           const QString &details);
    void addCashOperations(const basix::FixNumber &sum, const basix::Currency &currency);

    /// The three parts of FrHandler::doReceipt()'s result: "fiscprops", "data" and "document".
    QVariantList fiscProps() const;
    void setFiscProps(const QVariantList &fiscProps);
    QVariantMap fiscData() const;
    void setFiscData(const QVariantMap &fiscData);
    QVariantMap fiscDocument() const;
    void setFiscDocument(const QVariantMap &fiscDocument);

    /// Everything in the pack as values that JSON can hold.
    ///
    /// | Key | Value |
    /// |---|---|
    /// | "id" | text: decimal, since a JSON number does not hold 64 bits |
    /// | "created" | text: ISO 8601 with milliseconds and the offset from UTC; empty for none |
    /// | "payments" | list of maps: a payment |
    /// | "operations" | list of maps: an operation |
    /// | "fiscProps", "fiscData", "fiscDocument" | as set; what JSON cannot hold as its text |
    ///
    /// A payment: texts "created", "providerId", "workProviderId", "groupId", "providerName",
    /// "checkName", "legalName", "inn", "phones", "account"; numbers "summ" (kopecks) and
    /// "currencyId"; "parameters", a list of maps of texts "name", "title", "value".
    ///
    /// An operation: numbers "moneyType" and "sum" (kopecks), text "details", and "currency", a map
    /// of "number3", "code3", "name".
    ///
    /// Sums are hundredths; a sum with another multiplier is rounded to them. Every text can be
    /// written as UTF-8: half of a character (an unpaired surrogate) becomes "?".
    static QVariantMap packToFullMap(const PayPack &pack);
    /// The pack that packToFullMap() described, also after the map went through JSON text. `ok`
    /// (may be null) is false, and the result of no use, when something that identifies or sums the
    /// pack is missing or malformed.
    static PayPack packFromFullMap(const QVariantMap &map, bool *ok);

    bool operator==(const PayPack &other) const;
    bool operator!=(const PayPack &other) const { return !(*this == other); }

private:
    class Data;
    QSharedDataPointer<Data> m_data;
};

Q_DECLARE_METATYPE(PayPack)
