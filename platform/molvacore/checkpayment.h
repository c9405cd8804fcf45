#pragma once

#include <molvacore/fiscaltypes.h>
#include <molvacore/molvacore_global.h>

#include <basixcore/fixnumber.h>

#include <QMetaType>

/// A part of a receipt's total by the kind of money.
class MOLVACORE_EXPORT CheckPayment
{
public:
    CheckPayment() = default;
    CheckPayment(MoneyType moneyType, const basix::FixNumber &sum);

    MoneyType moneyType() const { return m_moneyType; }
    void setMoneyType(MoneyType moneyType) { m_moneyType = moneyType; }
    basix::FixNumber sum() const { return m_sum; }
    void setSum(const basix::FixNumber &sum) { m_sum = sum; }

    friend bool operator==(const CheckPayment &a, const CheckPayment &b)
    {
        return a.m_moneyType == b.m_moneyType && a.m_sum.isIdentical(b.m_sum);
    }
    friend bool operator!=(const CheckPayment &a, const CheckPayment &b) { return !(a == b); }

private:
    MoneyType m_moneyType = MoneyType::Cash;
    basix::FixNumber m_sum;
};

Q_DECLARE_METATYPE(CheckPayment)
