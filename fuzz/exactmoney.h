#pragma once

#include <basixcore/fixnumber.h>

#include <QString>

#include <optional>

/// Money counted a second time, with integers wide enough for any sum.
namespace ExactMoney {

__extension__ using Wide = __int128;

/// Adds hundredths without the ends of the 64-bit range.
class Sum
{
public:
    void add(const basix::FixNumber &amount)
    {
        m_total += amount.value();
        m_extent += amount.value() < 0 ? -Wide(amount.value()) : Wide(amount.value());
    }
    /// No order of adding the same amounts can leave the 64-bit range: beyond it fixed-point
    /// numbers stop at the ends, and sums need not agree.
    bool isComparable() const { return m_extent < Wide(1) << 62; }
    bool equals(const basix::FixNumber &amount) const { return m_total == amount.value(); }

private:
    Wide m_total = 0;
    Wide m_extent = 0;
};

/// A text of digits, a point or comma and two decimals, as fixed-point numbers write it; nothing
/// for any other text and for one that does not fit.
inline std::optional<QString> canonical(const QString &text)
{
    const bool negative = text.startsWith(QLatin1Char('-'));
    const QString size = negative ? text.mid(1) : text;
    const int point = size.size() - 3;
    if (point < 1 || point > 15
        || (size.at(point) != QLatin1Char('.') && size.at(point) != QLatin1Char(',')))
        return std::nullopt;
    bool isZero = true;
    for (int i = 0; i < size.size(); ++i) {
        const QChar c = size.at(i);
        if (i != point && (c < QLatin1Char('0') || c > QLatin1Char('9')))
            return std::nullopt;
        isZero = isZero && (i == point || c == QLatin1Char('0'));
    }
    QString plain = size;
    plain[point] = QLatin1Char('.');
    while (plain.size() > 4 && plain.startsWith(QLatin1Char('0')))
        plain.remove(0, 1);
    return negative && !isZero ? QLatin1Char('-') + plain : plain;
}

} // namespace ExactMoney
