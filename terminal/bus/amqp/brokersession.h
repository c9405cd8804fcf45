#pragma once

#include <bus/amqp/amqpconnection.h>
#include <bus/amqp/brokeraddress.h>
#include <bus/amqp/reconnectdelay.h>

#include <QElapsedTimer>
#include <QObject>
#include <QString>
#include <QTimer>

#include <functional>

/// Keeps a connection to the broker up: connects, sets it up, and after a failure waits longer and
/// longer and connects again, for ever.
///
/// Lives in the thread that its connection lives in; connecting blocks that thread for a bounded
/// time.
class BrokerSession final : public QObject
{
    Q_OBJECT

public:
    /// Prepares a fresh connection: queues, confirms, consumers. False: the connection's
    /// lastError() says why.
    using Setup = std::function<bool(AmqpConnection &)>;

    /// A connection that lasted this long proved good: the next failure starts with a short wait.
    static constexpr int PROVEN_MS = 10000;

    BrokerSession(const BrokerAddress &address, const QString &name, Setup setup,
                  QObject *parent = nullptr);

    void start();
    bool isUp() const { return m_up; }
    AmqpConnection &connection() { return m_connection; }

signals:
    void connecting();
    void up();
    /// Not connected; the next attempt comes in `retryMs`.
    void down(const QString &reason, int retryMs);

private:
    void attempt();
    void onLost(const QString &reason);
    void wait(const QString &reason);

    BrokerAddress m_address;
    QString m_name;
    Setup m_setup;
    AmqpConnection m_connection;
    ReconnectDelay m_delay;
    QElapsedTimer m_upSince;
    QTimer m_retry;
    bool m_up = false;
};
