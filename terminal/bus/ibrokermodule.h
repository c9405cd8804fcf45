#pragma once

#include <QString>
#include <QtPlugin>

#include <memory>

class MessageBus;

/// What the module for a message broker offers; see BrokerModule.
class IBrokerModule
{
public:
    virtual ~IBrokerModule() = default;

    /// A bus over the broker at an address that stood on the command line, see
    /// BrokerAddress::parseArgument(). Null, with a Russian text that holds no part of the
    /// password, for an address that cannot be used.
    virtual std::unique_ptr<MessageBus> open(const QString &address, QString *error) = 0;
};

#define IBrokerModule_iid "selmar.terminal.brokermodule"
Q_DECLARE_INTERFACE(IBrokerModule, IBrokerModule_iid)
