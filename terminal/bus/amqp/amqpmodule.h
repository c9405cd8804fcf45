#pragma once

#include <bus/ibrokermodule.h>

#include <QObject>

/// The root of the module: opens buses over an AMQP 0-9-1 broker.
class AmqpModule final : public QObject, public IBrokerModule
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID IBrokerModule_iid)
    Q_INTERFACES(IBrokerModule)

public:
    std::unique_ptr<MessageBus> open(const QString &address, QString *error) override;
};
