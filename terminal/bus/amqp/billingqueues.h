#pragma once

#include <QString>

class AmqpConnection;

/// Names of what stands on the broker between terminals and billing.
///
/// Terminals publish to EXCHANGE with the message's destination as the routing key and may do
/// nothing else. REQUESTS and PACKS are quorum queues bound to the two destinations; a pack that
/// billing will never take ends up in DEAD, where it waits for a person.
namespace BillingQueues {

extern const QString EXCHANGE;
extern const QString REQUESTS;
extern const QString PACKS;
/// An exchange and the queue behind it.
extern const QString DEAD;
/// The address at which each connection gets its own answers.
extern const QString DIRECT_REPLY;

/// For billing's side, which owns them; what is there already stays as it is. False: see the
/// connection's lastError().
bool declare(AmqpConnection &connection);

} // namespace BillingQueues
