#include <basixcore/fixnumber.h>

#include <QDebugStateSaver>
#include <QLocale>
#include <QVarLengthArray>

namespace basix {

namespace {

constexpr qint64 lowest = std::numeric_limits<qint64>::min();
constexpr qint64 highest = std::numeric_limits<qint64>::max();

int powerOfTenNotAbove(int multiplier)
{
    int power = 1;
    while (power <= multiplier / 10)
        power *= 10;
    return power;
}

int decimalsOf(int multiplier)
{
    int decimals = 0;
    for (int rest = multiplier; rest > 1; rest /= 10)
        ++decimals;
    return decimals;
}

qint64 addWithinRange(qint64 a, qint64 b)
{
    if (b > 0 && a > highest - b)
        return highest;
    if (b < 0 && a < lowest - b)
        return lowest;
    return a + b;
}

qint64 multiplyWithinRange(qint64 a, qint64 b)
{
    if (a == 0 || b == 0)
        return 0;
    const bool negative = (a < 0) != (b < 0);
    const quint64 sizeA = a < 0 ? quint64(0) - static_cast<quint64>(a) : static_cast<quint64>(a);
    const quint64 sizeB = b < 0 ? quint64(0) - static_cast<quint64>(b) : static_cast<quint64>(b);
    if (sizeA > static_cast<quint64>(highest) / sizeB)
        return negative ? lowest : highest;
    const qint64 size = static_cast<qint64>(sizeA * sizeB);
    return negative ? -size : size;
}

/// Nearest, halves away from zero; `divisor` is above zero.
qint64 divideRounded(qint64 value, qint64 divisor)
{
    const qint64 quotient = value / divisor;
    const qint64 rest = value % divisor;
    const qint64 size = rest < 0 ? -rest : rest;
    if (size < divisor - size)
        return quotient;
    return value < 0 ? quotient - 1 : quotient + 1;
}

qint64 rescaledRaw(qint64 raw, int from, int to)
{
    return to >= from ? multiplyWithinRange(raw, to / from) : divideRounded(raw, from / to);
}

bool isDigit(QChar c)
{
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

/// Long enough for any number that fits; longer texts go to the heap.
using Digits = QVarLengthArray<QChar, 32>;

/// The raw value of 0.DIGITS * 10^point with `decimals` decimals; 0 when it does not fit.
qint64 rawOfDigits(const Digits &digits, int point, int decimals, bool negative)
{
    const int wanted = point + decimals;
    if (wanted < 0)
        return 0;
    const quint64 limit = static_cast<quint64>(highest) + (negative ? 1 : 0);
    quint64 size = 0;
    for (int i = 0; i < wanted; ++i) {
        const quint64 digit =
            i < digits.size() ? static_cast<quint64>(digits.at(i).unicode() - u'0') : 0;
        if (size > (limit - digit) / 10)
            return 0;
        size = size * 10 + digit;
        if (size == 0 && i >= digits.size())
            return 0;
    }
    if (wanted < digits.size() && digits.at(wanted) >= QLatin1Char('5')) {
        if (size == limit)
            return 0;
        ++size;
    }
    return negative ? static_cast<qint64>(quint64(0) - size) : static_cast<qint64>(size);
}

/// Blanks of typing only: a no-break space is part of a number that is written in groups, which is
/// not taken.
bool isBlank(QChar c)
{
    return c == QLatin1Char(' ') || (c >= QLatin1Char('\t') && c <= QLatin1Char('\r'));
}

qint64 rawOfText(const QString &text, int decimals)
{
    int at = 0;
    int end = text.size();
    while (at < end && isBlank(text.at(at)))
        ++at;
    while (end > at && isBlank(text.at(end - 1)))
        --end;
    const bool negative = at < end && text.at(at) == QLatin1Char('-');
    if (negative)
        ++at;

    Digits digits;
    while (at < end && isDigit(text.at(at)))
        digits.append(text.at(at++));
    const int point = digits.size();
    if (point == 0)
        return 0;
    if (at < end) {
        if (text.at(at) != QLatin1Char('.') && text.at(at) != QLatin1Char(','))
            return 0;
        ++at;
        while (at < end && isDigit(text.at(at)))
            digits.append(text.at(at++));
        if (at < end || digits.size() == point)
            return 0;
    }
    return rawOfDigits(digits, point, decimals, negative);
}

qint64 rawOfDouble(double value, int decimals)
{
    if (!qIsFinite(value))
        return 0;
    // "d.ddde+XX" with as few digits as read back as the same double.
    const QString text =
        QString::number(value < 0 ? -value : value, 'e', QLocale::FloatingPointShortest);
    const int exponentAt = text.indexOf(QLatin1Char('e'));
    Digits digits;
    for (int at = 0; at < exponentAt; ++at) {
        if (isDigit(text.at(at)))
            digits.append(text.at(at));
    }
    return rawOfDigits(digits, text.midRef(exponentAt + 1).toInt() + 1, decimals, value < 0);
}

} // namespace

FixNumber::FixNumber(int multiplier, int raw) : FixNumber(multiplier, static_cast<qint64>(raw)) {}

FixNumber::FixNumber(int multiplier, qint64 raw)
    : m_multiplier(powerOfTenNotAbove(multiplier)), m_value(raw)
{
}

FixNumber::FixNumber(int multiplier, double value)
    : m_multiplier(powerOfTenNotAbove(multiplier)),
      m_value(rawOfDouble(value, decimalsOf(m_multiplier)))
{
}

FixNumber::FixNumber(int multiplier, const QString &text)
    : m_multiplier(powerOfTenNotAbove(multiplier)),
      m_value(rawOfText(text, decimalsOf(m_multiplier)))
{
}

double FixNumber::toDouble() const
{
    return static_cast<double>(m_value) / m_multiplier;
}

QString FixNumber::toString() const
{
    // Sign, point, and the digits of the largest number or the decimals of the largest multiplier.
    constexpr int longest = 24;
    QChar text[longest];
    int at = longest;
    quint64 rest =
        m_value < 0 ? quint64(0) - static_cast<quint64>(m_value) : static_cast<quint64>(m_value);
    const auto putDigit = [&] {
        text[--at] = QChar(static_cast<ushort>(u'0' + rest % 10));
        rest /= 10;
    };
    const int decimals = decimalsOf(m_multiplier);
    for (int i = 0; i < decimals; ++i)
        putDigit();
    if (decimals > 0)
        text[--at] = QLatin1Char('.');
    do {
        putDigit();
    } while (rest > 0);
    if (m_value < 0)
        text[--at] = QLatin1Char('-');
    return QString(text + at, longest - at);
}

FixNumber FixNumber::rescaled(int multiplier) const
{
    const int power = powerOfTenNotAbove(multiplier);
    return FixNumber(power, rescaledRaw(m_value, m_multiplier, power));
}

FixNumber FixNumber::multiplied(const FixNumber &factor) const
{
    // Both raw values are taken apart by the factor's multiplier, so that no intermediate product
    // leaves the range.
    const qint64 unit = factor.m_multiplier;
    const qint64 factorRest = factor.m_value % unit;
    const qint64 wholes = multiplyWithinRange(m_value, factor.m_value / unit);
    const qint64 parts =
        (m_value / unit) * factorRest + divideRounded((m_value % unit) * factorRest, unit);
    return FixNumber(m_multiplier, addWithinRange(wholes, parts));
}

FixNumber &FixNumber::operator+=(const FixNumber &other)
{
    m_value = addWithinRange(m_value, rescaledRaw(other.m_value, other.m_multiplier, m_multiplier));
    return *this;
}

FixNumber &FixNumber::operator-=(const FixNumber &other)
{
    const qint64 taken = rescaledRaw(other.m_value, other.m_multiplier, m_multiplier);
    // The lowest value has no positive counterpart: take it in two steps.
    m_value = taken == lowest ? addWithinRange(addWithinRange(m_value, highest), 1)
                              : addWithinRange(m_value, -taken);
    return *this;
}

FixNumber FixNumber::operator-() const
{
    return FixNumber(m_multiplier, m_value == lowest ? highest : -m_value);
}

QDebug operator<<(QDebug debug, const FixNumber &number)
{
    const QDebugStateSaver saver(debug);
    debug.noquote() << number.toString();
    return debug;
}

} // namespace basix
