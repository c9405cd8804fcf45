#include "generators.h"
#include "property.h"

#include <basixcore/fixnumber.h>

#include <limits>
#include <ostream>

using basix::FixNumber;

namespace basix {

void showValue(const FixNumber &number, std::ostream &out)
{
    out << number.value() << '/' << number.multiplier();
}

} // namespace basix

namespace {

__extension__ using Wide = __int128;

/// Fixed-point numbers stop at the ends of the 64-bit range.
qint64 stopped(Wide value)
{
    constexpr Wide lowest = std::numeric_limits<qint64>::min();
    constexpr Wide highest = std::numeric_limits<qint64>::max();
    return static_cast<qint64>(value < lowest ? lowest : value > highest ? highest : value);
}

/// Nearest, halves away from zero.
Wide divided(Wide value, Wide divisor)
{
    const Wide size = value < 0 ? -value : value;
    const Wide quotient = size / divisor + (size % divisor * 2 >= divisor ? 1 : 0);
    return value < 0 ? -quotient : quotient;
}

Wide rescaled(const FixNumber &number, int multiplier)
{
    return multiplier >= number.multiplier()
        ? Wide(number.value()) * (multiplier / number.multiplier())
        : divided(number.value(), number.multiplier() / multiplier);
}

} // namespace

template<>
struct rc::Arbitrary<FixNumber>
{
    static Gen<FixNumber> arbitrary()
    {
        return gen::construct<FixNumber>(Generators::multiplier(), Generators::anyRaw());
    }
};

class TestFixNumberProperties : public QObject
{
    Q_OBJECT

private slots:
    void arithmetic();
    void arithmeticOfTwoScales();
    void comparison();
    void takingBack();
    void rescaling();
    void product();
    void textAndBack();
    void textOfTwoDecimals();
    void textOfManyDecimals();
    void textThatIsNoNumber();
    void doubleAndBack();
};

void TestFixNumberProperties::arithmetic()
{
    CHECK_PROPERTY("sum, difference and negation are those of integers", [] {
        const int multiplier = *Generators::multiplier();
        const FixNumber a(multiplier, *Generators::anyRaw());
        const FixNumber b(multiplier, *Generators::anyRaw());
        RC_ASSERT((a + b).value() == stopped(Wide(a.value()) + b.value()));
        RC_ASSERT((a - b).value() == stopped(Wide(a.value()) - b.value()));
        RC_ASSERT((-a).value() == stopped(-Wide(a.value())));
        RC_ASSERT((a + b).isIdentical(b + a));
        RC_ASSERT((a + b).multiplier() == multiplier);
    });
}

void TestFixNumberProperties::arithmeticOfTwoScales()
{
    CHECK_PROPERTY(
        "the right side takes the scale of the left", [](const FixNumber &a, const FixNumber &b) {
            const Wide other = stopped(rescaled(b, a.multiplier()));
            RC_ASSERT((a + b).isIdentical(FixNumber(a.multiplier(), stopped(a.value() + other))));
            RC_ASSERT((a - b).isIdentical(FixNumber(a.multiplier(), stopped(a.value() - other))));
        });
}

void TestFixNumberProperties::comparison()
{
    CHECK_PROPERTY("numbers compare as their raw values",
                   [](const FixNumber &a, const FixNumber &b) {
                       RC_ASSERT((a < b) == (a.value() < b.value()));
                       RC_ASSERT((a <= b) == (a.value() <= b.value()));
                       RC_ASSERT((a > b) == (a.value() > b.value()));
                       RC_ASSERT((a >= b) == (a.value() >= b.value()));
                       RC_ASSERT((a == b) == (a.value() == b.value()));
                       RC_ASSERT((a != b) == (a.value() != b.value()));
                   });
}

