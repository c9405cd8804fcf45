#include <bus/amqp/amqpbus.h>

#include <billing/billingservice.h>
#include <bus/amqp/amqplink.h>
#include <bus/amqp/brokeraddress.h>
#include <bus/amqp/messagecheck.h>
#include <bus/wiretext.h>

#include <QTimer>

#include <utility>

namespace {

/// More than a cashier can cause; a program gone wild is stopped here instead of filling memory.
constexpr int MOST_UNSETTLED = 10000;

QString nameOf(const QString &destination, const QVariant &data)
{
    const QVariantMap map = data.toMap();
    return destination == BillingService::PACK_DESTINATION
        ? QStringLiteral("pack-%1").arg(map.value(QStringLiteral("id")).toString())
        : map.value(QStringLiteral("uid")).toString();
}

} // namespace

std::unique_ptr<AmqpBus> AmqpBus::create(const QString &address, QString *error)
{
    const std::optional<BrokerAddress> parsed = BrokerAddress::parse(address, error);
    return parsed ? std::make_unique<AmqpBus>(*parsed) : nullptr;
}

AmqpBus::AmqpBus(const BrokerAddress &address, QObject *parent)
    : MessageBus(parent),
      m_link(new AmqpLink(address)),
      m_server(QStringLiteral("%1:%2").arg(address.host(), QString::number(address.port())))
{
    if (!address.isEncrypted() && !address.isLoopback())
        qWarning("Message broker %s: the connection is not encrypted",
                 qUtf8Printable(address.toDisplayString()));
    m_thread.setObjectName(QStringLiteral("message bus"));
    m_link->moveToThread(&m_thread);
    connect(&m_thread, &QThread::started, m_link, &AmqpLink::start);
    connect(&m_thread, &QThread::finished, m_link, &QObject::deleteLater);

    connect(m_link, &AmqpLink::accepted, this, [this](quint64 token) {
        if (!m_sent.contains(token))
            return;
        const Sent sent = m_sent.take(token);
        emit accepted(sent.destination, sent.data);
    });
    connect(m_link, &AmqpLink::refused, this, &AmqpBus::refuse);
    connect(m_link, &AmqpLink::arrived, this, &AmqpBus::deliver);
    connect(m_link, &AmqpLink::connecting, this, [this] { setState(State::Connecting); });
    connect(m_link, &AmqpLink::up, this, [this] { setState(State::Connected); });
    connect(m_link, &AmqpLink::blocked, this,
            [this](bool now) { setState(now ? State::Blocked : State::Connected); });
    connect(m_link, &AmqpLink::down, this, [this](const QString &reason, int retryMs) {
        m_reason = reason;
        m_retry.setRemainingTime(retryMs);
        setState(State::Waiting);
    });
    m_thread.start();
}

AmqpBus::~AmqpBus()
{
    m_thread.quit();
    m_thread.wait();
}

bool AmqpBus::connected() const
{
    return m_state == State::Connected;
}

QString AmqpBus::stateText() const
{
    switch (m_state) {
    case State::Connecting:
        return QStringLiteral("Соединение с процессингом (%1)…").arg(m_server);
    case State::Connected:
        return QStringLiteral("Связь с процессингом есть (%1)").arg(m_server);
    case State::Blocked:
        return QStringLiteral("Процессинг временно не принимает сообщения (%1)").arg(m_server);
    case State::Waiting:
        return QStringLiteral("Связи с процессингом нет: %1. Повторное подключение через %2 с.")
            .arg(m_reason, QString::number((m_retry.remainingTime() + 999) / 1000));
    }
    return QString();
}

void AmqpBus::setState(State state)
{
    m_state = state;
    emit stateChanged(connected());
}

void AmqpBus::sendMessage(const QString &destination, const QVariant &data)
{
    QString error;
    const std::optional<QByteArray> body = WireText::encode(data, &error);
    noteSent(destination, body.value_or(QByteArray()));
    const quint64 token = ++m_lastToken;
    m_sent.insert(token, {destination, data});
    if (body && body->size() > MessageCheck::LARGEST_BYTES)
        error = QStringLiteral("Сообщение не отправлено: оно больше %1 МиБ.")
                    .arg(MessageCheck::LARGEST_BYTES / 1024 / 1024);
    else if (body && m_sent.size() > MOST_UNSETTLED)
        error = QStringLiteral("Сообщение не отправлено: слишком много неподтверждённых. "
                               "Повторите позже.");
    if (!error.isEmpty()) {
        QTimer::singleShot(0, this, [this, token, error] { refuse(token, error); });
        return;
    }
    AmqpLink *link = m_link;
    const QString name = nameOf(destination, data);
    QMetaObject::invokeMethod(
        link,
        [link, token, destination, text = *body, name] {
            link->publish(token, destination, text, name);
        },
        Qt::QueuedConnection);
}

void AmqpBus::refuse(quint64 token, const QString &reason)
{
    if (!m_sent.contains(token))
        return;
    const Sent sent = m_sent.take(token);
    emit refused(sent.destination, sent.data, reason);
}
