#include "billingworker.h"

#include <billing/billingdatabase.h>
#include <billing/billingservice.h>
#include <billing/paypackreader.h>
#include <bus/amqp/billingqueues.h>
#include <bus/amqp/messagecheck.h>

#include <QJsonDocument>
#include <QJsonObject>

namespace {

const QString REQUEST_CONSUMER = QStringLiteral("requests");
const QString PACK_CONSUMER = QStringLiteral("packs");
constexpr int LONGEST_SHOWN = 64;

std::optional<QVariantMap> readBody(const AmqpDelivery &delivery, QString *error)
{
    if (delivery.oversized) {
        *error = QStringLiteral("Сообщение слишком велико.");
        return std::nullopt;
    }
    return MessageCheck::read(delivery.body, error);
}

bool isRefusal(const BillingAnswer &answer)
{
    return QJsonDocument::fromJson(answer.body).object().value(QStringLiteral("error")).toBool();
}

} // namespace

BillingWorker::BillingWorker(const BrokerAddress &address, BillingDatabase &database,
                             BillingService &service, int prefetch, QObject *parent)
    : QObject(parent),
      m_database(database),
      m_service(service),
      m_prefetch(prefetch),
      m_session(address, QStringLiteral("selmar-billing-worker"),
                [this](AmqpConnection &connection) { return prepare(connection); })
{
    m_packTimer.setSingleShot(true);
    connect(&m_packTimer, &QTimer::timeout, this, &BillingWorker::takePacks);
    connect(&m_session.connection(), &AmqpConnection::delivered, this, &BillingWorker::onDelivered);
    connect(&m_session, &BrokerSession::up, this, &BillingWorker::ready);
    connect(&m_session, &BrokerSession::down, this, [this] {
        // The broker gives them to somebody again; their tags mean nothing now.
        m_packs.clear();
        m_knownIdRefusals = 0;
        m_packTimer.stop();
        ++m_connection;
    });
}

BillingWorker::~BillingWorker() = default;

void BillingWorker::start()
{
    m_session.start();
}

bool BillingWorker::prepare(AmqpConnection &connection)
{
    using Acknowledge = AmqpConnection::Acknowledge;
    return BillingQueues::declare(connection) && connection.setPrefetch(m_prefetch)
        && connection.consume(BillingQueues::PACKS, PACK_CONSUMER, Acknowledge::Manual)
        && connection.consume(BillingQueues::REQUESTS, REQUEST_CONSUMER, Acknowledge::Manual);
}

void BillingWorker::onDelivered(const AmqpDelivery &delivery)
{
    if (delivery.consumer == PACK_CONSUMER) {
        m_packs.push_back(delivery);
        if (!m_packTimer.isActive())
            m_packTimer.start(0);
    } else {
        takeRequest(delivery);
    }
}

void BillingWorker::takeRequest(const AmqpDelivery &delivery)
{
    QString error;
    const std::optional<QVariantMap> request = readBody(delivery, &error);
    if (!request) {
        discard(delivery, error);
        return;
    }
    const BillingAnswer answer = m_service.answer(*request);
    if (answer.delay <= 0) {
        finishRequest(delivery, answer);
        return;
    }
    QTimer::singleShot(answer.delay, this, [this, delivery, answer, connection = m_connection] {
        if (connection == m_connection)
            finishRequest(delivery, answer);
    });
}

void BillingWorker::finishRequest(const AmqpDelivery &delivery, const BillingAnswer &answer)
{
    if (!answer.silent)
        reply(delivery, answer);
    m_session.connection().acknowledge(delivery.tag);
}

void BillingWorker::takePacks()
{
    // One at a time: between two of them the broker's heartbeat and account requests get their
    // turn.
    if (m_packs.empty())
        return;
    const AmqpDelivery first = m_packs.front();
    const quint64 connection = m_connection;
    const bool done = takePack(first);
    if (connection != m_connection)
        return;
    if (done) {
        m_packs.pop_front();
        m_knownIdRefusals = 0;
    }
    if (!m_packs.empty())
        m_packTimer.start(done ? 0 : DATABASE_RETRY_MS);
}

bool BillingWorker::takePack(const AmqpDelivery &delivery)
{
    QString error;
    const std::optional<QVariantMap> pack = readBody(delivery, &error);
    if (!pack) {
        discard(delivery, error);
        return true;
    }
    const std::optional<ReceivedPack> readable = ReceivedPack::read(*pack, &error);
    const BillingAnswer answer = m_service.takePayPack(*pack);
    if (!isRefusal(answer)) {
        reply(delivery, answer);
        m_session.connection().acknowledge(delivery.tag);
        return true;
    }
    const QString reason = m_database.lastError();
    const bool another =
        readable && m_database.hasPack(readable->id) && ++m_knownIdRefusals >= KNOWN_ID_ATTEMPTS;
    if (!readable || another) {
        reply(delivery, answer);
        discard(delivery, QString::fromUtf8(answer.body));
        return true;
    }
    qWarning("Pay pack %s waits for the database: %s", qUtf8Printable(readable->id),
             qUtf8Printable(reason));
    return false;
}

void BillingWorker::reply(const AmqpDelivery &delivery, const BillingAnswer &answer)
{
    // An address of any other form would make this worker publish wherever a sender likes.
    if (!delivery.replyTo.startsWith(BillingQueues::DIRECT_REPLY + QLatin1Char('.')))
        return;
    AmqpMessage message;
    message.routingKey = delivery.replyTo;
    message.correlationId = delivery.correlationId;
    message.headers = answer.headers;
    message.body = answer.body;
    m_session.connection().publish(message);
}

void BillingWorker::discard(const AmqpDelivery &delivery, const QString &why)
{
    qWarning("Message to %s rejected (correlation \"%s\", %d bytes): %s",
             qUtf8Printable(delivery.routingKey),
             qUtf8Printable(delivery.correlationId.left(LONGEST_SHOWN)), delivery.body.size(),
             qUtf8Printable(why));
    m_session.connection().reject(delivery.tag);
}
