#include <basixcore/fixnumber.h>

#include <QTest>

#include <cmath>
#include <limits>

using basix::FixNumber;

namespace {

constexpr qint64 lowest = std::numeric_limits<qint64>::min();
constexpr qint64 highest = std::numeric_limits<qint64>::max();

} // namespace

class tst_FixNumber : public QObject
{
    Q_OBJECT

private slots:
    void defaultIsZeroMoney();
    void rawValues();
    void integerTypes();
    void multiplierIsAPowerOfTen_data();
    void multiplierIsAPowerOfTen();
    void fromText_data();
    void fromText();
    void everyTextWithTwoDecimals();
    void fromDouble_data();
    void fromDouble();
    void everyDoubleWithTwoDecimals();
    void toText_data();
    void toText();
    void toDouble();
    void arithmetic_data();
    void arithmetic();
    void negation();
    void rescaling_data();
    void rescaling();
    void product_data();
    void product();
    void comparisonLooksAtTheRawValue();
    void identityLooksAtTheMultiplierToo();
    void variantsCompare();
};

void tst_FixNumber::defaultIsZeroMoney()
{
    const FixNumber number;
    QCOMPARE(number.multiplier(), 100);
    QCOMPARE(number.value(), 0);
    QCOMPARE(number.toString(), QStringLiteral("0.00"));
}

void tst_FixNumber::rawValues()
{
    QCOMPARE(FixNumber(1000, 1000).toString(), QStringLiteral("1.000"));
    QCOMPARE(FixNumber(100, 1250).toString(), QStringLiteral("12.50"));
    QCOMPARE(FixNumber(100, 12.5).value(), 1250);
}

void tst_FixNumber::integerTypes()
{
    QCOMPARE(FixNumber(100, 7u).value(), 7);
    QCOMPARE(FixNumber(100, 7l).value(), 7);
    QCOMPARE(FixNumber(100, 7ul).value(), 7);
    QCOMPARE(FixNumber(100, 7ll).value(), 7);
    QCOMPARE(FixNumber(100, 7ull).value(), 7);
    QCOMPARE(FixNumber(100, qlonglong(-7)).value(), -7);
    QCOMPARE(FixNumber(100, short(-7)).value(), -7);
    QCOMPARE(FixNumber(100, 7.0f).value(), 700);
    QCOMPARE(FixNumber(100, std::numeric_limits<unsigned>::max()).value(), Q_INT64_C(4294967295));
    QCOMPARE(FixNumber(100, std::numeric_limits<quint64>::max()).value(), 0);
    QCOMPARE(FixNumber(100, quint64(highest)).value(), highest);
    QCOMPARE(FixNumber(100, lowest).value(), lowest);
}

void tst_FixNumber::multiplierIsAPowerOfTen_data()
{
    QTest::addColumn<int>("given");
    QTest::addColumn<int>("used");
    QTest::newRow("one") << 1 << 1;
    QTest::newRow("zero") << 0 << 1;
    QTest::newRow("negative") << -100 << 1;
    QTest::newRow("lowest") << std::numeric_limits<int>::min() << 1;
    QTest::newRow("nine") << 9 << 1;
    QTest::newRow("sixty") << 60 << 10;
    QTest::newRow("hundred") << 100 << 100;
    QTest::newRow("highest power") << 1000000000 << 1000000000;
    QTest::newRow("highest") << std::numeric_limits<int>::max() << 1000000000;
}

void tst_FixNumber::multiplierIsAPowerOfTen()
{
    QFETCH(int, given);
    QFETCH(int, used);
    QCOMPARE(FixNumber(given, 5).multiplier(), used);
    QCOMPARE(FixNumber(given, 5).value(), 5);
    QCOMPARE(FixNumber(given, 5.0).multiplier(), used);
    QCOMPARE(FixNumber(given, 5.0).value(), qint64(5) * used);
    QCOMPARE(FixNumber(given, QStringLiteral("5")).value(), qint64(5) * used);
    QCOMPARE(FixNumber(100, 500).rescaled(given).value(), qint64(5) * used);
}

