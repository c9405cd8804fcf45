#include <billing/billingpackintake.h>

#include <billing/billingservice.h>
#include <storage/sqlstatement.h>

#include <basixcore/sqlitedatabase.h>
#include <basixcore/sqlitetransaction.h>

#include <QDateTime>
#include <QHash>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

int payerOf(qint64 providerId)
{
    return static_cast<int>(providerId == BillingService::PROVIDER_INDIVIDUAL
                                ? SampleAccount::Payer::Individual
                                : SampleAccount::Payer::Legal);
}

} // namespace

BillingPackIntake::BillingPackIntake(basix::SqliteDatabase &database) : m_database(database) {}

bool BillingPackIntake::run(SqlStatement &statement)
{
    if (statement.run())
        return true;
    m_error = statement.error();
    return false;
}

BillingDatabase::Taking BillingPackIntake::take(const QVariantMap &pack)
{
    using Taking = BillingDatabase::Taking;
    const std::optional<ReceivedPack> received = ReceivedPack::read(pack, &m_error);
    if (!received)
        return Taking::Refused;
    const QString body = QString::fromUtf8(
        QJsonDocument(QJsonObject::fromVariantMap(pack)).toJson(QJsonDocument::Compact));

    basix::SqliteTransaction transaction(m_database);
    if (!transaction.isActive()) {
        m_error = QStringLiteral("База биллинга занята: %1").arg(transaction.lastError());
        return Taking::Refused;
    }
    {
        SqlStatement known(m_database, QStringLiteral("SELECT body FROM packs WHERE pack_id = ?"));
        known.bind(received->id);
        if (!run(known))
            return Taking::Refused;
        if (known.next()) {
            if (known.text(0) == body)
                return Taking::AlreadyTaken;
            m_error = QStringLiteral("Пачка № %1 не принята: под этим номером уже есть другая. "
                                     "Деньги второй раз не берите, сообщите в биллинг.")
                          .arg(received->id);
            return Taking::Refused;
        }
    }
    if (!store(*received, body))
        return Taking::Refused;
    if (transaction.commit())
        return Taking::Taken;
    m_error =
        QStringLiteral("Пачка № %1 не записана: %2").arg(received->id, transaction.lastError());
    return Taking::Refused;
}

bool BillingPackIntake::store(const ReceivedPack &pack, const QString &body)
{
    {
        SqlStatement insert(
            m_database,
            QStringLiteral("INSERT INTO packs (pack_id, received, body) VALUES (?, ?, ?)"));
        insert.bind(pack.id)
            .bind(QDateTime::currentDateTimeUtc().toString(Qt::ISODateWithMs))
            .bind(body);
        if (!run(insert))
            return false;
    }
    for (int i = 0; i < pack.payments.size(); ++i) {
        if (!storePayment(pack.id, i, pack.payments.at(i)))
            return false;
    }
    return true;
}

bool BillingPackIntake::storePayment(const QString &packId, int position,
                                     const ReceivedPack::Payment &payment)
{
    const int payer = payerOf(payment.providerId);
    bool allocated = false;
    if (!applyBalances(payer, payment, payment.document, &allocated))
        return false;
    {
        SqlStatement insert(
            m_database, QStringLiteral("INSERT INTO pack_payments VALUES (?, ?, ?, ?, ?, ?, ?)"));
        insert.bind(packId).bind(position).bind(payment.providerId).bind(payment.account);
        insert.bind(payment.document).bind(payment.sum).bind(allocated ? 1 : 0);
        if (!run(insert))
            return false;
    }
    return storeReadings(packId, position, payer, payment);
}

bool BillingPackIntake::applyBalances(int payer, const ReceivedPack::Payment &payment,
                                      const QString &document, bool *allocated)
{
    if (!document.isEmpty()) {
        qint64 paid = 0;
        for (const ReceivedPack::Line &line : payment.lines)
            paid += line.distributed;
        SqlStatement lower(
            m_database,
            QStringLiteral("UPDATE documents SET topay = topay - ? WHERE payer = ? AND "
                           "account = ? AND number = ?"));
        lower.bind(paid).bind(payer).bind(payment.account).bind(document);
        if (!run(lower))
            return false;
        if (lower.changedRows() == 0)
            return true;
    }
    // An offered advance is paid with the payment it was offered for, or is offered again by hand.
    SqlStatement lower(
        m_database,
        QStringLiteral("UPDATE accounts SET debt = debt - ?, remainder = 0 WHERE payer = ? AND "
                       "number = ?"));
    lower.bind(payment.sum).bind(payer).bind(payment.account);
    if (!run(lower))
        return false;
    *allocated = lower.changedRows() > 0;
    return !*allocated || applyLines(payer, payment, document);
}

bool BillingPackIntake::applyLines(int payer, const ReceivedPack::Payment &payment,
                                   const QString &document)
{
    // Lines of one service id are told apart by their order.
    QHash<qint64, int> seen;
    for (const ReceivedPack::Line &line : payment.lines) {
        SqlStatement lower(
            m_database,
            QStringLiteral("UPDATE services SET topay = topay - ? WHERE id = (SELECT id FROM "
                           "services WHERE payer = ? AND account = ? AND document = ? AND "
                           "service_id = ? ORDER BY position LIMIT 1 OFFSET ?)"));
        lower.bind(line.distributed).bind(payer).bind(payment.account).bind(document);
        lower.bind(line.serviceId).bind(seen[line.serviceId]++);
        if (!run(lower))
            return false;
    }
    return true;
}

bool BillingPackIntake::storeReadings(const QString &packId, int position, int payer,
                                      const ReceivedPack::Payment &payment)
{
    int index = 0;
    for (const ReceivedPack::Reading &reading : payment.readings) {
        bool known = false;
        qint64 last = 0;
        {
            SqlStatement find(
                m_database,
                QStringLiteral("SELECT last_value FROM meters WHERE payer = ? AND account = ? "
                               "AND meter_id = ?"));
            find.bind(payer).bind(payment.account).bind(reading.meterId);
            if (!run(find))
                return false;
            known = find.next();
            last = known ? find.number(0) : 0;
        }
        if (known && reading.value == last)
            continue;
        const bool applied = known && reading.value > last;
        SqlStatement keep(m_database,
                          QStringLiteral("INSERT INTO pack_readings VALUES (?, ?, ?, ?, ?, ?)"));
        keep.bind(packId).bind(position).bind(index++).bind(reading.meterId).bind(reading.value);
        keep.bind(applied ? 1 : 0);
        if (!run(keep))
            return false;
        if (!applied)
            continue;
        SqlStatement update(
            m_database,
            QStringLiteral("UPDATE meters SET last_value = ? WHERE payer = ? AND account = ? "
                           "AND meter_id = ?"));
        update.bind(reading.value).bind(payer).bind(payment.account).bind(reading.meterId);
        if (!run(update))
            return false;
    }
    return true;
}
