#pragma once

#include <molvacore/molvacore_global.h>
#include <molvacore/provider.h>

#include <QList>

class DbConnector;

/// Access to the catalogue of providers. Every call reads the database.
class MOLVACORE_EXPORT ProvidersController
{
public:
    /// `db` must outlive this object.
    explicit ProvidersController(DbConnector &db);

    /// By id, each with its parameters in the order in which they were saved.
    QList<Provider> providers();
    /// A default-constructed provider when there is none with this id.
    Provider provider(qint64 id);
    /// Stores the record with its parameters, in place of what was stored under its id; an id of
    /// zero or less is refused.
    bool saveProvider(const Provider &provider);

private:
    DbConnector &m_db;
};
