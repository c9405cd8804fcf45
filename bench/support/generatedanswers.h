#pragma once

#include <QString>
#include <QVariantList>

/// Answers of the billing service of any size, with the descriptors and the wording of real ones:
/// eight keys per field, Russian names of different lengths, amounts from kopecks to thousands of
/// roubles, some of them overpaid.
///
/// The same size always gives the same answer. Everything is made once and kept.
namespace GeneratedAnswers {

/// Which of billing's formats; the size counts service lines.
enum class Form {
    Personal,    ///< a personal account, a meter per four services
    Contract,    ///< a contract with documents of five services each
    OneDocument, ///< a contract in the short format of a single document
};

/// The request that an answer answers.
QString uid();

/// The descriptors of the account, as they come out of the text.
QVariantList description(Form form, int lines);
/// The message as it arrives.
const QString &message(Form form, int lines);
/// The text inside its "description".
const QString &innerText(Form form, int lines);

/// The descriptors of a contract with this many documents of `serviceCount` services each.
QVariantList contract(int documents, int serviceCount);

} // namespace GeneratedAnswers
