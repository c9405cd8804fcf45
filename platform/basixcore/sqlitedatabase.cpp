#include <basixcore/sqlitedatabase.h>

#include <basixcore/sqliteconnection.h>
#include <basixcore/sqlitefilecheck.h>
#include <basixcore/sqlitetransaction.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QThread>
#include <QVariant>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <unistd.h>
#endif

namespace basix {

namespace {

/// The folder keeps its mode if it is there already.
bool makeFolder(const QString &folder)
{
    if (QFileInfo(folder).isDir())
        return true;
    if (!QDir().mkpath(folder))
        return false;
    QFile::setPermissions(folder,
                          QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    return true;
}

/// An empty file that only its owner may read from the first moment on; SQLite gives its side files
/// the same mode.
bool makeFile(const QString &file)
{
#ifdef Q_OS_UNIX
    const int descriptor =
        ::open(QFile::encodeName(file).constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    return descriptor >= 0 && ::close(descriptor) == 0;
#else
    QFile created(file);
    return created.open(QIODevice::ReadWrite)
        && created.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
#endif
}

QVariant valueOf(const QSqlDatabase &db, const QString &statement)
{
    QSqlQuery query(db);
    return query.exec(statement) && query.next() ? query.value(0) : QVariant();
}

/// Two processes that meet at a fresh file get in each other's way here, and SQLite does not wait
/// by itself.
bool switchToWriteAheadLog(const QSqlDatabase &db)
{
    QElapsedTimer waiting;
    waiting.start();
    while (valueOf(db, QStringLiteral("PRAGMA journal_mode=WAL")).toString()
           != QLatin1String("wal")) {
        if (waiting.elapsed() > SqliteDatabase::busyTimeoutMs)
            return false;
        QThread::msleep(5);
    }
    return true;
}

} // namespace

SqliteDatabase::SqliteDatabase() = default;

SqliteDatabase::~SqliteDatabase()
{
    close();
}

bool SqliteDatabase::open(const QString &file, const SqliteSchema &schema)
{
    close();
    m_error.clear();
    Q_ASSERT(schema.applicationId != 0 && !schema.migrations.isEmpty());
    const QString path = QFileInfo(file).absoluteFilePath();
    const QString shown = QDir::toNativeSeparators(path);
    if (file.isEmpty())
        return fail(QStringLiteral("%1: не указан файл.").arg(schema.title));
    if (!makeFolder(QFileInfo(path).absolutePath()))
        return fail(QStringLiteral("%1: не удалось создать папку для файла %2. Проверьте права "
                                   "доступа и свободное место.")
                        .arg(schema.title, shown));
    if (!QFileInfo::exists(path) && !makeFile(path))
        return fail(
            QStringLiteral(
                "%1: не удалось создать файл %2. Проверьте права доступа и свободное место.")
                .arg(schema.title, shown));
    const QString problem = sqliteFileProblem(path, schema);
    if (!problem.isEmpty())
        return fail(problem);
    if (!connectTo(path))
        return fail(QStringLiteral("%1: файл %2 не открывается для записи (%3). Проверьте права "
                                   "доступа и свободное место.")
                        .arg(schema.title, shown, m_error));
    if (!migrate(schema))
        return fail(QStringLiteral("%1: не удалось подготовить файл %2 (%3). Данные не изменены.")
                        .arg(schema.title, shown, m_error));
    m_file = path;
    return true;
}

void SqliteDatabase::close()
{
    m_file.clear();
    if (m_connectionName.isEmpty())
        return;
    connection().close();
    QSqlDatabase::removeDatabase(m_connectionName);
    m_connectionName.clear();
}

bool SqliteDatabase::isOpen() const
{
    return !m_file.isEmpty();
}

QSqlDatabase SqliteDatabase::connection() const
{
    return m_connectionName.isEmpty() ? QSqlDatabase()
                                      : QSqlDatabase::database(m_connectionName, false);
}

bool SqliteDatabase::connectTo(const QString &file)
{
    m_connectionName = addSqliteConnection(file, QString());
    QSqlDatabase db = connection();
    if (!db.open()) {
        m_error = db.lastError().text();
        return false;
    }
    QSqlQuery query(db);
    for (const QString &statement :
         {QStringLiteral("PRAGMA foreign_keys=ON"), QStringLiteral("PRAGMA synchronous=FULL")}) {
        if (!query.exec(statement)) {
            m_error = query.lastError().text();
            return false;
        }
    }
    if (!switchToWriteAheadLog(db)) {
        m_error = QStringLiteral("не включается журнал упреждающей записи");
        return false;
    }
    return true;
}

bool SqliteDatabase::migrate(const SqliteSchema &schema)
{
    for (const SqliteMigration &migration : schema.migrations) {
        if (valueOf(connection(), QStringLiteral("PRAGMA user_version")).toInt() < migration.version
            && !applyMigration(schema, migration))
            return false;
    }
    // Where another process took a step meanwhile, this connection still remembers the tables of
    // before; a statement that reads them makes it look again.
    return valueOf(connection(), QStringLiteral("SELECT count(*) FROM sqlite_master")).isValid();
}

bool SqliteDatabase::applyMigration(const SqliteSchema &schema, const SqliteMigration &migration)
{
    SqliteTransaction transaction(*this);
    if (!transaction.isActive()) {
        m_error = transaction.lastError();
        return false;
    }
    // Another process may have taken this step while this one waited for the lock.
    if (valueOf(connection(), QStringLiteral("PRAGMA user_version")).toInt() >= migration.version)
        return true;
    const QStringList statements = migration.statements
        + QStringList{QStringLiteral("PRAGMA application_id=%1").arg(schema.applicationId),
                      QStringLiteral("PRAGMA user_version=%1").arg(migration.version)};
    for (int i = 0; i < statements.size(); ++i) {
        if (schema.progress && !schema.progress(i, statements.size())) {
            m_error = QStringLiteral("перевод на новую версию прерван");
            return false;
        }
        QSqlQuery query(connection());
        if (!query.exec(statements.at(i))) {
            m_error = query.lastError().text();
            return false;
        }
    }
    if (!transaction.commit()) {
        m_error = transaction.lastError();
        return false;
    }
    return true;
}

bool SqliteDatabase::fail(const QString &text)
{
    close();
    m_error = text;
    return false;
}

} // namespace basix
