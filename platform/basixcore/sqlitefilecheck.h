#pragma once

#include <basixcore/sqliteschema.h>

#include <QString>

namespace basix {

/// Looks at an existing file without changing a byte of it. Empty when `schema` may work with it;
/// otherwise why not, in Russian.
QString sqliteFileProblem(const QString &file, const SqliteSchema &schema);

} // namespace basix
