#include <bus/amqp/amqpconnection.h>

#include <bus/amqp/amqperror.h>
#include <bus/amqp/amqplogin.h>
#include <bus/amqp/amqptable.h>

#include <amqp_framing.h>

namespace {

constexpr amqp_channel_t CHANNEL = AmqpLogin::CHANNEL;
constexpr int TICK_MS = 500;
constexpr timeval GOODBYE_TIMEOUT{1, 0};

} // namespace

void AmqpConnection::Release::operator()(amqp_connection_state_t state) const
{
    amqp_destroy_connection(state);
}

void AmqpConnection::RetireNotifier::operator()(QSocketNotifier *notifier) const
{
    // It may be the one whose signal is being handled.
    notifier->setEnabled(false);
    notifier->deleteLater();
}

AmqpConnection::AmqpConnection(QObject *parent) : QObject(parent)
{
    m_clock.start();
    m_tick.setInterval(TICK_MS);
    m_soon.setSingleShot(true);
    connect(&m_tick, &QTimer::timeout, this, &AmqpConnection::poll);
    connect(&m_soon, &QTimer::timeout, this, &AmqpConnection::poll);
}

AmqpConnection::~AmqpConnection()
{
    blockSignals(true);
    // At the end of a thread nobody would carry out a postponed deletion.
    delete m_notifier.release();
    close();
}

bool AmqpConnection::open(const BrokerAddress &address, const QString &name)
{
    close();
    m_error.clear();
    m_confirms = false;
    m_reader.reset();
    ++m_generation;
    m_state.reset(AmqpLogin::open(address, name, OPEN_TIMEOUT_MS, HEARTBEAT_S, &m_error));
    if (!m_state)
        return false;
    m_notifier.reset(new QSocketNotifier(amqp_get_sockfd(m_state.get()), QSocketNotifier::Read));
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &AmqpConnection::poll);
    m_tick.start();
    pollSoon();
    return true;
}

void AmqpConnection::close()
{
    if (!m_state)
        return;
    amqp_set_rpc_timeout(m_state.get(), &GOODBYE_TIMEOUT);
    amqp_connection_close(m_state.get(), AMQP_REPLY_SUCCESS);
    drop(QStringLiteral("соединение с сервером сообщений закрыто"));
}

void AmqpConnection::drop(const QString &reason)
{
    ++m_generation;
    m_error = reason;
    m_tick.stop();
    m_soon.stop();
    m_notifier.reset();
    m_state.reset();
    m_reader.reset();
    const QVector<quint64> unknown = m_ledger.abandon();
    for (const quint64 token : unknown) {
        if (token != 0)
            emit failed(token, reason);
    }
}

bool AmqpConnection::fail(const QString &reason)
{
    if (!m_state)
        return false;
    drop(reason);
    emit lost(reason);
    return false;
}

bool AmqpConnection::checkReply()
{
    const amqp_rpc_reply_t reply = amqp_get_rpc_reply(m_state.get());
    if (reply.reply_type != AMQP_RESPONSE_NORMAL)
        return fail(AmqpError::ofReply(reply));
    // Frames that arrived meanwhile wait in memory, where no notifier sees them.
    pollSoon();
    return true;
}

bool AmqpConnection::declareExchange(const QString &name, const QString &type)
{
    if (!m_state)
        return false;
    const QByteArray nameBytes = name.toUtf8();
    const QByteArray typeBytes = type.toUtf8();
    amqp_exchange_declare(m_state.get(), CHANNEL, AmqpBytes::view(nameBytes),
                          AmqpBytes::view(typeBytes), 0, 1, 0, 0, amqp_empty_table);
    return checkReply();
}

bool AmqpConnection::declareQueue(const QString &name, const QVariantMap &arguments)
{
    if (!m_state)
        return false;
    const QByteArray nameBytes = name.toUtf8();
    const AmqpTable table(arguments);
    amqp_queue_declare(m_state.get(), CHANNEL, AmqpBytes::view(nameBytes), 0, 1, 0, 0,
                       table.table());
    return checkReply();
}

