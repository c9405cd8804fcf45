#pragma once

#include <QString>

namespace basix {
class SqliteDatabase;
}

/// Why an open database cannot be written, in Russian; empty when it can. Opening alone does not
/// tell, and a workstation that takes money must know before it takes any. Changes nothing.
QString writeProblem(basix::SqliteDatabase &database);
