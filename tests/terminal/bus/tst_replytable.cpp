#include <bus/amqp/replytable.h>

#include <QtTest>

using Kind = ReplyTable::Kind;

class tst_ReplyTable : public QObject
{
    Q_OBJECT

private slots:
    void oneAnswerEach();
    void answerWaitsForTheConfirm();
    void refusedMessageHasNoAnswer();
    void kindsDoNotMix();
    void oneNameTwice();
    void messageWithoutAName();
    void requestsGrowOldAndPacksDoNot();
    void clearForgetsEverything();
};

namespace {

const ReplyTable::Answer ANSWER{{{QStringLiteral("msgType"), QStringLiteral("t")}}, "{}"};

} // namespace

void tst_ReplyTable::oneAnswerEach()
{
    ReplyTable table;
    const QString id = table.expect(Kind::Request, QStringLiteral("42"), 1, 0);
    QCOMPARE(id, QStringLiteral("42"));
    QVERIFY(!table.confirmed(1));
    QVERIFY(table.isExpected(Kind::Request, id));
    QVERIFY(table.take(id, ANSWER));
    QVERIFY(!table.isExpected(Kind::Request, id));
    QVERIFY(!table.take(id, ANSWER));
    QVERIFY(!table.isExpected(Kind::Request, QStringLiteral("43")));
}

void tst_ReplyTable::answerWaitsForTheConfirm()
{
    ReplyTable table;
    const QString id = table.expect(Kind::Pack, QStringLiteral("p"), 1, 0);
    QVERIFY(!table.take(id, ANSWER));
    QVERIFY2(!table.isExpected(Kind::Pack, id), "a second answer is not ours");
    const auto held = table.confirmed(1);
    QVERIFY(held);
    QCOMPARE(held->body, ANSWER.body);
    QCOMPARE(table.size(), 0);
}

void tst_ReplyTable::refusedMessageHasNoAnswer()
{
    ReplyTable table;
    const QString id = table.expect(Kind::Pack, QStringLiteral("p"), 1, 0);
    table.take(id, ANSWER);
    table.forget(1);
    QVERIFY(!table.confirmed(1));
    QVERIFY(!table.isExpected(Kind::Pack, id));
}

void tst_ReplyTable::kindsDoNotMix()
{
    ReplyTable table;
    const QString id = table.expect(Kind::Pack, QStringLiteral("p"), 1, 0);
    QVERIFY(!table.isExpected(Kind::Request, id));
    QVERIFY(table.isExpected(Kind::Pack, id));
}

void tst_ReplyTable::oneNameTwice()
{
    ReplyTable table;
    const QString first = table.expect(Kind::Request, QStringLiteral("42"), 1, 0);
    const QString second = table.expect(Kind::Request, QStringLiteral("42"), 2, 0);
    QVERIFY(first != second);
    table.confirmed(1);
    table.confirmed(2);
    QVERIFY(table.take(second, ANSWER));
    QVERIFY(table.take(first, ANSWER));
}

void tst_ReplyTable::messageWithoutAName()
{
    ReplyTable table;
    QVERIFY(!table.expect(Kind::Request, QString(), 1, 0).isEmpty());
    QVERIFY(!table.isExpected(Kind::Request, QString()));
}

void tst_ReplyTable::requestsGrowOldAndPacksDoNot()
{
    ReplyTable table;
    table.expect(Kind::Request, QStringLiteral("old"), 1, 0);
    table.expect(Kind::Request, QStringLiteral("young"), 2, 1000);
    table.expect(Kind::Pack, QStringLiteral("pack"), 3, 0);
    table.dropOld(ReplyTable::REQUEST_LIFE_MS + 1);
    QVERIFY(!table.isExpected(Kind::Request, QStringLiteral("old")));
    QVERIFY(table.isExpected(Kind::Request, QStringLiteral("young")));
    QVERIFY(table.isExpected(Kind::Pack, QStringLiteral("pack")));
}

void tst_ReplyTable::clearForgetsEverything()
{
    ReplyTable table;
    table.expect(Kind::Pack, QStringLiteral("p"), 1, 0);
    table.clear();
    QVERIFY(!table.isExpected(Kind::Pack, QStringLiteral("p")));
    QVERIFY(!table.confirmed(1));
}

QTEST_APPLESS_MAIN(tst_ReplyTable)
#include "tst_replytable.moc"
