#include "rawchannel.h"

#include <bus/amqp/amqperror.h>
#include <bus/amqp/amqplogin.h>
#include <bus/amqp/amqptable.h>

#include <amqp_framing.h>

namespace {

constexpr int PATIENCE_MS = 30000;
constexpr timeval PATIENCE{PATIENCE_MS / 1000, 0};
constexpr amqp_channel_t CHANNEL = AmqpLogin::CHANNEL;

} // namespace

bool RawChannel::open(const BrokerAddress &address)
{
    m_state.reset(AmqpLogin::open(address, QStringLiteral("raw"), PATIENCE_MS, 0, &m_error));
    return m_state != nullptr;
}

bool RawChannel::check()
{
    const amqp_rpc_reply_t reply = amqp_get_rpc_reply(m_state.get());
    if (reply.reply_type == AMQP_RESPONSE_NORMAL)
        return true;
    m_error = AmqpError::ofReply(reply);
    return false;
}

bool RawChannel::check(int status)
{
    if (status == AMQP_STATUS_OK)
        return true;
    m_error = AmqpError::ofStatus(status);
    return false;
}

bool RawChannel::makeQueue(const QByteArray &name)
{
    const AmqpTable arguments({{QStringLiteral("x-queue-type"), QStringLiteral("quorum")}});
    amqp_queue_declare(m_state.get(), CHANNEL, AmqpBytes::view(name), 0, 1, 0, 0,
                       arguments.table());
    return check();
}

bool RawChannel::removeQueue(const QByteArray &name)
{
    amqp_queue_delete(m_state.get(), CHANNEL, AmqpBytes::view(name), 0, 0);
    return check();
}

bool RawChannel::enableConfirms()
{
    amqp_confirm_select(m_state.get(), CHANNEL);
    return check();
}

bool RawChannel::consume(const QByteArray &queue)
{
    amqp_basic_consume(m_state.get(), CHANNEL, AmqpBytes::view(queue), amqp_empty_bytes, 0, 1, 0,
                       amqp_empty_table);
    return check();
}

bool RawChannel::publish(const QByteArray &queue, const QByteArray &body, const QByteArray &replyTo,
                         bool durable)
{
    amqp_basic_properties_t properties;
    properties._flags = AMQP_BASIC_DELIVERY_MODE_FLAG;
    properties.delivery_mode = durable ? AMQP_DELIVERY_PERSISTENT : AMQP_DELIVERY_NONPERSISTENT;
    if (!replyTo.isEmpty()) {
        properties._flags |= AMQP_BASIC_REPLY_TO_FLAG;
        properties.reply_to = AmqpBytes::view(replyTo);
    }
    return check(amqp_basic_publish(m_state.get(), CHANNEL, amqp_empty_bytes,
                                    AmqpBytes::view(queue), durable, 0, &properties,
                                    AmqpBytes::view(body)));
}

quint64 RawChannel::waitForConfirm()
{
    for (;;) {
        amqp_frame_t frame;
        amqp_maybe_release_buffers(m_state.get());
        if (!check(amqp_simple_wait_frame_noblock(m_state.get(), &frame, &PATIENCE)))
            return 0;
        if (frame.frame_type != AMQP_FRAME_METHOD)
            continue;
        if (frame.payload.method.id == AMQP_BASIC_ACK_METHOD)
            return static_cast<amqp_basic_ack_t *>(frame.payload.method.decoded)->delivery_tag;
        m_error = QStringLiteral("сервер сообщений не подтвердил приём");
        return 0;
    }
}

RawChannel::Delivery RawChannel::waitForDelivery()
{
    amqp_maybe_release_buffers(m_state.get());
    amqp_envelope_t envelope;
    const amqp_rpc_reply_t reply = amqp_consume_message(m_state.get(), &envelope, &PATIENCE, 0);
    if (reply.reply_type != AMQP_RESPONSE_NORMAL) {
        m_error = AmqpError::ofReply(reply);
        return {};
    }
    Delivery delivery{true, {}};
    const amqp_basic_properties_t &properties = envelope.message.properties;
    if (properties._flags & AMQP_BASIC_REPLY_TO_FLAG)
        delivery.replyTo = QByteArray(static_cast<const char *>(properties.reply_to.bytes),
                                      int(properties.reply_to.len));
    amqp_destroy_envelope(&envelope);
    return delivery;
}
