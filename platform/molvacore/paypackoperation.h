#pragma once

#include <molvacore/fiscaltypes.h>
#include <molvacore/molvacore_global.h>

#include <basixcore/currency.h>
#include <basixcore/fixnumber.h>

#include <QMetaType>
#include <QString>

/// Money that came in with a pack: in cash or by card.
class MOLVACORE_EXPORT PayPackOperation
{
public:
    PayPackOperation() = default;
    PayPackOperation(MoneyType moneyType, const basix::FixNumber &sum,
                     const basix::Currency &currency, const QString &details = QString());

    MoneyType moneyType() const { return m_moneyType; }
    void setMoneyType(MoneyType moneyType) { m_moneyType = moneyType; }
    basix::FixNumber sum() const { return m_sum; }
    void setSum(const basix::FixNumber &sum) { m_sum = sum; }
    basix::Currency currency() const { return m_currency; }
    void setCurrency(const basix::Currency &currency) { m_currency = currency; }
    /// What is known of a card operation, such as its slip; may be empty.
    QString details() const { return m_details; }
    void setDetails(const QString &details) { m_details = details; }

    friend bool operator==(const PayPackOperation &a, const PayPackOperation &b)
    {
        return a.m_moneyType == b.m_moneyType && a.m_sum.isIdentical(b.m_sum)
            && a.m_currency == b.m_currency && a.m_details == b.m_details;
    }
    friend bool operator!=(const PayPackOperation &a, const PayPackOperation &b)
    {
        return !(a == b);
    }

private:
    MoneyType m_moneyType = MoneyType::Cash;
    basix::FixNumber m_sum;
    basix::Currency m_currency;
    QString m_details;
};

Q_DECLARE_METATYPE(PayPackOperation)
