#include <basixcore/sqliteconnection.h>

#include <basixcore/sqlitedatabase.h>

#include <QMutex>
#include <QMutexLocker>
#include <QSqlDatabase>

namespace basix {

QString addSqliteConnection(const QString &file, const QString &options)
{
    static QMutex mutex;
    static quint64 counter = 0;
    // Two threads that load Qt's first driver at the same moment register its clean-up twice, and
    // then the program never gets out of the application object's destructor.
    const QMutexLocker lock(&mutex);
    const QString name = QStringLiteral("basix-sqlite-") + QString::number(++counter);
    QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
    db.setDatabaseName(file);
    db.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=%1;%2")
                             .arg(QString::number(SqliteDatabase::busyTimeoutMs), options));
    return name;
}

} // namespace basix
