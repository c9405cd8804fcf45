#pragma once

#include "sraccount.h"
#include "srdocument.h"

#include <molvacore/checkoperation.h>

#include <QCoreApplication>
#include <QList>

/// The contract of a legal entity: billing documents, each with its services.
///
/// For a legal entity accountNumber() is the number of the contract, and contract() is the number
/// of the billing document that the cashier entered, shown as the personal account.
class SrLegalAccount final : public SRAccount
{
    Q_DECLARE_TR_FUNCTIONS(SrLegalAccount)

public:
    static const QString FIELD_DOCUMENTS;

    /// Empty: the documents travel in the parameters of their own payments.
    QVariantList toPayParamsList() const override;
    /// Replaces header and documents. An answer in the short format becomes one document numbered
    /// contract(), which therefore has to be set before.
    void parseCheckList(const QVariantList &list) override;
    bool isValid() const override;
    bool isLegal() const override;
    basix::FixNumber amount() const override;
    QString toHtml() const override;
    QString toSummaryHtml() const override;
    QSharedPointer<SRAccount> clone() const override;
    Check createCheck(const QSharedPointer<Provider> &provider, const OnlineKkmInfo &kkm,
                      const basix::FixNumber &card, const basix::FixNumber &cash,
                      bool withBuyer) const override;
    /// One payment per document. The remainder is added to the payment only when a start amount was
    /// given and there is exactly one document.
    PayPack createPack(Provider provider, const QVariantList &fiscalProperties,
                       const basix::Currency &currency, const basix::FixNumber &card,
                       const basix::FixNumber &cash) const override;

    QString contract() const { return m_contract; }
    void setContract(const QString &contract) { m_contract = contract.trimmed(); }
    QList<SrDocument> documents() const { return m_documents; }
    void setDocuments(const QList<SrDocument> &documents) { m_documents = documents; }
    /// The amount that was proposed when the payment started.
    basix::FixNumber startAmount() const { return m_startAmount; }
    void setStartAmount(const basix::FixNumber &startAmount) { m_startAmount = startAmount; }
    /// Where the electronic receipt goes; the setter normalises it and logs both forms.
    QString clientPhoneOrEmail() const { return m_clientPhoneOrEmail; }
    void setClientPhoneOrEmail(const QString &phoneOrEmail);

    bool operator==(const SrLegalAccount &other) const;
    bool operator!=(const SrLegalAccount &other) const { return !(*this == other); }

private:
    CheckOperation createOperation(const QSharedPointer<Provider> &provider,
                                   const OnlineKkmInfo &kkm, const SrService &service) const;
    CheckOperation createOperation(const QSharedPointer<Provider> &provider,
                                   const OnlineKkmInfo &kkm, const basix::FixNumber &amount) const;
    CheckOperation formatOperation(const QSharedPointer<Provider> &provider,
                                   const OnlineKkmInfo &kkm, CheckOperation &operation) const;
    QStringList printableLines() const;
    QString htmlHeader() const;

    QString m_contract;
    QList<SrDocument> m_documents;
    basix::FixNumber m_startAmount{100, 0};
    QString m_clientPhoneOrEmail;
};
