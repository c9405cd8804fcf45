#pragma once

#include <bus/inprocessbus.h>
#include <bus/messagebus.h>

#include <QByteArray>
#include <QString>
#include <QVariantMap>

#include <functional>
#include <memory>

class BrokerProcess;

/// Two terminals and one far side on one kind of bus.
///
/// The far side serves account requests and pay packs; nobody serves anything else.
class Buses
{
public:
    struct Answer
    {
        QString type;
        QByteArray body;
    };
    /// What the far side says to a message; an answer without a type is none.
    using Service = std::function<Answer(const QString &destination, const QVariantMap &message)>;

    virtual ~Buses();

    virtual MessageBus &terminal(int number) = 0;
    virtual void serve(Service service) = 0;

    static std::unique_ptr<Buses> inProcess();
    /// Null, with a text, when the broker does not let the far side in.
    static std::unique_ptr<Buses> overBroker(const BrokerProcess &broker, QString *error);
};
