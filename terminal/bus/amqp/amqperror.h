#pragma once

#include <QString>

#include <amqp.h>

/// Russian texts for what went wrong with the broker: what happened and what to do. None holds a
/// password.
namespace AmqpError {

/// `status` is one of the library's negative numbers.
QString ofStatus(int status);
/// `reply` must not be a success.
QString ofReply(const amqp_rpc_reply_t &reply);
/// The broker closed the channel or connection with this code and text.
QString ofClose(int code, const QString &text);

} // namespace AmqpError
