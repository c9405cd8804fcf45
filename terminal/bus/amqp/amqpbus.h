#pragma once

#include <bus/messagebus.h>

#include <QDeadlineTimer>
#include <QHash>
#include <QString>
#include <QThread>
#include <QVariant>

#include <memory>

class AmqpLink;
class BrokerAddress;

/// A bus over an AMQP 0-9-1 broker.
///
/// accepted() comes after the broker has the message where it was to go: for a pay pack, on the
/// disks of a majority of its nodes. Whatever is not confirmed when the connection breaks is
/// refused, although the broker may have some of it: the sender sends it again and billing takes a
/// pack once. While there is no connection everything is refused at once; nothing waits here
/// unseen. Answers come only to the terminal that asked, once, after the accepted() of what they
/// answer; what does not belong to a message of this terminal or cannot be read is logged and
/// dropped. No password gets into logs or texts.
///
/// It connects by itself, from the first turn of the event loop on and again after every loss; a
/// change of the wait or of the reason is reported by stateChanged() too. The network is waited for
/// in a thread of its own: sendMessage() never waits; the destructor, at an unreachable broker,
/// for seconds.
class AmqpBus final : public MessageBus
{
    Q_OBJECT

public:
    /// Null, with a Russian text, for an address that cannot be used; see BrokerAddress.
    static std::unique_ptr<AmqpBus> create(const QString &address, QString *error);

    explicit AmqpBus(const BrokerAddress &address, QObject *parent = nullptr);
    ~AmqpBus() override;

    bool connected() const override;
    QString stateText() const override;

public slots:
    void sendMessage(const QString &destination, const QVariant &data) override;

private:
    enum class State { Connecting, Connected, Blocked, Waiting };
    struct Sent
    {
        QString destination;
        QVariant data;
    };

    void refuse(quint64 token, const QString &reason);
    void setState(State state);

    QThread m_thread;
    /// Lives in m_thread and ends with it.
    AmqpLink *m_link = nullptr;
    QString m_server;
    QHash<quint64, Sent> m_sent;
    quint64 m_lastToken = 0;
    State m_state = State::Connecting;
    QString m_reason;
    QDeadlineTimer m_retry;
};
