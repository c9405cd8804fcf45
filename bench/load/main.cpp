#include "loadhost.h"
#include "loadoptions.h"
#include "loadrun.h"
#include "rawbroker.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <cstdio>

namespace {

double milliseconds(qint64 microseconds)
{
    return double(microseconds) / 1000;
}

void printHead()
{
    std::printf(
        "| boxes | workers | payments/s | request p50 | p95 | p99 | max | pack confirmed p50 | "
        "p99 | pack taken p50 | p95 | p99 | max | failures | CPU boxes | workers | broker | "
        "broker MiB |\n"
        "|---|---|---|---|---|---|---|---|---|---|---|---|---|---|---|---|---|---|\n");
}

void printRow(const LoadRun::Settings &settings, const LoadRun::Result &result)
{
    const auto ms = [](const Latencies &latencies, double percent) {
        return milliseconds(latencies.percentile(percent));
    };
    const LoadFigures &figures = result.figures;
    const double payments = qMax(1, figures.payments);
    std::printf("| %d | %d | %.0f | %.1f | %.1f | %.1f | %.1f | %.1f | %.1f | %.1f | %.1f | %.1f | "
                "%.1f | %d | %.2f | %.2f | %.2f | %.0f |\n",
                settings.boxes, settings.workers, figures.payments / result.seconds,
                ms(figures.request, 50), ms(figures.request, 95), ms(figures.request, 99),
                ms(figures.request, 100), ms(figures.confirm, 50), ms(figures.confirm, 99),
                ms(figures.taken, 50), ms(figures.taken, 95), ms(figures.taken, 99),
                ms(figures.taken, 100), figures.failures, result.boxesMs / payments,
                result.workersMs / payments, result.brokerMs / payments, result.brokerMiB);
    if (figures.failures > 0)
        std::fprintf(stderr, "the last failure: %s\n", qUtf8Printable(figures.lastFailure));
    std::fflush(stdout);
}

bool printRaw(const BrokerAddress &address, const RawBroker::Sizes &sizes)
{
    RawBroker::Figures figures;
    QString error;
    if (!RawBroker(address).measure(sizes, &figures, &error)) {
        std::fprintf(stderr, "the broker alone: %s\n", qUtf8Printable(error));
        return false;
    }
    std::printf(
        "\nThe broker alone, messages of %d, %d and %d bytes (request, answer, pack); ms:\n\n"
        "| | p50 | p95 | p99 | max | per second |\n|---|---|---|---|---|---|\n",
        sizes.request, sizes.answer, sizes.pack);
    const auto row = [](const char *name, const Latencies &latencies, double perSecond) {
        std::printf("| %s | %.2f | %.2f | %.2f | %.2f | %.0f |\n", name,
                    milliseconds(latencies.percentile(50)), milliseconds(latencies.percentile(95)),
                    milliseconds(latencies.percentile(99)), milliseconds(latencies.largest()),
                    perSecond);
    };
    const auto inverse = [](const Latencies &latencies) {
        return 1e6 / double(qMax<qint64>(1, latencies.percentile(50)));
    };
    row("request and answer, one at a time", figures.roundTrip, inverse(figures.roundTrip));
    row("durable publish, one at a time", figures.confirm, inverse(figures.confirm));
    std::printf("| durable publish, %d on the way | | | | | %.0f |\n", RawBroker::WINDOW,
                figures.confirmsPerSecond);
    return true;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const LoadOptions options = LoadOptions::parse(QCoreApplication::arguments());
    // What the plugin traces of every payment is the file's business, not this table's.
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext &, const QString &text) {
        if (type == QtCriticalMsg || type == QtFatalMsg)
            std::fprintf(stderr, "%s\n", qUtf8Printable(text));
    });
    QString error;
    const auto boxBus = BrokerAddress::parse(options.boxBus, &error);
    const auto workerBus = boxBus ? BrokerAddress::parse(options.workerBus, &error) : std::nullopt;
    const QTemporaryDir folder;
    const auto host = workerBus ? LoadHost::open(folder.path(), &error) : nullptr;
    if (!host) {
        std::fprintf(stderr, "%s\n", qUtf8Printable(error));
        return 3;
    }
    RawBroker::Sizes sizes;
    printHead();
    for (const int workers : options.workers) {
        for (const int boxes : options.boxes) {
            LoadRun::Settings settings;
            settings.boxes = boxes;
            settings.workers = workers;
            settings.seconds = options.seconds;
            settings.workerProgram = options.workerProgram;
            settings.workerBus = options.workerBus;
            settings.brokerPid = options.brokerPid;
            LoadRun::Result result;
            if (!LoadRun(*boxBus, host->host(), settings).run(&result, &error)) {
                std::fprintf(stderr, "%s\n", qUtf8Printable(error));
                return 1;
            }
            printRow(settings, result);
            sizes = {result.figures.requestBytes, result.figures.answerBytes,
                     result.figures.packBytes};
        }
    }
    return !options.raw || printRaw(*workerBus, sizes) ? 0 : 1;
}
