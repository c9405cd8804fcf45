#pragma once

#include "srcounter.h"
#include "srservice.h"

#include <basixcore/fixnumber.h>

#include <QString>
#include <QStringList>

class SRAccount;

/// Lines and tables of the documents that accounts render for Qt's rich-text viewer.
///
/// Every function escapes the texts that it is given: names and titles come from billing, and a
/// name must neither become markup nor change on the way ("%1" and quotes in it stay).
namespace SrHtml {

/// "<", ">" and "&" as entities; nothing else changes.
QString escaped(const QString &text);

QString documentStart();
QString documentEnd();
/// The payer's name, the title of the document.
QString payerName(const QString &name);
/// A centred line: the address, a number, the title of a table.
QString heading(const QString &text);
/// Charge, debt and remainder of the account under billing's titles.
QString totals(const SRAccount &account);
QString totalToPay(const QString &title, const basix::FixNumber &amount);
/// The lines of the table; its titles are those of the first service. Nothing for an empty list.
QStringList servicesTable(const QList<SrService> &services);
/// The same for meters and their readings.
QStringList countersTable(const QList<SrCounter> &counters);

} // namespace SrHtml
