#include "srvalues.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

#include <limits>

class TestSrValues : public QObject
{
    Q_OBJECT

private slots:
    void money_data();
    void money();
    void integer_data();
    void integer();
    void text_data();
    void text();
    void moneyOfEveryJsonNumber();
    void moneyTextOfEveryShortText();
    void moneyTextSharesWhatIsWrittenSo();
};

void TestSrValues::money_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("expected");
    QTest::newRow("missing") << QVariant() << QStringLiteral("0.00");
    QTest::newRow("text without decimals")
        << QVariant(QStringLiteral("123")) << QStringLiteral("123.00");
    QTest::newRow("text with one decimal")
        << QVariant(QStringLiteral("123.4")) << QStringLiteral("123.40");
    QTest::newRow("text with two decimals")
        << QVariant(QStringLiteral("123.45")) << QStringLiteral("123.45");
    QTest::newRow("negative text") << QVariant(QStringLiteral("-0.05")) << QStringLiteral("-0.05");
    QTest::newRow("longest whole part that is passed on")
        << QVariant(QStringLiteral("9999999999999999.99")) << QStringLiteral("9999999999999999.99");
    QTest::newRow("largest") << QVariant(QStringLiteral("92233720368547758.07"))
                             << QStringLiteral("92233720368547758.07");
    QTest::newRow("text beyond 64 bits")
        << QVariant(QStringLiteral("92233720368547758.08")) << QStringLiteral("0.00");
    QTest::newRow("other digits") << QVariant(QStringLiteral("１２.００"))
                                  << QStringLiteral("0.00");
    QTest::newRow("no number") << QVariant(QStringLiteral("много")) << QStringLiteral("0.00");
    QTest::newRow("integer") << QVariant(12) << QStringLiteral("12.00");
    QTest::newRow("64 bits") << QVariant(qint64(123456789012345))
                             << QStringLiteral("123456789012345.00");
    QTest::newRow("double") << QVariant(12.5) << QStringLiteral("12.50");
    QTest::newRow("double of a million") << QVariant(1e6) << QStringLiteral("1000000.00");
    QTest::newRow("double with an exponent as text")
        << QVariant(12345678.91) << QStringLiteral("12345678.91");
    QTest::newRow("small double") << QVariant(0.01) << QStringLiteral("0.01");
    QTest::newRow("tiny double") << QVariant(1e-7) << QStringLiteral("0.00");
    QTest::newRow("inexact double") << QVariant(0.1 + 0.2) << QStringLiteral("0.30");
    QTest::newRow("float") << QVariant::fromValue(2.5F) << QStringLiteral("2.50");
    QTest::newRow("infinity") << QVariant(std::numeric_limits<double>::infinity())
                              << QStringLiteral("0.00");
    QTest::newRow("not a number") << QVariant(std::numeric_limits<double>::quiet_NaN())
                                  << QStringLiteral("0.00");
    QTest::newRow("beyond 64 bits") << QVariant(1e300) << QStringLiteral("0.00");
    QTest::newRow("boolean") << QVariant(true) << QStringLiteral("0.00");
    QTest::newRow("map") << QVariant(QVariantMap()) << QStringLiteral("0.00");
    QTest::newRow("list") << QVariant(QVariantList{1}) << QStringLiteral("0.00");
}

void TestSrValues::money()
{
    QFETCH(QVariant, value);
    QTEST(SrValues::money(value).toString(), "expected");
    QCOMPARE(SrValues::money(value).multiplier(), 100);
    QTEST(SrValues::moneyText(value), "expected");
}

void TestSrValues::integer_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<qint64>("expected");
    QTest::newRow("missing") << QVariant() << qint64(0);
    QTest::newRow("text") << QVariant(QStringLiteral("3924990")) << qint64(3924990);
    QTest::newRow("negative text") << QVariant(QStringLiteral("-3")) << qint64(-3);
    QTest::newRow("largest") << QVariant(QStringLiteral("9223372036854775807"))
                             << std::numeric_limits<qint64>::max();
    QTest::newRow("beyond 64 bits") << QVariant(QStringLiteral("9223372036854775808")) << qint64(0);
    QTest::newRow("no number") << QVariant(QStringLiteral("12а")) << qint64(0);
    QTest::newRow("integer") << QVariant(17) << qint64(17);
    QTest::newRow("double without a fraction") << QVariant(1e6) << qint64(1000000);
    QTest::newRow("double with a fraction") << QVariant(12.7) << qint64(0);
    QTest::newRow("float with a fraction") << QVariant::fromValue(1.5F) << qint64(0);
    QTest::newRow("double at the lower end")
        << QVariant(-9223372036854775808.0) << std::numeric_limits<qint64>::min();
    QTest::newRow("double beyond 64 bits") << QVariant(9223372036854775808.0) << qint64(0);
    QTest::newRow("double below 64 bits") << QVariant(-1e19) << qint64(0);
    QTest::newRow("not a number") << QVariant(std::numeric_limits<double>::quiet_NaN())
                                  << qint64(0);
    QTest::newRow("map") << QVariant(QVariantMap()) << qint64(0);
}

void TestSrValues::integer()
{
    QFETCH(QVariant, value);
    QTEST(SrValues::integer(value), "expected");
}

void TestSrValues::text_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("expected");
    QTest::newRow("missing") << QVariant() << QString();
    QTest::newRow("text") << QVariant(QStringLiteral(" 1e+06 ")) << QStringLiteral(" 1e+06 ");
    QTest::newRow("long number") << QVariant(7701234567.0) << QStringLiteral("7701234567");
    QTest::newRow("integer") << QVariant(qint64(770712345678)) << QStringLiteral("770712345678");
}

void TestSrValues::text()
{
    QFETCH(QVariant, value);
    QTEST(SrValues::text(value), "expected");
}

void TestSrValues::moneyOfEveryJsonNumber()
{
    for (qint64 kopecks : {1, 9, 10, 99, 100, 101, 115, 1998, 99999, 100000000, 123456789}) {
        const basix::FixNumber expected(100, kopecks);
        const QByteArray json = "{\"v\":" + expected.toString().toLatin1() + "}";
        const QVariant value =
            QJsonDocument::fromJson(json).object().toVariantMap().value(QStringLiteral("v"));
        QCOMPARE(SrValues::money(value), expected);
    }
}

void TestSrValues::moneyTextOfEveryShortText()
{
    const QString alphabet = QStringLiteral("-+01.,:/ ");
    const int length = 6;
    QVector<int> at(length, -1);
    for (int place = 0; place < length;) {
        QString text;
        for (const int character : qAsConst(at)) {
            if (character >= 0)
                text += alphabet.at(character);
        }
        QCOMPARE(SrValues::moneyText(text), SrValues::money(text).toString());
        for (place = 0; place < length && ++at[place] == alphabet.size(); ++place)
            at[place] = -1;
    }
}

void TestSrValues::moneyTextSharesWhatIsWrittenSo()
{
    for (const char *const written : {"0.00", "0.05", "7.10", "-7.10", "1234567.89",
                                      "9999999999999999.99", "-9999999999999999.99"}) {
        const QString sent = QLatin1String(written);
        QCOMPARE(SrValues::moneyText(sent).constData(), sent.constData());
    }
}

QTEST_GUILESS_MAIN(TestSrValues)
#include "tst_srvalues.moc"
