#pragma once

#include <molvacore/onlinekkminfo.h>

/// A record with every field filled; `mark` ends each text, so that records can be told apart.
inline OnlineKkmInfo sampleInfo(const QString &mark = QString())
{
    OnlineKkmInfo info;
    info.setAdditionalProp(QStringLiteral("Участок") + mark);
    info.setAdditionalPropValue(QStringLiteral("12") + mark);
    info.setTaxSystem(FDTax::SimplifiedIncome);
    info.setTaxRate(6);
    info.setDefaultCalcType(PaymentMethod::PartialPayment);
    info.setAgentSign(AgentFlag::OtherAgent);
    info.setPayAgentOp(QStringLiteral("Приём платежей") + mark);
    info.setPayAgentPhone(QStringLiteral("+74950000001") + mark);
    info.setPayOperatorPhone(QStringLiteral("+74950000002") + mark);
    info.setTransferOperatorAddress(QStringLiteral("Москва") + mark);
    info.setTransferOperatorInn(QStringLiteral("7700000000") + mark);
    info.setTransferOperatorName(QStringLiteral("Банк") + mark);
    info.setTransferOperatorPhone(QStringLiteral("+74950000003") + mark);
    return info;
}
