#include <bus/busjournal.h>

#include <bus/messagebus.h>

#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonParseError>
#include <QVariantMap>

#include <algorithm>
#include <optional>

using Relation = BusJournalEntry::Relation;

namespace {

/// The id of one message out of what it carries: an account request has a uid, a pack its own id.
QString idOf(const QVariant &uid, const QVariant &pack)
{
    const QString text = uid.toString();
    if (!text.isEmpty())
        return text;
    const QString id = pack.toString();
    return id.isEmpty() ? QString() : QStringLiteral("pack ") + id;
}

const QString keyUid = QStringLiteral("uid");
const QString keyId = QStringLiteral("id");
const QString keyPackId = QStringLiteral("packId");

QString idOfSent(const QVariantMap &fields)
{
    return idOf(fields.value(keyUid), fields.value(keyId));
}

QString idOfSent(const MessageBody &body)
{
    if (const std::optional<QVariantMap> fields = body.fields())
        return idOfSent(*fields);
    const QJsonObject object = QJsonDocument::fromJson(body.bytes()).object();
    return idOf(object.value(keyUid).toVariant(), object.value(keyId).toVariant());
}

QString idOfArrived(const BusMessage &message, const QJsonObject &body)
{
    const QString inHeaders = message.headers.value(keyUid).toString();
    return idOf(inHeaders.isEmpty() ? body.value(keyUid).toVariant() : inHeaders,
                body.value(keyPackId).toVariant());
}

} // namespace

BusJournal::BusJournal(int mostMessages, qint64 mostBytes, QObject *parent)
    : QObject(parent), m_mostMessages(qMax(1, mostMessages)), m_mostBytes(mostBytes)
{
    m_clock.start();
}

BusJournal::~BusJournal() = default;

void BusJournal::follow(MessageBus &bus)
{
    connect(&bus, &MessageBus::traffic, this, &BusJournal::note);
    connect(&bus, &MessageBus::accepted, this,
            [this](const QString &destination, const QVariant &data) {
                settle(destination, data, QString());
            });
    connect(&bus, &MessageBus::refused, this, &BusJournal::settle);
}

void BusJournal::clear()
{
    dropOldest(size());
}

const BusJournalEntry *BusJournal::find(qint64 number) const
{
    if (m_entries.empty() || number < m_entries.front().number || number > m_entries.back().number)
        return nullptr;
    return &at(int(number - m_entries.front().number));
}

BusJournalEntry *BusJournal::entry(qint64 number)
{
    return const_cast<BusJournalEntry *>(find(number));
}

void BusJournal::note(const BusMessage &message)
{
    BusJournalEntry entry;
    entry.message = message;
    entry.weight = message.body.weight();
    // Room is made first: what this message belongs to must still be here when it is added.
    makeRoom(entry.weight);
    entry.number = ++m_lastNumber;
    if (message.direction == BusMessage::Direction::Outgoing)
        noteSent(entry, idOfSent(message.body));
    else
        noteArrived(entry);
    m_bytes += entry.weight;
    const qint64 partner = entry.partner;
    m_entries.push_back(std::move(entry));
    emit appended();
    if (partner > 0)
        emit changed(partner);
}

void BusJournal::noteSent(BusJournalEntry &entry, const QString &id)
{
    if (id.isEmpty())
        return;
    entry.relation = Relation::Request;
    m_requests[id].append(entry.number);
    m_ids.insert(entry.number, id);
    m_sentAt.insert(entry.number, m_clock.elapsed());
}

void BusJournal::noteArrived(BusJournalEntry &arrived)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(arrived.message.body.bytes(), &error);
    if (error.error != QJsonParseError::NoError) {
        arrived.relation = Relation::Unreadable;
        return;
    }
    const QString id = idOfArrived(arrived.message, document.object());
    const QVector<qint64> requests = id.isEmpty() ? QVector<qint64>() : m_requests.value(id);
    if (requests.isEmpty()) {
        arrived.relation = Relation::Unmatched;
        return;
    }
    const auto open = std::find_if(requests.cbegin(), requests.cend(),
                                   [this](qint64 number) { return entry(number)->partner == 0; });
    if (open == requests.cend()) {
        arrived.relation = Relation::Repeated;
        arrived.partner = requests.constLast();
        return;
    }
    BusJournalEntry *request = entry(*open);
    arrived.relation = Relation::Answer;
    arrived.partner = request->number;
    arrived.roundTrip = m_clock.elapsed() - m_sentAt.value(request->number);
    request->partner = arrived.number;
    request->roundTrip = arrived.roundTrip;
}

void BusJournal::settle(const QString &destination, const QVariant &data, const QString &refusal)
{
    // From the oldest on: a bus settles equal messages in the order in which they were sent.
    const QString id = idOfSent(data.toMap());
    const QVector<qint64> requests = m_requests.value(id);
    for (const qint64 number : requests) {
        BusJournalEntry *sent = entry(number);
        if (sent->accepted || !sent->refusal.isEmpty() || sent->message.address != destination)
            continue;
        sent->accepted = refusal.isEmpty();
        sent->refusal = refusal;
        emit changed(number);
        return;
    }
}

void BusJournal::makeRoom(qint64 weight)
{
    int count = qMax(0, size() + 1 - m_mostMessages);
    qint64 left = m_bytes + weight;
    for (int i = 0; i < size() && (i < count || left > m_mostBytes); ++i) {
        left -= at(i).weight;
        count = qMax(count, i + 1);
    }
    if (count > 0)
        dropOldest(count);
}

void BusJournal::dropOldest(int count)
{
    for (int i = 0; i < count; ++i) {
        const BusJournalEntry &oldest = m_entries.front();
        m_bytes -= oldest.weight;
        m_sentAt.remove(oldest.number);
        const QString id = m_ids.take(oldest.number);
        const auto requests = m_requests.find(id);
        if (requests != m_requests.end()) {
            requests->removeOne(oldest.number);
            if (requests->isEmpty())
                m_requests.erase(requests);
        }
        m_entries.pop_front();
    }
    if (count > 0)
        emit dropped(count);
}
