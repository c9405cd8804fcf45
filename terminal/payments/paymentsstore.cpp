#include <payments/paymentsstore.h>

#include <payments/packqueries.h>
#include <payments/paymentrows.h>
#include <recovery/faultpoint.h>
#include <storage/jsontext.h>
#include <storage/sqlstatements.h>
#include <storage/writecheck.h>

#include <basixcore/sqlitedatabase.h>
#include <basixcore/sqlitetransaction.h>

#include <QJsonDocument>
#include <QJsonObject>
#include <QVariantList>

namespace {

void passCommitted(PackState state)
{
    switch (state) {
    case PackState::Saved:
        break;
    case PackState::HandedOn:
        FaultPoint::pass(FaultPoint::Place::HandOnAfterCommit);
        break;
    case PackState::Posted:
        FaultPoint::pass(FaultPoint::Place::PostedAfterCommit);
        break;
    case PackState::Acknowledged:
        FaultPoint::pass(FaultPoint::Place::AcknowledgedAfterCommit);
        break;
    }
}

} // namespace

PaymentsStore::PaymentsStore() = default;
PaymentsStore::~PaymentsStore() = default;

bool PaymentsStore::open(const QString &file)
{
    m_statements.reset();
    m_database = std::make_unique<basix::SqliteDatabase>();
    m_error = openForWriting(*m_database, file, PaymentRows::schema());
    if (m_error.isEmpty())
        m_statements = std::make_unique<SqlStatements>(*m_database);
    return isOpen();
}

bool PaymentsStore::isOpen() const
{
    return m_database && m_database->isOpen();
}

QString PaymentsStore::lastError() const
{
    return m_error;
}

bool PaymentsStore::ready()
{
    m_error = isOpen() ? QString()
                       : QStringLiteral("Журнал платежей не открыт. Перезапустите программу.");
    return isOpen();
}

bool PaymentsStore::run(SqlStatement &statement)
{
    if (statement.run())
        return true;
    m_error = statement.error();
    return false;
}

bool PaymentsStore::run(SqlStatement &statement, const QVariantList &values)
{
    for (const QVariant &value : values)
        statement.bind(value);
    return run(statement);
}

bool PaymentsStore::isSamePayment(const PaymentRecord &stored, const PaymentRecord &record)
{
    const bool same = stored.recovered && stored.account == record.account
        && stored.sum == record.sum && stored.cash == record.cash && stored.card == record.card;
    if (!same) {
        m_error = QStringLiteral("Пачка № %1 не сохранена: чек № ФД %2 уже принадлежит пачке № %3. "
                                 "Сравните обе с чеком: «Сверка платежей».")
                      .arg(QString::number(record.packId), record.fiscalDocument,
                           QString::number(stored.packId));
    }
    return same;
}

