#pragma once

#include "individual/srpersonalaccount.h"
#include "legal/srlegalaccount.h"
#include "srcounter.h"
#include "srdocument.h"
#include "srservice.h"

#include <QString>
#include <QStringList>
#include <QVariantList>

/// Billing records for tests of the tables and pages, made the way an answer makes them: by parsing
/// descriptors.
namespace TestRecords {

/// A descriptor of one field, with the title "T:" and its name.
QVariantMap field(const QString &name, const QVariant &value, bool editable = true);
/// Wraps descriptors or wrapped records: { "paramList": list }.
QVariantMap wrapped(const QVariantList &list);

/// Names of the fields that a record has read-only; all others are editable.
using ReadOnly = QStringList;

QVariantList serviceFields(const QString &name, const QString &charge, const QString &topay,
                           const QString &distributed, const ReadOnly &readOnly = {},
                           qint64 id = 7);
SrService service(const QString &name, const QString &charge, const QString &topay,
                  const QString &distributed, const ReadOnly &readOnly = {}, qint64 id = 7);
SrCounter counter(const QString &name, qint64 last, qint64 current,
                  const ReadOnly &readOnly = {QStringLiteral("name"), QStringLiteral("lastvalue")});
SrDocument document(const QString &number, const QString &charge, const QString &topay,
                    const QList<SrService> &services);

/// Payer "Иванов Иван Иванович", address "ул. Речная, 1", account 4455, charge 500.00, debt 900.00,
/// no remainder.
QSharedPointer<SrPersonalAccount> personalAccount(const QList<SrService> &services,
                                                  const QList<SrCounter> &counters = {});
/// Payer "ООО «Ручей»", address "пер. Мостовой, 2", contract number 77/1, charge 1500.00, debt
/// 2500.00, tax number 7701000001.
QSharedPointer<SrLegalAccount> legalAccount(const QList<SrDocument> &documents);

} // namespace TestRecords
