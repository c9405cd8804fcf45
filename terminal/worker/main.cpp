#include "billingworker.h"
#include "terminationsignal.h"
#include "workeroptions.h"

#include <billing/billingdatabase.h>
#include <billing/billingservice.h>
#include <recovery/privatedata.h>

#include <QCoreApplication>

#include <cstdio>

namespace {

enum ExitCode { Ok = 0, BadOptions = 2, CannotStart = 3 };

} // namespace

int main(int argc, char *argv[])
{
    PrivateData::hardenProcess();
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("selmar-billing-worker"));
    QCoreApplication::setApplicationVersion(QStringLiteral(SELMAR_VERSION));
    const WorkerOptions options = WorkerOptions::parse(QCoreApplication::arguments());

    QString error;
    const std::optional<BrokerAddress> address = BrokerAddress::parseArgument(options.bus, &error);
    if (!address) {
        std::fprintf(stderr, "%s\n", qUtf8Printable(error));
        return BadOptions;
    }
    BillingDatabase database;
    if (!database.open(options.database)) {
        std::fprintf(stderr, "%s\n", qUtf8Printable(database.lastError()));
        return CannotStart;
    }
    BillingService service(database);
    BillingWorker worker(*address, database, service, options.prefetch);
    const TerminationSignal termination;
    QObject::connect(&termination, &TerminationSignal::received, &application,
                     &QCoreApplication::quit);
    QObject::connect(&worker, &BillingWorker::ready, [&address] {
        std::fprintf(stderr, "Обработчик биллинга работает: %s\n",
                     qUtf8Printable(address->toDisplayString()));
    });
    worker.start();
    const int code = QCoreApplication::exec();
    std::fprintf(stderr, "Обработчик биллинга завершён.\n");
    return code == 0 ? Ok : code;
}
