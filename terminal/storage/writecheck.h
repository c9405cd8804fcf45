#pragma once

#include <QString>

namespace basix {
class SqliteDatabase;
struct SqliteSchema;
} // namespace basix

/// Why an open database cannot be written, in Russian; empty when it can. Opening alone does not
/// tell, and a workstation that takes money must know before it takes any. Changes nothing.
QString writeProblem(basix::SqliteDatabase &database);

/// Opens a store that has to be written. Empty when it can be; otherwise why not, in Russian, and
/// the database is closed.
QString openForWriting(basix::SqliteDatabase &database, const QString &file,
                       const basix::SqliteSchema &schema);
