#pragma once

#include <QString>

namespace basix {

/// Adds a connection to an SQLite file, not opened yet, under a name that no other connection of
/// this process has.
///
/// Safe from any thread, which Qt's own first use of a driver is not. Returns the name; the caller
/// removes the connection.
QString addSqliteConnection(const QString &file, const QString &options);

} // namespace basix
