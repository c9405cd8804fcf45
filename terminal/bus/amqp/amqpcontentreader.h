#pragma once

#include <bus/amqp/amqpmessage.h>

#include <amqp.h>

#include <optional>

/// Puts a message together from the frames that it arrives in: the method that announces it, a
/// header with its properties and size, pieces of its body.
///
/// Keeps no reference to a frame after the call. A body larger than LARGEST_BODY is read past and
/// not kept.
class AmqpContentReader final
{
public:
    static constexpr int LARGEST_BODY = 8 * 1024 * 1024;

    enum class Kind { Delivery, Return };

    struct Content
    {
        Kind kind = Kind::Delivery;
        AmqpDelivery delivery;
        QString messageId;
        /// The broker's reason for a return.
        QString reason;
    };

    void begin(const amqp_basic_deliver_t &method);
    void begin(const amqp_basic_return_t &method);
    /// The whole message once its last frame is in. `broken` is set for a frame that has no place
    /// here: the connection cannot be trusted any more.
    std::optional<Content> add(const amqp_frame_t &frame, bool *broken);
    void reset();

private:
    enum class Stage { Idle, Header, Body };

    std::optional<Content> finishIfWhole();

    Stage m_stage = Stage::Idle;
    Content m_content;
    quint64 m_missing = 0;
};
