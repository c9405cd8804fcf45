#include <storage/sqlstatements.h>

#include <utility>

SqlStatements::Use::Use(std::shared_ptr<SqlStatement> statement) : m_statement(std::move(statement))
{
}

SqlStatements::Use::~Use()
{
    if (m_statement)
        m_statement->finish();
}

SqlStatements::SqlStatements(const basix::SqliteDatabase &database) : m_database(database) {}

SqlStatements::~SqlStatements() = default;

SqlStatements::Use SqlStatements::use(const QString &sql)
{
    const auto kept = m_kept.constFind(sql);
    if (kept != m_kept.cend() && kept->use_count() == 1)
        return Use(*kept);
    auto statement = std::make_shared<SqlStatement>(m_database, sql);
    if (kept == m_kept.cend() && statement->isPrepared()) {
        if (m_kept.size() >= MOST)
            m_kept.clear();
        m_kept.insert(sql, statement);
    }
    return Use(std::move(statement));
}
