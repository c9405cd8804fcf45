#include "buspacks.h"

#include "roubles.h"

#include <bus/busjournal.h>
#include <payments/outbox.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace {

/// A number, or decimal digits where a number of JSON would not hold them.
bool readInteger(const QJsonValue &value, qint64 *result)
{
    bool ok = false;
    *result = value.toVariant().toLongLong(&ok);
    return ok;
}

bool readPack(const QJsonObject &body, BusPacks::Pack *pack)
{
    const QJsonArray payments = body.value(QStringLiteral("payments")).toArray();
    const QJsonArray operations = body.value(QStringLiteral("operations")).toArray();
    if (!readInteger(body.value(QStringLiteral("id")), &pack->id) || payments.isEmpty())
        return false;
    for (const QJsonValue &payment : payments) {
        qint64 sum = 0;
        if (!readInteger(payment.toObject().value(QStringLiteral("summ")), &sum))
            return false;
        pack->amount += sum;
        pack->sums.append(sum);
    }
    for (const QJsonValue &operation : operations) {
        const QJsonObject each = operation.toObject();
        qint64 sum = 0;
        if (!readInteger(each.value(QStringLiteral("sum")), &sum))
            return false;
        switch (each.value(QStringLiteral("moneyType")).toInt()) {
        case 1:
            pack->cash += sum;
            break;
        case 2:
            pack->card += sum;
            break;
        default:
            return false;
        }
    }
    return true;
}

} // namespace

bool BusPacks::Pack::operator==(const Pack &other) const
{
    return id == other.id && amount == other.amount && cash == other.cash && card == other.card
        && sums == other.sums;
}

QVector<qint64> BusPacks::sumsOf(const QVariantMap &pack)
{
    QVector<qint64> sums;
    const QVariantList payments = pack.value(QStringLiteral("payments")).toList();
    for (const QVariant &payment : payments)
        sums.append(payment.toMap().value(QStringLiteral("summ")).toLongLong());
    return sums;
}

qint64 BusPacks::moment(const BusJournal &journal)
{
    return journal.size() > 0 ? journal.at(journal.size() - 1).number : 0;
}

BusPacks BusPacks::since(const BusJournal &journal, qint64 moment)
{
    BusPacks result;
    if (journal.size() > 0 && journal.at(0).number > moment + 1)
        result.m_problems.append(
            QStringLiteral("Журнал шины хранит не все сообщения: первых уже нет."));
    for (int i = 0; i < journal.size(); ++i) {
        const BusJournalEntry &entry = journal.at(i);
        const BusMessage &message = entry.message;
        if (entry.number > moment && message.direction == BusMessage::Direction::Outgoing
            && message.address == Outbox::PACK_DESTINATION && entry.refusal.isEmpty())
            result.take(message.body.bytes());
    }
    return result;
}

const BusPacks::Pack *BusPacks::find(qint64 id) const
{
    const auto found = std::find_if(m_packs.cbegin(), m_packs.cend(),
                                    [id](const Pack &pack) { return pack.id == id; });
    return found == m_packs.cend() ? nullptr : &*found;
}

qint64 BusPacks::amount() const
{
    qint64 amount = 0;
    for (const Pack &pack : m_packs)
        amount += pack.amount;
    return amount;
}

void BusPacks::take(const QByteArray &body)
{
    Pack pack;
    if (!readPack(QJsonDocument::fromJson(body).object(), &pack)) {
        m_problems.append(QStringLiteral("Пачка на шине не читается."));
        return;
    }
    const Pack *known = find(pack.id);
    if (!known) {
        m_packs.append(pack);
    } else if (!(*known == pack)) {
        m_problems.append(
            QStringLiteral("Пачка № %1 ушла по шине дважды с разными суммами: %2 и %3.")
                .arg(QString::number(pack.id), Roubles::text(known->amount),
                     Roubles::text(pack.amount)));
    }
}
