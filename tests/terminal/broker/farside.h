#pragma once

#include <bus/amqp/amqpconnection.h>
#include <bus/amqp/amqpmessage.h>

#include <QObject>
#include <QString>
#include <QVector>

#include <functional>

/// Billing's end of the broker as a test wants it: takes every message of the two queues and does
/// with it what the test says.
class FarSide final : public QObject
{
    Q_OBJECT

public:
    using Handler = std::function<void(const AmqpDelivery &)>;

    explicit FarSide(QObject *parent = nullptr);

    /// Declares the queues and takes what comes. Empty on success.
    QString open(const QString &address);
    /// Called for each message, which is acknowledged after that.
    void setHandler(Handler handler) { m_handler = std::move(handler); }
    void answer(const AmqpDelivery &to, const QString &type, const QByteArray &body);
    /// An answer with another correlation id.
    void answerAs(const QString &correlationId, const AmqpDelivery &to, const QString &type,
                  const QByteArray &body);

    QVector<AmqpDelivery> requests() const { return m_requests; }
    QVector<AmqpDelivery> packs() const { return m_packs; }

private:
    void onDelivered(const AmqpDelivery &delivery);

    AmqpConnection m_connection;
    Handler m_handler;
    QVector<AmqpDelivery> m_requests;
    QVector<AmqpDelivery> m_packs;
};
