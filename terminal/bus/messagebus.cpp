#include <bus/messagebus.h>

#include <bus/wiretext.h>

#include <QLoggingCategory>

const QString MessageBus::PAYMENT_STATUS = QStringLiteral("payPackStatus");
const QString MessageBus::MESSAGE_TYPE = QStringLiteral("msgType");

MessageBus::MessageBus(QObject *parent) : QObject(parent)
{
    qRegisterMetaType<BusMessage>();
}

MessageBus::~MessageBus() = default;

void MessageBus::deliver(const QVariantMap &headers, const QByteArray &body)
{
    handOut(headers, body, false);
}

void MessageBus::replay(const BusMessage &message)
{
    if (message.direction == BusMessage::Direction::Incoming)
        handOut(message.headers, message.body, true);
}

void MessageBus::handOut(const QVariantMap &headers, const QByteArray &body, bool replayed)
{
    const QString type = headers.value(MESSAGE_TYPE).toString();
    emit traffic({BusMessage::Direction::Incoming, QDateTime::currentDateTime(), type, headers,
                  body, replayed});
    if (type != PAYMENT_STATUS) {
        emit incomingMessage(headers, QString::fromUtf8(body));
        return;
    }
    QString error;
    const std::optional<QVariantMap> status = WireText::decode(body, &error);
    if (status)
        emit paymentStatus(*status);
    else
        qWarning("Payment status dropped: %s", qUtf8Printable(error));
}
