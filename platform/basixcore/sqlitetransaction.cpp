#include <basixcore/sqlitetransaction.h>

#include <basixcore/sqlitedatabase.h>

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>

namespace basix {

SqliteTransaction::SqliteTransaction(SqliteDatabase &database) : m_database(database)
{
    m_active = run(QStringLiteral("BEGIN IMMEDIATE"));
}

SqliteTransaction::~SqliteTransaction()
{
    rollback();
}

bool SqliteTransaction::commit()
{
    if (!m_active)
        return false;
    if (run(QStringLiteral("COMMIT"))) {
        m_active = false;
        return true;
    }
    const QString reason = m_error;
    rollback();
    m_error = reason;
    return false;
}

void SqliteTransaction::rollback()
{
    if (!m_active)
        return;
    m_active = false;
    run(QStringLiteral("ROLLBACK"));
}

bool SqliteTransaction::run(const QString &statement)
{
    const QSqlDatabase db = m_database.connection();
    if (!db.isOpen()) {
        m_error = QStringLiteral("база данных закрыта");
        return false;
    }
    QSqlQuery query(db);
    if (query.exec(statement))
        return true;
    m_error = query.lastError().text();
    return false;
}

} // namespace basix
