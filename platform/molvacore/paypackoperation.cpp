#include <molvacore/paypackoperation.h>

PayPackOperation::PayPackOperation(MoneyType moneyType, const basix::FixNumber &sum,
                                   const basix::Currency &currency, const QString &details)
    : m_moneyType(moneyType), m_sum(sum), m_currency(currency), m_details(details)
{
}
