#pragma once

#include <molvacore/molvacore_global.h>

#include <QMetaType>
#include <QSharedDataPointer>
#include <QString>

/// Data of the agent on a receipt line (tag 1223).
class MOLVACORE_EXPORT AgentData
{
public:
    AgentData();
    AgentData(const AgentData &other);
    AgentData &operator=(const AgentData &other);
    ~AgentData();

    /// No field is filled.
    bool isEmpty() const;

    /// Tag 1044.
    QString paymentAgengOperation() const;
    void setPaymentAgengOperation(const QString &paymentAgengOperation);
    /// Tag 1073; several phones are separated by commas, here and in the two below.
    QString paymentAgengPhone() const;
    void setPaymentAgengPhone(const QString &paymentAgengPhone);
    /// Tag 1074.
    QString paymentOperatorPhone() const;
    void setPaymentOperatorPhone(const QString &paymentOperatorPhone);
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

    bool operator==(const AgentData &other) const;
    bool operator!=(const AgentData &other) const { return !(*this == other); }

private:
    class Data;
    QSharedDataPointer<Data> m_data;
};

Q_DECLARE_METATYPE(AgentData)
