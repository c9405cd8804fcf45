#include "faultrun.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QtTest>

#include <unistd.h>

/// Databases that cannot be written: what cannot be kept is refused aloud, what was kept stays.
class tst_FullStorage : public QObject
{
    Q_OBJECT

private slots:
    void aFullDiskRefusesAndKeeps_data();
    void aFullDiskRefusesAndKeeps();
    void aReadOnlyDatabaseRefuses_data();
    void aReadOnlyDatabaseRefuses();
};

void tst_FullStorage::aFullDiskRefusesAndKeeps_data()
{
    QTest::addColumn<int>("bytes");
    QTest::newRow("at once") << 4096;
    for (const int kilobytes : {50, 90, 140, 200, 300})
        QTest::newRow(qPrintable(QStringLiteral("%1 KB").arg(kilobytes))) << kilobytes * 1024;
}

void tst_FullStorage::aFullDiskRefusesAndKeeps()
{
    QFETCH(int, bytes);
    FaultRun run;
    QVERIFY(run.isReady());
    // In cash: what a card terminal did is beyond the reach of a workstation that cannot write.
    const auto full =
        run.run({QStringLiteral("pay"), QStringLiteral("40"), QStringLiteral("--cash"),
                 QStringLiteral("--file-limit"), QString::number(bytes)});
    QVERIFY(!full.killed);
    QVERIFY2(full.output.contains("refused"), full.output.constData());

    const auto recovered = run.run({QStringLiteral("recover")});
    QVERIFY2(recovered.code == 0, recovered.output.constData());
    QVERIFY2(run.disagreement().isEmpty(), qPrintable(run.disagreement()));
    const auto next =
        run.run({QStringLiteral("pay"), QStringLiteral("2"), QStringLiteral("--cash")});
    QVERIFY2(next.code == 0 && !next.output.contains("refused"), next.output.constData());
    QVERIFY2(run.disagreement().isEmpty(), qPrintable(run.disagreement()));
}

void tst_FullStorage::aReadOnlyDatabaseRefuses_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : {"payments.sqlite", "fiscal.sqlite", "charges.sqlite"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void tst_FullStorage::aReadOnlyDatabaseRefuses()
{
    QFETCH(QString, name);
    FaultRun run;
    QVERIFY(run.isReady());
    QVERIFY(run.run({QStringLiteral("pay"), QStringLiteral("1")}).code == 0);
    const QJsonObject before = run.figures();
    const QString file = QDir(run.folder()).filePath(name);
    QVERIFY(QFile::setPermissions(file, QFileDevice::ReadOwner));
    QStringList arguments{QStringLiteral("pay"), QStringLiteral("1")};
    if (::getuid() == 0) {
        // The superuser may write everything, so the station runs as somebody else.
        arguments.append(QStringLiteral("--nobody"));
        const QFileInfoList files = QDir(run.folder()).entryInfoList(QDir::Files);
        for (const QFileInfo &each : files)
            QCOMPARE(::chown(qPrintable(each.filePath()), 65534, 65534), 0);
        QCOMPARE(::chown(qPrintable(run.folder()), 65534, 65534), 0);
    }
    const auto refused = run.run(arguments);
    QVERIFY(!refused.killed);
    QVERIFY2(refused.output.contains("refused-start") && refused.output.contains(name.toUtf8()),
             refused.output.constData());

    QVERIFY(QFile::setPermissions(file, QFileDevice::ReadOwner | QFileDevice::WriteOwner));
    const auto recovered = run.run({QStringLiteral("recover")});
    QVERIFY2(recovered.code == 0, recovered.output.constData());
    QCOMPARE(run.figures(), before);
}

QTEST_GUILESS_MAIN(tst_FullStorage)
#include "tst_fullstorage.moc"
