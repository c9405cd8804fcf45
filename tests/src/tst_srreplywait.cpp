#include "srreplywait.h"

#include <QProgressBar>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

class TestSrReplyWait : public QObject
{
    Q_OBJECT

private slots:
    void startsHiddenWithHalfASecond();
    void beginShowsAndStarts();
    void ticksNeverReachTheEnd();
    void stepReachesTheEndOfAWiderRange();
    void endHidesAndStops();
    void beginAgainStartsAnew();
    void barTellsTheSecondsWaited();
};

void TestSrReplyWait::startsHiddenWithHalfASecond()
{
    QTimer timer;
    QProgressBar bar;
    const SrReplyWait wait(&timer, &bar);
    QCOMPARE(timer.interval(), 500);
    QVERIFY(!timer.isActive());
    QVERIFY(!timer.isSingleShot());
    QVERIFY(bar.isHidden());
    QCOMPARE(bar.minimum(), 0);
    QCOMPARE(bar.maximum(), 100);
}

void TestSrReplyWait::beginShowsAndStarts()
{
    QWidget window;
    QTimer timer;
    auto *bar = new QProgressBar(&window);
    SrReplyWait wait(&timer, bar);
    window.show();
    bar->setValue(40);
    wait.begin();
    QVERIFY(timer.isActive());
    QVERIFY(bar->isVisible());
    QCOMPARE(bar->value(), 0);
}

void TestSrReplyWait::ticksNeverReachTheEnd()
{
    QTimer timer;
    QProgressBar bar;
    SrReplyWait wait(&timer, &bar);
    wait.begin();
    for (int tick = 0; tick < 10000; ++tick) {
        QVERIFY(!wait.tick());
        QCOMPARE(bar.value(), 0);
    }
    QVERIFY(timer.isActive());
}

void TestSrReplyWait::stepReachesTheEndOfAWiderRange()
{
    QTimer timer;
    QProgressBar bar;
    SrReplyWait wait(&timer, &bar);
    bar.setMaximum(1000);
    wait.begin();
    QVERIFY(!wait.tick());
    QCOMPARE(bar.value(), 500);
    QVERIFY(wait.tick());
    QCOMPARE(bar.value(), 1000);
}

void TestSrReplyWait::endHidesAndStops()
{
    QTimer timer;
    QProgressBar bar;
    SrReplyWait wait(&timer, &bar);
    bar.setMaximum(1000);
    wait.begin();
    wait.tick();
    wait.end();
    QVERIFY(!timer.isActive());
    QVERIFY(bar.isHidden());
    QCOMPARE(bar.value(), 0);
}

void TestSrReplyWait::beginAgainStartsAnew()
{
    QTimer timer;
    QProgressBar bar;
    SrReplyWait wait(&timer, &bar);
    bar.setMaximum(1000);
    wait.begin();
    wait.tick();
    wait.begin();
    QCOMPARE(bar.value(), 0);
    QVERIFY(timer.isActive());
    wait.end();
    wait.begin();
    QVERIFY(timer.isActive());
    QVERIFY(!bar.isHidden());
}

void TestSrReplyWait::barTellsTheSecondsWaited()
{
    QTimer timer;
    QProgressBar bar;
    SrReplyWait wait(&timer, &bar);
    wait.begin();
    QCOMPARE(bar.format(), QStringLiteral("Ожидание ответа: 0 с"));
    QTRY_COMPARE_WITH_TIMEOUT((wait.tick(), bar.format()), QStringLiteral("Ожидание ответа: 1 с"),
                              3000);
}

QTEST_MAIN(TestSrReplyWait)
#include "tst_srreplywait.moc"
