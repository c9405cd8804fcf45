#include <bus/messagetext.h>

#include <QtTest>

using Relation = BusJournalEntry::Relation;

namespace {

BusJournalEntry arrived(const QByteArray &body)
{
    BusJournalEntry entry;
    entry.number = 2;
    entry.message.direction = BusMessage::Direction::Incoming;
    entry.message.time =
        QDateTime(QDate(2026, 11, 20), QTime(10, 30, 5, 7), Qt::OffsetFromUTC, 3 * 3600);
    entry.message.address = QStringLiteral("checkPayStatus");
    entry.message.headers = {{QStringLiteral("msgType"), QStringLiteral("checkPayStatus")}};
    entry.message.body = body;
    entry.relation = Relation::Answer;
    entry.partner = 1;
    entry.roundTrip = 12;
    return entry;
}

} // namespace

class tst_MessageText : public QObject
{
    Q_OBJECT

private slots:
    void bodyIsIndented();
    void jsonInsideJsonIsShownToo();
    void whatIsNoJsonIsShownAsItCame();
    void longLinesAreCutOnTheScreenOnly();
    void longTextsAreCutOnTheScreenOnly();
    void hugeBodiesAreNotFormatted();
    void credentialsAreNeverShown_data();
    void credentialsAreNeverShown();
    void otherValuesStay_data();
    void otherValuesStay();
    void jsonLine();
    void jsonLineOfASentMessage();
    void jsonLineOfBrokenText();
    void relations_data();
    void relations();
};

void tst_MessageText::bodyIsIndented()
{
    const QString text = MessageText::shown(
        arrived("{\"uid\":\"7\", \"name\":\"Ёлкин %1 {[,:\\\"]}\",\r\n\"list\":[ 1.50,{},[]],"
                "\"id\":9007199254740993}"));
    QVERIFY2(text.contains(QStringLiteral("№ 2, 20.11.2026 10:30:05.007")), qPrintable(text));
    QVERIFY(text.contains(QStringLiteral("Получено, тип: checkPayStatus")));
    QVERIFY(text.contains(QStringLiteral("Ответ на № 1")));
    QVERIFY(text.contains(QStringLiteral("msgType: checkPayStatus")));
    const QString body =
        QStringLiteral("{\n    \"uid\": \"7\",\n    \"name\": \"Ёлкин %1 {[,:\\\"]}\",\n    "
                       "\"list\": [\n        1.50,\n        {},\n        []\n    ],\n    "
                       "\"id\": 9007199254740993\n}\n");
    QVERIFY2(text.endsWith(body), qPrintable(text));
}

