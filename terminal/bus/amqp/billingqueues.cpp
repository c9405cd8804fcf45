#include <bus/amqp/billingqueues.h>

#include <billing/billingservice.h>
#include <bus/amqp/amqpconnection.h>

const QString BillingQueues::EXCHANGE = QStringLiteral("selmar.billing");
const QString BillingQueues::REQUESTS = QStringLiteral("selmar.billing.requests");
const QString BillingQueues::PACKS = QStringLiteral("selmar.billing.packs");
const QString BillingQueues::DEAD = QStringLiteral("selmar.billing.dead");
const QString BillingQueues::DIRECT_REPLY = QStringLiteral("amq.rabbitmq.reply-to");

namespace {

/// A message that takes its worker down with it comes back no more often than this.
constexpr int REQUEST_DELIVERIES = 5;
constexpr int PACK_DELIVERIES = 100;

QVariantMap quorum()
{
    return {{QStringLiteral("x-queue-type"), QStringLiteral("quorum")}};
}

QVariantMap requestArguments()
{
    QVariantMap arguments = quorum();
    arguments.insert(QStringLiteral("x-delivery-limit"), REQUEST_DELIVERIES);
    return arguments;
}

QVariantMap packArguments()
{
    QVariantMap arguments = quorum();
    arguments.insert(QStringLiteral("x-delivery-limit"), PACK_DELIVERIES);
    arguments.insert(QStringLiteral("x-dead-letter-exchange"), BillingQueues::DEAD);
    // A dead letter leaves this queue only after the other one has it; that in turn asks for the
    // overflow rule.
    arguments.insert(QStringLiteral("x-dead-letter-strategy"), QStringLiteral("at-least-once"));
    arguments.insert(QStringLiteral("x-overflow"), QStringLiteral("reject-publish"));
    return arguments;
}

} // namespace

bool BillingQueues::declare(AmqpConnection &connection)
{
    return connection.declareExchange(DEAD, QStringLiteral("fanout"))
        && connection.declareQueue(DEAD, quorum()) && connection.bindQueue(DEAD, DEAD, QString())
        && connection.declareExchange(EXCHANGE, QStringLiteral("direct"))
        && connection.declareQueue(REQUESTS, requestArguments())
        && connection.bindQueue(REQUESTS, EXCHANGE, BillingService::REQUEST_DESTINATION)
        && connection.declareQueue(PACKS, packArguments())
        && connection.bindQueue(PACKS, EXCHANGE, BillingService::PACK_DESTINATION);
}
