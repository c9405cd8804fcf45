#include <payments/outbox.h>

#include <bus/messagebus.h>
#include <payments/paymentsstore.h>
#include <recovery/faultpoint.h>

#include <QDeadlineTimer>
#include <QRandomGenerator>

#include <algorithm>
#include <utility>

const QString Outbox::PACK_DESTINATION = QStringLiteral("/app/add_pay_pack");
const QString Outbox::BOX_ID = QStringLiteral("boxId");

namespace {

/// The bus answers every message; this only bounds what a bus that forgets would cost.
constexpr int GRACES_FOR_THE_BUS = 10;

} // namespace

int OutboxTiming::delay(int attempts) const
{
    qint64 wait = first;
    for (int i = 1; i < attempts && wait < longest; ++i)
        wait *= 2;
    wait = std::min<qint64>(wait, longest);
    const double part = random ? random() : QRandomGenerator::global()->generateDouble();
    return int(wait - qint64(double(wait) / 4 * part));
}

Outbox::Outbox(PaymentsStore &store, qint64 boxId, OutboxTiming timing, QObject *parent)
    : QObject(parent), m_store(store), m_boxId(boxId), m_timing(std::move(timing))
{
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &Outbox::wake);
}

Outbox::~Outbox() = default;

qint64 Outbox::now() const
{
    return m_timing.now ? m_timing.now() : QDeadlineTimer::current(Qt::PreciseTimer).deadline();
}

void Outbox::start(MessageBus &bus)
{
    m_bus = &bus;
    m_started = true;
    m_again = m_store.unacknowledged();
    connect(&bus, &MessageBus::stateChanged, this, &Outbox::onConnected, Qt::UniqueConnection);
    if (bus.connected())
        send(bus, true);
    schedule();
}

int Outbox::drain(MessageBus &bus)
{
    m_bus = &bus;
    const int sent = send(bus, true);
    schedule();
    return sent;
}

bool Outbox::isOnTheWay(qint64 packId)
{
    const auto entry = m_onTheWay.constFind(packId);
    if (entry == m_onTheWay.cend())
        return false;
    if (*entry > now())
        return true;
    m_onTheWay.erase(entry);
    return false;
}

int Outbox::send(MessageBus &bus, bool waitingToo)
{
    int sent = 0;
    const QVector<qint64> packs = m_store.unposted() + m_again;
    for (const qint64 packId : packs) {
        if (m_onTheWay.size() >= m_timing.window)
            break;
        if (isOnTheWay(packId) || (!waitingToo && m_waits.value(packId).notBefore > now()))
            continue;
        QVariantMap map;
        QString error;
        const bool posted = m_again.contains(packId);
        if (posted ? !message(packId, &map, &error) : !take(packId, map, error)) {
            qWarning("Pay pack %lld not handed on: %s", packId, qUtf8Printable(error));
            packRefused(packId);
            continue;
        }
        m_onTheWay.insert(packId, now() + qint64(m_timing.grace) * GRACES_FOR_THE_BUS);
        FaultPoint::pass(FaultPoint::Place::OutboxBeforeSend);
        bus.sendMessage(PACK_DESTINATION, map);
        FaultPoint::pass(FaultPoint::Place::OutboxAfterSend);
        ++sent;
    }
    return sent;
}

bool Outbox::message(qint64 packId, QVariantMap *map, QString *error)
{
    const std::optional<QVariantMap> pack = m_store.pack(packId);
    if (!pack) {
        *error = m_store.lastError().isEmpty()
            ? QStringLiteral("Пачки № %1 нет в журнале платежей.").arg(packId)
            : m_store.lastError();
        return false;
    }
    *map = *pack;
    map->insert(BOX_ID, QString::number(m_boxId));
    error->clear();
    return true;
}

bool Outbox::take(qint64 packId, QVariantMap &map, QString &error)
{
    const std::optional<PaymentRecord> record = m_store.record(packId);
    if (record && record->state >= PackState::Posted) {
        error = QStringLiteral("Пачка № %1 уже отправлена.").arg(packId);
        return false;
    }
    QVariantMap filled;
    if (!message(packId, &filled, &error))
        return false;
    if (!m_store.advance(packId, PackState::HandedOn)) {
        error = m_store.lastError();
        return false;
    }
    map = filled;
    emit changed(packId);
    return true;
}

