#pragma once

#include "srobject.h"

#include <basixcore/currency.h>
#include <basixcore/fixnumber.h>
#include <molvacore/check.h>
#include <molvacore/onlinekkminfo.h>
#include <molvacore/paypack.h>
#include <molvacore/provider.h>

#include <QSharedPointer>
#include <QString>

/// What billing returns for one account or contract: the payer's header here, services, meters or
/// documents in the two accounts that derive from it. The pages of both wizards work on it through
/// this interface.
///
/// Setters of header fields take effect only where billing marked the field editable; money has two
/// decimals.
class SRAccount : public SrObject
{
public:
    static const QString FIELD_SERVICES;
    static const QString FIELD_COUNTERS;
    static const QString FIELD_FIO;
    static const QString FIELD_ADDRESS;
    static const QString FIELD_CHARGE;
    static const QString FIELD_DEBT;
    static const QString FIELD_REMAINDER;
    static const QString FIELD_INN;
    static const QString FIELD_TAX;

    /// Has something to be paid for.
    virtual bool isValid() const = 0;
    virtual bool isLegal() const = 0;

    /// The payer's full name.
    virtual QString fio() const;
    virtual void setFio(const QString &fio);
    virtual QString address() const;
    virtual void setAddress(const QString &address);
    virtual basix::FixNumber charge() const;
    virtual void setCharge(const basix::FixNumber &charge);
    virtual basix::FixNumber debt() const;
    virtual void setDebt(const basix::FixNumber &debt);
    /// The part of the payment that no service takes.
    virtual basix::FixNumber remainder() const;
    virtual void setRemainder(const basix::FixNumber &remainder);
    virtual basix::FixNumber tax() const;
    virtual void setTax(const basix::FixNumber &tax);
    /// Taxpayer number.
    virtual QString inn() const;
    virtual void setInn(const QString &inn);

    /// The sum to pay, as distributed now.
    virtual basix::FixNumber amount() const = 0;
    /// The account for preview and print, before and after the distribution.
    virtual QString toHtml() const = 0;
    virtual QString toSummaryHtml() const = 0;
    /// toPayParamsList() as compact JSON.
    virtual QString toJsonParamsList() const;
    /// A copy that shares nothing that can be changed; the pointer owns it.
    virtual QSharedPointer<SRAccount> clone() const = 0;
    /// The fiscal receipt of the payment; the provider is not null. `card` and `cash` are what was
    /// taken each way and add up to amount(). The cashier and the register's data are read from the
    /// host's database.
    virtual Check createCheck(const QSharedPointer<Provider> &provider, const OnlineKkmInfo &kkm,
                              const basix::FixNumber &card, const basix::FixNumber &cash,
                              bool withBuyer) const = 0;
    /// The pack to be posted; `fiscalProperties` are those of the printed receipt.
    virtual PayPack createPack(Provider provider, const QVariantList &fiscalProperties,
                               const basix::Currency &currency, const basix::FixNumber &card,
                               const basix::FixNumber &cash) const = 0;

    /// What the cashier entered, without surrounding white space.
    QString accountNumber() const { return m_accountNumber; }
    void setAccountNumber(const QString &accountNumber)
    {
        m_accountNumber = accountNumber.trimmed();
    }

    bool operator==(const SRAccount &other) const;
    bool operator!=(const SRAccount &other) const { return !(*this == other); }

private:
    QString m_accountNumber;
};
