#pragma once

#include <molvacore/boxinfo.h>
#include <molvacore/molvacore_global.h>

class DbConnector;

/// Access to the record of the box itself.
class MOLVACORE_EXPORT BoxInfoController
{
public:
    /// `db` must outlive this object.
    explicit BoxInfoController(DbConnector &db);

    /// The current box; invalid when none is set up or the database is closed. What was read once
    /// is kept by this object until `reload` is true or setBoxInfo() changed it.
    BoxInfo boxInfo(bool reload);
    /// Stores the record and makes it the current one. A default-constructed record leaves none
    /// current; any other with an id of zero or less is refused.
    bool setBoxInfo(const BoxInfo &info);

private:
    DbConnector &m_db;
    BoxInfo m_info;
};
