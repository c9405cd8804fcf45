#pragma once

#include <molvacore/fiscaltypes.h>
#include <molvacore/molvacore_global.h>

#include <QMetaType>
#include <QSharedDataPointer>
#include <QString>

/// What a receipt of a provider says about taxes, the agent and the transfer operator.
///
/// Texts are empty where the profile says nothing; the receipt then leaves the tag out.
class MOLVACORE_EXPORT OnlineKkmInfo
{
public:
    OnlineKkmInfo();
    OnlineKkmInfo(const OnlineKkmInfo &other);
    OnlineKkmInfo &operator=(const OnlineKkmInfo &other);
    ~OnlineKkmInfo();

    /// Name of the additional user attribute (tag 1085).
    QString additionalProp() const;
    void setAdditionalProp(const QString &additionalProp);
    /// Value of the additional user attribute (tag 1086).
    QString additionalPropValue() const;
    void setAdditionalPropValue(const QString &additionalPropValue);
    /// Tag 1055.
    FDTax taxSystem() const;
    void setTaxSystem(FDTax taxSystem);
    /// Tag 1199: the number of the VAT rate. 0 is no rate at all, which a register refuses.
    unsigned char taxRate() const;
    void setTaxRate(unsigned char taxRate);
    /// Tag 1214.
    PaymentMethod defaultCalcType() const;
    void setDefaultCalcType(PaymentMethod defaultCalcType);
    /// Tag 1222.
    AgentFlag agentSign() const;
    void setAgentSign(AgentFlag agentSign);
    /// Tag 1044: operation of a bank payment agent.
    QString payAgentOp() const;
    void setPayAgentOp(const QString &payAgentOp);
    /// Tag 1073.
    QString payAgentPhone() const;
    void setPayAgentPhone(const QString &payAgentPhone);
    /// Tag 1074.
    QString payOperatorPhone() const;
    void setPayOperatorPhone(const QString &payOperatorPhone);
    /// Tag 1005.
    QString transferOperatorAddress() const;
    void setTransferOperatorAddress(const QString &transferOperatorAddress);
    /// Tag 1016.
    QString transferOperatorInn() const;
    void setTransferOperatorInn(const QString &transferOperatorInn);
    /// Tag 1026.
    QString transferOperatorName() const;
    void setTransferOperatorName(const QString &transferOperatorName);
    /// Tag 1075.
    QString transferOperatorPhone() const;
    void setTransferOperatorPhone(const QString &transferOperatorPhone);

    bool operator==(const OnlineKkmInfo &other) const;
    bool operator!=(const OnlineKkmInfo &other) const { return !(*this == other); }

private:
    class Data;
    QSharedDataPointer<Data> m_data;
};

Q_DECLARE_METATYPE(OnlineKkmInfo)