bool Outbox::postAgain(qint64 packId, QString *error)
{
    QVariantMap map;
    if (!m_bus) {
        *error = QStringLiteral("Шина сообщений ещё не подключена. Повторите позже.");
        return false;
    }
    if (isOnTheWay(packId)) {
        error->clear();
        return true;
    }
    if (!message(packId, &map, error))
        return false;
    const std::optional<PaymentRecord> record = m_store.record(packId);
    if (record && record->state < PackState::Posted && !take(packId, map, *error))
        return false;
    if (record && record->state >= PackState::Posted && !m_again.contains(packId))
        m_again.append(packId);
    m_onTheWay.insert(packId, now() + qint64(m_timing.grace) * GRACES_FOR_THE_BUS);
    m_bus->sendMessage(PACK_DESTINATION, map);
    return true;
}

void Outbox::packSaved(qint64 packId, bool postedByOthers)
{
    m_waits[packId].notBefore = now() + (postedByOthers ? m_timing.grace : m_timing.first);
    schedule();
}

void Outbox::packGiven(qint64 packId)
{
    m_waits.remove(packId);
    m_onTheWay.insert(packId, now() + m_timing.grace);
    schedule();
}

void Outbox::packAccepted(qint64 packId)
{
    m_waits.remove(packId);
    m_onTheWay.remove(packId);
    m_again.removeAll(packId);
    const int left = m_onTheWay.size();
    if (m_bus && (left == m_timing.window / 2 || left == 0))
        send(*m_bus, false);
    if (m_onTheWay.isEmpty())
        schedule();
}

void Outbox::packRefused(qint64 packId)
{
    m_onTheWay.remove(packId);
    Wait &wait = m_waits[packId];
    ++wait.attempts;
    wait.notBefore = now() + m_timing.delay(wait.attempts);
    schedule();
}

void Outbox::askAgain()
{
    if (m_lastAsked && now() - *m_lastAsked < m_timing.askAgain)
        return;
    const QVector<qint64> unconfirmed = m_store.unacknowledged();
    if (!m_store.lastError().isEmpty())
        return;
    m_lastAsked = now();
    for (const qint64 packId : unconfirmed) {
        if (!m_again.contains(packId))
            m_again.append(packId);
    }
}

void Outbox::onConnected(bool connected)
{
    if (!connected)
        return;
    m_waits.clear();
    askAgain();
    // Not from inside the bus: it is about to deliver what it kept back.
    m_timer.start(0);
}

void Outbox::wake()
{
    if (!m_bus || !m_started)
        return;
    if (m_bus->connected())
        send(*m_bus, false);
    schedule();
}

qint64 Outbox::untilNext()
{
    const QVector<qint64> packs = m_store.unposted() + m_again;
    // A store that cannot be read now may hold packs all the same.
    if (!m_store.lastError().isEmpty())
        return m_timing.longest;
    qint64 next = -1;
    for (const qint64 packId : packs) {
        const qint64 at =
            isOnTheWay(packId) ? m_onTheWay.value(packId) : m_waits.value(packId).notBefore;
        next = next < 0 ? at : std::min(next, at);
    }
    return next < 0 ? -1 : std::max<qint64>(0, next - now());
}

bool Outbox::idle()
{
    return m_store.unposted().isEmpty() && m_store.lastError().isEmpty() && m_again.isEmpty();
}

void Outbox::schedule()
{
    if (!m_started)
        return;
    const qint64 next = untilNext();
    if (next < 0) {
        m_timer.stop();
        return;
    }
    // While the bus is away its return is what counts; the timer only stands by.
    const qint64 least = m_bus && !m_bus->connected() ? m_timing.first : 1;
    m_timer.start(int(std::min<qint64>(std::max(next, least), m_timing.longest)));
}
