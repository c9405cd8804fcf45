#pragma once

#include <QString>

#include <amqp.h>

class BrokerAddress;

/// The way from nothing to an open channel at the broker.
namespace AmqpLogin {

constexpr amqp_channel_t CHANNEL = 1;

/// Connects, verifies the broker's certificate if the address says encrypted, logs in and opens
/// CHANNEL; each of these waits for `timeoutMs` at most. `name` is what the broker's administrator
/// sees. The caller owns the result; null, with a Russian text, when anything fails.
amqp_connection_state_t open(const BrokerAddress &address, const QString &name, int timeoutMs,
                             int heartbeatS, QString *error);

} // namespace AmqpLogin
