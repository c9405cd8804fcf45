#include "stationfigures.h"
#include "stationpayment.h"
#include "stationrecovery.h"

#include <app/terminalcontext.h>
#include <bus/amqp/amqpbus.h>
#include <bus/amqp/brokeraddress.h>
#include <recovery/privatedata.h>

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QEventLoop>
#include <QJsonDocument>
#include <QRandomGenerator>
#include <QTimer>

#include <sys/resource.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>

namespace {

/// A broker that was killed needs its time on a machine that has other work.
constexpr int PATIENCE_MS = 180000;
constexpr int NOBODY = 65534;

enum ExitCode { Ok = 0, CannotStart = 3, StaysOpen = 5 };

/// What the station was told to do.
struct Orders
{
    QString what;
    /// 0: until it is killed.
    int payments = 0;
    bool withCards = true;
    bool later = false;
    /// Milliseconds between two payments.
    int pace = 0;
    /// Bytes that no file may grow beyond; 0: no limit.
    qint64 fileLimit = 0;
};

StationPayment::Plan planOf(int number, const QString &account, bool withCards)
{
    StationPayment::Plan plan;
    plan.account = account;
    plan.cash = 10000 + number % 1000;
    // Whole roubles: the last two digits are what the card emulator decides by.
    plan.card = withCards && number % 3 != 2 ? (50 + number % 40) * 100 : 0;
    plan.answerLost = number % 5 == 4;
    return plan;
}

void rest(int milliseconds)
{
    QCoreApplication::processEvents();
    if (milliseconds == 0)
        return;
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

int work(TerminalContext &context, const Orders &orders)
{
    context.paysController().setHandOnAtOnce(!orders.later);
    const int first = orders.payments == 0 ? int(QRandomGenerator::global()->bounded(1000)) : 0;
    for (int i = 0; orders.payments == 0 || i < orders.payments; ++i) {
        StationPayment(context, planOf(first + i, SampleNumber::ORDINARY, orders.withCards)).make();
        rest(orders.pace);
    }
    // What cannot be written now cannot come to its end either.
    if (orders.later || orders.fileLimit > 0)
        return Ok;
    return StationRecovery::waitUntilConfirmed(context, PATIENCE_MS) ? Ok : StaysOpen;
}

/// From now on a file that would grow beyond `bytes` is refused, as on a full disk.
void limitFiles(qint64 bytes)
{
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit = {rlim_t(bytes), rlim_t(bytes)};
    ::setrlimit(RLIMIT_FSIZE, &limit);
}

int run(TerminalContext &context, const Orders &orders)
{
    if (orders.fileLimit > 0)
        limitFiles(orders.fileLimit);
    if (orders.what == QLatin1String("pay"))
        return work(context, orders);
    if (orders.what == QLatin1String("work")) {
        StationRecovery::recover(context, PATIENCE_MS);
        std::printf("working\n");
        std::fflush(stdout);
        return work(context, orders);
    }
    if (orders.what == QLatin1String("recover"))
        return StationRecovery::recover(context, PATIENCE_MS) ? Ok : StaysOpen;
    return Ok;
}

} // namespace

int main(int argc, char *argv[])
{
    PrivateData::hardenProcess();
    QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    const QString value = QStringLiteral("value");
    const QCommandLineOption data(QStringLiteral("data"), QString(), value);
    const QCommandLineOption limit(QStringLiteral("file-limit"), QString(), value);
    const QCommandLineOption pace(QStringLiteral("pace"), QString(), value);
    const QCommandLineOption bus(QStringLiteral("bus"), QString(), value);
    const QCommandLineOption billing(QStringLiteral("billing"), QString(), value);
    const QCommandLineOption cash(QStringLiteral("cash"));
    const QCommandLineOption nobody(QStringLiteral("nobody"));
    const QCommandLineOption later(QStringLiteral("later"));
    parser.addOptions({data, limit, pace, bus, billing, cash, nobody, later});
    parser.addPositionalArgument(QStringLiteral("what"), QString());
    parser.process(application);
    if (parser.isSet(nobody) && ::getuid() == 0 && (::setgid(NOBODY) != 0 || ::setuid(NOBODY) != 0))
        return CannotStart;

    QString error;
    std::unique_ptr<MessageBus> outer;
    BillingDatabase elsewhere;
    if (parser.isSet(bus)) {
        const auto address = BrokerAddress::parseArgument(parser.value(bus), &error);
        if (!address || !elsewhere.open(parser.value(billing))) {
            std::printf("refused-start %s %s\n", qUtf8Printable(error),
                        qUtf8Printable(elsewhere.lastError()));
            return CannotStart;
        }
        outer = std::make_unique<AmqpBus>(*address);
    }
    const auto context = TerminalContext::open(parser.value(data), &error, std::move(outer));
    if (!context) {
        std::printf("refused-start %s\n", qUtf8Printable(error));
        return CannotStart;
    }
    Orders orders;
    orders.what = parser.positionalArguments().value(0);
    orders.payments = parser.positionalArguments().value(1).toInt();
    orders.withCards = !parser.isSet(cash);
    orders.later = parser.isSet(later);
    orders.pace = parser.value(pace).toInt();
    orders.fileLimit = parser.value(limit).toLongLong();
    const int code = run(*context, orders);
    const QJsonObject figures =
        stationFigures(*context, context->billingIsOwn() ? context->billing() : elsewhere);
    std::printf("figures %s\n", QJsonDocument(figures).toJson(QJsonDocument::Compact).constData());
    std::fflush(stdout);
    return code;
}
