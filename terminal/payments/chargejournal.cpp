#include <payments/chargejournal.h>

#include <recovery/faultpoint.h>
#include <storage/sqlstatement.h>
#include <storage/writecheck.h>

#include <basixcore/sqlitedatabase.h>
#include <basixcore/sqliteschema.h>
#include <basixcore/sqlitetransaction.h>

#include <QRandomGenerator>
#include <QVariantList>

namespace {

const QString COLUMNS = QStringLiteral("id, time, amount, terminal, rrn, auth_code, answered, "
                                       "fiscal_storage, fiscal_document, pack_id, refunded, "
                                       "refund_rrn");

const QString NOT_OPEN =
    QStringLiteral("Журнал списаний с карт не открыт. Перезапустите программу.");

basix::SqliteSchema schema()
{
    basix::SqliteSchema result;
    result.applicationId = 0x53524331;
    result.title = QStringLiteral("Журнал списаний с карт");
    result.migrations = {
        {1,
         {QStringLiteral(
              "CREATE TABLE charges (id INTEGER PRIMARY KEY AUTOINCREMENT, time TEXT NOT NULL, "
              "amount INTEGER NOT NULL CHECK (amount > 0), terminal TEXT NOT NULL, rrn TEXT NOT "
              "NULL, auth_code TEXT NOT NULL, answered INTEGER NOT NULL, fiscal_storage TEXT NOT "
              "NULL DEFAULT '', fiscal_document INTEGER NOT NULL DEFAULT 0, pack_id INTEGER NOT "
              "NULL DEFAULT 0, refunded TEXT NOT NULL DEFAULT '', refund_rrn TEXT NOT NULL "
              "DEFAULT '', UNIQUE (terminal, rrn, time))"),
          QStringLiteral("CREATE UNIQUE INDEX charges_by_receipt ON charges (fiscal_storage, "
                         "fiscal_document) WHERE fiscal_document > 0"),
          QStringLiteral("CREATE INDEX charges_open ON charges (id) WHERE fiscal_document = 0 AND "
                         "refunded = ''")}}};
    return result;
}

QString stamp(const QDateTime &time)
{
    return time.toUTC().toString(Qt::ISODateWithMs);
}

QDateTime fromStamp(const QString &text)
{
    return text.isEmpty() ? QDateTime()
                          : QDateTime::fromString(text, Qt::ISODateWithMs).toLocalTime();
}

ChargeRecord readRecord(const SqlStatement &row)
{
    ChargeRecord record;
    record.id = row.number(0);
    record.time = fromStamp(row.text(1));
    record.amount = basix::FixNumber(100, row.number(2));
    record.terminal = row.text(3);
    record.rrn = row.text(4);
    record.authCode = row.text(5);
    record.answered = row.number(6) != 0;
    record.fiscalStorage = row.text(7);
    record.fiscalDocument = row.number(8);
    record.packId = row.number(9);
    record.refunded = fromStamp(row.text(10));
    record.refundRrn = row.text(11);
    return record;
}

QString newReference()
{
    QString digits;
    for (int i = 0; i < 12; ++i)
        digits += QString::number(QRandomGenerator::system()->bounded(10));
    return digits;
}

} // namespace

ChargeJournal::ChargeJournal(QObject *parent) : QObject(parent)
{
    qRegisterMetaType<CardCharge>();
}

ChargeJournal::~ChargeJournal() = default;

bool ChargeJournal::open(const QString &file)
{
    m_database = std::make_unique<basix::SqliteDatabase>();
    m_error = openForWriting(*m_database, file, schema());
    return isOpen();
}

bool ChargeJournal::isOpen() const
{
    return m_database && m_database->isOpen();
}

void ChargeJournal::follow(CardChargeLog &log)
{
    // Direct: the terminal must not answer before the charge is on the disk.
    connect(&log, &CardChargeLog::charged, this, &ChargeJournal::onCharged,
            Qt::ConnectionType(Qt::DirectConnection | Qt::UniqueConnection));
}

void ChargeJournal::onCharged(const CardCharge &charge)
{
    storeUnkept();
    if (note(charge))
        return;
    const QString reason = m_error;
    m_unkept.append(charge);
    qCritical("A card charge of %s (terminal %s, reference %s) is not in the journal: %s",
              qUtf8Printable(charge.amount.toString()), qUtf8Printable(charge.terminal),
              qUtf8Printable(charge.rrn), qUtf8Printable(reason));
    emit notKept(charge, reason);
}

bool ChargeJournal::storeUnkept()
{
    while (!m_unkept.isEmpty()) {
        if (!note(m_unkept.constFirst()))
            return false;
        m_unkept.removeFirst();
    }
    return true;
}

bool ChargeJournal::run(SqlStatement &statement)
{
    if (statement.run())
        return true;
    m_error = statement.error();
    return false;
}

bool ChargeJournal::note(const CardCharge &charge)
{
    if (!isOpen()) {
        m_error = NOT_OPEN;
        return false;
    }
    basix::SqliteTransaction transaction(*m_database);
    if (!transaction.isActive()) {
        m_error = QStringLiteral("Журнал списаний с карт занят (%1). Повторите через минуту.")
                      .arg(transaction.lastError());
        return false;
    }
    {
        SqlStatement insert(
            *m_database,
            QStringLiteral("INSERT OR IGNORE INTO charges (time, amount, terminal, rrn, "
                           "auth_code, answered) VALUES (?, ?, ?, ?, ?, ?)"));
        insert.bind(stamp(charge.time)).bind(charge.amount.rescaled(100).value());
        insert.bind(charge.terminal).bind(charge.rrn).bind(charge.authCode);
        insert.bind(charge.answered ? 1 : 0);
        if (!run(insert))
            return false;
    }
    FaultPoint::pass(FaultPoint::Place::ChargeBeforeCommit);
    if (!transaction.commit()) {
        m_error = QStringLiteral("Списание с карты не записано: %1").arg(transaction.lastError());
        return false;
    }
    FaultPoint::pass(FaultPoint::Place::ChargeAfterCommit);
    m_error.clear();
    emit noted(number(QStringLiteral("SELECT coalesce(max(id), 0) FROM charges")));
    return true;
}

