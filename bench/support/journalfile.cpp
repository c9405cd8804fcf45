#include "journalfile.h"

#include "benchfolder.h"

#include <payments/paymentrows.h>
#include <payments/paymentsstore.h>

#include <basixcore/sqlitedatabase.h>

#include <QDateTime>
#include <QFile>
#include <QSqlError>
#include <QSqlQuery>
#include <QStringList>

namespace {

constexpr int accounts = 100;
constexpr int secondsBetween = 200;
/// What a small pack takes.
constexpr int bodyLength = 1500;

void run(QSqlQuery &query, const QString &sql)
{
    if (!query.exec(sql))
        qFatal("a journal was not filled: %s", qPrintable(query.lastError().text()));
}

/// A million rows go in without anything that a power cut would ask for, and their indexes are made
/// when all are there.
void fill(const QString &file, int payments)
{
    basix::SqliteDatabase database;
    if (!database.open(file, PaymentRows::schema()))
        qFatal("%s", qPrintable(database.lastError()));
    QSqlQuery query(database.connection());
    run(query, QStringLiteral("PRAGMA journal_mode=OFF"));
    run(query, QStringLiteral("PRAGMA synchronous=OFF"));
    QStringList indexes;
    QStringList drops;
    run(query,
        QStringLiteral("SELECT name, sql FROM sqlite_master WHERE type = 'index' AND sql "
                       "IS NOT NULL"));
    while (query.next()) {
        drops.append(QStringLiteral("DROP INDEX %1").arg(query.value(0).toString()));
        indexes.append(query.value(1).toString());
    }
    for (const QString &drop : qAsConst(drops))
        run(query, drop);
    const QString numbers =
        QStringLiteral("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 "
                       "FROM n WHERE i < %1) ")
            .arg(payments);
    const QString rows =
        QStringLiteral(
            "INSERT INTO packs (pack_id, state, created, provider_id, provider_name, account, sum, "
            "cash, card, fiscal_storage, fiscal_document, fiscal_sign, saved, body) "
            "SELECT 730000000 + i, i % 4, strftime('%Y-%m-%dT%H:%M:%fZ', 1700000000 + i * %1, "
            "'unixepoch'), 18722 + i % 2, 'Селмар Ривенхолд', printf('%07d', 4455000 + i * 37 % "
            "%2), "
            "100 + i * 7919 % 500000, 100 + i * 7919 % 500000, 0, '9280440300000001', i, 1000000 + "
            "i, "
            "'2026-11-21T10:00:00.000Z', printf('%.%3c', '0') FROM n")
            .replace(QLatin1String("%1"), QString::number(secondsBetween))
            .replace(QLatin1String("%2"), QString::number(accounts))
            .replace(QLatin1String("%3"), QString::number(bodyLength));
    run(query, QStringLiteral("BEGIN"));
    run(query, numbers + rows);
    for (const QString &index : qAsConst(indexes))
        run(query, index);
    run(query, QStringLiteral("COMMIT"));
    run(query, QStringLiteral("PRAGMA journal_mode=WAL"));
}

} // namespace

QString JournalFile::searchedAccount()
{
    return QStringLiteral("4455037");
}

QString JournalFile::of(int payments)
{
    const QString file = BenchFolder::filePath(QStringLiteral("journal-%1.sqlite").arg(payments));
    if (!QFile::exists(file))
        fill(file, payments);
    return file;
}

JournalFile::Connection::Connection(int payments)
    : m_database(std::make_unique<basix::SqliteDatabase>())
{
    if (!m_database->open(of(payments), PaymentRows::schema()))
        qFatal("%s", qPrintable(m_database->lastError()));
}

JournalFile::Connection::~Connection() = default;

QSqlDatabase JournalFile::Connection::connection() const
{
    return m_database->connection();
}
