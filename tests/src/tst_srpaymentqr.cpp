#include "srpaymentqr.h"

#include <QTest>

class TestSrPaymentQr : public QObject
{
    Q_OBJECT

private slots:
    void isPaymentCode_data();
    void isPaymentCode();
    void pairs_data();
    void pairs();
    void period_data();
    void period();
    void periodBeyondTheLastYear();
    void sum_data();
    void sum();
};

void TestSrPaymentQr::isPaymentCode_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("expected");
    QTest::newRow("UTF-8") << QStringLiteral("ST00012|PersAcc=1") << true;
    QTest::newRow("windows-1251") << QStringLiteral("ST00011|PersAcc=1") << true;
    QTest::newRow("bare header") << QStringLiteral("ST0001|") << true;
    QTest::newRow("without separator") << QStringLiteral("ST00012PersAcc=1") << false;
    QTest::newRow("other separator") << QStringLiteral("ST00012#PersAcc=1") << false;
    QTest::newRow("lower case") << QStringLiteral("st00012|PersAcc=1") << false;
    QTest::newRow("stray prefix") << QStringLiteral("xST00012|PersAcc=1") << false;
    QTest::newRow("other version") << QStringLiteral("ST00022|PersAcc=1") << false;
    QTest::newRow("account number") << QStringLiteral("0012345") << false;
    QTest::newRow("empty") << QString() << false;
}

void TestSrPaymentQr::isPaymentCode()
{
    QFETCH(QString, text);
    QTEST(SrPaymentQr::isPaymentCode(text), "expected");
}

void TestSrPaymentQr::pairs_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("bill") << QStringLiteral(
        "ST00012|Name=X|PersAcc=123|PaymPeriod=03.2024|Sum=150050")
                          << QStringList{QStringLiteral("Name>X"), QStringLiteral("PersAcc>123"),
                                         QStringLiteral("PaymPeriod>03.2024"),
                                         QStringLiteral("Sum>150050")};
    QTest::newRow("repeated names in order")
        << QStringLiteral("ST00012|Sum=1|PersAcc=2|Sum=3")
        << QStringList{QStringLiteral("Sum>1"), QStringLiteral("PersAcc>2"),
                       QStringLiteral("Sum>3")};
    QTest::newRow("two signs of equality")
        << QStringLiteral("ST00012|Purpose=a=b|Sum=1") << QStringList{QStringLiteral("Sum>1")};
    QTest::newRow("empty blocks and trailing separator")
        << QStringLiteral("ST00012||Sum=1|") << QStringList{QStringLiteral("Sum>1")};
    QTest::newRow("empty value") << QStringLiteral("ST00012|PersAcc=")
                                 << QStringList{QStringLiteral("PersAcc>")};
    QTest::newRow("empty name") << QStringLiteral("ST00012|=5")
                                << QStringList{QStringLiteral(">5")};
    QTest::newRow("names keep their case")
        << QStringLiteral("ST00012|persacc=1") << QStringList{QStringLiteral("persacc>1")};
    QTest::newRow("no payment code") << QStringLiteral("t=20240101|s=5") << QStringList();
}

void TestSrPaymentQr::pairs()
{
    QFETCH(QString, text);
    QStringList found;
    for (const SrPaymentQr::Pair &pair : SrPaymentQr::pairs(text))
        found.append(pair.name + QLatin1Char('>') + pair.value);
    QTEST(found, "expected");
}

