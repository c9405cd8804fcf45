// A payment code as bills carry it: the first byte declares the encoding, each further line is
// NAME=VALUE. What is written can be read, by the bills' own reader and by the plugin's.
#include "fuzztarget.h"

#include "srpaymentqr.h"

#include <bills/codeencoding.h>
#include <bills/paymentcode.h>

#include <algorithm>

namespace {

/// Any bytes with any declared encoding give a text; bytes of a text give that text.
void checkDecoding(const QByteArray &bytes, std::optional<CodeEncoding> declared)
{
    // Every character goes through a converter of its own, so a few tell as much as many.
    constexpr int longest = 48;
    const CodeEncoding encoding = CodeEncodings::detect(bytes, declared);
    const QString text = CodeEncodings::decode(bytes, encoding).left(longest);
    const auto repaired = CodeEncodings::repaired(text);
    FUZZ_REQUIRE(!repaired || *repaired != text, QStringLiteral("a repair that repairs nothing"));
    for (const CodeEncoding each : CodeEncodings::all()) {
        if (text.isValidUtf16() && CodeEncodings::lacking(text, each).isEmpty()) {
            FUZZ_REQUIRE(
                CodeEncodings::decode(CodeEncodings::encode(text, each), each) == text,
                QStringLiteral("a text changes in %1: %2").arg(CodeEncodings::name(each), text));
        }
    }
}

void checkCode(const PaymentCode &code, CodeEncoding encoding)
{
    const QStringList problems = code.problems(encoding);
    const QByteArray bytes = code.toBytes(encoding);
    FUZZ_REQUIRE(problems.isEmpty() != bytes.isEmpty(),
                 QStringLiteral("a code with problems, or none without"));
    if (bytes.isEmpty())
        return;
    FUZZ_REQUIRE(bytes.size() <= PaymentCode::MAXIMUM_BYTES, QStringLiteral("too much for a code"));
    const QString text = CodeEncodings::decode(bytes, encoding);
    FUZZ_REQUIRE(text == code.toText(encoding), QStringLiteral("the bytes are not the text"));

    // The plugin reads codes with the usual separator only.
    if (!text.startsWith(QStringLiteral("ST0001%1|").arg(static_cast<int>(encoding))))
        return;
    FUZZ_REQUIRE(SrPaymentQr::isPaymentCode(text), QStringLiteral("no payment code: %1").arg(text));
    const QVector<SrPaymentQr::Pair> pairs = SrPaymentQr::pairs(text);
    for (const PaymentCode::Field &field : code.fields()) {
        const bool read = std::any_of(pairs.cbegin(), pairs.cend(), [&field](const auto &pair) {
            return pair.name == field.name && pair.value == field.value;
        });
        FUZZ_REQUIRE(read || field.value.contains(QLatin1Char('=')),
                     QStringLiteral("the plugin does not read %1 in: %2").arg(field.name, text));
    }
}

} // namespace

FUZZ_TARGET(payment_code)
{
    if (input.isEmpty())
        return;
    const auto declared = CodeEncodings::fromDigit(QLatin1Char(input.at(0)));
    checkDecoding(input.mid(1), declared);

    PaymentCode code;
    const QStringList lines = QString::fromUtf8(input.mid(1)).split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        const int sign = line.indexOf(QLatin1Char('='));
        if (sign >= 0)
            code.setField(line.left(sign), line.mid(sign + 1));
    }
    checkCode(code, declared.value_or(CodeEncoding::Utf8));
}
