#pragma once

#include <molvacore/boxcomprofile.h>
#include <molvacore/molvacore_global.h>

class DbConnector;

/// Access to the commission profile that the box works with.
///
/// Every call reads the database; with a closed one the record is invalid and setting is refused.
class MOLVACORE_EXPORT ComissionsManager
{
public:
    /// `db` must outlive this object.
    explicit ComissionsManager(DbConnector &db);

    BoxComProfile getCurrentProfile();
    /// Stores the profile and makes it the current one. A default-constructed profile leaves none
    /// current; any other with an id of zero or less is refused.
    bool setCurrentProfile(const BoxComProfile &profile);

private:
    DbConnector &m_db;
};