bool PaymentsStore::save(const PaymentRecord &record, const QVariantMap &pack)
{
    if (!ready())
        return false;
    const QByteArray body = JsonText::compactUtf8(pack);
    basix::SqliteTransaction transaction(*m_database);
    if (!transaction.isActive()) {
        m_error = QStringLiteral("Журнал платежей занят (%1). Повторите через минуту.")
                      .arg(transaction.lastError());
        return false;
    }
    {
        const auto known =
            m_statements->use(QStringLiteral("SELECT body FROM packs WHERE pack_id = ?"));
        known->bind(record.packId);
        if (!run(*known))
            return false;
        if (known->next()) {
            if (known->text(0).toUtf8() == body)
                return true;
            m_error = QStringLiteral("Пачка № %1 не сохранена: под этим номером уже есть другая. "
                                     "Деньги второй раз не берите, обратитесь в поддержку.")
                          .arg(record.packId);
            return false;
        }
    }
    if (!record.fiscalDocument.isEmpty()) {
        const auto other = packOfReceipt(record.fiscalStorage, record.fiscalDocument.toLongLong());
        if (other || !m_error.isEmpty())
            return other && isSamePayment(*other, record);
    }
    {
        // The text comes as the bytes that the file will hold: it is by far the longest value, and
        // a QString of it would be made here and taken apart again by the database.
        const auto insert = m_statements->use(
            QStringLiteral("INSERT INTO packs (pack_id, state, created, provider_id, "
                           "provider_name, account, sum, cash, card, "
                           "fiscal_storage, fiscal_document, fiscal_sign, saved, "
                           "recovered, body) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, "
                           "?, ?, ?, ?, CAST(? AS TEXT))"));
        insert->bind(record.packId)
            .bind(static_cast<int>(PackState::Saved))
            .bind(PaymentRows::stamp(record.created));
        insert->bind(record.providerId)
            .bind(record.providerName)
            .bind(record.account)
            .bind(record.sum.value());
        insert->bind(record.cash.value()).bind(record.card.value()).bind(record.fiscalStorage);
        insert->bind(record.fiscalDocument)
            .bind(record.fiscalSign)
            .bind(PaymentRows::stamp(QDateTime::currentDateTimeUtc()));
        insert->bind(record.recovered ? 1 : 0).bind(body);
        if (!run(*insert))
            return false;
    }
    FaultPoint::pass(FaultPoint::Place::PackBeforeCommit);
    if (transaction.commit()) {
        FaultPoint::pass(FaultPoint::Place::PackAfterCommit);
        return true;
    }
    m_error = QStringLiteral("Пачка № %1 не сохранена: %2")
                  .arg(QString::number(record.packId), transaction.lastError());
    return false;
}

bool PaymentsStore::advance(qint64 packId, PackState state)
{
    if (!ready())
        return false;
    const auto move =
        m_statements->use(QStringLiteral("UPDATE packs SET state = ?, %1 = ?, last_error = '' "
                                         "WHERE pack_id = ? AND state < ?")
                              .arg(PaymentRows::timeColumn(state)));
    move->bind(static_cast<int>(state))
        .bind(PaymentRows::stamp(QDateTime::currentDateTimeUtc()))
        .bind(packId);
    move->bind(static_cast<int>(state));
    if (state == PackState::HandedOn)
        FaultPoint::pass(FaultPoint::Place::HandOnBeforeCommit);
    if (state == PackState::Acknowledged)
        FaultPoint::pass(FaultPoint::Place::AcknowledgedBeforeCommit);
    if (!run(*move))
        return false;
    passCommitted(state);
    if (move->changedRows() > 0 || record(packId))
        return true;
    if (m_error.isEmpty())
        m_error = QStringLiteral("Пачки № %1 нет в журнале платежей.").arg(packId);
    return false;
}

bool PaymentsStore::setLastError(qint64 packId, const QString &error)
{
    if (!ready())
        return false;
    const auto note =
        m_statements->use(QStringLiteral("UPDATE packs SET last_error = ? WHERE pack_id = ?"));
    note->bind(error).bind(packId);
    return run(*note) && note->changedRows() > 0;
}

std::optional<PaymentRecord> PaymentsStore::record(qint64 packId)
{
    if (!ready())
        return std::nullopt;
    const auto find = m_statements->use(
        QStringLiteral("SELECT %1 FROM packs WHERE pack_id = ?").arg(PaymentRows::columns()));
    find->bind(packId);
    if (!run(*find) || !find->next())
        return std::nullopt;
    return PaymentRows::read(*find);
}

QVector<PaymentRecord> PaymentsStore::readAll(const QString &sql, const QVariantList &values)
{
    QVector<PaymentRecord> result;
    if (!ready())
        return result;
    const auto rows = m_statements->use(sql);
    if (!run(*rows, values))
        return result;
    while (rows->next())
        result.append(PaymentRows::read(*rows));
    return result;
}

std::optional<PaymentRecord> PaymentsStore::packOfReceipt(const QString &storage, qint64 document)
{
    if (!ready())
        return std::nullopt;
    // Every save asks this, and the answer is no: a whole record is prepared for a yes only.
    const auto find = m_statements->use(PackQueries::numbersOfReceipt());
    find->bind(storage).bind(document);
    if (!run(*find) || !find->next())
        return std::nullopt;
    return record(find->number(0));
}

