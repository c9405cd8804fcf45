#pragma once

#include <bills/codeencoding.h>
#include <bills/paymentcode.h>

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>

#include <optional>

/// What a code turned out to be once its bytes were read.
struct ReadCode
{
    enum class Kind {
        Payment, ///< a payment code, with whatever deviations stand in `warnings`
        Receipt, ///< the code of a fiscal receipt
        Link,
        GoodsMark,
        Number, ///< digits only: the bar code of an article or a bill
        Unknown,
        Empty
    };

    Kind kind = Kind::Empty;
    /// The whole text, decoded but otherwise as it is: what a scanner types.
    QString text;
    CodeEncoding encoding = CodeEncoding::Utf8;
    /// What the header says; nothing when it says nothing that can be understood.
    std::optional<CodeEncoding> declared;
    QChar separator;
    /// Fields of a payment code as they were meant: names in the standard's spelling, values
    /// without blanks around them. In the order of the code, repeated names included.
    QVector<PaymentCode::Field> fields;
    /// Deviations from the standard, in Russian, for the person who has to explain them.
    QStringList warnings;

    /// The first field of that name.
    QString field(const QString &name) const;
    static QString kindText(Kind kind);
};

/// Reads payment codes as they are met on bills: also those with a wrong encoding digit, a mistyped
/// header, look-alike letters in names and the like. Everything that was put right is told.
namespace PaymentCodeReader {

ReadCode read(const QByteArray &bytes);

} // namespace PaymentCodeReader
