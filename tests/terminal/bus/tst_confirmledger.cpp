#include <bus/amqp/confirmledger.h>

#include <QtTest>

class tst_ConfirmLedger : public QObject
{
    Q_OBJECT

private slots:
    void settles_data();
    void settles();
    void returnBeforeConfirmIsAReturn();
    void abandonNamesTheOpenOnes();
    void numbersStartAgainAfterAbandon();
    void knowsTheOldest();
};

namespace {

QString shown(const QVector<ConfirmLedger::Outcome> &outcomes)
{
    QStringList list;
    for (const ConfirmLedger::Outcome &outcome : outcomes) {
        QString mark;
        switch (outcome.result) {
        case ConfirmLedger::Result::Confirmed:
            mark = QStringLiteral("+");
            break;
        case ConfirmLedger::Result::Rejected:
            mark = QStringLiteral("-");
            break;
        case ConfirmLedger::Result::Returned:
            mark = QStringLiteral("<");
            break;
        }
        list.append(mark + QString::number(outcome.token));
    }
    return list.join(QLatin1Char(' '));
}

} // namespace

void tst_ConfirmLedger::settles_data()
{
    QTest::addColumn<quint64>("number");
    QTest::addColumn<bool>("multiple");
    QTest::addColumn<bool>("positive");
    QTest::addColumn<QString>("outcomes");
    QTest::addColumn<int>("left");

    QTest::newRow("one") << quint64(2) << false << true << "+12" << 3;
    QTest::newRow("all up to one") << quint64(3) << true << true << "+11 +12 +13" << 1;
    QTest::newRow("everything") << quint64(0) << true << true << "+11 +12 +13 +14" << 0;
    QTest::newRow("one rejected") << quint64(4) << false << false << "-14" << 3;
    QTest::newRow("several rejected") << quint64(2) << true << false << "-11 -12" << 2;
    QTest::newRow("unknown") << quint64(9) << false << true << "" << 4;
    QTest::newRow("beyond the last") << quint64(9) << true << true << "+11 +12 +13 +14" << 0;
}

void tst_ConfirmLedger::settles()
{
    QFETCH(quint64, number);
    QFETCH(bool, multiple);
    QFETCH(bool, positive);
    ConfirmLedger ledger;
    for (quint64 token : {11, 12, 13, 14})
        ledger.published(token, 0);
    QTEST(shown(ledger.settle(number, multiple, positive)), "outcomes");
    QTEST(ledger.size(), "left");
    QVERIFY(!shown(ledger.settle(number, multiple, positive)).contains(QLatin1Char('2')));
}

void tst_ConfirmLedger::returnBeforeConfirmIsAReturn()
{
    ConfirmLedger ledger;
    ledger.published(11, 0);
    ledger.published(12, 0);
    ledger.returned(12, QStringLiteral("NO_ROUTE"));
    ledger.returned(99, QStringLiteral("nobody's"));
    const auto outcomes = ledger.settle(2, true, true);
    QCOMPARE(shown(outcomes), QStringLiteral("+11 <12"));
    QCOMPARE(outcomes.at(1).text, QStringLiteral("NO_ROUTE"));
}

void tst_ConfirmLedger::abandonNamesTheOpenOnes()
{
    ConfirmLedger ledger;
    for (quint64 token : {5, 3, 8})
        ledger.published(token, 0);
    ledger.settle(2, false, true);
    QCOMPARE(ledger.abandon(), (QVector<quint64>{5, 8}));
    QVERIFY(ledger.isEmpty());
}

void tst_ConfirmLedger::numbersStartAgainAfterAbandon()
{
    ConfirmLedger ledger;
    ledger.published(5, 0);
    ledger.published(6, 0);
    ledger.abandon();
    ledger.published(7, 0);
    QCOMPARE(shown(ledger.settle(1, false, true)), QStringLiteral("+7"));
}

void tst_ConfirmLedger::knowsTheOldest()
{
    ConfirmLedger ledger;
    ledger.published(5, 100);
    ledger.published(6, 200);
    QCOMPARE(ledger.oldestTime(), qint64(100));
    ledger.settle(1, false, true);
    QCOMPARE(ledger.oldestTime(), qint64(200));
}

QTEST_APPLESS_MAIN(tst_ConfirmLedger)
#include "tst_confirmledger.moc"
