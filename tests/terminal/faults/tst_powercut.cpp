#include "diskimage.h"
#include "faultrun.h"
#include "recordingvfs.h"
#include "stationfigures.h"
#include "stationpayment.h"
#include "stationrecovery.h"

#include <app/terminalcontext.h>
#include <fiscal/fiscaljournal.h>
#include <payments/chargejournal.h>
#include <payments/paymentsstore.h>

#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QtEndian>
#include <QtTest>

#include <csignal>
#include <cstdio>

/// Database files as a power cut leaves them.
///
/// Once copied at a random moment of a working station, the end of the write-ahead log missing or
/// torn: each opens in an old or a new state, none broken. And once played again, write by write,
/// as a disk may have them that keeps no more than it was told to: from each of these states the
/// workstation recovers, what it had promised is there, and all who know of payments agree.
/// SELMAR_KILLS makes the latter a long run.
class tst_PowerCut : public QObject
{
    Q_OBJECT

private slots:
    void filesOpenInAnOldOrNewState();
    void recoversFromEveryPointOfAPayment();

private:
    static QString recovered(const DiskImage &disk, DiskImage::Cut cut, Agreement agreement,
                             QRandomGenerator *random);
};

namespace {

constexpr int PATIENCE_MS = 60000;

/// What of the log is in the database file already and therefore on the disk: before a checkpoint
/// moves a frame, the log is synchronised.
qint64 settledBytes(const QString &sharedIndex, qint64 pageSize)
{
    constexpr int headerBytes = 32;
    constexpr int frameHeaderBytes = 24;
    constexpr int backfillOffset = 96;
    QFile index(sharedIndex);
    if (!index.open(QIODevice::ReadOnly) || !index.seek(backfillOffset))
        return headerBytes;
    quint32 backfilled = 0;
    index.read(reinterpret_cast<char *>(&backfilled), sizeof(backfilled));
    return headerBytes + qint64(backfilled) * (frameHeaderBytes + pageSize);
}

/// Cuts the log's tail at a random byte and, every other time, fills the rest with noise.
void tear(const QString &database, QRandomGenerator *random)
{
    constexpr qint64 pageSize = 4096;
    QFile log(database + QStringLiteral("-wal"));
    const qint64 settled = settledBytes(database + QStringLiteral("-shm"), pageSize);
    if (!log.open(QIODevice::ReadWrite) || log.size() <= settled)
        return;
    const qint64 size = log.size();
    const qint64 cut = settled + qint64(random->generateDouble() * double(size - settled));
    log.resize(cut);
    if (random->bounded(2) == 0)
        return;
    QByteArray noise(int(size - cut), '\0');
    for (char &byte : noise)
        byte = char(random->bounded(256));
    log.seek(cut);
    log.write(noise);
}

QByteArrayList linesOf(const QByteArray &output, const char *what)
{
    QByteArrayList result;
    const QList<QByteArray> lines = output.left(output.lastIndexOf('\n') + 1).split('\n');
    for (const QByteArray &line : lines) {
        if (line.startsWith(QByteArray(what) + ' '))
            result.append(line.mid(int(qstrlen(what)) + 1));
    }
    return result;
}

} // namespace

void tst_PowerCut::filesOpenInAnOldOrNewState()
{
    const quint32 seed = QRandomGenerator::system()->generate() % 1000000;
    qInfo("seed %u", seed);
    QRandomGenerator random(seed);
    FaultRun run;
    QVERIFY(run.isReady());
    const auto station = run.start({QStringLiteral("work")});
    for (int round = 0; round < 8; ++round) {
        QTest::qWait(20 + int(random.bounded(150)));
        // Stopped, so that the copies are of one moment, as the disk's content is.
        QCOMPARE(::kill(pid_t(station->processId()), SIGSTOP), 0);
        const QByteArray told = station->peek(1 << 24);
        QTemporaryDir cut;
        const QStringList files =
            QDir(run.folder()).entryList({QStringLiteral("*.sqlite*")}, QDir::Files);
        for (const QString &file : files)
            QVERIFY(QFile::copy(QDir(run.folder()).filePath(file), cut.filePath(file)));
        QCOMPARE(::kill(pid_t(station->processId()), SIGCONT), 0);

        const bool torn = round % 2 == 1;
        const QStringList names{QStringLiteral("payments.sqlite"), QStringLiteral("fiscal.sqlite"),
                                QStringLiteral("charges.sqlite")};
        for (const QString &name : names) {
            if (torn)
                tear(cut.filePath(name), &random);
            // A power cut leaves no shared index.
            QFile::remove(cut.filePath(name) + QStringLiteral("-shm"));
        }

        PaymentsStore payments;
        QVERIFY2(payments.open(cut.filePath(names.at(0))), qPrintable(payments.lastError()));
        const QVector<PaymentRecord> records = payments.records({}, 0, 1000000);
        QCOMPARE(records.size(), payments.count({}));
        for (const PaymentRecord &record : records)
            QVERIFY(payments.pack(record.packId)->contains(QStringLiteral("payments")));

        FiscalJournal fiscal;
        QVERIFY2(fiscal.open(cut.filePath(names.at(1))), qPrintable(fiscal.lastError()));
        const qint64 next = fiscal.nextNumber();
        for (qint64 number = 1; number < next; ++number)
            QVERIFY2(fiscal.record(number), "a fiscal document in the middle is missing");

        ChargeJournal charges;
        QVERIFY2(charges.open(cut.filePath(names.at(2))), qPrintable(charges.lastError()));
        QCOMPARE(charges.charges(0, 1000000).size(), charges.count());

        if (torn)
            continue;
        const QByteArrayList saved = linesOf(told, "saved");
        for (const QByteArray &pack : saved)
            QVERIFY2(payments.record(pack.toLongLong()), pack.constData());
        const QByteArrayList printed = linesOf(told, "printed");
        for (const QByteArray &number : printed)
            QVERIFY2(fiscal.record(number.toLongLong()), number.constData());
    }
    run.finish(*station, true);
    QVERIFY2(run.run({QStringLiteral("recover")}).code == 0, "recovery");
    QVERIFY2(run.disagreement().isEmpty(), qPrintable(run.disagreement()));
}

