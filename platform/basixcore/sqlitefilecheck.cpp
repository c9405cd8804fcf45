#include <basixcore/sqlitefilecheck.h>

#include <basixcore/sqliteconnection.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

namespace basix {

namespace {

// Result codes of SQLite; the lower byte is the kind of error.
constexpr int sqliteReadOnly = 8;
constexpr int sqliteCorrupt = 11;
constexpr int sqliteNotADatabase = 26;

QString damaged(const QString &file, const SqliteSchema &schema)
{
    return QStringLiteral("%1: файл %2 повреждён. Он оставлен как есть; восстановите его из "
                          "резервной копии или уберите в "
                          "другую папку, тогда будет создан новый.")
        .arg(schema.title, QDir::toNativeSeparators(file));
}

QString foreign(const QString &file, const SqliteSchema &schema)
{
    return QStringLiteral("%1: файл %2 принадлежит другой программе. Он оставлен как есть; укажите "
                          "другой файл.")
        .arg(schema.title, QDir::toNativeSeparators(file));
}

QString newer(const QString &file, const SqliteSchema &schema, int version)
{
    return QStringLiteral("%1: файл %2 создан более новой версией программы (версия данных %3, эта "
                          "программа знает %4). Он "
                          "оставлен как есть; обновите программу.")
        .arg(schema.title, QDir::toNativeSeparators(file), QString::number(version),
             QString::number(schema.version()));
}

QString unreadable(const QString &file, const SqliteSchema &schema, const QString &reason)
{
    return QStringLiteral(
               "%1: не удалось прочитать файл %2 (%3). Проверьте права доступа и повторите.")
        .arg(schema.title, QDir::toNativeSeparators(file), reason);
}

/// Reads one value; false puts the problem (possibly an empty one: nothing against the file) into
/// `problem`.
bool readValue(const QSqlDatabase &db, const QString &file, const SqliteSchema &schema,
               const QString &statement, QVariant &value, QString &problem)
{
    QSqlQuery query(db);
    if (query.exec(statement) && query.next()) {
        value = query.value(0);
        return true;
    }
    const int kind = query.lastError().nativeErrorCode().toInt() & 0xff;
    if (kind == sqliteCorrupt || kind == sqliteNotADatabase)
        problem = damaged(file, schema);
    else if (kind == sqliteReadOnly)
        problem.clear(); // an interrupted transaction is to be undone first, which only a writing
                         // connection may do
    else
        problem = unreadable(file, schema, query.lastError().text());
    return false;
}

QString problemOfConnection(const QSqlDatabase &db, const QString &file, const SqliteSchema &schema)
{
    QString problem;
    QVariant applicationId;
    QVariant version;
    QVariant tables;
    // One snapshot: another process may be giving a fresh file its schema at this moment.
    if (!QSqlQuery(db).exec(QStringLiteral("BEGIN")))
        return unreadable(file, schema, db.lastError().text());
    if (!readValue(db, file, schema, QStringLiteral("PRAGMA application_id"), applicationId,
                   problem)
        || !readValue(db, file, schema, QStringLiteral("PRAGMA user_version"), version, problem)
        || !readValue(db, file, schema, QStringLiteral("SELECT count(*) FROM sqlite_master"),
                      tables, problem))
        return problem;
    const bool blank = applicationId.toInt() == 0 && version.toInt() == 0 && tables.toInt() == 0;
    if (!blank && applicationId.toInt() != schema.applicationId)
        return foreign(file, schema);
    if (version.toInt() > schema.version())
        return newer(file, schema, version.toInt());
    if (!schema.checkWholeFile || QFileInfo(file).size() > schema.wholeFileLimit)
        return QString();
    QVariant verdict;
    if (!readValue(db, file, schema, QStringLiteral("PRAGMA quick_check(1)"), verdict, problem))
        return problem;
    return verdict.toString() == QLatin1String("ok") ? QString() : damaged(file, schema);
}

} // namespace

QString sqliteFileProblem(const QString &file, const SqliteSchema &schema)
{
    {
        QFile raw(file);
        if (!raw.open(QIODevice::ReadOnly))
            return QStringLiteral("%1: файл %2 не открывается (%3). Проверьте права доступа.")
                .arg(schema.title, QDir::toNativeSeparators(file), raw.errorString());
        if (raw.size() == 0)
            return QString();
        if (raw.read(16) != QByteArray("SQLite format 3\0", 16))
            return damaged(file, schema);
    }
    const QString name = addSqliteConnection(file, QStringLiteral("QSQLITE_OPEN_READONLY"));
    QString problem;
    {
        QSqlDatabase db = QSqlDatabase::database(name, false);
        problem = db.open()
            ? problemOfConnection(db, file, schema)
            : QStringLiteral("%1: файл %2 не открывается (%3).")
                  .arg(schema.title, QDir::toNativeSeparators(file), db.lastError().text());
        db.close();
    }
    QSqlDatabase::removeDatabase(name);
    return problem;
}

} // namespace basix
