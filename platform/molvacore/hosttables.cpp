#include <molvacore/hosttables.h>

#include <molvacore/dbconnector.h>

#include <basixcore/sqlitedatabase.h>
#include <basixcore/sqlitetransaction.h>

#include <QDebug>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>

namespace HostTables {

bool run(const DbConnector &db, QSqlQuery &query, const QString &statement,
         const QVariantList &values)
{
    if (!db.isOpen())
        return false;
    query = QSqlQuery(db.database().connection());
    query.setForwardOnly(true);
    bool done = query.prepare(statement);
    if (done) {
        for (const QVariant &value : values)
            query.addBindValue(value);
        done = query.exec();
    }
    if (!done)
        qWarning() << "host database:" << query.lastError().text() << "in" << statement;
    return done;
}

bool run(const DbConnector &db, const QString &statement, const QVariantList &values)
{
    QSqlQuery query;
    return run(db, query, statement, values);
}

bool setCurrent(const DbConnector &db, const QString &column, const QVariant &id)
{
    return run(db, QStringLiteral("UPDATE host_state SET %1 = ? WHERE id = 1").arg(column), {id});
}

NamedRecord currentRecord(const DbConnector &db, const QString &table, const QString &column)
{
    QSqlQuery query;
    if (!run(db, query,
             QStringLiteral("SELECT t.id, t.name FROM host_state s JOIN %1 t ON t.id = s.%2")
                 .arg(table, column))
        || !query.next())
        return {};
    return {query.value(0).toLongLong(), query.value(1).toString()};
}

bool setCurrentRecord(DbConnector &db, const QString &table, const QString &column,
                      const NamedRecord &record)
{
    if (record.id == 0 && record.name.isEmpty())
        return setCurrent(db, column, QVariant());
    if (record.id <= 0)
        return false;
    basix::SqliteTransaction transaction(db.database());
    return transaction.isActive()
        && run(db,
               QStringLiteral("INSERT INTO %1 (id, name) VALUES (?, ?) "
                              "ON CONFLICT (id) DO UPDATE SET name = excluded.name")
                   .arg(table),
               {record.id, text(record.name)})
        && setCurrent(db, column, record.id) && transaction.commit();
}

QString text(const QString &value)
{
    return value.isNull() ? QString(QLatin1String("")) : value;
}

} // namespace HostTables
