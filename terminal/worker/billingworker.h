#pragma once

#include <bus/amqp/brokersession.h>

#include <QObject>
#include <QTimer>

#include <deque>

class BillingDatabase;
class BillingService;
struct AmqpDelivery;
struct BillingAnswer;

/// Billing's end of the broker: takes account requests and pay packs from their queues and answers
/// to whoever sent them.
///
/// A pack is acknowledged to the broker after the database has it, so a worker that dies loses
/// nothing; what it had done and not acknowledged comes again and is taken once. Packs are taken in
/// the order of the queue; while the database is busy or full the first waits and the others wait
/// behind it. What can never be taken goes to the dead letters. Several workers may share the
/// queues and the database; the order then holds for each of them only.
class BillingWorker final : public QObject
{
    Q_OBJECT

public:
    static constexpr int PREFETCH = 16;
    static constexpr int DATABASE_RETRY_MS = 1000;
    /// A pack whose id billing knows is tried this often before it counts as another pack under the
    /// same id: a second worker may just be taking the very same one.
    static constexpr int KNOWN_ID_ATTEMPTS = 3;

    /// `database` must be open, and outlive the worker as `service` must.
    BillingWorker(const BrokerAddress &address, BillingDatabase &database, BillingService &service,
                  int prefetch = PREFETCH, QObject *parent = nullptr);
    ~BillingWorker() override;

    void start();

signals:
    /// Connected and taking work.
    void ready();

private:
    bool prepare(AmqpConnection &connection);
    void onDelivered(const AmqpDelivery &delivery);
    void takeRequest(const AmqpDelivery &delivery);
    void finishRequest(const AmqpDelivery &delivery, const BillingAnswer &answer);
    void takePacks();
    /// False when the pack has to wait.
    bool takePack(const AmqpDelivery &delivery);
    void reply(const AmqpDelivery &delivery, const BillingAnswer &answer);
    void discard(const AmqpDelivery &delivery, const QString &why);

    BillingDatabase &m_database;
    BillingService &m_service;
    int m_prefetch;
    BrokerSession m_session;
    std::deque<AmqpDelivery> m_packs;
    /// Refusals of the first of m_packs although its id is known.
    int m_knownIdRefusals = 0;
    QTimer m_packTimer;
    /// Counts connections: a slow answer belongs to the one that its request came by.
    quint64 m_connection = 0;
};
