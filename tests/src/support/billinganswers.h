#pragma once

#include <QString>
#include <QVariantList>
#include <QVariantMap>

/// What the billing service sends: descriptors, records made of them, and the messages that carry
/// them over the bus.
namespace BillingAnswers {

/// One field of a record.
QVariantMap field(const QString &name, const QVariant &value, const QString &title,
                  bool editable = false);
/// A record nested in another one: { "name": kind, "paramList": fields }.
QVariantMap record(const QString &kind, const QVariantList &fields);

/// Money as text; the distributed amount is editable.
QVariantMap service(qint64 id, const QString &name, const QString &charge, const QString &topay,
                    const QString &distributed = QStringLiteral("0.00"));
/// The current reading is editable.
QVariantMap counter(qint64 id, const QString &name, qint64 lastValue, qint64 currValue = 0);
/// A billing document in the full format.
QVariantMap document(qint64 id, const QString &number, const QVariantList &services);

/// Name, address, charge 150.50, debt 150.50, remainder 0.00.
QVariantList header();
/// A personal account: header(), water 100.00, sewer 50.50, a cold and a hot meter.
QVariantList individual();
QVariantList individual(const QVariantList &services, const QVariantList &counters);
/// A contract in the short format: header() and the services of its only document.
QVariantList legalSingle();
QVariantList legalSingle(const QVariantList &services);
/// A contract with the documents ВК-1 (100.00 + 50.50) and ВК-2 (20.00).
QVariantList legal();
QVariantList legal(const QVariantList &documents);

/// Headers of an answer.
QVariantMap headers();
/// The account's data, answering the request `uid`.
QString data(const QString &uid, const QVariantList &payParamList);
/// An answer with `description` as its inner text, whatever that is.
QString withDescription(const QString &uid, const QString &description);
/// The failures, outermost first.
QString outerError(const QString &uid, const QString &description);
QString badResult(const QString &uid, int result, const QString &resultDescription);
QString innerError(const QString &uid, const QString &statusDescription);
/// Any object as the text of a message.
QString text(const QVariantMap &object);

} // namespace BillingAnswers