void tst_FixNumber::fromText_data()
{
    QTest::addColumn<int>("multiplier");
    QTest::addColumn<QString>("text");
    QTest::addColumn<qint64>("raw");
    const auto row = [](const char *name, int multiplier, const QString &text, qint64 raw) {
        QTest::newRow(name) << multiplier << text << raw;
    };
    row("whole", 100, QStringLiteral("123"), 12300);
    row("point", 100, QStringLiteral("123.4"), 12340);
    row("comma", 100, QStringLiteral("123,45"), 12345);
    row("negative fraction", 100, QStringLiteral("-0.5"), -50);
    row("minus zero", 100, QStringLiteral("-0.00"), 0);
    row("leading zeros", 100, QStringLiteral("007.50"), 750);
    row("blanks around", 100, QStringLiteral("  12.50\t"), 1250);
    row("line end after", 100, QStringLiteral("12.50\r\n"), 1250);
    row("half up", 100, QStringLiteral("1.005"), 101);
    row("half away below zero", 100, QStringLiteral("-1.005"), -101);
    row("just below half", 100, QStringLiteral("1.00499999999999999999"), 100);
    row("rounds over", 100, QStringLiteral("9.999"), 1000);
    row("no decimals kept", 1, QStringLiteral("1.5"), 2);
    row("quantity", 1000, QStringLiteral("1"), 1000);
    row("kopecks that double loses", 100, QStringLiteral("1.15"), 115);
    row("kopecks that double loses too", 100, QStringLiteral("19.99"), 1999);
    row("beyond the precision of double", 100, QStringLiteral("90071992547409.93"),
        Q_INT64_C(9007199254740993));
    row("highest", 100, QStringLiteral("92233720368547758.07"), highest);
    row("lowest", 100, QStringLiteral("-92233720368547758.08"), lowest);
    row("one above the highest", 100, QStringLiteral("92233720368547758.08"), 0);
    row("one below the lowest", 100, QStringLiteral("-92233720368547758.09"), 0);
    row("rounded above the highest", 100, QStringLiteral("92233720368547758.075"), 0);
    row("rounded below the lowest", 100, QStringLiteral("-92233720368547758.085"), 0);
    row("far too long", 100, QString(400, QLatin1Char('9')), 0);
    row("long but small", 100, QString(400, QLatin1Char('0')) + QStringLiteral("1.25"), 125);
    row("many decimals", 100, QStringLiteral("0.") + QString(400, QLatin1Char('3')), 33);
    row("empty", 100, QString(), 0);
    row("blanks only", 100, QStringLiteral("   "), 0);
    row("minus only", 100, QStringLiteral("-"), 0);
    row("plus", 100, QStringLiteral("+5"), 0);
    row("two minuses", 100, QStringLiteral("--5"), 0);
    row("blank after the minus", 100, QStringLiteral("- 5"), 0);
    row("minus behind", 100, QStringLiteral("5-"), 0);
    row("exponent", 100, QStringLiteral("1e2"), 0);
    row("no digit after the point", 100, QStringLiteral("5."), 0);
    row("no digit before the point", 100, QStringLiteral(".5"), 0);
    row("two points", 100, QStringLiteral("1.2.3"), 0);
    row("comma and point", 100, QStringLiteral("1,234.50"), 0);
    row("blank inside", 100, QStringLiteral("1 234.50"), 0);
    row("no-break space inside", 100, QStringLiteral("1\u00a0234,50"), 0);
    row("no-break space before", 100, QStringLiteral("\u00a012.50"), 0);
    row("no-break space after", 100, QStringLiteral("12.50\u00a0"), 0);
    row("narrow no-break space after", 100, QStringLiteral("12.50\u202f"), 0);
    row("currency", 100, QStringLiteral("12.50 р."), 0);
    row("hexadecimal", 100, QStringLiteral("0x10"), 0);
    row("nan", 100, QStringLiteral("nan"), 0);
    row("inf", 100, QStringLiteral("inf"), 0);
    row("Arabic digits", 100, QStringLiteral("\u0661\u0662"), 0);
    row("zero character inside", 100, QStringLiteral("12") + QChar(0) + QStringLiteral("5"), 0);
}