bool AmqpConnection::bindQueue(const QString &queue, const QString &exchange,
                               const QString &routingKey)
{
    if (!m_state)
        return false;
    const QByteArray queueBytes = queue.toUtf8();
    const QByteArray exchangeBytes = exchange.toUtf8();
    const QByteArray keyBytes = routingKey.toUtf8();
    amqp_queue_bind(m_state.get(), CHANNEL, AmqpBytes::view(queueBytes),
                    AmqpBytes::view(exchangeBytes), AmqpBytes::view(keyBytes), amqp_empty_table);
    return checkReply();
}

bool AmqpConnection::enableConfirms()
{
    if (!m_state)
        return false;
    amqp_confirm_select(m_state.get(), CHANNEL);
    m_confirms = checkReply();
    return m_confirms;
}

bool AmqpConnection::setPrefetch(int count)
{
    if (!m_state)
        return false;
    amqp_basic_qos(m_state.get(), CHANNEL, 0, static_cast<uint16_t>(qBound(1, count, 65535)), 0);
    return checkReply();
}

bool AmqpConnection::consume(const QString &queue, const QString &consumer, Acknowledge mode)
{
    if (!m_state)
        return false;
    const QByteArray queueBytes = queue.toUtf8();
    const QByteArray consumerBytes = consumer.toUtf8();
    amqp_basic_consume(m_state.get(), CHANNEL, AmqpBytes::view(queueBytes),
                       AmqpBytes::view(consumerBytes), 0, mode == Acknowledge::Automatic, 0,
                       amqp_empty_table);
    return checkReply();
}

bool AmqpConnection::publish(const AmqpMessage &message, quint64 token)
{
    if (!m_state)
        return false;
    const QByteArray exchange = message.exchange.toUtf8();
    const QByteArray routingKey = message.routingKey.toUtf8();
    const QByteArray correlationId = message.correlationId.toUtf8();
    const QByteArray replyTo = message.replyTo.toUtf8();
    const QByteArray expiration = QByteArray::number(message.expiration);
    const QByteArray messageId = QByteArray::number(token);
    const AmqpTable headers(message.headers);

    amqp_basic_properties_t properties;
    properties._flags = AMQP_BASIC_CONTENT_TYPE_FLAG | AMQP_BASIC_DELIVERY_MODE_FLAG
        | AMQP_BASIC_HEADERS_FLAG | AMQP_BASIC_MESSAGE_ID_FLAG;
    properties.content_type = amqp_cstring_bytes("application/json");
    properties.delivery_mode =
        message.persistent ? AMQP_DELIVERY_PERSISTENT : AMQP_DELIVERY_NONPERSISTENT;
    properties.headers = headers.table();
    properties.message_id = AmqpBytes::view(messageId);
    if (!correlationId.isEmpty()) {
        properties._flags |= AMQP_BASIC_CORRELATION_ID_FLAG;
        properties.correlation_id = AmqpBytes::view(correlationId);
    }
    if (!replyTo.isEmpty()) {
        properties._flags |= AMQP_BASIC_REPLY_TO_FLAG;
        properties.reply_to = AmqpBytes::view(replyTo);
    }
    if (message.expiration > 0) {
        properties._flags |= AMQP_BASIC_EXPIRATION_FLAG;
        properties.expiration = AmqpBytes::view(expiration);
    }
    if (m_confirms)
        m_ledger.published(token, m_clock.elapsed());
    const int status = amqp_basic_publish(m_state.get(), CHANNEL, AmqpBytes::view(exchange),
                                          AmqpBytes::view(routingKey), message.mandatory, 0,
                                          &properties, AmqpBytes::view(message.body));
    if (status != AMQP_STATUS_OK)
        return fail(AmqpError::ofStatus(status));
    pollSoon();
    return true;
}

bool AmqpConnection::acknowledge(quint64 tag)
{
    if (!m_state)
        return false;
    const int status = amqp_basic_ack(m_state.get(), CHANNEL, tag, 0);
    return status == AMQP_STATUS_OK || fail(AmqpError::ofStatus(status));
}

bool AmqpConnection::reject(quint64 tag)
{
    if (!m_state)
        return false;
    const int status = amqp_basic_reject(m_state.get(), CHANNEL, tag, 0);
    return status == AMQP_STATUS_OK || fail(AmqpError::ofStatus(status));
}

void AmqpConnection::pollSoon()
{
    m_soon.start(0);
}

