#pragma once

#include <bills/codeencoding.h>

#include <QString>

/// Writes the bill of a sample account or contract, as a new billing database holds it, for last
/// month.
///
/// `document` chooses a document of the contract; without it the first unpaid one is taken. The
/// ending of the name, .pdf or .png, chooses the kind of file. False: `error` says in Russian why
/// and what can be asked for. Needs a QGuiApplication.
bool writeSampleBill(const QString &account, CodeEncoding encoding, const QString &fileName,
                     QString *error, const QString &document = QString());
