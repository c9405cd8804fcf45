#include <molvacore/checkpayment.h>

CheckPayment::CheckPayment(MoneyType moneyType, const basix::FixNumber &sum)
    : m_moneyType(moneyType), m_sum(sum)
{
}
