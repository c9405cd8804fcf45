#pragma once

#include <QString>
#include <QVariantList>
#include <QVariantMap>
#include <QVector>

/// Descriptions of records as billing sends them.
namespace BillingSamples {

enum class Edit { Allowed, Refused };

QVariantMap field(const QString &name, const QVariant &value, Edit edit = Edit::Allowed,
                  const QString &title = QString());
/// A service with the fields "id", "name", "charge", "topay" and "distributed", all editable,
/// titled in Russian.
QVariantList service(qint64 id, const QString &name, const QString &charge, const QString &topay,
                     const QString &distributed);
/// A meter with the fields "id", "name", "lastvalue" and "currvalue", all editable, titled in
/// Russian.
QVariantList counter(qint64 id, const QString &name, const QString &last, const QString &current);
/// A document in the full format: "id", "num", "charge", "topay", "distributed" and its services.
QVariantList document(qint64 id, const QString &number, const QVector<QVariantList> &services);
/// The descriptor of a list of records: { "name", "paramList": [ { "paramList": record }, ... ] }.
QVariantMap recordList(const QString &name, const QVector<QVariantList> &records);
/// The fields of an account's header, all editable, titled in Russian.
QVariantList header(const QString &fio, const QString &address);

/// Two services and a penalty, two meters, a remainder.
QVariantList personalAccount();
/// Two documents with services, a tax and a remainder.
QVariantList legalAccount();

/// An account with `count` services.
QVariantList hugeAccount(int count);

} // namespace BillingSamples
