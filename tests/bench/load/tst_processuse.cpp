#include <processuse.h>

#include <QCoreApplication>
#include <QtTest>

#include <numeric>

class tst_ProcessUse : public QObject
{
    Q_OBJECT

private slots:
    void timeGrowsWithWork();
    void memoryGrowsWithUse();
    void aProcessThatIsNotThereUsesNothing();
};

void tst_ProcessUse::timeGrowsWithWork()
{
    const qint64 self = QCoreApplication::applicationPid();
    const double before = ProcessUse::processorMs(self);
    volatile quint64 sum = 0;
    // The kernel counts in hundredths of a second.
    QTRY_VERIFY_WITH_TIMEOUT(
        [&] {
            for (int i = 0; i < 5000000; ++i)
                sum = sum + quint64(i);
            return ProcessUse::processorMs(self) >= before + 20;
        }(),
        60000);
}

void tst_ProcessUse::memoryGrowsWithUse()
{
    constexpr int MIB = 64;
    const qint64 self = QCoreApplication::applicationPid();
    const double before = ProcessUse::residentMiB(self);
    QVERIFY(before > 1);
    QByteArray block(MIB * 1024 * 1024, 'x');
    QVERIFY(std::accumulate(block.cbegin(), block.cend(), qint64(0)) != 0);
    QVERIFY(ProcessUse::residentMiB(self) > before + MIB / 2);
}

void tst_ProcessUse::aProcessThatIsNotThereUsesNothing()
{
    QCOMPARE(ProcessUse::processorMs(0), 0.0);
    QCOMPARE(ProcessUse::residentMiB(0), 0.0);
}

QTEST_GUILESS_MAIN(tst_ProcessUse)
#include "tst_processuse.moc"
