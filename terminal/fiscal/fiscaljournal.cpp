#include <fiscal/fiscaljournal.h>

#include <recovery/faultpoint.h>
#include <storage/jsontext.h>
#include <storage/sqlstatements.h>
#include <storage/writecheck.h>

#include <basixcore/sqlitedatabase.h>
#include <basixcore/sqliteschema.h>
#include <basixcore/sqlitetransaction.h>

#include <QJsonDocument>
#include <QJsonObject>
#include <QRandomGenerator>

namespace {

const QString COLUMNS = QStringLiteral("number, form, shift, receipt, time, sign, document_number, "
                                       "total, qr, document, result, answered");

const QString NOT_OPEN =
    QStringLiteral("Журнал фискального накопителя не открыт. Перезапустите программу.");

/// The database reads the tags itself: a document has kilobytes, and few of them are needed.
const QString HEAD_COLUMNS =
    QStringLiteral("number, time, document_number, coalesce(json_extract(document, '$.\"1054\"'), "
                   "0), total, coalesce(json_extract(document, '$.\"1031\"'), 0), "
                   "coalesce(json_extract(document, '$.\"1081\"'), 0), answered");

basix::SqliteSchema schema()
{
    basix::SqliteSchema result;
    result.applicationId = 0x53525031;
    result.title = QStringLiteral("Журнал фискального накопителя");
    result.migrations = {
        {1,
         {QStringLiteral(
              "CREATE TABLE storage (id INTEGER PRIMARY KEY CHECK (id = 1), number TEXT NOT NULL)"),
          QStringLiteral(
              "CREATE TABLE documents (number INTEGER PRIMARY KEY CHECK (number > 0), form "
              "INTEGER NOT NULL, shift INTEGER NOT NULL, receipt INTEGER NOT NULL, time TEXT "
              "NOT NULL, sign TEXT NOT NULL, document_number TEXT NOT NULL, total INTEGER NOT "
              "NULL, qr TEXT NOT NULL, document TEXT NOT NULL, result TEXT NOT NULL, answered "
              "INTEGER NOT NULL)"),
          QStringLiteral("CREATE INDEX documents_by_number ON documents (document_number)"),
          QStringLiteral("CREATE INDEX documents_by_form ON documents (form, shift)"),
          QStringLiteral("CREATE TRIGGER documents_fixed BEFORE UPDATE ON documents "
                         "BEGIN SELECT RAISE(ABORT, 'a fiscal document cannot be changed'); END"),
          QStringLiteral("CREATE TRIGGER documents_kept BEFORE DELETE ON documents BEGIN SELECT "
                         "RAISE(ABORT, 'a fiscal document cannot be deleted'); END")}}};
    return result;
}

QVariantMap fromJson(const QString &text)
{
    return QJsonDocument::fromJson(text.toUtf8()).object().toVariantMap();
}

FiscalRecord readRecord(const SqlStatement &row, const QString &storage)
{
    FiscalRecord record;
    record.number = row.number(0);
    record.form = static_cast<FiscalRecord::Form>(row.number(1));
    record.shift = int(row.number(2));
    record.receipt = int(row.number(3));
    record.time = QDateTime::fromString(row.text(4), Qt::ISODate);
    record.sign = row.text(5);
    record.documentNumber = row.text(6);
    record.total = row.number(7);
    record.qr = row.text(8);
    record.document = fromJson(row.text(9));
    record.result = fromJson(row.text(10));
    record.answered = row.number(11) != 0;
    record.storage = storage;
    return record;
}

ReceiptHead readHead(const SqlStatement &row)
{
    ReceiptHead head;
    head.number = row.number(0);
    head.time = QDateTime::fromString(row.text(1), Qt::ISODate);
    head.documentNumber = row.text(2);
    head.settlementSign = int(row.number(3));
    head.total = row.number(4);
    head.cash = row.number(5);
    head.cashless = row.number(6);
    head.answered = row.number(7) != 0;
    return head;
}

QString newStorageNumber()
{
    QString number = QStringLiteral("9960");
    for (int i = 0; i < 12; ++i)
        number += QString::number(QRandomGenerator::system()->bounded(10));
    return number;
}

/// Gives a new storage its number; empty with a text when that fails.
QString readStorageNumber(const basix::SqliteDatabase &database, QString *error)
{
    SqlStatement create(database,
                        QStringLiteral("INSERT OR IGNORE INTO storage (id, number) VALUES (1, ?)"));
    SqlStatement read(database, QStringLiteral("SELECT number FROM storage"));
    const bool done = create.bind(newStorageNumber()).run() && read.run() && read.next();
    *error = create.error() + read.error();
    return done ? read.text(0) : QString();
}

} // namespace

