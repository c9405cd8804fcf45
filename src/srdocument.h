#pragma once

#include "srobject.h"
#include "srservice.h"

#include <basixcore/currency.h>
#include <basixcore/fixnumber.h>
#include <molvacore/payment.h>
#include <molvacore/provider.h>

#include <QCoreApplication>
#include <QList>
#include <QMap>

/// One billing document of a legal entity's contract, with the services that it bills.
///
/// Setters store text and take effect only on editable fields; money has two decimals.
class SrDocument final : public SrObject
{
    Q_DECLARE_TR_FUNCTIONS(SrDocument)

public:
    static const QString FIELD_SERVICES;
    static const QString FIELD_ID;
    static const QString FIELD_NUM;
    static const QString FIELD_CHARGE;
    static const QString FIELD_TOPAY;
    static const QString FIELD_DISTRIBUTED;
    static const QString FIELD_REMAINDER;

    /// The services only, as one { "name": "services", "paramList": [...] }; the document's own
    /// fields do not travel.
    QVariantList toPayParamsList() const override;
    /// Reads a full description. What was read is written to the log: it is the only trace of an
    /// answer with documents.
    void parseCheckList(const QVariantList &list) override;
    /// Reads the short format, in which the account's description is that of its only document: the
    /// document's id, number and the field for the amount to pay are added, "debt" becomes the
    /// amount due, other fields of the account are dropped.
    void parseSingleDocFormat(const QString &docNumber, const QVariantList &list);

    qint64 id() const;
    void setId(qint64 id);
    QString docNumber() const;
    /// Stores the number trimmed; the short format makes the number read-only, so there it does
    /// nothing.
    void setDocNumber(const QString &docNumber);
    basix::FixNumber charge() const;
    void setCharge(const basix::FixNumber &charge);
    basix::FixNumber topay() const;
    void setTopay(const basix::FixNumber &topay);
    basix::FixNumber distributed() const;
    void setDistributed(const basix::FixNumber &distributed);
    QList<SrService> services() const { return m_services; }
    void setServices(const QList<SrService> &services) { m_services = services; }

    /// Has services and a number that is not blank.
    bool isValid() const;
    /// May be paid as distributed: nothing is negative, and something is distributed if any service
    /// has an amount due.
    bool isReady() const;
    /// What the services were assigned.
    basix::FixNumber amount() const;
    /// Assigns to every service its amount due.
    void calcByDebt();
    /// Assigns nothing to every service.
    void cleanDebt();

    /// Billing's titles of id, number, charge, amount due and amount to pay by field name.
    QMap<QString, QString> titles() const;
    /// Column titles of a table of documents: those of the first service, with this document's
    /// title of the number.
    QMap<QString, QString> modelTitles() const;
    /// toPayParamsList() as compact JSON.
    QString toJsonParamsList() const;
    /// The payment of amount() for this document alone, with its own copy of the provider's
    /// parameters. `account` is the contract's number, `qrcode` the text of the receipt's QR code.
    Payment createPay(Provider provider, const QString &account, const QString &qrcode,
                      const basix::Currency &currency) const;

    /// A fragment for the account's document: heading and table of services.
    QString toHtml() const;
    QString toSummaryHtml() const;
    /// Puts toHtml() below the lines of `document`.
    void appendHtml(QString &document) const;

    bool operator==(const SrDocument &other) const;
    bool operator!=(const SrDocument &other) const { return !(*this == other); }

private:
    QList<SrService> m_services;
};
