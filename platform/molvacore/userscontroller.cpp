#include <molvacore/userscontroller.h>

#include <molvacore/appsession.h>
#include <molvacore/hosttables.h>

#include <QSqlQuery>

UsersController::UsersController(DbConnector &db) : m_db(db) {}

bool UsersController::getUserFullName(const AppSession &session, QString &name)
{
    QSqlQuery query;
    if (!session.isValid()
        || !HostTables::run(m_db, query, QStringLiteral("SELECT full_name FROM users WHERE id = ?"),
                            {session.userId()})
        || !query.next())
        return false;
    const QString found = query.value(0).toString();
    if (found.isEmpty())
        return false;
    name = found;
    return true;
}

bool UsersController::setUserFullName(const AppSession &session, const QString &name)
{
    return session.isValid()
        && HostTables::run(
               m_db,
               QStringLiteral("INSERT INTO users (id, full_name) VALUES (?, ?) "
                              "ON CONFLICT (id) DO UPDATE SET full_name = excluded.full_name"),
               {session.userId(), HostTables::text(name)});
}
