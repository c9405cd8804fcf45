#include "faultrun.h"

#include <QJsonArray>
#include <QtTest>

#include <csignal>

/// The program itself with the plugin in it, killed in the middle of a payment made through the
/// plugin's windows.
class tst_DemoKills : public QObject
{
    Q_OBJECT

private slots:
    void recoversWhatThePluginBegan_data();
    void recoversWhatThePluginBegan();
    void keepsItsMemoryAndFilesToItself();
};

void tst_DemoKills::recoversWhatThePluginBegan_data()
{
    QTest::addColumn<QString>("demo");
    QTest::addColumn<QString>("faultPoint");
    QTest::addColumn<int>("receipts");
    QTest::addColumn<int>("rebuilt");
    QTest::addColumn<int>("returned");
    const auto row = [](const char *demo, const char *place, int receipts, int rebuilt,
                        int returned) {
        QTest::addRow("%s %s", demo, place)
            << QString::fromLatin1(demo) << QString::fromLatin1(place) << receipts << rebuilt
            << returned;
    };
    row("individual", "charge.after-commit", 0, 0, 1);
    row("individual", "receipt.before-commit", 0, 0, 1);
    row("individual", "receipt.after-commit", 1, 1, 0);
    row("individual", "pack.before-commit", 1, 1, 0);
    row("individual", "pack.after-commit", 1, 0, 0);
    row("individual", "billing.after-taking", 1, 0, 0);
    row("legal", "receipt.after-commit", 1, 1, 0);
    row("legal", "handon.after-commit", 1, 0, 0);
}

void tst_DemoKills::recoversWhatThePluginBegan()
{
    QFETCH(QString, demo);
    QFETCH(QString, faultPoint);
    QFETCH(int, receipts);
    QFETCH(int, rebuilt);
    QFETCH(int, returned);
    FaultRun run;
    QVERIFY(run.isReady());
    const auto hit = run.runProgram(
        QStringLiteral(SELMAR_TERMINAL),
        {QStringLiteral("--demo"), demo, QStringLiteral("--data"), run.folder()}, faultPoint);
    QVERIFY2(hit.killed, hit.output.constData());
    const auto recovered = run.run({QStringLiteral("recover")});
    QVERIFY2(recovered.code == 0, recovered.output.constData());
    QCOMPARE(run.figures().value(QLatin1String("receipts")).toArray().size(), receipts);
    QCOMPARE(run.promised(QStringLiteral("rebuilt")), rebuilt);
    QCOMPARE(run.promised(QStringLiteral("returned")), returned);
    const QJsonObject figures = run.figures();
    QCOMPARE(figures.value(QLatin1String("billedPacks")).toInt(), receipts);
    QCOMPARE(figures.value(QLatin1String("billed")), figures.value(QLatin1String("receiptTotal")));
    QCOMPARE(figures.value(QLatin1String("packCard")),
             figures.value(QLatin1String("receiptCashless")));
    QCOMPARE(run.run({QStringLiteral("recover")}).code, 0);
    QCOMPARE(run.figures(), figures);
}

void tst_DemoKills::keepsItsMemoryAndFilesToItself()
{
    FaultRun run;
    QVERIFY(run.isReady());
    QProcess terminal;
    terminal.start(QStringLiteral(SELMAR_TERMINAL),
                   {QStringLiteral("--demo"), QStringLiteral("individual"),
                    QStringLiteral("--data"), run.folder(), QStringLiteral("--slow"),
                    QStringLiteral("2000")});
    QVERIFY(terminal.waitForReadyRead(30000));
    const QString proc = QStringLiteral("/proc/%1/").arg(terminal.processId());
    QFile status(proc + QStringLiteral("status"));
    QFile limits(proc + QStringLiteral("limits"));
    QVERIFY(status.open(QIODevice::ReadOnly) && limits.open(QIODevice::ReadOnly));
    QVERIFY(status.readAll().contains("Umask:\t0077"));
    const QRegularExpression noCore(QStringLiteral("Max core file size +0 +0 "));
    QVERIFY(noCore.match(QString::fromLatin1(limits.readAll())).hasMatch());
    terminal.kill();
    QVERIFY(terminal.waitForFinished());
}

QTEST_GUILESS_MAIN(tst_DemoKills)
#include "tst_demokills.moc"