QVector<ChargeRecord> ChargeJournal::select(const QString &rest, const QVariantList &values)
{
    QVector<ChargeRecord> result;
    m_error.clear();
    if (!isOpen()) {
        m_error = NOT_OPEN;
        return result;
    }
    SqlStatement rows(*m_database, QStringLiteral("SELECT %1 FROM charges %2").arg(COLUMNS, rest));
    for (const QVariant &value : values)
        rows.bind(value);
    if (!run(rows))
        return result;
    while (rows.next())
        result.append(readRecord(rows));
    return result;
}

qint64 ChargeJournal::number(const QString &sql)
{
    if (!isOpen())
        return 0;
    SqlStatement value(*m_database, sql);
    return run(value) && value.next() ? value.number(0) : 0;
}

std::optional<ChargeRecord> ChargeJournal::charge(qint64 id)
{
    const QVector<ChargeRecord> found = select(QStringLiteral("WHERE id = ?"), {id});
    return found.isEmpty() ? std::nullopt : std::make_optional(found.constFirst());
}

std::optional<ChargeRecord> ChargeJournal::chargeOfReceipt(const QString &storage, qint64 document)
{
    const QVector<ChargeRecord> found = select(
        QStringLiteral("WHERE fiscal_storage = ? AND fiscal_document = ?"), {storage, document});
    return found.isEmpty() ? std::nullopt : std::make_optional(found.constFirst());
}

QVector<ChargeRecord> ChargeJournal::unexplained()
{
    return select(QStringLiteral("WHERE fiscal_document = 0 AND refunded = '' ORDER BY id"), {});
}

QVector<ChargeRecord> ChargeJournal::withoutPack()
{
    return select(QStringLiteral("WHERE fiscal_document > 0 AND pack_id = 0 ORDER BY id"), {});
}

QVector<ChargeRecord> ChargeJournal::charges(int offset, int limit)
{
    return select(QStringLiteral("ORDER BY id DESC LIMIT ? OFFSET ?"), {limit, offset});
}

int ChargeJournal::count()
{
    return int(number(QStringLiteral("SELECT count(*) FROM charges")));
}

qint64 ChargeJournal::chargedTotal()
{
    return number(QStringLiteral("SELECT coalesce(sum(amount), 0) FROM charges"));
}

qint64 ChargeJournal::refundedTotal()
{
    return number(
        QStringLiteral("SELECT coalesce(sum(amount), 0) FROM charges WHERE refunded <> ''"));
}

bool ChargeJournal::attachReceipt(qint64 id, const QString &storage, qint64 document)
{
    if (!isOpen())
        return false;
    FaultPoint::pass(FaultPoint::Place::LinkBeforeCommit);
    SqlStatement attach(*m_database,
                        QStringLiteral("UPDATE charges SET fiscal_storage = ?, fiscal_document = ? "
                                       "WHERE id = ? AND refunded = '' AND (fiscal_document = 0 OR "
                                       "(fiscal_storage = ? AND fiscal_document = ?))"));
    attach.bind(storage).bind(document).bind(id).bind(storage).bind(document);
    if (!run(attach))
        return false;
    FaultPoint::pass(FaultPoint::Place::LinkAfterCommit);
    return attach.changedRows() > 0;
}

bool ChargeJournal::attachPack(qint64 id, qint64 packId)
{
    if (!isOpen())
        return false;
    SqlStatement attach(*m_database,
                        QStringLiteral("UPDATE charges SET pack_id = ? WHERE id = ? AND refunded = "
                                       "'' AND pack_id IN (0, ?)"));
    attach.bind(packId).bind(id).bind(packId);
    return run(attach) && attach.changedRows() > 0;
}

bool ChargeJournal::refund(qint64 id, const QDateTime &when)
{
    const std::optional<ChargeRecord> known = charge(id);
    if (!known) {
        if (m_error.isEmpty())
            m_error = QStringLiteral("Такого списания в журнале нет.");
        return false;
    }
    if (known->refunded.isValid()) {
        m_error =
            QStringLiteral("Деньги по этому списанию уже возвращены на карту, RRN возврата %1.")
                .arg(known->refundRrn);
        return false;
    }
    if (known->fiscalDocument > 0) {
        m_error =
            QStringLiteral("По этому списанию пробит чек № ФД %1. Сначала пробейте на кассе чек "
                           "возврата.")
                .arg(known->fiscalDocument);
        return false;
    }
    FaultPoint::pass(FaultPoint::Place::RefundBeforeCommit);
    SqlStatement back(*m_database,
                      QStringLiteral("UPDATE charges SET refunded = ?, refund_rrn = ? WHERE id = ? "
                                     "AND refunded = '' AND fiscal_document = 0"));
    back.bind(stamp(when)).bind(newReference()).bind(id);
    if (!run(back))
        return false;
    FaultPoint::pass(FaultPoint::Place::RefundAfterCommit);
    m_error.clear();
    emit refunded(id);
    return true;
}
