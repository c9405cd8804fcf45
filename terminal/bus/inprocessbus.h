#pragma once

#include <bus/messagebus.h>

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QVariantMap>
#include <QVector>

#include <functional>
#include <optional>

/// A bus whose far side lives in this process. A handler gets what it would get over a wire: a type
/// that JSON text would lose is lost here too, and what has no such text is refused. The text
/// itself is made only for who asks for it.
class InProcessBus final : public MessageBus
{
    Q_OBJECT

public:
    struct Answer
    {
        QVariantMap headers;
        QByteArray body;
        /// On top of the bus's own delay, in milliseconds.
        int delay = 0;
    };
    /// What a service makes of a message. No answer is a legal outcome; an error text refuses the
    /// message.
    struct Outcome
    {
        QString refusal;
        std::optional<Answer> answer;
        /// Sent besides: what comes late, twice or to somebody else.
        QVector<Answer> others;
    };
    using Handler = std::function<Outcome(const QVariantMap &message)>;

    explicit InProcessBus(QObject *parent = nullptr);
    ~InProcessBus() override;

    /// Sets who serves a destination; replaces an earlier handler. Handlers run in the event loop,
    /// one at a time, in the order in which the messages were sent. What a handler refers to must
    /// outlive the bus or be removed with withdraw().
    void serve(const QString &destination, Handler handler);
    void withdraw(const QString &destination);

    /// Time on the way to the service and again on the way back, in milliseconds.
    void setDelay(int milliseconds);
    /// A disconnected bus refuses what is sent and delivers answers only after it is connected
    /// again.
    void setConnected(bool connected);

    bool connected() const override;
    QString stateText() const override;

public slots:
    void sendMessage(const QString &destination, const QVariant &data) override;

private:
    /// From the event loop, at once or after `milliseconds`; calls without a delay keep their
    /// order.
    template<typename Call>
    void later(int milliseconds, Call &&call);
    void arrive(const QString &destination, const QVariant &data, const MessageBody &body);
    void reply(const Answer &answer);
    void answer(const Answer &answer);

    QHash<QString, Handler> m_handlers;
    QVector<Answer> m_held;
    int m_delay = 0;
    bool m_connected = true;
};
