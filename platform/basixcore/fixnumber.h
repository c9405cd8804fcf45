#pragma once

#include <basixcore/basixcore_global.h>

#include <QDebug>
#include <QMetaType>
#include <QString>

#include <limits>
#include <type_traits>

namespace basix {

/// A decimal number with a fixed count of decimals: raw / multiplier.
///
/// The multiplier is a power of ten: 100 for money in roubles (the raw value is kopecks), 1000 for
/// quantities. A multiplier below 1 counts as 1, one between two powers of ten as the lower of
/// them.
///
/// Nothing here overflows: conversions from text and double give 0 for what does not fit,
/// arithmetic stops at the ends of the 64-bit range.
class BASIXCORE_EXPORT FixNumber
{
public:
    /// 0.00 with the multiplier 100.
    FixNumber() = default;
    /// `raw` is already scaled: FixNumber(100, 1250) is 12.50.
    FixNumber(int multiplier, int raw);
    FixNumber(int multiplier, qint64 raw);
    /// The other integer types; a value beyond the signed 64-bit range gives 0.
    template<typename Integer, std::enable_if_t<std::is_integral<Integer>::value, int> = 0>
    FixNumber(int multiplier, Integer raw) : FixNumber(multiplier, narrowed(raw))
    {
    }
    /// `value` is not scaled: FixNumber(100, 12.5) is 12.50. It is taken as the shortest decimal
    /// text that reads back as the same double (so 1.005 gives 1.01, as a person who wrote 1.005
    /// expects) and rounded to nearest, halves away from zero. NaN, infinity and what does not fit
    /// give 0.
    FixNumber(int multiplier, double value);
    /// "123", "123.4", "123,45", "-0.5", with blanks around it; decimals beyond the multiplier are
    /// rounded to nearest, halves away from zero. Anything else, and what does not fit, gives 0.
    /// The conversion never goes through double.
    FixNumber(int multiplier, const QString &text);

    int multiplier() const { return m_multiplier; }
    /// The raw scaled integer.
    qint64 value() const { return m_value; }
    double toDouble() const;
    /// "1234.50", "-0.05": all decimals of the multiplier, a point, no group separators, whatever
    /// the locale.
    QString toString() const;
    /// The same number with another multiplier, rounded to nearest, halves away from zero.
    FixNumber rescaled(int multiplier) const;
    /// This number times `factor` with the multiplier of this number, rounded to nearest, halves
    /// away from zero.
    FixNumber multiplied(const FixNumber &factor) const;
    /// Equal in value and in multiplier; the comparison operators look at the raw value only.
    bool isIdentical(const FixNumber &other) const
    {
        return m_value == other.m_value && m_multiplier == other.m_multiplier;
    }

    /// The right side is rescaled to the multiplier of the left side, which the result keeps.
    FixNumber &operator+=(const FixNumber &other);
    FixNumber &operator-=(const FixNumber &other);
    FixNumber operator-() const;
    friend FixNumber operator+(FixNumber left, const FixNumber &right) { return left += right; }
    friend FixNumber operator-(FixNumber left, const FixNumber &right) { return left -= right; }

    friend bool operator==(const FixNumber &a, const FixNumber &b)
    {
        return a.m_value == b.m_value;
    }
    friend bool operator!=(const FixNumber &a, const FixNumber &b)
    {
        return a.m_value != b.m_value;
    }
    friend bool operator<(const FixNumber &a, const FixNumber &b) { return a.m_value < b.m_value; }
    friend bool operator<=(const FixNumber &a, const FixNumber &b)
    {
        return a.m_value <= b.m_value;
    }
    friend bool operator>(const FixNumber &a, const FixNumber &b) { return a.m_value > b.m_value; }
    friend bool operator>=(const FixNumber &a, const FixNumber &b)
    {
        return a.m_value >= b.m_value;
    }

private:
    template<typename Integer>
    static qint64 narrowed(Integer raw)
    {
        if constexpr (std::is_unsigned<Integer>::value && sizeof(Integer) >= sizeof(qint64))
            return raw > static_cast<Integer>(std::numeric_limits<qint64>::max())
                ? 0
                : static_cast<qint64>(raw);
        else
            return static_cast<qint64>(raw);
    }

    int m_multiplier = 100;
    qint64 m_value = 0;
};

BASIXCORE_EXPORT QDebug operator<<(QDebug debug, const FixNumber &number);

} // namespace basix

Q_DECLARE_TYPEINFO(basix::FixNumber, Q_MOVABLE_TYPE);
Q_DECLARE_METATYPE(basix::FixNumber)
