#pragma once

#include <billing/billingrecords.h>

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QVariantList>
#include <QVariantMap>

class BillingDatabase;

/// Writes accounts as lists of field descriptors and wraps them into answers.
class BillingAnswerWriter final
{
public:
    explicit BillingAnswerWriter(BillingDatabase &database);

    /// `planned` in kopecks, 0 for none; `document` is the document asked for, empty for the whole
    /// contract.
    QVariantList describe(const BillingAccount &account, qint64 planned, const QString &document);

    static QByteArray success(const QString &uid, const QVariantList &payParamList);
    static QByteArray innerError(const QString &uid, const QString &text);
    static QByteArray outerError(const QString &uid, const QString &text);
    static QByteArray nonZeroResult(const QString &uid, int result, const QString &text);
    /// The answer with its inner text cut in the middle.
    static QByteArray brokenInner(const QString &uid, const QVariantList &payParamList);
    /// The answer with the list of fields where the object around it should be.
    static QByteArray innerNotObject(const QString &uid, const QVariantList &payParamList);
    /// The answer with a text where the list of fields should be.
    static QByteArray fieldsNotList(const QString &uid);

private:
    QVariantMap descriptor(const BillingField &field, const QString &value, bool editable) const;
    QVariantList record(const QString &kind, const QVariantMap &values, bool valuesEditable);
    QVariantMap services(const QVector<BillingServiceLine> &lines, bool editable, qint64 *planned,
                         qint64 *distributed);
    QVariantMap meters(const BillingAccount &account);
    QVariantMap documents(const BillingAccount &account, const QString &number, qint64 *planned);
    QVariantList header(const BillingAccount &account, qint64 charge, qint64 debt,
                        qint64 remainder);

    BillingDatabase &m_database;
    QHash<QString, QVector<BillingField>> m_fields;
};
