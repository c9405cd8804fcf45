#pragma once

#include "srobject.h"

#include <basixcore/fixnumber.h>

#include <QList>
#include <QMap>

/// One billed service of an account or of a billing document.
///
/// Setters store text and take effect only on fields that billing marked editable; money has two
/// decimals.
class SrService final : public SrObject
{
public:
    static const QString FIELD_ID;
    static const QString FIELD_NAME;
    static const QString FIELD_CHARGE;
    static const QString FIELD_TOPAY;
    static const QString FIELD_DISTRIBUTED;

    qint64 id() const;
    void setId(qint64 id);
    QString name() const;
    void setName(const QString &name);
    /// Billed for the period.
    basix::FixNumber charge() const;
    void setCharge(const basix::FixNumber &charge);
    /// Due; negative when overpaid.
    basix::FixNumber topay() const;
    void setTopay(const basix::FixNumber &topay);
    /// The part of the payment that the cashier assigned to this service.
    basix::FixNumber distributed() const;
    void setDistributed(const basix::FixNumber &distributed);

    /// The amounts as their numbers are written; for tables and documents, which ask for them again
    /// and again.
    QString chargeText() const;
    QString topayText() const;
    QString distributedText() const;

    /// May these services be paid as distributed? Nothing may be negative, and something must be
    /// distributed if any of them has an amount due.
    static bool areReadyToPay(const QList<SrService> &services);

    /// The utility's penalty line, which receipts show as an item type of its own.
    bool isPeni() const;
    /// { "name": "service", "paramList": toPayParamsList() }
    QVariantMap toParamMap() const;
    /// Billing's title of each field above by field name; empty where billing sent none.
    QMap<QString, QString> titles() const;
};
