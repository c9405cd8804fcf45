#include <bus/amqp/amqpcontentreader.h>

#include <bus/amqp/amqptable.h>

#include <amqp_framing.h>

#include <utility>

void AmqpContentReader::begin(const amqp_basic_deliver_t &method)
{
    reset();
    m_stage = Stage::Header;
    m_content.kind = Kind::Delivery;
    m_content.delivery.tag = method.delivery_tag;
    m_content.delivery.consumer = AmqpBytes::text(method.consumer_tag);
    m_content.delivery.redelivered = method.redelivered != 0;
    m_content.delivery.routingKey = AmqpBytes::text(method.routing_key);
}

void AmqpContentReader::begin(const amqp_basic_return_t &method)
{
    reset();
    m_stage = Stage::Header;
    m_content.kind = Kind::Return;
    m_content.delivery.routingKey = AmqpBytes::text(method.routing_key);
    m_content.reason = AmqpBytes::text(method.reply_text);
}

std::optional<AmqpContentReader::Content> AmqpContentReader::add(const amqp_frame_t &frame,
                                                                 bool *broken)
{
    *broken = false;
    AmqpDelivery &delivery = m_content.delivery;
    if (frame.frame_type == AMQP_FRAME_HEADER && m_stage == Stage::Header
        && frame.payload.properties.class_id == AMQP_BASIC_CLASS) {
        const auto *properties =
            static_cast<const amqp_basic_properties_t *>(frame.payload.properties.decoded);
        const amqp_flags_t flags = properties->_flags;
        if (flags & AMQP_BASIC_CORRELATION_ID_FLAG)
            delivery.correlationId = AmqpBytes::text(properties->correlation_id);
        if (flags & AMQP_BASIC_REPLY_TO_FLAG)
            delivery.replyTo = AmqpBytes::text(properties->reply_to);
        if (flags & AMQP_BASIC_HEADERS_FLAG)
            delivery.headers = AmqpTable::read(properties->headers);
        if (flags & AMQP_BASIC_MESSAGE_ID_FLAG)
            m_content.messageId = AmqpBytes::text(properties->message_id);
        m_missing = frame.payload.properties.body_size;
        delivery.oversized = m_missing > quint64(LARGEST_BODY);
        m_stage = Stage::Body;
        return finishIfWhole();
    }
    if (frame.frame_type == AMQP_FRAME_BODY && m_stage == Stage::Body) {
        const amqp_bytes_t &piece = frame.payload.body_fragment;
        if (piece.len > m_missing) {
            *broken = true;
            return std::nullopt;
        }
        if (!delivery.oversized)
            delivery.body.append(AmqpBytes::copy(piece));
        m_missing -= piece.len;
        return finishIfWhole();
    }
    *broken = true;
    return std::nullopt;
}

std::optional<AmqpContentReader::Content> AmqpContentReader::finishIfWhole()
{
    if (m_missing > 0)
        return std::nullopt;
    Content whole = std::exchange(m_content, Content());
    m_stage = Stage::Idle;
    return whole;
}

void AmqpContentReader::reset()
{
    m_stage = Stage::Idle;
    m_content = Content();
    m_missing = 0;
}
