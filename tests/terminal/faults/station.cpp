#include "stationpayment.h"

#include <app/terminalcontext.h>
#include <recovery/privatedata.h>

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRandomGenerator>
#include <QTimer>

#include <sys/resource.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>

namespace {

using State = PaymentCase::State;

constexpr int PATIENCE_MS = 20000;
constexpr int NOBODY = 65534;

enum ExitCode { Ok = 0, CannotStart = 3, StaysOpen = 5 };

/// Lets the bus, the outbox and billing work until every pack is confirmed.
bool waitUntilConfirmed(TerminalContext &context)
{
    QElapsedTimer waiting;
    waiting.start();
    while (!context.payments().unposted().isEmpty()
           || !context.payments().unacknowledged().isEmpty()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
        if (waiting.elapsed() > PATIENCE_MS)
            return false;
    }
    return true;
}

/// What a cashier does at the recovery dialog, for every payment that is open.
int recover(TerminalContext &context)
{
    const PaymentReconciler::Report report =
        context.reconciler().reconcile(PaymentReconciler::Scope::Open);
    if (!report.complete || !report.error.isEmpty())
        std::printf("refused-reconcile %s\n", qUtf8Printable(report.error));
    for (const PaymentCase &payment : report.cases) {
        QString error;
        bool done = true;
        if (payment.canSaveByReceipt()) {
            done = context.reconciler().saveByReceipt(payment, &error);
            std::printf("rebuilt %lld\n", payment.fiscalDocument);
        } else if (payment.canRefund()) {
            done = context.reconciler().refund(payment, &error);
            std::printf("returned %lld\n", payment.chargeId);
        } else if (payment.canPost()) {
            done = context.reconciler().post(payment, &error);
        }
        if (!done)
            std::printf("refused-recovery %s\n", qUtf8Printable(error));
    }
    std::fflush(stdout);
    context.paysController().drain(context.bus());
    if (!waitUntilConfirmed(context))
        return StaysOpen;
    return context.reconciler().reconcile(PaymentReconciler::Scope::Open).open == 0 ? Ok
                                                                                    : StaysOpen;
}

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

int work(TerminalContext &context, int payments, bool withCards, bool later)
{
    context.paysController().setHandOnAtOnce(!later);
    const int first = int(QRandomGenerator::global()->bounded(1000));
    for (int i = 0; payments == 0 || i < payments; ++i) {
        const int number = payments == 0 ? first + i : i;
        StationPayment(context, planOf(number, SampleNumber::ORDINARY, withCards)).make();
        QCoreApplication::processEvents();
    }
    return later || waitUntilConfirmed(context) ? Ok : StaysOpen;
}

void tellFigures(TerminalContext &context)
{
    QJsonArray packs;
    const QVector<PaymentRecord> records = context.payments().records({}, 0, 1000000);
    qint64 cash = 0;
    qint64 card = 0;
    qint64 billed = 0;
    int recovered = 0;
    for (const PaymentRecord &record : records) {
        packs.append(QString::number(record.packId));
        cash += record.cash.value();
        card += record.card.value();
        recovered += record.recovered ? 1 : 0;
        const auto taken = context.billing().takenPayments(QString::number(record.packId));
        for (const TakenPayment &payment : taken)
            billed += payment.sum;
    }
    QJsonArray receipts;
    qint64 cashless = 0;
    for (const ReceiptHead &receipt : context.fiscalJournal().heads(0, 1000000)) {
        receipts.append(QString::number(receipt.number));
        cashless += receipt.cashless;
    }
    QJsonArray charges;
    for (const ChargeRecord &charge : context.charges().charges(0, 1000000))
        charges.append(charge.rrn);
    const auto account =
        context.billing().account(SampleAccount::Payer::Individual, SampleNumber::ORDINARY);
    const QJsonObject figures{
        {QStringLiteral("charged"), context.charges().chargedTotal()},
        {QStringLiteral("refunded"), context.charges().refundedTotal()},
        {QStringLiteral("receiptTotal"), context.fiscalJournal().receiptTotal()},
        {QStringLiteral("receiptCashless"), cashless},
        {QStringLiteral("packCash"), cash},
        {QStringLiteral("packCard"), card},
        {QStringLiteral("billed"), billed},
        {QStringLiteral("billedPacks"), context.billing().packCount()},
        {QStringLiteral("debt"), account ? account->debt : 0},
        {QStringLiteral("recovered"), recovered},
        {QStringLiteral("charges"), charges},
        {QStringLiteral("receipts"), receipts},
        {QStringLiteral("packs"), packs}};
    std::printf("figures %s\n", QJsonDocument(figures).toJson(QJsonDocument::Compact).constData());
    std::fflush(stdout);
}

/// From now on a file that would grow beyond `bytes` is refused, as on a full disk.
void limitFiles(qint64 bytes)
{
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit = {rlim_t(bytes), rlim_t(bytes)};
    ::setrlimit(RLIMIT_FSIZE, &limit);
}

} // namespace

int main(int argc, char *argv[])
{
    PrivateData::hardenProcess();
    QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    const QCommandLineOption data(QStringLiteral("data"), QString(), QStringLiteral("folder"));
    const QCommandLineOption limit(QStringLiteral("file-limit"), QString(), QStringLiteral("n"));
    const QCommandLineOption cash(QStringLiteral("cash"));
    const QCommandLineOption nobody(QStringLiteral("nobody"));
    const QCommandLineOption later(QStringLiteral("later"));
    parser.addOptions({data, limit, cash, nobody, later});
    parser.addPositionalArgument(QStringLiteral("what"), QString());
    parser.process(application);
    if (parser.isSet(nobody) && ::getuid() == 0 && (::setgid(NOBODY) != 0 || ::setuid(NOBODY) != 0))
        return CannotStart;

    QString error;
    const auto context = TerminalContext::open(parser.value(data), &error);
    if (!context) {
        std::printf("refused-start %s\n", qUtf8Printable(error));
        return CannotStart;
    }
    if (parser.isSet(limit))
        limitFiles(parser.value(limit).toLongLong());

    const QStringList words = parser.positionalArguments();
    const QString what = words.value(0);
    int code = Ok;
    if (what == QLatin1String("pay")) {
        code = work(*context, words.value(1).toInt(), !parser.isSet(cash), parser.isSet(later));
    } else if (what == QLatin1String("work")) {
        recover(*context);
        std::printf("working\n");
        std::fflush(stdout);
        code = work(*context, 0, !parser.isSet(cash), parser.isSet(later));
    } else if (what == QLatin1String("recover")) {
        code = recover(*context);
    }
    tellFigures(*context);
    return code;
}
