#pragma once

#include <storage/sqlstatement.h>

#include <QHash>
#include <QString>

#include <memory>

/// The statements of one open database, each prepared when it is first used and kept.
///
/// Gone before its database closes. Used from one thread.
class SqlStatements final
{
public:
    /// A kept statement in use: it has no rows any more, and lets a transaction commit, when this
    /// is gone.
    class Use final
    {
    public:
        explicit Use(std::shared_ptr<SqlStatement> statement);
        ~Use();
        Use(Use &&) = default;
        Use(const Use &) = delete;
        Use &operator=(const Use &) = delete;

        SqlStatement &operator*() const { return *m_statement; }
        SqlStatement *operator->() const { return m_statement.get(); }

    private:
        std::shared_ptr<SqlStatement> m_statement;
    };

    /// So many different statements are kept at most; a store has far fewer.
    static constexpr int MOST = 100;

    /// `database` is open and outlives this object.
    explicit SqlStatements(const basix::SqliteDatabase &database);
    ~SqlStatements();

    /// A statement that is in use already, or could not be prepared, is made for this use alone.
    Use use(const QString &sql);

private:
    const basix::SqliteDatabase &m_database;
    QHash<QString, std::shared_ptr<SqlStatement>> m_kept;
};
