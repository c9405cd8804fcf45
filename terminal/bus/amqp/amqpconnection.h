#pragma once

#include <bus/amqp/amqpcontentreader.h>
#include <bus/amqp/amqpmessage.h>
#include <bus/amqp/confirmledger.h>

#include <QElapsedTimer>
#include <QObject>
#include <QSocketNotifier>
#include <QString>
#include <QTimer>
#include <QVariantMap>

#include <memory>

class BrokerAddress;

/// One connection to the broker with one channel on it. The protocol library stays behind this
/// class.
///
/// Lives in one thread, and not in that of the windows: opening and setting up wait for the broker,
/// every step for OPEN_TIMEOUT_MS at most. After that it works from the event loop: it reads what
/// arrives, keeps the heartbeat, and closes a connection that fell silent or that leaves a publish
/// without a confirm for CONFIRM_TIMEOUT_MS.
///
/// A failure of any operation closes the connection; it can be opened again.
class AmqpConnection final : public QObject
{
    Q_OBJECT

public:
    static constexpr int OPEN_TIMEOUT_MS = 5000;
    static constexpr int CONFIRM_TIMEOUT_MS = 30000;
    static constexpr int HEARTBEAT_S = 10;

    enum class Acknowledge { Automatic, Manual };

    explicit AmqpConnection(QObject *parent = nullptr);
    ~AmqpConnection() override;

    /// `name` is what the broker's administrator sees. False leaves it closed with the reason in
    /// lastError(); lost() is not emitted.
    bool open(const BrokerAddress &address, const QString &name);
    bool isOpen() const { return m_state != nullptr; }
    /// Says goodbye to the broker if it listens. Open publishes fail.
    void close();
    /// Why it closed, a Russian text.
    QString lastError() const { return m_error; }

    bool declareExchange(const QString &name, const QString &type);
    /// A durable queue.
    bool declareQueue(const QString &name, const QVariantMap &arguments);
    bool bindQueue(const QString &queue, const QString &exchange, const QString &routingKey);
    /// Every publish after this ends in confirmed() or failed().
    bool enableConfirms();
    /// How many unacknowledged deliveries each consumer started after this may hold.
    bool setPrefetch(int count);
    /// `consumer` names the consumer in its deliveries.
    bool consume(const QString &queue, const QString &consumer, Acknowledge mode);

    /// `token` names the message in confirmed() and failed(); 0 asks for neither.
    bool publish(const AmqpMessage &message, quint64 token = 0);
    bool acknowledge(quint64 tag);
    /// Not put back into the queue: it goes where the queue sends its dead letters.
    bool reject(quint64 tag);

signals:
    void confirmed(quint64 token);
    /// Returned, rejected, or unknown because the connection went.
    void failed(quint64 token, const QString &reason);
    void delivered(const AmqpDelivery &delivery);
    /// The broker stopped taking publishes, or takes them again.
    void blocked(bool now);
    /// An open connection closed by itself, after failed() for each open publish.
    void lost(const QString &reason);

private:
    struct Release
    {
        void operator()(amqp_connection_state_t state) const;
    };
    struct RetireNotifier
    {
        void operator()(QSocketNotifier *notifier) const;
    };
    using State = std::unique_ptr<amqp_connection_state_t_, Release>;

    bool checkReply();
    bool fail(const QString &reason);
    void drop(const QString &reason);

    void poll();
    void pollSoon();
    void handle(const amqp_frame_t &frame);
    void handleMethod(const amqp_method_t &method);
    void handleContent(const AmqpContentReader::Content &content);
    void settle(quint64 number, bool multiple, bool positive);

    State m_state;
    std::unique_ptr<QSocketNotifier, RetireNotifier> m_notifier;
    QTimer m_tick;
    QTimer m_soon;
    QElapsedTimer m_clock;
    AmqpContentReader m_reader;
    ConfirmLedger m_ledger;
    bool m_confirms = false;
    /// Counts connections, so that a loop over frames notices that a slot closed or replaced its
    /// own.
    quint64 m_generation = 0;
    QString m_error;
};
