#include "srvalues.h"

#include <QLocale>

#include <cmath>

namespace {

bool isFloating(const QVariant &value)
{
    return value.userType() == QMetaType::Double || value.userType() == QMetaType::Float;
}

} // namespace

basix::FixNumber SrValues::money(const QVariant &value)
{
    return basix::FixNumber(100, text(value));
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
