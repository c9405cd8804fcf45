#include <bus/amqp/amqpmodule.h>

#include <bus/amqp/amqpbus.h>
#include <bus/amqp/brokeraddress.h>

std::unique_ptr<MessageBus> AmqpModule::open(const QString &address, QString *error)
{
    const auto parsed = BrokerAddress::parseArgument(address, error);
    return parsed ? std::make_unique<AmqpBus>(*parsed) : nullptr;
}
