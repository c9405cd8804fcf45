#include <molvacore/cardchargelog.h>

#include <QSignalSpy>
#include <QTest>
#include <QThread>

#include <memory>
#include <vector>

class tst_CardChargeLog : public QObject
{
    Q_OBJECT

private slots:
    void init() { CardChargeLog::clear(); }

    void keepsTheOrder();
    void totalCountsUnansweredChargesToo();
    void announcesACharge();
    void threads();
};

namespace {

CardCharge charge(qint64 kopecks)
{
    CardCharge made;
    made.amount = basix::FixNumber(100, kopecks);
    return made;
}

} // namespace

void tst_CardChargeLog::keepsTheOrder()
{
    QVERIFY(CardChargeLog::charges().isEmpty());
    CardChargeLog::append(charge(1));
    CardChargeLog::append(charge(2));
    QCOMPARE(CardChargeLog::charges().size(), 2);
    QCOMPARE(CardChargeLog::charges().at(1).amount.value(), 2);
    CardChargeLog::clear();
    QVERIFY(CardChargeLog::charges().isEmpty());
}

void tst_CardChargeLog::totalCountsUnansweredChargesToo()
{
    CardCharge lost = charge(250);
    lost.answered = false;
    CardChargeLog::append(lost);
    CardChargeLog::append(charge(50));
    QCOMPARE(CardChargeLog::total().toString(), QStringLiteral("3.00"));
}

void tst_CardChargeLog::announcesACharge()
{
    QSignalSpy announced(CardChargeLog::instance(), &CardChargeLog::charged);
    CardChargeLog::append(charge(7));
    QCOMPARE(announced.size(), 1);
    QCOMPARE(announced.first().first().value<CardCharge>().amount.value(), 7);
}

void tst_CardChargeLog::threads()
{
    std::vector<std::unique_ptr<QThread>> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back(QThread::create([] {
            for (int n = 0; n < 500; ++n)
                CardChargeLog::append(charge(1));
        }));
        threads.back()->start();
    }
    for (const std::unique_ptr<QThread> &thread : threads)
        QVERIFY(thread->wait(30000));
    QCOMPARE(CardChargeLog::total().value(), 2000);
}

QTEST_GUILESS_MAIN(tst_CardChargeLog)
#include "tst_cardchargelog.moc"
