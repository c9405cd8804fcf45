#include <recovery/faultpoint.h>

#include <QByteArray>

#include <csignal>
#include <cstdio>
#include <cstdlib>

namespace {

using Place = FaultPoint::Place;

struct Name
{
    Place place;
    const char *text;
};

constexpr Name NAMES[] = {
    {Place::ChargeBeforeCommit, "charge.before-commit"},
    {Place::ChargeAfterCommit, "charge.after-commit"},
    {Place::ShiftAfterCommit, "shift.after-commit"},
    {Place::ReceiptBeforeCommit, "receipt.before-commit"},
    {Place::ReceiptAfterCommit, "receipt.after-commit"},
    {Place::LinkBeforeCommit, "link.before-commit"},
    {Place::LinkAfterCommit, "link.after-commit"},
    {Place::PackBeforeCommit, "pack.before-commit"},
    {Place::PackAfterCommit, "pack.after-commit"},
    {Place::HandOnBeforeCommit, "handon.before-commit"},
    {Place::HandOnAfterCommit, "handon.after-commit"},
    {Place::OutboxBeforeSend, "outbox.before-send"},
    {Place::OutboxAfterSend, "outbox.after-send"},
    {Place::BillingAfterTaking, "billing.after-taking"},
    {Place::PostedAfterCommit, "posted.after-commit"},
    {Place::AcknowledgedBeforeCommit, "acknowledged.before-commit"},
    {Place::AcknowledgedAfterCommit, "acknowledged.after-commit"},
    {Place::RebuiltBeforeSave, "rebuilt.before-save"},
    {Place::RebuiltAfterSave, "rebuilt.after-save"},
    {Place::RefundBeforeCommit, "refund.before-commit"},
    {Place::RefundAfterCommit, "refund.after-commit"},
};

struct Plan
{
    bool armed = false;
    Place place = Place::ChargeBeforeCommit;
    int left = 1;
};

Plan planOfEnvironment()
{
    Plan plan;
    const QByteArray wanted = qgetenv("SELMAR_FAULT_POINT");
    if (wanted.isEmpty())
        return plan;
    const int colon = wanted.indexOf(':');
    const QByteArray name = colon < 0 ? wanted : wanted.left(colon);
    bool counted = true;
    plan.left = colon < 0 ? 1 : wanted.mid(colon + 1).toInt(&counted);
    for (const Name &each : NAMES) {
        if (name != each.text)
            continue;
        plan.place = each.place;
        plan.armed = counted && plan.left > 0;
    }
    if (!plan.armed) {
        std::fprintf(stderr, "SELMAR_FAULT_POINT: there is no \"%s\"\n", wanted.constData());
        std::_Exit(4);
    }
    return plan;
}

} // namespace

QVector<FaultPoint::Place> FaultPoint::places()
{
    QVector<Place> result;
    for (const Name &each : NAMES)
        result.append(each.place);
    return result;
}

QString FaultPoint::name(Place place)
{
    for (const Name &each : NAMES) {
        if (each.place == place)
            return QString::fromLatin1(each.text);
    }
    return QString();
}

void FaultPoint::pass(Place place)
{
    static Plan plan = planOfEnvironment();
    if (plan.armed && plan.place == place && --plan.left == 0)
        std::raise(SIGKILL);
}
