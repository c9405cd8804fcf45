#include "faultrun.h"

#include <fiscal/fiscaljournal.h>
#include <payments/chargejournal.h>
#include <payments/paymentsstore.h>

#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QtEndian>
#include <QtTest>

#include <csignal>

/// Database files as a power cut leaves them: copied at a random moment of a working station, the
/// end of the write-ahead log missing or torn. Each opens in an old or a new state, none broken.
class tst_PowerCut : public QObject
{
    Q_OBJECT

private slots:
    void filesOpenInAnOldOrNewState();
};

namespace {

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

QTEST_GUILESS_MAIN(tst_PowerCut)
#include "tst_powercut.moc"
