#include <bus/amqp/messagecheck.h>

#include <QtTest>

class tst_MessageCheck : public QObject
{
    Q_OBJECT

private slots:
    void reads_data();
    void reads();
};

namespace {

QByteArray nested(int depth)
{
    return "{\"a\":" + QByteArray(depth - 1, '[') + QByteArray(depth - 1, ']') + "}";
}

} // namespace

void tst_MessageCheck::reads_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("problem");

    const QString fine;
    const QString repeats = QStringLiteral("повторяется");
    const QString notParsed = QStringLiteral("не разобрано");
    QTest::newRow("map") << QByteArray(R"({"a":1,"b":{"a":2},"c":[{"a":1},{"a":1}]})") << fine;
    QTest::newRow("empty map") << QByteArray("{}") << fine;
    QTest::newRow("brackets and quotes in a text")
        << QByteArray(R"({"a":"}]\"{[\\","b":":"})") << fine;
    QTest::newRow("value like a key") << QByteArray(R"({"a":"b","b":"a"})") << fine;
    QTest::newRow("Cyrillic") << QByteArray("{\"имя\":\"№ ₽\"}") << fine;
    QTest::newRow("deep") << nested(MessageCheck::DEEPEST_NESTING) << fine;
    QTest::newRow("too deep") << nested(MessageCheck::DEEPEST_NESTING + 1)
                              << QStringLiteral("вложенность");
    QTest::newRow("very deep and never closed")
        << "{\"a\":" + QByteArray(1000000, '[') << QStringLiteral("вложенность");
    QTest::newRow("one key twice") << QByteArray(R"({"s":{"a":"x"},"s":1})") << repeats;
    QTest::newRow("one key twice, blanks") << QByteArray("{\"s\" : 1, \"s\"\n\t: 1}") << repeats;
    QTest::newRow("one key twice, inside") << QByteArray(R"({"a":[{"s":1,"s":2}]})") << repeats;
    QTest::newRow("one key twice, escaped") << QByteArray("{\"s\":1,\"\\u0073\":2}") << repeats;
    QTest::newRow("empty") << QByteArray() << notParsed;
    QTest::newRow("cut") << QByteArray(R"({"a":1)") << notParsed;
    QTest::newRow("cut in a text") << QByteArray(R"({"a":"x)") << QStringLiteral("не закончена");
    QTest::newRow("cut in an escape")
        << QByteArray("{\"a\":\"x\\") << QStringLiteral("не закончена");
    QTest::newRow("list") << QByteArray("[1]") << notParsed;
    QTest::newRow("text") << QByteArray("\"a\"") << notParsed;
    QTest::newRow("closing only") << QByteArray("}}]]") << notParsed;
    QTest::newRow("two maps") << QByteArray("{}{}") << notParsed;
    QTest::newRow("not UTF-8") << QByteArray("{\"a\":\"\xcf\xf0\"}") << QStringLiteral("UTF-8");
    QTest::newRow("too large") << "{\"a\":\"" + QByteArray(MessageCheck::LARGEST_BYTES, 'x') + "\"}"
                               << QStringLiteral("больше 8 МиБ");
}

void tst_MessageCheck::reads()
{
    QFETCH(QByteArray, body);
    QFETCH(QString, problem);
    QString error;
    const std::optional<QVariantMap> map = MessageCheck::read(body, &error);
    QCOMPARE(map.has_value(), problem.isEmpty());
    QVERIFY2(error.contains(problem), qPrintable(error));
}

QTEST_APPLESS_MAIN(tst_MessageCheck)
#include "tst_messagecheck.moc"
