#include "stationrecovery.h"

#include <app/terminalcontext.h>

#include <QTest>

#include <cstdio>

namespace {

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
    return QTest::qWaitFor(
        [&context] {
            return context.payments().unposted().isEmpty()
                && context.payments().unacknowledged().isEmpty();
        },
        patienceMs);
}

bool StationRecovery::recover(TerminalContext &context, int patienceMs)
{
    if (!QTest::qWaitFor([&context] { return context.bus().connected(); }, patienceMs))
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