void tst_MessageText::jsonInsideJsonIsShownToo()
{
    const QString text =
        MessageText::shown(arrived(R"({"uid":"7","description":"{\"isError\":false}"})"));
    QVERIFY(text.contains(QStringLiteral("\"description\": \"{\\\"isError\\\":false}\"")));
    QVERIFY(text.contains(QStringLiteral("description:\n{\n    \"isError\": false\n}")));
}

void tst_MessageText::whatIsNoJsonIsShownAsItCame()
{
    const QString text = MessageText::shown(arrived(R"({"uid":"7","desc)"));
    QVERIFY(text.endsWith(QStringLiteral("{\"uid\":\"7\",\"desc\n")));
    const QString behindANull = MessageText::shown(arrived(QByteArrayLiteral("{}\0rest")));
    QVERIFY2(behindANull.endsWith(QStringLiteral("rest\n")), qPrintable(behindANull));
}

void tst_MessageText::longLinesAreCutOnTheScreenOnly()
{
    const QByteArray value(MessageText::LONGEST_LINE * 3, 'x');
    const BusJournalEntry entry = arrived("{\"a\":\"" + value + "\"}");
    const QString text = MessageText::shown(entry);
    for (const QString &line : text.split(QLatin1Char('\n')))
        QVERIFY(line.size() < MessageText::LONGEST_LINE + 40);
    QVERIFY(text.contains(QStringLiteral("… (ещё знаков: ")));
    QVERIFY(MessageText::whole(entry).contains(QString::fromUtf8(value)));
    QVERIFY(MessageText::jsonLine(entry).contains(value));
}

void tst_MessageText::longTextsAreCutOnTheScreenOnly()
{
    QByteArray list = "[0";
    for (int i = 1; i < 100000; ++i)
        list += ',' + QByteArray::number(i);
    const BusJournalEntry entry = arrived(list + ']');
    const QString text = MessageText::shown(entry);
    QVERIFY(text.size() < MessageText::LONGEST_SHOWN + 2000);
    QVERIFY(text.contains(QStringLiteral("Показано не всё")));
    QVERIFY(MessageText::whole(entry).contains(QStringLiteral("99999")));
}

void tst_MessageText::hugeBodiesAreNotFormatted()
{
    const QByteArray body =
        "{\"a\":\"" + QByteArray(MessageText::MOST_FORMATTED, 'x') + "\",\"b\":1}";
    const QString text = MessageText::shown(arrived(body));
    QVERIFY(text.size() < MessageText::LONGEST_LINE + 1000);
    QVERIFY(text.contains(QStringLiteral("слишком велико")));
    QVERIFY(MessageText::whole(arrived(body)).contains(QStringLiteral("\"b\": 1")));
}

void tst_MessageText::credentialsAreNeverShown_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::newRow("password") << QByteArray(R"({"password":"qwerty-1"})");
    QTest::newRow("capitals") << QByteArray(R"({"Password":"qwerty-1"})");
    QTest::newRow("deep") << QByteArray(R"({"a":[{"b":{"accessToken":"qwerty-1"}}]})");
    QTest::newRow("object") << QByteArray(R"({"credentials":{"a":"qwerty-1"}})");
    QTest::newRow("inside a text") << QByteArray(R"({"description":"{\"pin\":\"qwerty-1\"}"})");
    QTest::newRow("cut text") << QByteArray(R"({"uid":"7","secret": "qwerty-1","desc)");
    QTest::newRow("cut in the value") << QByteArray(R"({"uid":"7","api_key":"qwerty-1)");
    QTest::newRow("cut after an escaped mark")
        << QByteArray(R"({"uid":"7","secret": "a\"qwerty-1","desc)");
    QTest::newRow("cut inner text after an escaped mark")
        << QByteArray(R"({"description":"{\"pwd\":\"a\\\"qwerty-1\",\"a)");
    QTest::newRow("a number in a cut text") << QByteArray(R"({"pin": qwerty-1,"desc)");
    QTest::newRow("cut inner text") << QByteArray(R"({"description":"{\"pwd\":\"qwerty-1\",\"a)");
    QTest::newRow("cut text inside a whole one")
        << QByteArray(R"({"description":"{\"cvv\": \"qwerty-1\",\"a"})");
    const QByteArray letters(200000, 'x');
    QTest::newRow("long") << "{\"token\":\"" + letters + "qwerty-1";
    QTest::newRow("long, of escaped characters")
        << "{\"token\":\"" + QByteArray(R"(\u0041)").repeated(50000) + "qwerty-1";
    QTest::newRow("long in a cut inner text")
        << R"({"description":"{\"token\":\")" + letters + "qwerty-1";
    QTest::newRow("behind a long one") << "{\"token\":\"" + letters + R"(","pin":"qwerty-1","desc)";
}

void tst_MessageText::credentialsAreNeverShown()
{
    QFETCH(QByteArray, body);
    const BusJournalEntry entry = arrived(body);
    const QString secret = QStringLiteral("qwerty-1");
    const QStringList texts{MessageText::shown(entry), MessageText::whole(entry),
                            QString::fromUtf8(MessageText::jsonLine(entry))};
    for (const QString &text : texts) {
        QVERIFY2(!text.contains(secret), qPrintable(text));
        QVERIFY2(text.contains(QStringLiteral("***")), qPrintable(text));
    }
    BusJournalEntry inHeaders = arrived("{}");
    inHeaders.message.headers.insert(QStringLiteral("Authorization"), secret);
    QVERIFY(!MessageText::shown(inHeaders).contains(secret));
    QVERIFY(!MessageText::jsonLine(inHeaders).contains(secret.toUtf8()));
}

void tst_MessageText::otherValuesStay_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::newRow("part of a name") << QByteArray(R"({"pinned":"keep-1"})");
    QTest::newRow("name as a value") << QByteArray(R"({"title":"password","x":"keep-1"})");
    QTest::newRow("cut") << QByteArray(R"({"password":"","x":"keep-1)");
    QTest::newRow("inside a text")
        << QByteArray(R"({"description":"{ \"b\": 1, \"a\": \"keep-1\" }"})");
}

void tst_MessageText::otherValuesStay()
{
    QFETCH(QByteArray, body);
    QVERIFY(MessageText::whole(arrived(body)).contains(QStringLiteral("keep-1")));
    QVERIFY(MessageText::jsonLine(arrived(body)).contains("keep-1"));
}

void tst_MessageText::jsonLine()
{
    QCOMPARE(QString::fromUtf8(MessageText::jsonLine(arrived("{\"uid\":\n\"7\"}"))),
             QStringLiteral("{\"body\":{\"uid\": \"7\"},\"direction\":\"received\",\"headers\":{"
                            "\"msgType\":\"checkPayStatus\"},\"number\":2,\"request\":1,"
                            "\"roundTripMs\":12,\"time\":\"2026-11-20T10:30:05.007+03:00\","
                            "\"type\":\"checkPayStatus\"}"));
}

void tst_MessageText::jsonLineOfASentMessage()
{
    BusJournalEntry entry = arrived(R"({"id":9007199254740993})");
    entry.message.direction = BusMessage::Direction::Outgoing;
    entry.message.address = QStringLiteral("/app/add_pay_pack");
    entry.message.headers.clear();
    entry.relation = Relation::Request;
    entry.partner = 0;
    entry.roundTrip = -1;
    entry.refusal = QStringLiteral("нет связи");
    QCOMPARE(QString::fromUtf8(MessageText::jsonLine(entry)),
             QStringLiteral("{\"body\":{\"id\":9007199254740993},\"destination\":"
                            "\"/app/add_pay_pack\",\"direction\":\"sent\",\"headers\":{},"
                            "\"number\":2,\"refusal\":\"нет связи\",\"time\":"
                            "\"2026-11-20T10:30:05.007+03:00\"}"));
}

void tst_MessageText::jsonLineOfBrokenText()
{
    const QByteArray line =
        MessageText::jsonLine(arrived(QByteArrayLiteral("{\"uid\":\"7\n\0\xff")));
    QVERIFY(!line.contains('\n'));
    const QJsonObject object = QJsonDocument::fromJson(line).object();
    QCOMPARE(object.value(QStringLiteral("text")).toString(),
             QStringLiteral("{\"uid\":\"7\n\0") + QChar(0xfffd));
    QVERIFY(!object.contains(QStringLiteral("body")));
}

void tst_MessageText::relations_data()
{
    QTest::addColumn<int>("relation");
    QTest::addColumn<qint64>("partner");
    QTest::addColumn<bool>("accepted");
    QTest::addColumn<bool>("replayed");
    QTest::addColumn<QString>("refusal");
    QTest::addColumn<QString>("text");
    const auto row = [](const char *name, Relation relation, qint64 partner, const QString &text,
                        bool accepted = false, const QString &refusal = {}, bool replayed = false) {
        QTest::newRow(name) << int(relation) << partner << accepted << replayed << refusal << text;
    };
    row("request", Relation::Request, 0, QStringLiteral("Ответа ещё нет"));
    row("accepted request", Relation::Request, 0, QStringLiteral("Принято, ответа ещё нет"), true);
    row("answered request", Relation::Request, 5, QStringLiteral("Ответ — № 5"), true);
    row("refused", Relation::Request, 0, QStringLiteral("Не принято: %1 нет связи"), false,
        QStringLiteral("%1 нет связи"));
    row("notice", Relation::Notice, 0, QStringLiteral("Ответ не нужен"));
    row("answer", Relation::Answer, 4, QStringLiteral("Ответ на № 4"));
    row("repeated", Relation::Repeated, 4, QStringLiteral("Повторный ответ на № 4"));
    row("replayed", Relation::Repeated, 4, QStringLiteral("Повторён вручную, ответ на № 4"), false,
        QString(), true);
    row("unmatched", Relation::Unmatched, 0, QStringLiteral("Такого запроса в журнале нет"));
    row("unreadable", Relation::Unreadable, 0, QStringLiteral("Не разобрано: это не JSON"));
}

void tst_MessageText::relations()
{
    QFETCH(int, relation);
    QFETCH(qint64, partner);
    QFETCH(bool, accepted);
    QFETCH(bool, replayed);
    QFETCH(QString, refusal);
    BusJournalEntry entry;
    entry.relation = Relation(relation);
    entry.partner = partner;
    entry.accepted = accepted;
    entry.message.replayed = replayed;
    entry.refusal = refusal;
    QTEST(MessageText::relation(entry), "text");
}

QTEST_GUILESS_MAIN(tst_MessageText)
#include "tst_messagetext.moc"
