#pragma once

#include <molvacore/molvacore_global.h>
#include <molvacore/onlinekkmprofile.h>

#include <basixcore/basesqlitedbconnector.h>

#include <QObject>

class DbConnector;

/// Access to the online cash-register profile that the box works with.
class MOLVACORE_EXPORT OnlineKktProfileManager : public QObject
{
    Q_OBJECT

public:
    OnlineKktProfileManager(basix::BaseSqliteDbConnector::ConnectionMode mode, QObject *parent);
    ~OnlineKktProfileManager() override;

    /// Reads the database on every call; invalid when none is set up or the database is closed.
    OnlineKkmProfile getCurrentProfile();
    /// Stores the profile with all its records and makes it the current one. A default-constructed
    /// profile leaves none current; any other with an id of zero or less is refused.
    bool setCurrentProfile(const OnlineKkmProfile &profile);

private:
    DbConnector *m_db; ///< a child of this object
};
