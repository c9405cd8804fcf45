#pragma once

#include "sraccount.h"
#include "srcounter.h"
#include "srservice.h"

#include <molvacore/checkoperation.h>

#include <QCoreApplication>
#include <QList>

/// The personal account of an individual: billed services and water meters.
class SrPersonalAccount final : public SRAccount
{
    Q_DECLARE_TR_FUNCTIONS(SrPersonalAccount)

public:
    /// Services and meters, each as { "name", "paramList" }; the header does not travel.
    QVariantList toPayParamsList() const override;
    /// Replaces header, services and meters; what was entered on the pages stays.
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
    PayPack createPack(Provider provider, const QVariantList &fiscalProperties,
                       const basix::Currency &currency, const basix::FixNumber &card,
                       const basix::FixNumber &cash) const override;

    QList<SrService> services() const { return m_services; }
    void setServices(const QList<SrService> &services) { m_services = services; }
    QList<SrCounter> counters() const { return m_counters; }
    void setCounters(const QList<SrCounter> &counters) { m_counters = counters; }
    /// "MM-YYYY"
    QString period() const { return m_period; }
    void setPeriod(const QString &period) { m_period = period; }
    QString docNumber() const { return m_docNumber; }
    void setDocNumber(const QString &docNumber) { m_docNumber = docNumber; }
    /// The amount that was proposed when the payment started.
    basix::FixNumber startAmount() const { return m_startAmount; }
    void setStartAmount(const basix::FixNumber &startAmount) { m_startAmount = startAmount; }
    /// Where the electronic receipt goes; the setter normalises it and logs both forms.
    QString clientPhoneOrEmail() const { return m_clientPhoneOrEmail; }
    void setClientPhoneOrEmail(const QString &phoneOrEmail);

    /// The receipt address takes no part: it says nothing about what is paid.
    bool operator==(const SrPersonalAccount &other) const;
    bool operator!=(const SrPersonalAccount &other) const { return !(*this == other); }

private:
    CheckOperation createOperation(const QSharedPointer<Provider> &provider,
                                   const OnlineKkmInfo &kkm, const SrService &service) const;
    CheckOperation createOperation(const QSharedPointer<Provider> &provider,
                                   const OnlineKkmInfo &kkm, const basix::FixNumber &amount) const;
    CheckOperation formatOperation(const QSharedPointer<Provider> &provider,
                                   const OnlineKkmInfo &kkm, CheckOperation &operation) const;
    QStringList printableLines() const;
    QString htmlHeader() const;

    QList<SrService> m_services;
    QString m_period;
    QString m_docNumber;
    basix::FixNumber m_startAmount{100, 0};
    QString m_clientPhoneOrEmail;
    QList<SrCounter> m_counters;
};
