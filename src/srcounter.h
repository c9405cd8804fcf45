#pragma once

#include "srobject.h"

#include <QMap>

/// One water meter of a personal account. Readings are whole numbers.
///
/// Setters store text and take effect only on fields that billing marked editable.
class SrCounter final : public SrObject
{
public:
    static const QString FIELD_ID;
    static const QString FIELD_NAME;
    static const QString FIELD_LAST_VALUE;
    static const QString FIELD_CUR_VALUE;

    qint64 id() const;
    void setId(qint64 id);
    QString name() const;
    void setName(const QString &name);
    /// The previous reading, known to the utility.
    qint64 lastValue() const;
    void setLastValue(qint64 value);
    /// The reading that the cashier entered.
    qint64 curValue() const;
    void setCurValue(qint64 value);

    /// { "name": "counter", "paramList": toPayParamsList() }
    QVariantMap toParamsMap() const;
    /// Billing's title of each field above by field name; empty where billing sent none.
    QMap<QString, QString> titles() const;
};
