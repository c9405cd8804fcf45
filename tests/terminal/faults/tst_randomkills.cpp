#include "faultrun.h"

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QtTest>

#include <algorithm>
#include <cstdio>

/// A workstation that takes payments one after another and is killed at random moments. The
/// environment variable SELMAR_KILLS says how often (15 without it), SELMAR_KILL_SEED repeats the
/// moments of an earlier run.
class tst_RandomKills : public QObject
{
    Q_OBJECT

private slots:
    void nothingIsLostOrDoubled();
};

void tst_RandomKills::nothingIsLostOrDoubled()
{
    const int kills = qEnvironmentVariableIsSet("SELMAR_KILLS")
        ? qEnvironmentVariableIntValue("SELMAR_KILLS")
        : 15;
    const quint32 seed = qEnvironmentVariableIsSet("SELMAR_KILL_SEED")
        ? quint32(qEnvironmentVariableIntValue("SELMAR_KILL_SEED"))
        : QRandomGenerator::system()->generate() % 1000000;
    qInfo("%d kills, seed %u", kills, seed);
    QRandomGenerator random(seed);

    FaultRun run;
    QVERIFY(run.isReady());
    qint64 slowest = 0;
    int early = 0;
    for (int i = 0; i < kills; ++i) {
        QElapsedTimer clock;
        clock.start();
        const auto station = run.start({QStringLiteral("work")});
        // One in five dies while it starts or recovers, the others while they take payments.
        if (random.bounded(5) == 0) {
            QTest::qWait(random.bounded(150));
            ++early;
        } else {
            QByteArray head;
            while (!head.contains("working")) {
                QVERIFY2(station->waitForReadyRead(120000), head.constData());
                head = station->peek(1 << 20);
            }
            slowest = std::max(slowest, clock.elapsed());
            QTest::qWait(random.bounded(250));
        }
        const auto ending = run.finish(*station, true);
        QVERIFY2(ending.killed, ending.output.constData());
    }
    const auto recovered = run.run({QStringLiteral("recover")});
    QVERIFY2(recovered.code == 0, recovered.output.constData());
    const QString disagreement = run.disagreement();
    const QJsonObject figures = run.figures();
    const auto size = [&](const char *key) {
        return figures.value(QLatin1String(key)).toArray().size();
    };
    std::printf("kills                          %d (%d of them at the start)\n"
                "charges promised / kept        %d / %d\n"
                "receipts promised / kept       %d / %d\n"
                "packs promised / kept          %d / %d\n"
                "packs at billing               %d\n"
                "packs rebuilt from a receipt   %d\n"
                "charges given back             %d\n"
                "slowest start with recovery    %lld ms\n"
                "lost or doubled                %s\n",
                kills, early, run.promised(QStringLiteral("charged")), size("charges"),
                run.promised(QStringLiteral("printed")), size("receipts"),
                run.promised(QStringLiteral("saved")), size("packs"),
                figures.value(QLatin1String("billedPacks")).toInt(),
                figures.value(QLatin1String("recovered")).toInt(),
                run.promised(QStringLiteral("returned")), slowest,
                disagreement.isEmpty() ? "nothing" : qPrintable(disagreement));
    std::fflush(stdout);
    QVERIFY2(disagreement.isEmpty(), qPrintable(disagreement));
    QVERIFY(run.promised(QStringLiteral("saved")) > 0);

    const auto again = run.run({QStringLiteral("recover")});
    QCOMPARE(again.code, 0);
    QCOMPARE(run.figures(), figures);
}

QTEST_GUILESS_MAIN(tst_RandomKills)
#include "tst_randomkills.moc"
