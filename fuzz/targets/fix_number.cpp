// Money: the first byte chooses the multiplier, the next 16 are two raw values, the rest is a text.
#include "exactmoney.h"
#include "fuzztarget.h"

#include <basixcore/fixnumber.h>

#include <QLocale>
#include <QRegularExpression>
#include <QtEndian>

#include <cmath>
#include <cstring>
#include <limits>

using basix::FixNumber;
using ExactMoney::Wide;

namespace {

constexpr Wide lowest = std::numeric_limits<qint64>::min();
constexpr Wide highest = std::numeric_limits<qint64>::max();

qint64 stopped(Wide value)
{
    return static_cast<qint64>(value < lowest ? lowest : value > highest ? highest : value);
}

Wide divided(Wide value, Wide divisor)
{
    const Wide size = value < 0 ? -value : value;
    const Wide quotient = size / divisor + (size % divisor * 2 >= divisor ? 1 : 0);
    return value < 0 ? -quotient : quotient;
}

/// The contract of the text conversion by long multiplication: what is no number, and what does not
/// fit, is 0.
qint64 rawOf(const QString &text, int multiplier)
{
    static const QRegularExpression form(
        QStringLiteral(R"(\A[ \t\n\x0b\f\r]*(-?)([0-9]+)(?:[.,]([0-9]+))?[ \t\n\x0b\f\r]*\z)"));
    const QRegularExpressionMatch match = form.match(text);
    if (!match.hasMatch())
        return 0;
    const int decimals = QString::number(multiplier).size() - 1;
    const QString fraction = match.captured(3);
    const QString digits =
        match.captured(2) + fraction.left(decimals).leftJustified(decimals, QLatin1Char('0'));
    Wide raw = 0;
    for (const QChar digit : digits) {
        raw = raw * 10 + (digit.unicode() - u'0');
        if (raw > highest + 1)
            return 0;
    }
    if (fraction.size() > decimals && fraction.at(decimals) >= QLatin1Char('5'))
        ++raw;
    if (match.captured(1) == QLatin1String("-"))
        raw = -raw;
    return raw < lowest || raw > highest ? 0 : static_cast<qint64>(raw);
}

QString shown(const FixNumber &number)
{
    return QStringLiteral("%1/%2").arg(QString::number(number.value()),
                                       QString::number(number.multiplier()));
}

void checkText(const QString &text, int multiplier)
{
    const FixNumber number(multiplier, text);
    FUZZ_REQUIRE(number.value() == rawOf(text, multiplier),
                 QStringLiteral("\"%1\" reads as %2").arg(text, shown(number)));
    FUZZ_REQUIRE(FixNumber(multiplier, number.toString()).isIdentical(number),
                 QStringLiteral("%1 writes as %2").arg(shown(number), number.toString()));
}

void checkArithmetic(const FixNumber &a, const FixNumber &b)
{
    const Wide sum = Wide(a.value()) + b.value();
    FUZZ_REQUIRE((a + b).value() == stopped(sum) && (b + a) == (a + b),
                 QStringLiteral("%1 + %2").arg(shown(a), shown(b)));
    FUZZ_REQUIRE((a - b).value() == stopped(Wide(a.value()) - b.value()),
                 QStringLiteral("%1 - %2").arg(shown(a), shown(b)));
    FUZZ_REQUIRE((-a).value() == stopped(-Wide(a.value())), QStringLiteral("-%1").arg(shown(a)));
    FUZZ_REQUIRE((a < b) == (a.value() < b.value()) && (a == b) == (a.value() == b.value())
                     && (a <= b) != (a > b) && (a >= b) != (a < b) && (a != b) != (a == b),
                 QStringLiteral("%1 and %2 compare wrongly").arg(shown(a), shown(b)));
    FixNumber own = a;
    own += own;
    FUZZ_REQUIRE(own == a + a, QStringLiteral("%1 added to itself").arg(shown(a)));
}

void checkScales(const FixNumber &a, const FixNumber &b)
{
    for (const int multiplier : {1, 10, 100, 1000, 1000000}) {
        const Wide expected = multiplier >= a.multiplier()
            ? Wide(a.value()) * (multiplier / a.multiplier())
            : divided(a.value(), a.multiplier() / multiplier);
        FUZZ_REQUIRE(
            a.rescaled(multiplier).value() == stopped(expected),
            QStringLiteral("%1 with multiplier %2").arg(shown(a), QString::number(multiplier)));
    }
    const FixNumber factor(1000, b.value());
    const FixNumber price(100, a.value());
    FUZZ_REQUIRE(price.multiplied(factor).value()
                     == stopped(divided(Wide(price.value()) * factor.value(), 1000)),
                 QStringLiteral("%1 times %2").arg(shown(price), shown(factor)));
}

void checkDouble(const FixNumber &number, qint64 bits)
{
    // Up to 15 digits a double tells any two decimal numbers apart.
    if (std::abs(static_cast<double>(number.value())) < 1e15) {
        FUZZ_REQUIRE(FixNumber(number.multiplier(), number.toDouble()).isIdentical(number),
                     QStringLiteral("%1 through double").arg(shown(number)));
    }
    double any = 0.0;
    std::memcpy(&any, &bits, sizeof(any));
    const qint64 expected = std::isfinite(any)
        ? rawOf(QString::number(any, 'f', QLocale::FloatingPointShortest), number.multiplier())
        : 0;
    FUZZ_REQUIRE(FixNumber(number.multiplier(), any).value() == expected,
                 QStringLiteral("%1 from double").arg(any));
}

} // namespace

FUZZ_TARGET(fix_number)
{
    constexpr int head = 1 + 2 * static_cast<int>(sizeof(qint64));
    if (input.size() < head)
        return;
    int multiplier = 1;
    for (int i = 0; i < static_cast<unsigned char>(input.at(0)) % 10; ++i)
        multiplier *= 10;
    const auto first = qFromLittleEndian<qint64>(input.constData() + 1);
    const auto second = qFromLittleEndian<qint64>(input.constData() + 1 + sizeof(qint64));
    const FixNumber a(multiplier, first);
    const FixNumber b(multiplier, second);

    checkText(QString::fromUtf8(input.mid(head)), multiplier);
    checkText(a.toString(), multiplier);
    checkArithmetic(a, b);
    checkScales(a, b);
    checkDouble(a, second);
}