void AmqpConnection::poll()
{
    if (!m_state)
        return;
    const quint64 generation = m_generation;
    const timeval noWait{0, 0};
    for (;;) {
        amqp_maybe_release_buffers(m_state.get());
        amqp_frame_t frame;
        const int status = amqp_simple_wait_frame_noblock(m_state.get(), &frame, &noWait);
        if (status == AMQP_STATUS_TIMEOUT)
            break;
        if (status != AMQP_STATUS_OK) {
            fail(AmqpError::ofStatus(status));
            return;
        }
        handle(frame);
        if (generation != m_generation)
            return;
    }
    if (!m_ledger.isEmpty() && m_clock.elapsed() - m_ledger.oldestTime() > CONFIRM_TIMEOUT_MS)
        fail(QStringLiteral("сервер сообщений не подтверждает приём"));
}

void AmqpConnection::handle(const amqp_frame_t &frame)
{
    if (frame.frame_type == AMQP_FRAME_HEARTBEAT)
        return;
    if (frame.frame_type == AMQP_FRAME_METHOD) {
        handleMethod(frame.payload.method);
        return;
    }
    bool broken = false;
    const std::optional<AmqpContentReader::Content> content = m_reader.add(frame, &broken);
    if (broken)
        fail(QStringLiteral("сервер сообщений прислал непонятное"));
    else if (content)
        handleContent(*content);
}

void AmqpConnection::handleMethod(const amqp_method_t &method)
{
    switch (method.id) {
    case AMQP_BASIC_DELIVER_METHOD:
        m_reader.begin(*static_cast<amqp_basic_deliver_t *>(method.decoded));
        return;
    case AMQP_BASIC_RETURN_METHOD:
        m_reader.begin(*static_cast<amqp_basic_return_t *>(method.decoded));
        return;
    case AMQP_BASIC_ACK_METHOD: {
        const auto *ack = static_cast<amqp_basic_ack_t *>(method.decoded);
        settle(ack->delivery_tag, ack->multiple != 0, true);
        return;
    }
    case AMQP_BASIC_NACK_METHOD: {
        const auto *nack = static_cast<amqp_basic_nack_t *>(method.decoded);
        settle(nack->delivery_tag, nack->multiple != 0, false);
        return;
    }
    case AMQP_BASIC_CANCEL_METHOD:
        fail(QStringLiteral("очередь на сервере сообщений удалена или недоступна"));
        return;
    case AMQP_CONNECTION_BLOCKED_METHOD:
        emit blocked(true);
        return;
    case AMQP_CONNECTION_UNBLOCKED_METHOD:
        emit blocked(false);
        return;
    case AMQP_CHANNEL_CLOSE_METHOD: {
        const auto *closed = static_cast<amqp_channel_close_t *>(method.decoded);
        fail(AmqpError::ofClose(closed->reply_code, AmqpBytes::text(closed->reply_text)));
        return;
    }
    case AMQP_CONNECTION_CLOSE_METHOD: {
        const auto *closed = static_cast<amqp_connection_close_t *>(method.decoded);
        fail(AmqpError::ofClose(closed->reply_code, AmqpBytes::text(closed->reply_text)));
        return;
    }
    default:
        return;
    }
}

void AmqpConnection::handleContent(const AmqpContentReader::Content &content)
{
    switch (content.kind) {
    case AmqpContentReader::Kind::Delivery:
        emit delivered(content.delivery);
        return;
    case AmqpContentReader::Kind::Return:
        m_ledger.returned(content.messageId.toULongLong(), content.reason);
        return;
    }
}

void AmqpConnection::settle(quint64 number, bool multiple, bool positive)
{
    const QVector<ConfirmLedger::Outcome> outcomes = m_ledger.settle(number, multiple, positive);
    for (const ConfirmLedger::Outcome &outcome : outcomes) {
        if (outcome.token == 0)
            continue;
        switch (outcome.result) {
        case ConfirmLedger::Result::Confirmed:
            emit confirmed(outcome.token);
            break;
        case ConfirmLedger::Result::Rejected:
            emit failed(outcome.token, QStringLiteral("сервер сообщений не смог сохранить"));
            break;
        case ConfirmLedger::Result::Returned:
            emit failed(outcome.token,
                        QStringLiteral("этот адрес на сервере сообщений никто не "
                                       "обслуживает (%1)")
                            .arg(outcome.text));
            break;
        }
    }
}