QVector<PaymentRecord> PaymentsStore::packsOfReceipts(const QString &storage, qint64 first,
                                                      qint64 last)
{
    return readAll(PackQueries::ofReceipts(), {storage, first, last});
}

QVector<PaymentRecord> PaymentsStore::packsWithoutReceipt(const QString &storage)
{
    return readAll(
        PackQueries::withoutReceipt(),
        {static_cast<int>(PackState::Saved), static_cast<int>(PackState::Posted), storage});
}

QVector<qint64> PaymentsStore::unacknowledged()
{
    return numbersIn(PackState::Posted, PackState::Posted);
}

std::optional<QVariantMap> PaymentsStore::pack(qint64 packId)
{
    if (!ready())
        return std::nullopt;
    const auto find = m_statements->use(QStringLiteral("SELECT body FROM packs WHERE pack_id = ?"));
    find->bind(packId);
    if (!run(*find) || !find->next())
        return std::nullopt;
    return QJsonDocument::fromJson(find->text(0).toUtf8()).object().toVariantMap();
}

QVector<qint64> PaymentsStore::unposted()
{
    return numbersIn(PackState::Saved, PackState::HandedOn);
}

QVector<qint64> PaymentsStore::numbersIn(PackState first, PackState last)
{
    QVector<qint64> result;
    if (!ready())
        return result;
    const auto rows = m_statements->use(PackQueries::numbersInStates());
    rows->bind(static_cast<int>(first)).bind(static_cast<int>(last));
    if (!run(*rows))
        return result;
    while (rows->next())
        result.append(rows->number(0));
    return result;
}

std::optional<JournalQuery::Matches> PaymentsStore::matchesOf(const QString &account)
{
    if (account.isEmpty())
        return JournalQuery::Matches::Many;
    const JournalQuery bounds = JournalQuery::accounts(account);
    const auto ends = m_statements->use(bounds.sql());
    if (!run(*ends, bounds.values()) || !ends->next())
        return std::nullopt;
    if (ends->text(0) == ends->text(1))
        return JournalQuery::Matches::One;
    const JournalQuery matchCount = JournalQuery::matchCount(account);
    const auto counted = m_statements->use(matchCount.sql());
    if (!run(*counted, matchCount.values()) || !counted->next())
        return std::nullopt;
    return counted->number(0) > JournalQuery::FEW ? JournalQuery::Matches::Many
                                                  : JournalQuery::Matches::Few;
}

bool PaymentsStore::canSort(const PaymentFilter &filter)
{
    if (!ready())
        return false;
    const std::optional<JournalQuery::Matches> matches = matchesOf(filter.account);
    if (!matches)
        return false;
    const JournalQuery query = JournalQuery::walkCount(filter, *matches);
    const auto counted = m_statements->use(query.sql());
    return run(*counted, query.values()) && counted->next()
        && counted->number(0) <= JournalQuery::MOST_SORTED;
}

QVector<PaymentRecord> PaymentsStore::page(const PaymentFilter &filter, const PaymentOrder &order,
                                           const PaymentRecord *after, int limit)
{
    if (!ready())
        return {};
    const std::optional<JournalQuery::Matches> matches = matchesOf(filter.account);
    if (!matches)
        return {};
    const JournalQuery query(filter, order, *matches, after, limit);
    return readAll(query.sql(), query.values());
}

QVector<PaymentRecord> PaymentsStore::records(const PaymentFilter &filter, int offset, int limit)
{
    const JournalQuery query(filter, PaymentOrder::NewestFirst, JournalQuery::Matches::Many,
                             nullptr, limit, offset);
    return readAll(query.sql(), query.values());
}

int PaymentsStore::count(const PaymentFilter &filter)
{
    if (!ready())
        return 0;
    const JournalQuery query = JournalQuery::count(filter);
    const auto rows = m_statements->use(query.sql());
    return run(*rows, query.values()) && rows->next() ? int(rows->number(0)) : 0;
}
