#include <bus/messagebody.h>

#include <QtTest>

#include <thread>
#include <vector>

namespace {

QVariantMap fieldsOf(const QString &text)
{
    return {{QStringLiteral("text"), text}};
}

} // namespace

class tst_MessageBody : public QObject
{
    Q_OBJECT

private slots:
    void textStaysAsItCame_data();
    void textStaysAsItCame();
    void fieldsBecomeTextWhenAskedFor();
    void copiesShareTheText();
    void weighsWithoutMakingText();
    void textLetsGoOfTheFields();
    void copiesInThreads();
};

void tst_MessageBody::textStaysAsItCame_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("none") << QByteArray();
    QTest::newRow("json") << QByteArray("{ \"uid\" : \"7\" }");
    QTest::newRow("no json") << QByteArray("\xff{");
}

void tst_MessageBody::textStaysAsItCame()
{
    QFETCH(QByteArray, text);
    const MessageBody body = text;
    QCOMPARE(body.bytes(), text);
    QVERIFY(!body.fields());
    QCOMPARE(body.weight(), qint64(text.size()));
}

void tst_MessageBody::fieldsBecomeTextWhenAskedFor()
{
    const QVariantMap fields = fieldsOf(QStringLiteral("ё\n"));
    const MessageBody body = MessageBody::ofFields(fields);
    QCOMPARE(body.fields(), std::make_optional(fields));
    QVERIFY(body.fields()->isSharedWith(fields));
    QCOMPARE(body.bytes(), QByteArray(R"({"text":"ё\n"})"));
    QCOMPARE(body.bytes(), QByteArray(R"({"text":"ё\n"})"));
    QVERIFY(!body.fields());
}

void tst_MessageBody::copiesShareTheText()
{
    const MessageBody body = MessageBody::ofFields(fieldsOf(QStringLiteral("v")));
    const MessageBody copy = body;
    const QByteArray text = copy.bytes();
    QCOMPARE(body.bytes().constData(), text.constData());
}

void tst_MessageBody::weighsWithoutMakingText()
{
    const MessageBody light = MessageBody::ofFields(fieldsOf(QStringLiteral("v")));
    const MessageBody heavy = MessageBody::ofFields(
        {{QStringLiteral("list"), QVariantList{fieldsOf(QString(5000, QLatin1Char('v')))}}});
    QVERIFY(light.weight() > 0);
    QVERIFY2(light.weight() < 500, qPrintable(QString::number(light.weight())));
    QVERIFY(heavy.weight() >= 5000);
    QVERIFY(heavy.fields());
    const int size = heavy.bytes().size();
    QCOMPARE(heavy.weight(), qint64(size));
}

void tst_MessageBody::textLetsGoOfTheFields()
{
    const MessageBody body = MessageBody::ofFields(fieldsOf(QStringLiteral("v")));
    const QVariantMap before = *body.fields();
    QVERIFY(!before.isDetached());
    body.bytes();
    QVERIFY(!body.fields());
    QVERIFY(before.isDetached());
}

void tst_MessageBody::copiesInThreads()
{
    for (int round = 0; round < 100; ++round) {
        const MessageBody body = MessageBody::ofFields(fieldsOf(QString::number(round)));
        const QByteArray expected = "{\"text\":\"" + QByteArray::number(round) + "\"}";
        std::vector<QByteArray> texts(4);
        std::vector<std::thread> threads;
        for (QByteArray &text : texts)
            threads.emplace_back([body, &text] { text = body.bytes(); });
        for (std::thread &thread : threads)
            thread.join();
        for (const QByteArray &text : texts)
            QCOMPARE(text, expected);
    }
}

QTEST_GUILESS_MAIN(tst_MessageBody)
#include "tst_messagebody.moc"
