#pragma once

#include <bus/amqp/brokeraddress.h>
#include <bus/amqp/replytable.h>

#include <QByteArray>
#include <QElapsedTimer>
#include <QObject>
#include <QString>
#include <QTimer>
#include <QVariantMap>

#include <memory>

class BrokerSession;
struct AmqpDelivery;

/// The half of AmqpBus that lives in a thread of its own and may wait for the broker.
///
/// Every publish() ends in exactly one of accepted() and refused(). Answers come after the
/// accepted() of what they answer.
class AmqpLink final : public QObject
{
    Q_OBJECT

public:
    /// How long a request waits for a worker; the cashier has given up by then.
    static constexpr int REQUEST_EXPIRATION_MS = 60000;

    explicit AmqpLink(const BrokerAddress &address);
    ~AmqpLink() override;

public slots:
    /// Call in the link's own thread, once.
    void start();
    /// `name` is the request's uid or the pack's id.
    void publish(quint64 token, const QString &destination, const QByteArray &body,
                 const QString &name);

signals:
    void accepted(quint64 token);
    void refused(quint64 token, const QString &reason);
    void arrived(const QVariantMap &headers, const QByteArray &body);
    void connecting();
    void up();
    void down(const QString &reason, int retryMs);
    /// The broker does not take messages for the time being.
    void blocked(bool now);

private:
    void onConfirmed(quint64 token);
    void onFailed(quint64 token, const QString &reason);
    void onDelivered(const AmqpDelivery &delivery);
    void onDown(const QString &reason, int retryMs);
    void drop(const AmqpDelivery &delivery, const QString &why) const;

    BrokerAddress m_address;
    std::unique_ptr<BrokerSession> m_session;
    std::unique_ptr<QTimer> m_cleaning;
    ReplyTable m_replies;
    QElapsedTimer m_clock;
    QString m_lastReason;
    bool m_blocked = false;
};
