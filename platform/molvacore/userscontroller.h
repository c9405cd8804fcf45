#pragma once

#include <molvacore/molvacore_global.h>

#include <QString>

class AppSession;
class DbConnector;

/// Access to the users of the box.
class MOLVACORE_EXPORT UsersController
{
public:
    /// `db` must outlive this object.
    explicit UsersController(DbConnector &db);

    /// True fills `name`: the session's user is known and has a name. False leaves `name` alone.
    bool getUserFullName(const AppSession &session, QString &name);
    /// Stores the name of the session's user; refused for a session of nobody.
    bool setUserFullName(const AppSession &session, const QString &name);

private:
    DbConnector &m_db;
};
