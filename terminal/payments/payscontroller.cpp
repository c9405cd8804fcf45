#include <payments/payscontroller.h>

#include <bus/messagebus.h>
#include <payments/paymentsstore.h>
#include <recovery/faultpoint.h>

#include <molvacore/paypack.h>

#include <QStringList>

const QString &PaysController::PACK_DESTINATION = Outbox::PACK_DESTINATION;
const QString &PaysController::BOX_ID = Outbox::BOX_ID;
const QString PaysController::RECOVERED = QStringLiteral("recovered");

namespace {

qint64 packIdOf(const QVariantMap &map, const QString &key)
{
    return map.value(key).toString().toLongLong();
}

PaymentRecord recordOf(const PayPack &pack)
{
    PaymentRecord record;
    record.packId = pack.id();
    record.created = pack.created();
    QStringList accounts;
    const QList<Payment> payments = pack.payments();
    for (const Payment &payment : payments) {
        const Provider provider = payment.providerData();
        if (record.providerName.isEmpty()) {
            record.providerId = provider.workProviderId();
            record.providerName = provider.checkName();
        }
        if (!accounts.contains(payment.account()))
            accounts.append(payment.account());
        record.sum += payment.summ();
    }
    record.account = accounts.join(QStringLiteral(", "));
    const QList<PayPackOperation> operations = pack.operations();
    for (const PayPackOperation &operation : operations) {
        if (operation.moneyType() == MoneyType::Card)
            record.card += operation.sum();
        else
            record.cash += operation.sum();
    }
    const QVariantMap fiscal = pack.fiscData();
    record.fiscalStorage = fiscal.value(QStringLiteral("fn")).toString();
    record.fiscalDocument = fiscal.value(QStringLiteral("fd")).toString();
    record.fiscalSign = fiscal.value(QStringLiteral("fp")).toString();
    return record;
}

} // namespace

PaysController::PaysController(PaymentsStore &store, qint64 boxId, QObject *parent)
    : PaysController(store, boxId, OutboxTiming(), parent)
{
}

PaysController::PaysController(PaymentsStore &store, qint64 boxId, const OutboxTiming &timing,
                               QObject *parent)
    : QObject(parent), m_store(store), m_outbox(store, boxId, timing)
{
    connect(&m_outbox, &Outbox::changed, this, &PaysController::changed);
}

PaysController::~PaysController() = default;

QString PaysController::lastError() const
{
    return m_error;
}

bool PaysController::savePack(const PayPack &pack, bool complete)
{
    if (!complete) {
        m_error = QStringLiteral("Пачка № %1 не сохранена: она не завершена.").arg(pack.id());
        return false;
    }
    return store(recordOf(pack), PayPack::packToFullMap(pack));
}

bool PaysController::saveRecovered(const PayPack &pack, const QVariantMap &note)
{
    PaymentRecord record = recordOf(pack);
    record.recovered = true;
    QVariantMap map = PayPack::packToFullMap(pack);
    map.insert(RECOVERED, note);
    return store(record, map);
}

bool PaysController::store(const PaymentRecord &record, const QVariantMap &pack)
{
    if (!m_store.save(record, pack)) {
        m_error = m_store.lastError();
        qWarning("Pay pack %lld not saved: %s", record.packId, qUtf8Printable(m_error));
        return false;
    }
    m_error.clear();
    m_outbox.packSaved(record.packId, m_handOnAtOnce && !record.recovered);
    emit saved(record.packId);
    emit changed(record.packId);
    return true;
}

bool PaysController::handOnAtOnce() const
{
    return m_handOnAtOnce;
}

void PaysController::setHandOnAtOnce(bool atOnce)
{
    m_handOnAtOnce = atOnce;
}

bool PaysController::handOn(qint64 packId, QVariantMap &message, QString &error)
{
    if (!m_outbox.take(packId, message, error))
        return false;
    m_outbox.packGiven(packId);
    return true;
}

bool PaysController::markPosted(qint64 packId)
{
    const bool moved = m_store.advance(packId, PackState::Posted);
    m_error = m_store.lastError();
    if (moved)
        emit changed(packId);
    return moved;
}

bool PaysController::markAcknowledged(qint64 packId)
{
    const bool moved = m_store.advance(packId, PackState::Acknowledged);
    m_error = m_store.lastError();
    if (moved)
        emit changed(packId);
    return moved;
}

QVector<qint64> PaysController::unposted()
{
    return m_store.unposted();
}

void PaysController::follow(MessageBus &bus)
{
    connect(&bus, &MessageBus::accepted, this, &PaysController::onAccepted);
    connect(&bus, &MessageBus::refused, this, &PaysController::onRefused);
    connect(&bus, &MessageBus::paymentStatus, this, &PaysController::onStatus);
}

int PaysController::drain(MessageBus &bus)
{
    return m_outbox.drain(bus);
}

void PaysController::onAccepted(const QString &destination, const QVariant &data)
{
    if (destination != PACK_DESTINATION)
        return;
    const qint64 packId = packIdOf(data.toMap(), QStringLiteral("id"));
    FaultPoint::pass(FaultPoint::Place::BillingAfterTaking);
    if (markPosted(packId)) {
        m_outbox.packAccepted(packId);
        return;
    }
    // It will be posted again; not at once, or a full disk would make that an endless rush.
    qWarning("Pay pack %lld was taken by the bus but is not marked: %s", packId,
             qUtf8Printable(m_error));
    m_outbox.packRefused(packId);
}

void PaysController::onRefused(const QString &destination, const QVariant &data,
                               const QString &reason)
{
    if (destination != PACK_DESTINATION)
        return;
    const qint64 packId = packIdOf(data.toMap(), QStringLiteral("id"));
    m_outbox.packRefused(packId);
    qWarning("Pay pack %lld refused: %s", packId, qUtf8Printable(reason));
    if (m_store.setLastError(packId, reason))
        emit changed(packId);
}

void PaysController::onStatus(const QVariant &status)
{
    const QVariantMap map = status.toMap();
    const qint64 packId = packIdOf(map, QStringLiteral("packId"));
    if (packId <= 0 || !m_store.record(packId))
        return;
    if (!map.value(QStringLiteral("error")).toBool()) {
        markAcknowledged(packId);
        return;
    }
    if (m_store.setLastError(packId, map.value(QStringLiteral("description")).toString()))
        emit changed(packId);
}