void tst_FixNumber::fromText()
{
    QFETCH(int, multiplier);
    QFETCH(QString, text);
    QFETCH(qint64, raw);
    const FixNumber number(multiplier, text);
    QCOMPARE(number.value(), raw);
    QCOMPARE(number.multiplier(), multiplier);
}

void tst_FixNumber::everyTextWithTwoDecimals()
{
    for (int raw = 0; raw <= 100000; ++raw) {
        const QString digits = QStringLiteral("%1").arg(raw, 3, 10, QLatin1Char('0'));
        const QString whole = digits.left(digits.size() - 2);
        const QString point = whole + QLatin1Char('.') + digits.right(2);
        const QString comma = whole + QLatin1Char(',') + digits.right(2);
        if (FixNumber(100, point).value() != raw || FixNumber(100, comma).value() != raw
            || FixNumber(100, QLatin1Char('-') + point).value() != -raw
            || FixNumber(100, raw).toString() != point)
            QFAIL(qPrintable(point));
    }
}

void tst_FixNumber::fromDouble_data()
{
    QTest::addColumn<int>("multiplier");
    QTest::addColumn<double>("value");
    QTest::addColumn<qint64>("raw");
    const auto row = [](const char *name, int multiplier, double value, qint64 raw) {
        QTest::newRow(name) << multiplier << value << raw;
    };
    row("zero", 100, 0.0, 0);
    row("minus zero", 100, -0.0, 0);
    row("12.5", 100, 12.5, 1250);
    row("12.345", 100, 12.345, 1235);
    row("1.005, stored a little lower", 100, 1.005, 101);
    row("-1.005", 100, -1.005, -101);
    row("1.15", 100, 1.15, 115);
    row("19.99", 100, 19.99, 1999);
    row("0.1 + 0.2", 100, 0.1 + 0.2, 30);
    row("half of a kopeck", 100, 0.005, 1);
    row("less than half of a kopeck", 100, 0.004999, 0);
    row("tiny", 100, 1e-300, 0);
    row("smallest", 100, std::numeric_limits<double>::denorm_min(), 0);
    row("million", 100, 1e6, 100000000);
    row("spin box maximum", 100, 1000000.0, 100000000);
    row("just inside, to the digits that a double has", 1, 9223372036854774784.0,
        Q_INT64_C(9223372036854775000));
    row("two to the 63rd", 1, 9223372036854775808.0, 0);
    row("too large", 100, 1e18, 0);
    row("far too large", 100, 1e308, 0);
    row("infinity", 100, std::numeric_limits<double>::infinity(), 0);
    row("minus infinity", 100, -std::numeric_limits<double>::infinity(), 0);
    row("nan", 100, std::numeric_limits<double>::quiet_NaN(), 0);
}

void tst_FixNumber::fromDouble()
{
    QFETCH(int, multiplier);
    QFETCH(double, value);
    QFETCH(qint64, raw);
    QCOMPARE(FixNumber(multiplier, value).value(), raw);
}

void tst_FixNumber::everyDoubleWithTwoDecimals()
{
    for (int raw = -30000; raw <= 30000; ++raw) {
        const double value = raw / 100.0;
        if (FixNumber(100, value).value() != raw || FixNumber(100, raw).toDouble() != value)
            QFAIL(qPrintable(QString::number(value)));
    }
}

void tst_FixNumber::toText_data()
{
    QTest::addColumn<int>("multiplier");
    QTest::addColumn<qint64>("raw");
    QTest::addColumn<QString>("text");
    QTest::newRow("no group separators") << 100 << Q_INT64_C(123450) << QStringLiteral("1234.50");
    QTest::newRow("below one, negative") << 100 << Q_INT64_C(-5) << QStringLiteral("-0.05");
    QTest::newRow("no decimals") << 1 << Q_INT64_C(-7) << QStringLiteral("-7");
    QTest::newRow("three decimals") << 1000 << Q_INT64_C(1) << QStringLiteral("0.001");
    QTest::newRow("highest") << 100 << highest << QStringLiteral("92233720368547758.07");
    QTest::newRow("lowest") << 100 << lowest << QStringLiteral("-92233720368547758.08");
}

