#pragma once

#include <basixcore/basixcore_global.h>

#include <QString>

namespace basix {

class SqliteDatabase;

/// A write transaction for the life of this object: undone on destruction unless commit() returned
/// true.
///
/// It takes the write lock at once, so that what is read inside it cannot change before the commit.
/// Transactions of one connection do not nest: the inner one is not active.
///
/// Finish or clear every SELECT of the connection before commit().
class BASIXCORE_EXPORT SqliteTransaction
{
public:
    explicit SqliteTransaction(SqliteDatabase &database);
    ~SqliteTransaction();
    SqliteTransaction(const SqliteTransaction &) = delete;
    SqliteTransaction &operator=(const SqliteTransaction &) = delete;

    /// False when it could not begin (database closed, locked for too long, already inside a
    /// transaction) and after commit() or rollback().
    bool isActive() const { return m_active; }
    /// True when everything is on the disk. After false the transaction is undone.
    bool commit();
    void rollback();
    /// The driver's text of the last failure.
    QString lastError() const { return m_error; }

private:
    bool run(const QString &statement);

    SqliteDatabase &m_database;
    bool m_active = false;
    QString m_error;
};

} // namespace basix
