#include "stationpayment.h"
#include "stationrecovery.h"

#include "processuse.h"

#include <app/terminalcontext.h>
#include <billing/sampleaccounts.h>

#include <molvacore/cardchargelog.h>

#include <QTemporaryDir>
#include <QTest>

#include <sqlite3.h>

namespace {

/// The allocator's tables are filled in the first payments.
constexpr int settlingPayments = 100;
constexpr int payments = 200;
/// Per payment on the average: less than one record of a payment takes.
constexpr int allowedBytes = 1024;
constexpr int patienceMs = 60000;

/// The page cache of one database is bounded by the engine itself.
constexpr qint64 cacheBytes = 2 * 1024 * 1024;

qint64 ownHeap(const ProcessUse &use)
{
    return use.heapBytes == 0 ? 0 : use.heapBytes - sqlite3_memory_used();
}

/// SELMAR_PAYMENTS asks for the long form.
int paymentsToMake()
{
    const int asked = qEnvironmentVariableIntValue("SELMAR_PAYMENTS");
    return asked > 0 ? asked : payments;
}

} // namespace

/// A workstation that is not closed for days: its stores grow on the disk and not in memory.
class TestStationLongUse : public QObject
{
    Q_OBJECT

private slots:
    void paymentsGiveBackWhatTheyTake();

private:
    static void pay(TerminalContext &context, int count);
};

void TestStationLongUse::pay(TerminalContext &context, int count)
{
    for (int i = 0; i < count; ++i) {
        StationPayment::Plan plan;
        plan.account = SampleNumber::ORDINARY;
        plan.cash = 10000 + i % 100;
        // Whole roubles: the last two digits are what the card emulator decides by.
        plan.card = i % 3 == 0 ? 5000 : 0;
        plan.answerLost = i % 5 == 4;
        QVERIFY(StationPayment(context, plan, [](const QByteArray &) {}).make());
        QCoreApplication::processEvents();
    }
    QVERIFY(StationRecovery::waitUntilConfirmed(context, patienceMs));
    // Kept in memory on purpose: the emulator's charges, and the messages of the bus up to a bound.
    CardChargeLog::clear();
    context.busJournal().clear();
}

void TestStationLongUse::paymentsGiveBackWhatTheyTake()
{
    QTemporaryDir folder;
    QString error;
    const auto context = TerminalContext::open(folder.path(), &error);
    QVERIFY2(context, qPrintable(error));
    pay(*context, settlingPayments);
    const ProcessUse before = ProcessUse::now();
    const qint64 heapBefore = ownHeap(before);
    const int count = paymentsToMake();
    pay(*context, count);
    const ProcessUse after = ProcessUse::now();
    qInfo("before %d payments: %s", count, qPrintable(before.text()));
    qInfo("after %d payments: %s, of which %lld KiB are the databases' caches", count,
          qPrintable(after.text()), sqlite3_memory_used() / 1024);
    QCOMPARE(after.files, before.files);
    QCOMPARE(after.threads, before.threads);
    QCOMPARE(after.databases, before.databases);
    const qint64 perPayment = (ownHeap(after) - heapBefore) / count;
    QVERIFY2(perPayment < allowedBytes, qPrintable(QString::number(perPayment)));
    QVERIFY(sqlite3_memory_used() < cacheBytes * after.databases);
    QCOMPARE(context->paysController().unposted().size(), 0);
}

QTEST_GUILESS_MAIN(TestStationLongUse)
#include "tst_stationlonguse.moc"
