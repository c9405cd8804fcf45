#include <billing/billingendpoint.h>

#include <billing/billingservice.h>
#include <bus/inprocessbus.h>

#include <QJsonDocument>
#include <QJsonObject>

namespace {

InProcessBus::Answer onBus(const BillingAnswer &answer)
{
    return {answer.headers, answer.body, answer.delay};
}

InProcessBus::Outcome outcomeOf(const BillingAnswer &answer)
{
    InProcessBus::Outcome outcome;
    if (!answer.silent)
        outcome.answer = onBus(answer);
    for (const BillingAnswer &other : answer.others)
        outcome.others.append(onBus(other));
    return outcome;
}

} // namespace

void BillingEndpoint::attach(InProcessBus &bus, BillingService &service)
{
    bus.serve(BillingService::REQUEST_DESTINATION, [&service](const QVariantMap &request) {
        return outcomeOf(service.answer(request));
    });
    bus.serve(BillingService::PACK_DESTINATION, [&service](const QVariantMap &pack) {
        const BillingAnswer answer = service.takePayPack(pack);
        InProcessBus::Outcome outcome = outcomeOf(answer);
        const QJsonObject status = QJsonDocument::fromJson(answer.body).object();
        if (status.value(QStringLiteral("error")).toBool())
            outcome.refusal = status.value(QStringLiteral("description")).toString();
        return outcome;
    });
}
