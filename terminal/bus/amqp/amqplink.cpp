#include <bus/amqp/amqplink.h>

#include <billing/billingservice.h>
#include <bus/amqp/amqpmessage.h>
#include <bus/amqp/billingqueues.h>
#include <bus/amqp/brokersession.h>
#include <bus/amqp/messagecheck.h>
#include <bus/messagebus.h>

namespace {

constexpr int CLEANING_MS = 30000;
constexpr int LONGEST_TYPE = 64;

bool isPack(const QString &destination)
{
    return destination == BillingService::PACK_DESTINATION;
}

bool prepare(AmqpConnection &connection)
{
    return connection.enableConfirms()
        && connection.consume(BillingQueues::DIRECT_REPLY, QStringLiteral("answers"),
                              AmqpConnection::Acknowledge::Automatic);
}

} // namespace

AmqpLink::AmqpLink(const BrokerAddress &address) : m_address(address)
{
    m_clock.start();
}

AmqpLink::~AmqpLink() = default;

void AmqpLink::start()
{
    // Made here, so that everything that waits or ticks belongs to this thread.
    m_session =
        std::make_unique<BrokerSession>(m_address, QStringLiteral("selmar-terminal"), prepare);
    m_cleaning = std::make_unique<QTimer>();
    m_cleaning->setInterval(CLEANING_MS);
    connect(m_cleaning.get(), &QTimer::timeout, this,
            [this] { m_replies.dropOld(m_clock.elapsed()); });
    m_cleaning->start();

    const AmqpConnection &connection = m_session->connection();
    connect(&connection, &AmqpConnection::confirmed, this, &AmqpLink::onConfirmed);
    connect(&connection, &AmqpConnection::failed, this, &AmqpLink::onFailed);
    connect(&connection, &AmqpConnection::delivered, this, &AmqpLink::onDelivered);
    connect(&connection, &AmqpConnection::blocked, this, [this](bool now) {
        m_blocked = now;
        emit blocked(now);
    });
    connect(m_session.get(), &BrokerSession::connecting, this, &AmqpLink::connecting);
    connect(m_session.get(), &BrokerSession::up, this, &AmqpLink::up);
    connect(m_session.get(), &BrokerSession::down, this, &AmqpLink::onDown);
    m_session->start();
}

void AmqpLink::publish(quint64 token, const QString &destination, const QByteArray &body,
                       const QString &name)
{
    if (!m_session || !m_session->isUp()) {
        emit refused(token,
                     m_lastReason.isEmpty()
                         ? QStringLiteral("Связи с процессингом ещё нет. Повторите позже.")
                         : QStringLiteral("Связи с процессингом нет: %1.").arg(m_lastReason));
        return;
    }
    if (m_blocked) {
        emit refused(token,
                     QStringLiteral("Процессинг временно не принимает сообщения: у сервера "
                                    "сообщений кончается место или память. Повторите "
                                    "позже."));
        return;
    }
    const bool pack = isPack(destination);
    AmqpMessage message;
    message.exchange = BillingQueues::EXCHANGE;
    message.routingKey = destination;
    message.replyTo = BillingQueues::DIRECT_REPLY;
    message.correlationId = m_replies.expect(
        pack ? ReplyTable::Kind::Pack : ReplyTable::Kind::Request, name, token, m_clock.elapsed());
    message.persistent = pack;
    message.expiration = pack ? 0 : REQUEST_EXPIRATION_MS;
    message.mandatory = true;
    message.body = body;
    // A publish that fails takes the connection down, and that settles the token.
    m_session->connection().publish(message, token);
}

void AmqpLink::onConfirmed(quint64 token)
{
    emit accepted(token);
    if (const auto held = m_replies.confirmed(token))
        emit arrived(held->headers, held->body);
}

void AmqpLink::onFailed(quint64 token, const QString &reason)
{
    m_replies.forget(token);
    emit refused(token, QStringLiteral("Сообщение не принято: %1.").arg(reason));
}

void AmqpLink::onDelivered(const AmqpDelivery &delivery)
{
    const QString type = delivery.headers.value(MessageBus::MESSAGE_TYPE).toString();
    if (type.isEmpty() || type.size() > LONGEST_TYPE) {
        drop(delivery, QStringLiteral("нет типа сообщения"));
        return;
    }
    const auto kind =
        type == MessageBus::PAYMENT_STATUS ? ReplyTable::Kind::Pack : ReplyTable::Kind::Request;
    if (!m_replies.isExpected(kind, delivery.correlationId)) {
        drop(delivery, QStringLiteral("его никто не ждёт"));
        return;
    }
    QString problem;
    if (delivery.oversized)
        problem = QStringLiteral("оно слишком велико");
    else
        MessageCheck::read(delivery.body, &problem);
    if (!problem.isEmpty()) {
        drop(delivery, problem);
        return;
    }
    const QVariantMap headers{{MessageBus::MESSAGE_TYPE, type}};
    if (const auto answer = m_replies.take(delivery.correlationId, {headers, delivery.body}))
        emit arrived(answer->headers, answer->body);
}

void AmqpLink::drop(const AmqpDelivery &delivery, const QString &why) const
{
    qWarning("Answer from the message broker dropped (correlation \"%s\", %d bytes): %s",
             qUtf8Printable(delivery.correlationId.left(LONGEST_TYPE)), delivery.body.size(),
             qUtf8Printable(why));
}

void AmqpLink::onDown(const QString &reason, int retryMs)
{
    m_replies.clear();
    m_blocked = false;
    m_lastReason = reason;
    emit down(reason, retryMs);
}