void tst_FixNumber::toText()
{
    QFETCH(int, multiplier);
    QFETCH(qint64, raw);
    QFETCH(QString, text);
    QCOMPARE(FixNumber(multiplier, raw).toString(), text);
    QCOMPARE(FixNumber(multiplier, text).value(), raw);
}

void tst_FixNumber::toDouble()
{
    QCOMPARE(FixNumber(100, 1999).toDouble(), 19.99);
    QCOMPARE(FixNumber(1000, -500).toDouble(), -0.5);
}

void tst_FixNumber::arithmetic_data()
{
    QTest::addColumn<FixNumber>("left");
    QTest::addColumn<FixNumber>("right");
    QTest::addColumn<qint64>("sum");
    QTest::addColumn<qint64>("difference");
    const auto row = [](const char *name, const FixNumber &left, const FixNumber &right, qint64 sum,
                        qint64 difference) {
        QTest::newRow(name) << left << right << sum << difference;
    };
    row("money", FixNumber(100, 1050), FixNumber(100, 25), 1075, 1025);
    row("finer right side", FixNumber(100, 100), FixNumber(1000, 5), 101, 99);
    row("finer right side below half", FixNumber(100, 100), FixNumber(1000, 4), 100, 100);
    row("finer right side, negative half", FixNumber(100, 100), FixNumber(1000, -5), 99, 101);
    row("coarser right side", FixNumber(1000, 1), FixNumber(1, 2), 2001, -1999);
    row("above the top", FixNumber(100, highest), FixNumber(100, 1), highest, highest - 1);
    row("below the bottom", FixNumber(100, lowest), FixNumber(100, 1), lowest + 1, lowest);
    row("bottom and bottom", FixNumber(100, lowest), FixNumber(100, lowest), lowest, 0);
    row("zero less the bottom", FixNumber(100, 0), FixNumber(100, lowest), lowest, highest);
    row("minus one less the bottom", FixNumber(100, -1), FixNumber(100, lowest), lowest, highest);
    row("minus two less the bottom", FixNumber(100, -2), FixNumber(100, lowest), lowest,
        highest - 1);
    row("rescaling beyond the top", FixNumber(1000, 0), FixNumber(1, highest), highest, -highest);
    row("rescaling beyond the bottom", FixNumber(1000, 0), FixNumber(1, lowest), lowest, highest);
}

void tst_FixNumber::arithmetic()
{
    QFETCH(FixNumber, left);
    QFETCH(FixNumber, right);
    QFETCH(qint64, sum);
    QFETCH(qint64, difference);
    QCOMPARE((left + right).value(), sum);
    QCOMPARE((left - right).value(), difference);
    QCOMPARE((left + right).multiplier(), left.multiplier());
    QCOMPARE((left - right).multiplier(), left.multiplier());
    FixNumber changed = left;
    changed += right;
    QCOMPARE(changed.value(), sum);
    changed = left;
    changed -= right;
    QCOMPARE(changed.value(), difference);
}

void tst_FixNumber::negation()
{
    QCOMPARE((-FixNumber(1000, 5)).value(), -5);
    QCOMPARE((-FixNumber(1000, 5)).multiplier(), 1000);
    QCOMPARE((-FixNumber(100, lowest)).value(), highest);
}

