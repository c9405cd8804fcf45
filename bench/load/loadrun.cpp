#include "loadrun.h"

#include "processuse.h"

#include <billing/billingdatabase.h>
#include <billing/sampleaccounts.h>
#include <bus/amqp/amqpbus.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

#include <algorithm>
#include <functional>

namespace {

constexpr int PATIENCE_MS = 120000;
constexpr int LOOK_MS = 20;
constexpr int WARM_UP_MS = 2000;
constexpr qint64 FIRST_BOX = 100000;

bool waitFor(const std::function<bool()> &condition, int patienceMs)
{
    QElapsedTimer waiting;
    waiting.start();
    QEventLoop loop;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &loop, [&] {
        if (condition() || waiting.hasExpired(patienceMs))
            loop.quit();
    });
    look.start(LOOK_MS);
    loop.exec();
    return condition();
}

void pass(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

} // namespace

LoadRun::LoadRun(const BrokerAddress &boxBus, const LoadBox::Host &host, const Settings &settings)
    : m_boxBus(boxBus), m_host(host), m_settings(settings)
{
}

bool LoadRun::startWorkers(QString *error)
{
    const QString database = m_folder.filePath(QStringLiteral("billing.sqlite"));
    if (!BillingDatabase().open(database)) {
        *error = QStringLiteral("%1 could not be made").arg(database);
        return false;
    }
    for (int i = 0; i < m_settings.workers; ++i) {
        auto worker = std::make_unique<QProcess>();
        worker->setProcessChannelMode(QProcess::MergedChannels);
        worker->start(m_settings.workerProgram,
                      {QStringLiteral("--bus"), m_settings.workerBus, QStringLiteral("--database"),
                       database});
        m_workers.push_back(std::move(worker));
    }
    for (const auto &worker : m_workers) {
        QByteArray said;
        const auto ready = [&] {
            said += worker->readAll();
            return said.contains("работает") || worker->state() == QProcess::NotRunning;
        };
        if (!waitFor(ready, PATIENCE_MS) || worker->state() == QProcess::NotRunning) {
            *error = QString::fromUtf8(said);
            return false;
        }
    }
    return true;
}

bool LoadRun::connectBoxes(QString *error)
{
    for (int i = 0; i < m_settings.boxes; ++i)
        m_boxes.push_back(std::make_unique<LoadBox>(std::make_unique<AmqpBus>(m_boxBus), m_host,
                                                    FIRST_BOX + i, SampleNumber::ORDINARY,
                                                    m_figures));
    const auto connected = [this] {
        return std::all_of(m_boxes.cbegin(), m_boxes.cend(),
                           [](const auto &box) { return box->isConnected(); });
    };
    if (waitFor(connected, PATIENCE_MS))
        return true;
    *error = QStringLiteral("not all boxes are connected");
    return false;
}

void LoadRun::addUse(Result *result, int sign) const
{
    result->boxesMs += sign * ProcessUse::processorMs(QCoreApplication::applicationPid());
    for (const auto &worker : m_workers)
        result->workersMs += sign * ProcessUse::processorMs(worker->processId());
    result->brokerMs += sign * ProcessUse::processorMs(m_settings.brokerPid);
}

void LoadRun::measure(Result *result)
{
    for (const auto &box : m_boxes)
        box->start();
    pass(WARM_UP_MS);
    m_figures.clear();
    addUse(result, -1);
    QElapsedTimer clock;
    clock.start();
    pass(m_settings.seconds * 1000);
    result->figures = m_figures;
    result->seconds = double(clock.nsecsElapsed()) / 1e9;
    addUse(result, 1);
    result->brokerMiB = ProcessUse::residentMiB(m_settings.brokerPid);
    for (const auto &box : m_boxes)
        box->stop();
    waitFor(
        [this] {
            return std::all_of(m_boxes.cbegin(), m_boxes.cend(),
                               [](const auto &box) { return box->isIdle(); });
        },
        PATIENCE_MS);
}

bool LoadRun::run(Result *result, QString *error)
{
    const bool ready = startWorkers(error) && connectBoxes(error);
    if (ready)
        measure(result);
    m_boxes.clear();
    for (const auto &worker : m_workers)
        worker->terminate();
    for (const auto &worker : m_workers)
        worker->waitForFinished(PATIENCE_MS);
    return ready;
}
