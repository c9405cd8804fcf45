#pragma once

#include <QByteArray>
#include <QString>

#include <amqp.h>

#include <memory>

class BrokerAddress;

/// A blocking connection straight on the protocol library. Every operation answers false or
/// nothing on failure, and error() then says why.
class RawChannel final
{
public:
    bool open(const BrokerAddress &address);
    QString error() const { return m_error; }

    /// A fresh quorum queue under this name.
    bool makeQueue(const QByteArray &name);
    bool removeQueue(const QByteArray &name);
    bool enableConfirms();
    bool consume(const QByteArray &queue);

    bool publish(const QByteArray &queue, const QByteArray &body, const QByteArray &replyTo,
                 bool durable);
    /// Waits for a confirm; the number of the last message that it covers, or 0.
    quint64 waitForConfirm();
    struct Delivery
    {
        bool arrived = false;
        QByteArray replyTo;
    };
    Delivery waitForDelivery();

private:
    struct Release
    {
        void operator()(amqp_connection_state_t state) const { amqp_destroy_connection(state); }
    };

    bool check();
    bool check(int status);

    std::unique_ptr<amqp_connection_state_t_, Release> m_state;
    QString m_error;
};