void tst_FixNumber::rescaling_data()
{
    QTest::addColumn<FixNumber>("from");
    QTest::addColumn<int>("multiplier");
    QTest::addColumn<qint64>("raw");
    QTest::newRow("finer") << FixNumber(100, 125) << 1000 << Q_INT64_C(1250);
    QTest::newRow("half up") << FixNumber(1000, 1005) << 100 << Q_INT64_C(101);
    QTest::newRow("half down below zero") << FixNumber(1000, -1005) << 100 << Q_INT64_C(-101);
    QTest::newRow("below half") << FixNumber(1000, -1004) << 100 << Q_INT64_C(-100);
    QTest::newRow("lowest") << FixNumber(1000000000, lowest) << 1 << Q_INT64_C(-9223372037);
    QTest::newRow("same") << FixNumber(100, lowest) << 100 << lowest;
}

void tst_FixNumber::rescaling()
{
    QFETCH(FixNumber, from);
    QFETCH(int, multiplier);
    QFETCH(qint64, raw);
    QCOMPARE(from.rescaled(multiplier).value(), raw);
    QCOMPARE(from.rescaled(multiplier).multiplier(), multiplier);
}

void tst_FixNumber::product_data()
{
    QTest::addColumn<FixNumber>("price");
    QTest::addColumn<FixNumber>("quantity");
    QTest::addColumn<qint64>("raw");
    QTest::newRow("one piece") << FixNumber(100, 12345) << FixNumber(1000, 1000)
                               << Q_INT64_C(12345);
    QTest::newRow("half, rounded up") << FixNumber(100, 5) << FixNumber(1000, 500) << Q_INT64_C(3);
    QTest::newRow("half of a negative, away from zero")
        << FixNumber(100, -5) << FixNumber(1000, 500) << Q_INT64_C(-3);
    QTest::newRow("both negative")
        << FixNumber(100, -1050) << FixNumber(1000, -1500) << Q_INT64_C(1575);
    QTest::newRow("water by the meter")
        << FixNumber(100, 4217) << FixNumber(1000, 12345) << Q_INT64_C(52059);
    QTest::newRow("nothing") << FixNumber(100, 500) << FixNumber(1000, 0) << Q_INT64_C(0);
    QTest::newRow("large, no intermediate overflow")
        << FixNumber(100, highest) << FixNumber(1000000000, 999999999)
        << Q_INT64_C(9223372027631403770);
    QTest::newRow("too large") << FixNumber(100, highest) << FixNumber(1000, 2000) << highest;
    QTest::newRow("too small") << FixNumber(100, highest) << FixNumber(1000, -2000) << lowest;
    QTest::newRow("lowest by one") << FixNumber(100, lowest) << FixNumber(1000, 1000) << lowest;
}

void tst_FixNumber::product()
{
    QFETCH(FixNumber, price);
    QFETCH(FixNumber, quantity);
    QFETCH(qint64, raw);
    QCOMPARE(price.multiplied(quantity).value(), raw);
    QCOMPARE(price.multiplied(quantity).multiplier(), price.multiplier());
}

void tst_FixNumber::comparisonLooksAtTheRawValue()
{
    const FixNumber small(100, -1);
    const FixNumber large(100, 1);
    QVERIFY(small < large);
    QVERIFY(small <= large);
    QVERIFY(large > small);
    QVERIFY(large >= small);
    QVERIFY(small != large);
    QVERIFY(!(small == large));
    QVERIFY(FixNumber(100, 100) == FixNumber(1000, 100));
    QVERIFY(FixNumber(100, 100) < FixNumber(1000, 101));
}

void tst_FixNumber::identityLooksAtTheMultiplierToo()
{
    QVERIFY(FixNumber(100, 5).isIdentical(FixNumber(100, 5)));
    QVERIFY(!FixNumber(100, 5).isIdentical(FixNumber(1000, 5)));
    QVERIFY(!FixNumber(100, 5).isIdentical(FixNumber(100, 6)));
}

void tst_FixNumber::variantsCompare()
{
    QCOMPARE(QVariant::fromValue(FixNumber(100, 5)), QVariant::fromValue(FixNumber(100, 5)));
    QVERIFY(QVariant::fromValue(FixNumber(100, 5)) != QVariant::fromValue(FixNumber(100, 6)));
}

QTEST_GUILESS_MAIN(tst_FixNumber)
#include "tst_fixnumber.moc"
