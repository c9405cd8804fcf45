#include <molvacore/dbconnector.h>

#include <molvacore/hostschema.h>

#include <basixcore/sqlitedatabase.h>

#include <QDebug>
#include <QFileInfo>
#include <QMutex>
#include <QMutexLocker>
#include <QStandardPaths>

namespace {

QMutex &fileMutex()
{
    static QMutex mutex;
    return mutex;
}

QString &chosenFile()
{
    static QString file;
    return file;
}

std::shared_ptr<basix::SqliteDatabase> openDatabase(const QString &file)
{
    auto database = std::make_shared<basix::SqliteDatabase>();
    if (!database->open(file, hostSchema()))
        qWarning() << "host database:" << database->lastError();
    return database;
}

/// One per thread; gone when the last connector that shares it is.
std::shared_ptr<basix::SqliteDatabase> sharedDatabase(const QString &file)
{
    static thread_local std::weak_ptr<basix::SqliteDatabase> shared;
    std::shared_ptr<basix::SqliteDatabase> database = shared.lock();
    if (database && database->isOpen()
        && (database->fileName() == file
            || database->fileName() == QFileInfo(file).absoluteFilePath()))
        return database;
    database = openDatabase(file);
    shared = database;
    return database;
}

} // namespace

DbConnector::DbConnector(ConnectionMode mode, QObject *parent)
    : basix::BaseSqliteDbConnector(mode, parent),
      m_database(mode == SharedConnection ? sharedDatabase(databaseFile())
                                          : openDatabase(databaseFile()))
{
}

DbConnector::~DbConnector() = default;

bool DbConnector::isOpen() const
{
    return m_database->isOpen();
}

QString DbConnector::lastError() const
{
    return m_database->lastError();
}

basix::SqliteDatabase &DbConnector::database() const
{
    return *m_database;
}

void DbConnector::setDatabaseFile(const QString &path)
{
    QMutexLocker lock(&fileMutex());
    chosenFile() = path;
}

QString DbConnector::databaseFile()
{
    QMutexLocker lock(&fileMutex());
    if (!chosenFile().isEmpty())
        return chosenFile();
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)
        + QStringLiteral("/host.sqlite");
}
