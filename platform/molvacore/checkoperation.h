#pragma once

#include <molvacore/agentdata.h>
#include <molvacore/fiscaltypes.h>
#include <molvacore/molvacore_global.h>
#include <molvacore/providerdata.h>

#include <basixcore/fixnumber.h>

#include <QMetaType>
#include <QSharedDataPointer>
#include <QString>

/// One line of a receipt (tag 1059).
class MOLVACORE_EXPORT CheckOperation
{
public:
    CheckOperation();
    CheckOperation(const CheckOperation &other);
    CheckOperation &operator=(const CheckOperation &other);
    ~CheckOperation();

    /// Tag 1043: price times quantity with the multiplier of the price, rounded to nearest, halves
    /// away from zero.
    basix::FixNumber cost() const;

    /// Tag 1030.
    QString itemName() const;
    void setItemName(const QString &itemName);
    /// Tag 1023; 1.000 in a fresh line.
    basix::FixNumber quantity() const;
    void setQuantity(const basix::FixNumber &quantity);
    /// Tag 1079: price of one unit.
    basix::FixNumber price() const;
    void setPrice(const basix::FixNumber &price);
    /// Tag 1199: the number of the VAT rate; 0 leaves the tag out.
    unsigned char taxNumber() const;
    void setTaxNumber(unsigned char taxNumber);
    /// Tag 1214.
    PaymentMethod method() const;
    void setMethod(PaymentMethod method);
    /// Tag 1212.
    PaymentItemType itemType() const;
    void setItemType(PaymentItemType itemType);
    /// Tag 1222.
    AgentFlag agentFlag() const;
    void setAgentFlag(AgentFlag agentFlag);
    /// Tag 1224: the supplier.
    ProviderData provider() const;
    void setProvider(const ProviderData &provider);
    /// Tag 1226: taxpayer number of the supplier.
    QString providerInn() const;
    void setProviderInn(const QString &providerInn);
    /// Tag 1223.
    AgentData agent() const;
    void setAgent(const AgentData &agent);

    bool operator==(const CheckOperation &other) const;
    bool operator!=(const CheckOperation &other) const { return !(*this == other); }

private:
    class Data;
    QSharedDataPointer<Data> m_data;
};

Q_DECLARE_METATYPE(CheckOperation)
