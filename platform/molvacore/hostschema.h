#pragma once

#include <basixcore/sqliteschema.h>

/// Schema of the host's database.
basix::SqliteSchema hostSchema();
