#include "farside.h"

#include <bus/amqp/billingqueues.h>
#include <bus/amqp/brokeraddress.h>
#include <bus/messagebus.h>

FarSide::FarSide(QObject *parent) : QObject(parent)
{
    connect(&m_connection, &AmqpConnection::delivered, this, &FarSide::onDelivered);
}

QString FarSide::open(const QString &address)
{
    QString error;
    const std::optional<BrokerAddress> parsed = BrokerAddress::parse(address, &error);
    if (!parsed)
        return error;
    using Acknowledge = AmqpConnection::Acknowledge;
    const bool opened = m_connection.open(*parsed, QStringLiteral("far side"))
        && BillingQueues::declare(m_connection)
        && m_connection.consume(BillingQueues::REQUESTS, QStringLiteral("requests"),
                                Acknowledge::Manual)
        && m_connection.consume(BillingQueues::PACKS, QStringLiteral("packs"), Acknowledge::Manual);
    return opened ? QString() : m_connection.lastError();
}

void FarSide::onDelivered(const AmqpDelivery &delivery)
{
    (delivery.consumer == QLatin1String("packs") ? m_packs : m_requests).append(delivery);
    if (m_handler)
        m_handler(delivery);
    m_connection.acknowledge(delivery.tag);
}

void FarSide::answer(const AmqpDelivery &to, const QString &type, const QByteArray &body)
{
    answerAs(to.correlationId, to, type, body);
}

void FarSide::answerAs(const QString &correlationId, const AmqpDelivery &to, const QString &type,
                       const QByteArray &body)
{
    AmqpMessage message;
    message.routingKey = to.replyTo;
    message.correlationId = correlationId;
    message.headers.insert(MessageBus::MESSAGE_TYPE, type);
    message.body = body;
    m_connection.publish(message);
}