/// What does not agree after a power cut here; empty when everything does.
QString tst_PowerCut::recovered(const DiskImage &disk, DiskImage::Cut cut, Agreement agreement,
                                QRandomGenerator *random)
{
    const QTemporaryDir folder;
    if (!disk.writeTo(folder.path(), cut, random))
        return QStringLiteral("the files were not written");
    QString error;
    const auto context = TerminalContext::open(folder.path(), &error);
    if (!context)
        return error;
    if (!StationRecovery::recover(*context, PATIENCE_MS))
        return QStringLiteral("a payment stays open");
    agreement.setFigures(stationFigures(*context, context->billing()));
    return agreement.disagreement();
}

void tst_PowerCut::recoversFromEveryPointOfAPayment()
{
    using Kind = RecordingVfs::Event::Kind;
    using Cut = DiskImage::Cut;
    const int wanted = qEnvironmentVariableIntValue("SELMAR_KILLS");
    const int payments = 1 + wanted / 50;
    const quint32 seed = QRandomGenerator::system()->generate() % 1000000;
    qInfo("%d payments, seed %u", payments, seed);
    QRandomGenerator random(seed);
    const FaultRun run;
    QVERIFY(run.isReady());
    DiskImage disk(run.folder());
    RecordingVfs vfs;
    vfs.setRecording(true);
    {
        QString error;
        const auto context = TerminalContext::open(run.folder(), &error);
        QVERIFY2(context, qPrintable(error));
        for (int i = 0; i < payments; ++i) {
            StationPayment::Plan plan;
            plan.account = SampleNumber::ORDINARY;
            plan.cash = 10000 + i;
            plan.card = i % 3 == 2 ? 0 : 5000;
            plan.answerLost = i % 5 == 4;
            StationPayment payment(*context, plan,
                                   [&vfs](const QByteArray &line) { vfs.note(line); });
            QVERIFY(payment.make());
        }
        QVERIFY(StationRecovery::waitUntilConfirmed(*context, PATIENCE_MS));
    }
    vfs.setRecording(false);

    const QVector<RecordingVfs::Event> events = vfs.events();
    Agreement agreement;
    int cuts = 0;
    int syncs = 0;
    int promises = 0;
    for (int i = 0; i < events.size(); ++i) {
        const RecordingVfs::Event &event = events.at(i);
        disk.apply(event);
        QVector<Cut> tried;
        if (event.kind == Kind::Note) {
            ++promises;
            agreement.promise(event.data);
            tried = {Cut::Nothing};
        } else if (event.kind == Kind::Sync) {
            ++syncs;
            tried = {Cut::Nothing};
        } else if (wanted > 0 || event.kind != Kind::Write) {
            tried = {Cut::Nothing, Cut::Everything, Cut::Some};
        } else if (i % 4 == 0) {
            tried = {i % 8 == 0 ? Cut::Everything : Cut::Some};
        }
        for (const Cut cut : qAsConst(tried)) {
            const QString problem = recovered(disk, cut, agreement, &random);
            QVERIFY2(problem.isEmpty(),
                     qPrintable(QStringLiteral("event %1 of %2, cut %3: %4")
                                    .arg(QString::number(i), QString::number(events.size()),
                                         QString::number(int(cut)), problem)));
            ++cuts;
        }
    }
    std::printf("payments played                %d\n"
                "writes and synchronisations    %d, %d of the latter\n"
                "power cuts                     %d\n"
                "lost or doubled                nothing\n",
                payments, int(events.size()) - promises, syncs, cuts);
    std::fflush(stdout);
    QVERIFY(promises >= 3 * payments - payments / 3);
    QVERIFY(syncs > 10);
}

QTEST_GUILESS_MAIN(tst_PowerCut)
#include "tst_powercut.moc"
