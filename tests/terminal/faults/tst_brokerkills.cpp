#include "faultrun.h"

#include <billing/billingdatabase.h>
#include <billing/seededbilling.h>
#include <broker/brokerprocess.h>
#include <broker/farside.h>
#include <broker/workerprocess.h>

#include <QJsonArray>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>

#include <algorithm>
#include <cstdio>

namespace {

/// A broker's node needs its time on a machine that has other work.
constexpr int LONG_MS = 180000;
constexpr int WORKERS = 2;

enum class Victim { Station, Worker, Broker, Node };

int plannedKills(int inTheSuite, int part)
{
    return std::max(inTheSuite, qEnvironmentVariableIntValue("SELMAR_KILLS") / part);
}

} // namespace

Q_DECLARE_METATYPE(Victim)

/// A station that takes payments and billing's workers on both sides of a broker; one of them all
/// is killed again and again at random moments while the others go on.
///
/// The environment variable SELMAR_KILLS makes it a long run: so many kills of a station and of a
/// worker, a tenth of that of a broker or of a node. SELMAR_KILL_SEED repeats the moments of an
/// earlier run.
class tst_BrokerKills : public QObject
{
    Q_OBJECT

private slots:
    void nothingIsLostOrDoubled_data();
    void nothingIsLostOrDoubled();

private:
    void startStation(int pace);
    void startWorker(int number);
    QString killAndRestart(Victim victim, int pace, QRandomGenerator *random, bool first);
    void report(int kills) const;

    std::unique_ptr<BrokerProcess> m_broker;
    std::unique_ptr<FaultRun> m_run;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<WorkerProcess> m_workers[WORKERS];
    std::unique_ptr<QProcess> m_station;
};

void tst_BrokerKills::startStation(int pace)
{
    m_station =
        m_run->start({QStringLiteral("work"), QStringLiteral("--pace"), QString::number(pace)});
}

void tst_BrokerKills::startWorker(int number)
{
    // In a cluster each works at a node of its own.
    const int nodes = m_broker->nodeCount();
    m_workers[number] = std::make_unique<WorkerProcess>(
        m_broker->address(QStringLiteral("worker"), (number + 1) % nodes),
        m_folder->filePath(QStringLiteral("billing.sqlite")));
}

QString tst_BrokerKills::killAndRestart(Victim victim, int pace, QRandomGenerator *random,
                                        bool first)
{
    switch (victim) {
    case Victim::Station:
        m_run->finish(*m_station, true);
        startStation(pace);
        return QString();
    case Victim::Worker: {
        const int number = random->bounded(WORKERS);
        m_workers[number]->kill9();
        startWorker(number);
        return QString();
    }
    case Victim::Broker:
    case Victim::Node: {
        // The first leads the queues.
        const int node = first ? 0 : random->bounded(m_broker->nodeCount());
        m_broker->kill9(node);
        return m_broker->restart(node);
    }
    }
    return QString();
}

void tst_BrokerKills::report(int kills) const
{
    const QJsonObject figures = m_run->figures();
    const auto size = [&](const char *key) {
        return figures.value(QLatin1String(key)).toArray().size();
    };
    const QString disagreement = m_run->disagreement();
    std::printf("killed: %-22s %d times\n"
                "charges promised / kept        %d / %d\n"
                "receipts promised / kept       %d / %d\n"
                "packs promised / kept          %d / %d\n"
                "packs at billing               %d\n"
                "lost or doubled                %s\n",
                QTest::currentDataTag(), kills, m_run->promised(QStringLiteral("charged")),
                size("charges"), m_run->promised(QStringLiteral("printed")), size("receipts"),
                m_run->promised(QStringLiteral("saved")), size("packs"),
                figures.value(QLatin1String("billedPacks")).toInt(),
                disagreement.isEmpty() ? "nothing" : qPrintable(disagreement));
    std::fflush(stdout);
}

void tst_BrokerKills::nothingIsLostOrDoubled_data()
{
    QTest::addColumn<Victim>("victim");
    QTest::addColumn<int>("nodes");
    QTest::addColumn<int>("kills");
    QTest::addColumn<int>("pace");
    QTest::newRow("terminal") << Victim::Station << 1 << plannedKills(4, 1) << 0;
    QTest::newRow("worker") << Victim::Worker << 1 << plannedKills(4, 1) << 5;
    QTest::newRow("broker") << Victim::Broker << 1 << plannedKills(1, 10) << 50;
    QTest::newRow("node of three") << Victim::Node << 3 << plannedKills(1, 10) << 50;
}

void tst_BrokerKills::nothingIsLostOrDoubled()
{
    QFETCH(Victim, victim);
    QFETCH(int, nodes);
    QFETCH(int, kills);
    QFETCH(int, pace);
    const quint32 seed = qEnvironmentVariableIsSet("SELMAR_KILL_SEED")
        ? quint32(qEnvironmentVariableIntValue("SELMAR_KILL_SEED"))
        : QRandomGenerator::system()->generate() % 1000000;
    qInfo("%d kills, seed %u", kills, seed);
    QRandomGenerator random(seed);

    if (!m_broker || m_broker->nodeCount() != nodes) {
        m_broker = std::make_unique<BrokerProcess>(nodes);
        const QString problem = m_broker->start();
        QVERIFY2(problem.isEmpty(), qPrintable(problem));
        FarSide declaring;
        QCOMPARE(declaring.open(m_broker->address(QStringLiteral("worker"), 0)), QString());
    }
    m_folder = std::make_unique<QTemporaryDir>();
    const QString billingFile = m_folder->filePath(QStringLiteral("billing.sqlite"));
    QVERIFY(copySeededBilling(billingFile));
    BillingDatabase billing;
    QVERIFY2(billing.open(billingFile), qPrintable(billing.lastError()));
    m_run = std::make_unique<FaultRun>();
    QVERIFY(m_run->isReady());
    m_run->setBroker(m_broker->address(QStringLiteral("box1"), nodes - 1), billingFile);
    for (int i = 0; i < WORKERS; ++i)
        startWorker(i);
    startStation(pace);

    for (int i = 0; i < kills; ++i) {
        // A payment came through from one end to the other: everything works.
        const int before = billing.packCount();
        QTRY_VERIFY2_WITH_TIMEOUT(billing.packCount() > before,
                                  m_station->peek(1 << 20).right(500).constData(), LONG_MS);
        QTest::qWait(random.bounded(200));
        const QString problem = killAndRestart(victim, pace, &random, i == 0);
        QVERIFY2(problem.isEmpty(), qPrintable(problem));
    }
    m_run->finish(*m_station, true);
    const auto recovered = m_run->run({QStringLiteral("recover")});
    QVERIFY2(recovered.code == 0, recovered.output.constData());
    report(kills);
    QVERIFY2(m_run->disagreement().isEmpty(), qPrintable(m_run->disagreement()));
    QVERIFY(m_run->promised(QStringLiteral("saved")) > 0);

    const QJsonObject figures = m_run->figures();
    QCOMPARE(m_run->run({QStringLiteral("recover")}).code, 0);
    QCOMPARE(m_run->figures(), figures);
    for (auto &worker : m_workers)
        worker.reset();
}

QTEST_GUILESS_MAIN(tst_BrokerKills)
#include "tst_brokerkills.moc"
