#include <bus/messagebus.h>

#include <bus/wiretext.h>

#include <QLoggingCategory>
#include <QMetaMethod>

const QString MessageBus::PAYMENT_STATUS = QStringLiteral("payPackStatus");
const QString MessageBus::MESSAGE_TYPE = QStringLiteral("msgType");

MessageBus::MessageBus(QObject *parent) : QObject(parent)
{
    qRegisterMetaType<BusMessage>();
}

MessageBus::~MessageBus() = default;

bool MessageBus::isWatched() const
{
    static const QMetaMethod watching = QMetaMethod::fromSignal(&MessageBus::traffic);
    return isSignalConnected(watching);
}

void MessageBus::noteSent(const QString &destination, const MessageBody &body)
{
    if (isWatched())
        emit traffic(
            {BusMessage::Direction::Outgoing, QDateTime::currentDateTime(), destination, {}, body});
}

void MessageBus::deliver(const QVariantMap &headers, const QByteArray &body)
{
    handOut(headers, body, false);
}

void MessageBus::replay(const BusMessage &message)
{
    if (message.direction == BusMessage::Direction::Incoming)
        handOut(message.headers, message.body.bytes(), true);
}

void MessageBus::handOut(const QVariantMap &headers, const QByteArray &body, bool replayed)
{
    const QString type = headers.value(MESSAGE_TYPE).toString();
    if (isWatched())
        emit traffic({BusMessage::Direction::Incoming, QDateTime::currentDateTime(), type, headers,
                      body, replayed});
    if (type != PAYMENT_STATUS) {
        emit incomingMessage(headers, WireText::toText(body));
        return;
    }
    QString error;
    const std::optional<QVariantMap> status = WireText::decode(body, &error);
    if (status)
        emit paymentStatus(*status);
    else
        qWarning("Payment status dropped: %s", qUtf8Printable(error));
}
