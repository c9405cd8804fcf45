#include <storage/writecheck.h>

#include <basixcore/sqlitedatabase.h>
#include <basixcore/sqliteschema.h>
#include <basixcore/sqlitetransaction.h>

#include <QDir>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

namespace {

QString refusalOf(basix::SqliteDatabase &database)
{
    const basix::SqliteTransaction transaction(database);
    if (!transaction.isActive())
        return transaction.lastError();
    // A file without the right to write begins a transaction all the same: only a write is refused.
    QSqlQuery query(database.connection());
    if (!query.exec(QStringLiteral("PRAGMA user_version")) || !query.next())
        return query.lastError().text();
    const int version = query.value(0).toInt();
    query.finish();
    return query.exec(QStringLiteral("PRAGMA user_version=%1").arg(version))
        ? QString()
        : query.lastError().text();
}

} // namespace

QString writeProblem(basix::SqliteDatabase &database)
{
    const QString reason = refusalOf(database);
    if (reason.isEmpty())
        return QString();
    return QStringLiteral("Файл %1 открылся, но не записывается (%2). Проверьте права доступа и "
                          "место на диске, затем запустите программу снова.")
        .arg(QDir::toNativeSeparators(database.fileName()), reason);
}

QString openForWriting(basix::SqliteDatabase &database, const QString &file,
                       const basix::SqliteSchema &schema)
{
    if (!database.open(file, schema))
        return database.lastError();
    const QString problem = writeProblem(database);
    if (!problem.isEmpty())
        database.close();
    return problem;
}
