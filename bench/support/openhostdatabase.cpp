#include "openhostdatabase.h"

#include "atend.h"

#include <molvacore/dbconnector.h>

#include <memory>

void keepHostDatabaseOpen()
{
    static std::unique_ptr<DbConnector> database;
    if (database)
        return;
    database = std::make_unique<DbConnector>();
    AtEnd::call([] { database.reset(); });
}