void TestFixNumberProperties::takingBack()
{
    CHECK_PROPERTY("what is added can be taken away again", [] {
        const FixNumber a(100, *Generators::amount());
        const FixNumber b(100, *Generators::amount());
        RC_ASSERT((a + b - b).isIdentical(a));
        RC_ASSERT((a - a).isIdentical(FixNumber(100, 0)));
        RC_ASSERT((-(-a)).isIdentical(a));
    });
}

void TestFixNumberProperties::rescaling()
{
    CHECK_PROPERTY("another scale rounds to nearest", [](const FixNumber &a) {
        const int multiplier = *Generators::multiplier();
        RC_ASSERT(a.rescaled(multiplier)
                      .isIdentical(FixNumber(multiplier, stopped(rescaled(a, multiplier)))));
    });
}

void TestFixNumberProperties::product()
{
    CHECK_PROPERTY("a product rounds to nearest", [](const FixNumber &a, const FixNumber &factor) {
        const Wide exact = divided(Wide(a.value()) * factor.value(), factor.multiplier());
        RC_ASSERT(a.multiplied(factor).isIdentical(FixNumber(a.multiplier(), stopped(exact))));
    });
}

void TestFixNumberProperties::textAndBack()
{
    CHECK_PROPERTY("the text of a number is that number", [](const FixNumber &a) {
        RC_ASSERT(FixNumber(a.multiplier(), a.toString()).isIdentical(a));
    });
}

void TestFixNumberProperties::textOfTwoDecimals()
{
    CHECK_PROPERTY("an amount with two decimals is kept to the kopeck", [] {
        const qint64 kopecks = *Generators::anyRaw();
        QString text = FixNumber(100, kopecks).toString();
        if (*rc::gen::arbitrary<bool>())
            text.replace(QLatin1Char('.'), QLatin1Char(','));
        const int sign = kopecks < 0 ? 1 : 0;
        text.insert(sign, QString(*rc::gen::inRange(0, 40), QLatin1Char('0')));
        text = QString(*rc::gen::inRange(0, 3), QLatin1Char(' ')) + text
            + QString(*rc::gen::inRange(0, 3), QLatin1Char('\t'));
        RC_ASSERT(FixNumber(100, text).value() == kopecks);
    });
}

void TestFixNumberProperties::textOfManyDecimals()
{
    CHECK_PROPERTY("decimals beyond the scale round to nearest", [] {
        const qint64 millionths = *rc::gen::inRange<qint64>(-99999999999999, 99999999999999);
        const QString text = FixNumber(1000000, millionths).toString();
        for (const int multiplier : {1, 10, 100, 1000, 1000000}) {
            const Wide expected = divided(millionths, 1000000 / multiplier);
            RC_ASSERT(FixNumber(multiplier, text).value() == stopped(expected));
        }
    });
}

void TestFixNumberProperties::textThatIsNoNumber()
{
    CHECK_PROPERTY(
        "anything inside a number but its own signs makes it zero", [](const QString &noise) {
            bool harmless = true;
            for (const QChar c : noise)
                harmless = harmless
                    && (c.isDigit() || c.isSpace() || c == QLatin1Char('.') || c == QLatin1Char(',')
                        || c == QLatin1Char('-'));
            RC_PRE(!harmless);
            RC_ASSERT(FixNumber(100, QStringLiteral("12") + noise + QStringLiteral("3.45")).value()
                      == 0);
            RC_ASSERT(FixNumber(100, noise + QStringLiteral("123.45")).value() == 0);
        });
}

void TestFixNumberProperties::doubleAndBack()
{
    CHECK_PROPERTY("up to 15 digits survive a spin box", [] {
        const qint64 raw = *rc::gen::inRange<qint64>(-999999999999999, 999999999999999);
        const FixNumber a(*Generators::multiplier(), raw);
        RC_ASSERT(FixNumber(a.multiplier(), a.toDouble()).isIdentical(a));
    });
}

QTEST_GUILESS_MAIN(TestFixNumberProperties)
#include "tst_fixnumberproperties.moc"
