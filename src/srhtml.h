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

/// Room for what stands above the tables, for a table's start and titles, and for a row of it: a
/// document that grows under way is moved again and again.
constexpr int usualHeaderLength = 2048;
constexpr int usualTableLength = 320;
constexpr int usualRowLength = 192;

QString documentStart();
QString documentEnd();
/// The payer's name, the title of the document.
QString payerName(const QString &name);
/// A centred line: the address, a number, the title of a table.
QString heading(const QString &text);
/// Charge, debt and remainder of the account under billing's titles; `taxNote` stands behind the
/// debt as it is.
QString totals(const SRAccount &account, const QString &taxNote = QString());
QString totalToPay(const QString &title, const basix::FixNumber &amount);
/// Puts a line below what is there.
void appendLine(QString &document, const QString &line);
/// Puts a table below what is there, a line each for its start, its titles, its rows and its end;
/// the titles are those of the first service. Nothing for an empty list.
void appendServices(QString &document, const QList<SrService> &services);
/// The same for meters and their readings.
void appendCounters(QString &document, const QList<SrCounter> &counters);

} // namespace SrHtml
