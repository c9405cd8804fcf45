#pragma once

#include <QSqlDatabase>
#include <QString>

#include <memory>

namespace basix {
class SqliteDatabase;
}

/// Journals of payments of any size, as a workstation's store writes them; made once per size in a
/// temporary folder of the program.
namespace JournalFile {

/// The file with this many payments: a few minutes apart, of many accounts, in all states.
QString of(int payments);
/// An account that has about one payment of a hundred.
QString searchedAccount();

/// A bare connection to such a file.
class Connection final
{
public:
    explicit Connection(int payments);
    ~Connection();
    Connection(const Connection &) = delete;
    Connection &operator=(const Connection &) = delete;

    QSqlDatabase connection() const;

private:
    std::unique_ptr<basix::SqliteDatabase> m_database;
};

} // namespace JournalFile
