#include <bus/wiretext.h>

#include <QtTest>

#include <limits>

class tst_WireText : public QObject
{
    Q_OBJECT

private slots:
    void encodes_data();
    void encodes();
    void refuses_data();
    void refuses();
    void readsBackWhatItWrote();
    void refusesToDecode_data();
    void refusesToDecode();
};

void tst_WireText::encodes_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QByteArray>("text");
    const auto big = Q_INT64_C(9007199254740993);
    QTest::newRow("int") << QVariant(643) << QByteArray("643");
    QTest::newRow("64-bit") << QVariant(Q_INT64_C(18722)) << QByteArray("18722");
    QTest::newRow("2^53") << QVariant(big - 1) << QByteArray("9007199254740992");
    QTest::newRow("beyond 2^53 is text") << QVariant(big) << QByteArray("\"9007199254740993\"");
    QTest::newRow("below -2^53 is text") << QVariant(-big) << QByteArray("\"-9007199254740993\"");
    QTest::newRow("unsigned maximum")
        << QVariant(std::numeric_limits<quint64>::max()) << QByteArray("\"18446744073709551615\"");
    QTest::newRow("double") << QVariant(1500.5) << QByteArray("1500.5");
    QTest::newRow("one kopeck") << QVariant(0.01) << QByteArray("0.01");
    QTest::newRow("bytes are text")
        << QVariant(QByteArray(R"({"a":1})")) << QByteArray(R"("{\"a\":1}")");
    QTest::newRow("cyrillic") << QVariant(QStringLiteral("Ё № «»")) << QByteArray("\"Ё № «»\"");
    QTest::newRow("empty text") << QVariant(QString()) << QByteArray("\"\"");
    QTest::newRow("nothing") << QVariant() << QByteArray("null");
    QTest::newRow("bool") << QVariant(true) << QByteArray("true");
    QTest::newRow("list") << QVariant(QVariantList{1, QVariantMap{{QStringLiteral("b"), 2}}})
                          << QByteArray(R"([1,{"b":2}])");
    QTest::newRow("time") << QVariant(QDateTime(QDate(2026, 11, 21), QTime(10, 5, 6, 7), Qt::UTC))
                          << QByteArray(R"("2026-11-21T10:05:06.007Z")");
}

void tst_WireText::encodes()
{
    QFETCH(QVariant, value);
    QFETCH(QByteArray, text);
    QString error = QStringLiteral("old");
    const std::optional<QByteArray> body =
        WireText::encode(QVariantMap{{QStringLiteral("v"), value}}, &error);
    QVERIFY2(body, qPrintable(error));
    QCOMPARE(*body, QByteArray("{\"v\":" + text + "}"));
    QVERIFY(error.isEmpty());
}

void tst_WireText::refuses_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::newRow("infinity") << QVariant(std::numeric_limits<double>::infinity());
    QTest::newRow("not a number") << QVariant(std::numeric_limits<double>::quiet_NaN());
    QTest::newRow("bytes that are no text") << QVariant(QByteArray("\xff\xfe"));
    QTest::newRow("bytes cut inside a letter") << QVariant(QByteArray("\xd0"));
    QTest::newRow("half of a surrogate pair") << QVariant(QString(QChar(0xd83d)));
    QTest::newRow("half of a surrogate pair in a name")
        << QVariant(QVariantMap{{QString(QChar(0xd83d)), 1}});
    QTest::newRow("object") << QVariant::fromValue<QObject *>(this);
    QTest::newRow("inside a list")
        << QVariant(QVariantList{1, QVariant::fromValue<QObject *>(this)});
}

void tst_WireText::refuses()
{
    QFETCH(QVariant, value);
    QString error;
    QVERIFY(!WireText::encode(QVariantMap{{QStringLiteral("key"), value}}, &error));
    QVERIFY2(error.contains(QStringLiteral("«key")), qPrintable(error));
}

void tst_WireText::readsBackWhatItWrote()
{
    const QVariantMap map{{QStringLiteral("uid"), QStringLiteral("-9223372036854775808")},
                          {QStringLiteral("summ"), 1500.5},
                          {QStringLiteral("\ufeffmark"), QStringLiteral("\ufeffa\ufeff")},
                          {QStringLiteral("list"), QVariantList{QStringLiteral("a"), true}}};
    QString error;
    const std::optional<QByteArray> body = WireText::encode(map, &error);
    QVERIFY(body);
    const std::optional<QVariantMap> back = WireText::decode(*body, &error);
    QVERIFY(back);
    QCOMPARE(*back, map);
    QVERIFY(!WireText::encode(QStringLiteral("text"), &error));
    QVERIFY(!error.isEmpty());
}

void tst_WireText::refusesToDecode_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("cut") << QByteArray(R"({"a":)");
    QTest::newRow("list") << QByteArray("[1]");
    QTest::newRow("cp1251") << QByteArray("{\"a\":\"\xcf\"}");
}

void tst_WireText::refusesToDecode()
{
    QFETCH(QByteArray, body);
    QString error;
    QVERIFY(!WireText::decode(body, &error));
    QVERIFY(!error.isEmpty());
}

QTEST_GUILESS_MAIN(tst_WireText)
#include "tst_wiretext.moc"
