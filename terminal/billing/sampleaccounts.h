#pragma once

#include <QString>
#include <QVector>

/// How billing answers a request for an account. Everything but Ordinary is there to try a failure
/// by hand or in a test.
enum class AnswerBehaviour {
    Ordinary = 0,
    OuterError = 1, ///< "error" is true, the text stands in "description" and "resultDescription"
    NonZeroResult = 2, ///< "result" is 17, the text stands in "resultDescription"
    InnerError =
        3, ///< "isError" inside "description" is true, the text stands in "statusDescription"
    BrokenOuter = 4,       ///< the answer is cut in the middle
    BrokenInner = 5,       ///< "description" is cut in the middle
    Silence = 6,           ///< no answer ever
    Slow = 7,              ///< the ordinary answer after five seconds
    EnvelopeNotObject = 8, ///< the whole answer is a JSON list with the envelope in it
    InnerNotObject = 9,    ///< "description" is a JSON list
    FieldsNotList = 10,    ///< "payParamList" inside "description" is a text
    WrongUid = 11,         ///< the ordinary answer to a request that nobody made
    Twice = 12,            ///< the ordinary answer two times
    Late = 13 ///< no answer until the next request; then its own, and this one after it
};

/// An account or contract that every new billing database holds.
struct SampleAccount
{
    enum class Payer { Individual, Legal };

    Payer payer = Payer::Individual;
    QString number;
    /// A document of the contract to ask for; empty when the whole contract is meant.
    QString document;
    AnswerBehaviour behaviour = AnswerBehaviour::Ordinary;
    /// What a payment of it shows, one Russian line.
    QString description;
};

/// The one list of samples: what to type for which case. Includes a number for each payer that
/// billing does not know.
const QVector<SampleAccount> &sampleAccounts();

namespace SampleNumber {
extern const QString ORDINARY;
extern const QString PENALTY;
extern const QString DEBT;
extern const QString OVERPAID;
extern const QString ADVANCE;
extern const QString NEGATIVE_REMAINDER;
extern const QString NO_METERS;
extern const QString READ_ONLY;
extern const QString LARGE;
extern const QString UNKNOWN;
extern const QString OUTER_ERROR;
extern const QString NON_ZERO_RESULT;
extern const QString INNER_ERROR;
extern const QString BROKEN_OUTER;
extern const QString BROKEN_INNER;
extern const QString SILENCE;
extern const QString SLOW;

extern const QString LEGAL_ONE_DOCUMENT;
extern const QString LEGAL_ONE_DOCUMENT_NUMBER;
extern const QString LEGAL_SEVERAL;
extern const QString LEGAL_MANY;
extern const QString LEGAL_PENALTY;
extern const QString LEGAL_SINGLE_FORMAT;
extern const QString LEGAL_SINGLE_FORMAT_NUMBER;
extern const QString LEGAL_UNDER_VALUE;
extern const QString LEGAL_UNKNOWN;
extern const QString LEGAL_OUTER_ERROR;
extern const QString LEGAL_NON_ZERO_RESULT;
extern const QString LEGAL_INNER_ERROR;
extern const QString LEGAL_BROKEN_OUTER;
extern const QString LEGAL_BROKEN_INNER;
extern const QString LEGAL_SILENCE;
} // namespace SampleNumber
