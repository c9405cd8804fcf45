#pragma once

#include <molvacore/checkoperation.h>
#include <molvacore/checkpayment.h>
#include <molvacore/fiscaltypes.h>
#include <molvacore/molvacore_global.h>

#include <QList>
#include <QMetaType>
#include <QSharedDataPointer>
#include <QString>
#include <QStringList>

/// What every kind of receipt holds.
class MOLVACORE_EXPORT BaseCheck
{
public:
    BaseCheck();
    BaseCheck(const BaseCheck &other);
    BaseCheck &operator=(const BaseCheck &other);
    ~BaseCheck();

    void addOperation(const CheckOperation &operation);
    void addPayment(const CheckPayment &payment);

    /// Tag 1055: the tax system that the receipt falls under.
    FDTax tax() const;
    void setTax(FDTax tax);
    /// The lines, in the order of printing.
    QList<CheckOperation> operations() const;
    void setOperations(const QList<CheckOperation> &operations);
    /// Lines for the paper only; a tab separates two columns.
    QStringList printableData() const;
    void setPrintableData(const QStringList &printableData);
    /// Tag 1054.
    PaymentType type() const;
    void setType(PaymentType type);
    /// Which document the register makes of it.
    CheckType checkType() const;
    void setCheckType(CheckType checkType);
    /// Tag 1021.
    QString cashier() const;
    void setCashier(const QString &cashier);
    /// Tag 1018: taxpayer number of the owner of the register.
    QString userInn() const;
    void setUserInn(const QString &userInn);
    /// Tag 1037: registration number of the register.
    QString regNumber() const;
    void setRegNumber(const QString &regNumber);
    /// How the total was paid.
    QList<CheckPayment> payments() const;
    void setPayments(const QList<CheckPayment> &payments);

    bool operator==(const BaseCheck &other) const;
    bool operator!=(const BaseCheck &other) const { return !(*this == other); }

private:
    class Data;
    QSharedDataPointer<Data> m_data;
};

Q_DECLARE_METATYPE(BaseCheck)
