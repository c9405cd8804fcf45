#include "srvalues.h"

#include <QLocale>

#include <algorithm>
#include <cmath>

namespace {

bool isFloating(const QVariant &value)
{
    return value.userType() == QMetaType::Double || value.userType() == QMetaType::Float;
}

/// No function, which std::all_of() would call by its address for every character.
constexpr auto isDigit = [](QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); };

/// Is `text` what FixNumber::toString() writes of the number it names: no sign but a minus, no
/// leading zeros, a point and two decimals? A negative one never begins with a zero here, for
/// "-0.00" is written without its minus; a number that might not fit is left to FixNumber.
bool isWrittenMoney(const QString &text)
{
    constexpr int decimals = 2;
    constexpr int longestWhole = 16;
    const QChar *const characters = text.constData();
    const int first = *characters == QLatin1Char('-') ? 1 : 0;
    const int point = text.size() - decimals - 1;
    const int whole = point - first;
    if (whole < 1 || whole > longestWhole || characters[point] != QLatin1Char('.'))
        return false;
    if (characters[first] == QLatin1Char('0') && (whole > 1 || first > 0))
        return false;
    return std::all_of(characters + first, characters + point, isDigit)
        && std::all_of(text.cbegin() + point + 1, text.cend(), isDigit);
}

} // namespace

basix::FixNumber SrValues::money(const QVariant &value)
{
    return basix::FixNumber(100, text(value));
}

QString SrValues::moneyText(const QVariant &value)
{
    if (value.userType() == QMetaType::QString) {
        const QString &text = *static_cast<const QString *>(value.constData());
        if (isWrittenMoney(text))
            return text;
    }
    return money(value).toString();
}

qint64 SrValues::integer(const QVariant &value)
{
    if (!isFloating(value))
        return value.toLongLong();
    const double number = value.toDouble();
    constexpr double beyond = 9223372036854775808.0;
    const bool whole = number >= -beyond && number < beyond && std::trunc(number) == number;
    return whole ? static_cast<qint64>(number) : 0;
}

QString SrValues::text(const QVariant &value)
{
    if (isFloating(value))
        return QString::number(value.toDouble(), 'f', QLocale::FloatingPointShortest);
    return value.toString();
}
