#pragma once

#include <QString>

#include <memory>

class MessageBus;

/// The module for a message broker. It stands apart because the protocol and TLS libraries under it
/// take time to load and most workstations keep their billing inside the program.
///
/// The program that loads it exports its symbols: the module takes the bus's base from there.
namespace BrokerModule {

/// Loads the module from `file`, for as long as the program runs, and opens a bus to the broker at
/// `address`. Null, with a Russian text, for a module that is missing or cannot be loaded and for
/// an address that cannot be used.
std::unique_ptr<MessageBus> open(const QString &file, const QString &address, QString *error);

} // namespace BrokerModule
