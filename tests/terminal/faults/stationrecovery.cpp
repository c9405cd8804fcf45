#include "stationrecovery.h"

#include <app/terminalcontext.h>

#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

#include <cstdio>
#include <functional>

namespace {

constexpr int LOOK_MS = 20;

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

bool finish(PaymentReconciler &reconciler, const PaymentCase &payment, QString *error)
{
    if (payment.canSaveByReceipt()) {
        const bool done = reconciler.saveByReceipt(payment, error);
        std::printf("rebuilt %lld\n", payment.fiscalDocument);
        return done;
    }
    if (payment.canRefund()) {
        const bool done = reconciler.refund(payment, error);
        std::printf("returned %lld\n", payment.chargeId);
        return done;
    }
    return !payment.canPost() || reconciler.post(payment, error);
}

} // namespace

bool StationRecovery::waitUntilConfirmed(TerminalContext &context, int patienceMs)
{
    return waitFor(
        [&context] {
            return context.payments().unposted().isEmpty()
                && context.payments().unacknowledged().isEmpty();
        },
        patienceMs);
}

bool StationRecovery::recover(TerminalContext &context, int patienceMs)
{
    if (!waitFor([&context] { return context.bus().connected(); }, patienceMs))
        return false;
    const PaymentReconciler::Report report =
        context.reconciler().reconcile(PaymentReconciler::Scope::Open);
    if (!report.complete || !report.error.isEmpty())
        std::printf("refused-reconcile %s\n", qUtf8Printable(report.error));
    for (const PaymentCase &payment : report.cases) {
        QString error;
        if (!finish(context.reconciler(), payment, &error))
            std::printf("refused-recovery %s\n", qUtf8Printable(error));
    }
    std::fflush(stdout);
    context.paysController().drain(context.bus());
    return waitUntilConfirmed(context, patienceMs)
        && context.reconciler().reconcile(PaymentReconciler::Scope::Open).open == 0;
}