FiscalJournal::FiscalJournal() = default;
FiscalJournal::~FiscalJournal() = default;

bool FiscalJournal::open(const QString &file)
{
    m_storage.clear();
    m_statements.reset();
    m_database = std::make_unique<basix::SqliteDatabase>();
    m_error = openForWriting(*m_database, file, schema());
    if (m_error.isEmpty())
        m_storage = readStorageNumber(*m_database, &m_error);
    if (m_storage.isEmpty())
        m_database->close();
    else
        m_statements = std::make_unique<SqlStatements>(*m_database);
    return isOpen();
}

bool FiscalJournal::isOpen() const
{
    return m_database && m_database->isOpen();
}

QString FiscalJournal::lastError() const
{
    return m_error;
}

QString FiscalJournal::storageNumber() const
{
    return m_storage;
}

bool FiscalJournal::append(const FiscalRecord &record)
{
    if (!isOpen()) {
        m_error = NOT_OPEN;
        return false;
    }
    basix::SqliteTransaction transaction(*m_database);
    if (!transaction.isActive()) {
        m_error =
            QStringLiteral("Журнал фискального накопителя занят (%1). Повторите через минуту.")
                .arg(transaction.lastError());
        return false;
    }
    if (record.number != nextNumber()) {
        m_error = QStringLiteral("Документ № %1 не записан: это не следующий номер накопителя.")
                      .arg(record.number);
        return false;
    }
    {
        const auto insert = m_statements->use(QStringLiteral("INSERT INTO documents (%1) VALUES "
                                                             "(?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)")
                                                  .arg(COLUMNS));
        insert->bind(record.number).bind(static_cast<int>(record.form)).bind(record.shift);
        insert->bind(record.receipt)
            .bind(record.time.toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss")));
        insert->bind(record.sign).bind(record.documentNumber).bind(record.total).bind(record.qr);
        insert->bind(JsonText::compact(record.document))
            .bind(JsonText::compact(record.result))
            .bind(record.answered ? 1 : 0);
        if (!insert->run()) {
            m_error = insert->error();
            return false;
        }
    }
    if (record.form == FiscalRecord::Form::Receipt)
        FaultPoint::pass(FaultPoint::Place::ReceiptBeforeCommit);
    if (!transaction.commit()) {
        m_error = QStringLiteral("Документ № %1 не записан: %2")
                      .arg(QString::number(record.number), transaction.lastError());
        return false;
    }
    FaultPoint::pass(record.form == FiscalRecord::Form::Receipt
                         ? FaultPoint::Place::ReceiptAfterCommit
                         : FaultPoint::Place::ShiftAfterCommit);
    m_error.clear();
    return true;
}

namespace {

std::optional<FiscalRecord> first(SqlStatement &statement, const QString &storage, QString *error)
{
    if (!statement.run()) {
        *error = statement.error();
        return std::nullopt;
    }
    if (!statement.next())
        return std::nullopt;
    return readRecord(statement, storage);
}

qint64 firstNumber(SqlStatement &statement, QString *error)
{
    if (statement.run() && statement.next())
        return statement.number(0);
    *error = statement.error();
    return 0;
}

} // namespace

qint64 FiscalJournal::nextNumber()
{
    if (!isOpen())
        return 0;
    const auto last =
        m_statements->use(QStringLiteral("SELECT coalesce(max(number), 0) + 1 FROM documents"));
    return firstNumber(*last, &m_error);
}

std::optional<FiscalRecord> FiscalJournal::openShift()
{
    if (!isOpen())
        return std::nullopt;
    const auto last = m_statements->use(QStringLiteral("SELECT %1 FROM documents WHERE form <> 3 "
                                                       "ORDER BY number DESC LIMIT 1")
                                            .arg(COLUMNS));
    const std::optional<FiscalRecord> report = first(*last, m_storage, &m_error);
    return report && report->form == FiscalRecord::Form::OpenShift ? report : std::nullopt;
}

int FiscalJournal::lastShift()
{
    if (!isOpen())
        return 0;
    const auto last =
        m_statements->use(QStringLiteral("SELECT coalesce(max(shift), 0) FROM documents"));
    return int(firstNumber(*last, &m_error));
}

int FiscalJournal::lastReceiptInShift(int shift)
{
    if (!isOpen())
        return 0;
    const auto last =
        m_statements->use(QStringLiteral("SELECT coalesce(max(receipt), 0) FROM documents "
                                         "WHERE form = 3 AND shift = ?"));
    last->bind(shift);
    return int(firstNumber(*last, &m_error));
}

std::optional<FiscalRecord> FiscalJournal::record(qint64 number)
{
    m_error = isOpen() ? QString() : NOT_OPEN;
    if (!isOpen())
        return std::nullopt;
    const auto find =
        m_statements->use(QStringLiteral("SELECT %1 FROM documents WHERE number = ?").arg(COLUMNS));
    find->bind(number);
    return first(*find, m_storage, &m_error);
}

std::optional<FiscalRecord> FiscalJournal::findByDocumentNumber(const QString &documentNumber)
{
    m_error = isOpen() ? QString() : NOT_OPEN;
    if (!isOpen())
        return std::nullopt;
    const auto find =
        m_statements->use(QStringLiteral("SELECT %1 FROM documents WHERE form = 3 AND "
                                         "document_number = ? ORDER BY number DESC LIMIT 1")
                              .arg(COLUMNS));
    find->bind(documentNumber);
    return first(*find, m_storage, &m_error);
}

QVector<FiscalRecord> FiscalJournal::receipts(int offset, int limit)
{
    QVector<FiscalRecord> result;
    if (!isOpen())
        return result;
    const auto page = m_statements->use(QStringLiteral("SELECT %1 FROM documents WHERE form = 3 "
                                                       "ORDER BY number DESC LIMIT ? OFFSET ?")
                                            .arg(COLUMNS));
    page->bind(limit).bind(offset);
    if (!page->run())
        m_error = page->error();
    while (page->next())
        result.append(readRecord(*page, m_storage));
    return result;
}

QVector<ReceiptHead> FiscalJournal::heads(qint64 after, int limit)
{
    QVector<ReceiptHead> result;
    m_error = isOpen() ? QString() : NOT_OPEN;
    if (!isOpen())
        return result;
    const auto page =
        m_statements->use(QStringLiteral("SELECT %1 FROM documents WHERE form = 3 AND "
                                         "number > ? ORDER BY number LIMIT ?")
                              .arg(HEAD_COLUMNS));
    page->bind(after).bind(limit);
    if (!page->run())
        m_error = page->error();
    while (page->next())
        result.append(readHead(*page));
    return result;
}

std::optional<ReceiptHead> FiscalJournal::head(qint64 number)
{
    const QVector<ReceiptHead> found = heads(number - 1, 1);
    if (found.isEmpty() || found.constFirst().number != number)
        return std::nullopt;
    return found.constFirst();
}

int FiscalJournal::receiptCount()
{
    if (!isOpen())
        return 0;
    const auto count =
        m_statements->use(QStringLiteral("SELECT count(*) FROM documents WHERE form = 3"));
    return int(firstNumber(*count, &m_error));
}

qint64 FiscalJournal::receiptTotal()
{
    if (!isOpen())
        return 0;
    const auto total = m_statements->use(
        QStringLiteral("SELECT coalesce(sum(total), 0) FROM documents WHERE form = 3"));
    return firstNumber(*total, &m_error);
}
