#include "buses.h"

#include <broker/brokerprocess.h>
#include <broker/farside.h>

#include <billing/billingservice.h>
#include <bus/amqp/amqpbus.h>
#include <bus/wiretext.h>

#include <array>

namespace {

class InProcessBuses final : public Buses
{
public:
    MessageBus &terminal(int number) override { return m_buses.at(number); }

    void serve(Service service) override
    {
        for (InProcessBus &bus : m_buses) {
            for (const QString &destination :
                 {BillingService::REQUEST_DESTINATION, BillingService::PACK_DESTINATION}) {
                bus.serve(destination, [service, destination](const QVariantMap &message) {
                    const Answer answer = service(destination, message);
                    InProcessBus::Outcome outcome;
                    if (!answer.type.isEmpty())
                        outcome.answer = InProcessBus::Answer{
                            {{MessageBus::MESSAGE_TYPE, answer.type}}, answer.body, 0};
                    return outcome;
                });
            }
        }
    }

private:
    std::array<InProcessBus, 2> m_buses;
};

class BrokerBuses final : public Buses
{
public:
    QString open(const BrokerProcess &broker)
    {
        QString error = m_far.open(broker.address(QStringLiteral("worker")));
        for (int i = 0; i < 2 && error.isEmpty(); ++i)
            m_buses.at(i) =
                AmqpBus::create(broker.address(QStringLiteral("box%1").arg(i + 1)), &error);
        return error;
    }

    MessageBus &terminal(int number) override { return *m_buses.at(number); }

    void serve(Service service) override
    {
        m_far.setHandler([this, service](const AmqpDelivery &delivery) {
            QString error;
            const auto message = WireText::decode(delivery.body, &error);
            const Answer answer = service(delivery.routingKey, message.value_or(QVariantMap()));
            if (!answer.type.isEmpty())
                m_far.answer(delivery, answer.type, answer.body);
        });
    }

private:
    FarSide m_far;
    std::array<std::unique_ptr<AmqpBus>, 2> m_buses;
};

} // namespace

Buses::~Buses() = default;

std::unique_ptr<Buses> Buses::inProcess()
{
    return std::make_unique<InProcessBuses>();
}

std::unique_ptr<Buses> Buses::overBroker(const BrokerProcess &broker, QString *error)
{
    auto buses = std::make_unique<BrokerBuses>();
    *error = buses->open(broker);
    if (!error->isEmpty())
        return nullptr;
    return buses;
}