void TestSrPaymentQr::period_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<int>("month");
    QTest::addColumn<int>("year");
    QTest::newRow("point") << QStringLiteral("03.2024") << 3 << 2024;
    QTest::newRow("slash") << QStringLiteral("03/2024") << 3 << 2024;
    QTest::newRow("one digit") << QStringLiteral("3.2024") << 3 << 2024;
    QTest::newRow("January") << QStringLiteral("01.2024") << 1 << 2024;
    QTest::newRow("December") << QStringLiteral("12.2024") << 12 << 2024;
    QTest::newRow("first year") << QStringLiteral("03.2000") << 3 << 2000;
    QTest::newRow("before the first year") << QStringLiteral("03.1999") << 0 << 0;
    QTest::newRow("blanks around") << QStringLiteral(" 03.2024\r") << 3 << 2024;
    QTest::newRow("year only") << QStringLiteral("2024") << 0 << 0;
    QTest::newRow("empty") << QString() << 0 << 0;
    QTest::newRow("month 0") << QStringLiteral("00.2024") << 0 << 0;
    QTest::newRow("month 13") << QStringLiteral("13.2024") << 0 << 0;
    QTest::newRow("negative month") << QStringLiteral("-3.2024") << 0 << 0;
    QTest::newRow("signed month") << QStringLiteral("+3.2024") << 0 << 0;
    QTest::newRow("month in words") << QStringLiteral("март.2024") << 0 << 0;
    QTest::newRow("two-digit year") << QStringLiteral("03.24") << 0 << 0;
    QTest::newRow("year in words") << QStringLiteral("03.год") << 0 << 0;
    QTest::newRow("date") << QStringLiteral("01.03.2024") << 0 << 0;
    QTest::newRow("date with slashes") << QStringLiteral("01/03/2024") << 0 << 0;
    QTest::newRow("overflow") << QStringLiteral("03.99999999999999999999") << 0 << 0;
    QTest::newRow("wraps around 32 bits") << QStringLiteral("4294967299.2024") << 0 << 0;
    QTest::newRow("Arabic digits") << QStringLiteral("٠٣.٢٠٢٤") << 0 << 0;
}

void TestSrPaymentQr::period()
{
    QFETCH(QString, value);
    QFETCH(int, month);
    const auto period = SrPaymentQr::period(value);
    QCOMPARE(period.has_value(), month != 0);
    if (period) {
        QCOMPARE(period->month, month);
        QTEST(period->year, "year");
    }
}

void TestSrPaymentQr::periodBeyondTheLastYear()
{
    QVERIFY(SrPaymentQr::period(QStringLiteral("03.2026"), 2026));
    QVERIFY(!SrPaymentQr::period(QStringLiteral("03.2027"), 2026));
}

void TestSrPaymentQr::sum_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("expected");
    QTest::newRow("kopecks") << QStringLiteral("150050") << QStringLiteral("1500.50");
    QTest::newRow("one kopeck") << QStringLiteral("1") << QStringLiteral("0.01");
    QTest::newRow("zero") << QStringLiteral("0") << QStringLiteral("0.00");
    QTest::newRow("leading zeros") << QStringLiteral("000150") << QStringLiteral("1.50");
    QTest::newRow("blanks around") << QStringLiteral(" 150 ") << QStringLiteral("1.50");
    QTest::newRow("largest of the field")
        << QStringLiteral("9999999999") << QStringLiteral("99999999.99");
    QTest::newRow("one kopeck more") << QStringLiteral("10000000000") << QString();
    QTest::newRow("19 digits") << QStringLiteral("9999999999999999999") << QString();
    QTest::newRow("18 digits") << QStringLiteral("999999999999999999") << QString();
    QTest::newRow("negative") << QStringLiteral("-5") << QString();
    QTest::newRow("signed") << QStringLiteral("+5") << QString();
    QTest::newRow("roubles with a comma") << QStringLiteral("1,5") << QString();
    QTest::newRow("roubles with a point") << QStringLiteral("1500.50") << QString();
    QTest::newRow("exponent") << QStringLiteral("1e3") << QString();
    QTest::newRow("words") << QStringLiteral("сто") << QString();
    QTest::newRow("group separator") << QStringLiteral("150 050") << QString();
    QTest::newRow("empty") << QString() << QString();
}

void TestSrPaymentQr::sum()
{
    QFETCH(QString, value);
    const auto sum = SrPaymentQr::sum(value);
    QTEST(sum ? sum->toString() : QString(), "expected");
    if (sum)
        QCOMPARE(sum->multiplier(), 100);
}

QTEST_GUILESS_MAIN(TestSrPaymentQr)
#include "tst_srpaymentqr.moc"
