#pragma once

#include <QString>

namespace basix {
struct SqliteSchema;
}

/// Brings a database of an earlier version up to date before the program opens it.
///
/// Years of payments take a while, so it is done in a thread of its own behind a window that says
/// what is going on and lets the person stop it; the file then stays what it was.
class StoreUpgrade
{
public:
    /// True when the file is up to date, missing, or not one that can be brought up: opening it
    /// tells the rest. False: `error` says in Russian why it was not brought up and what to do.
    /// Returns when all is done; the event loop runs meanwhile.
    static bool run(const QString &file, const basix::SqliteSchema &schema, QString *error);

    /// Whether the head of the file tells of an earlier version.
    static bool isNeeded(const QString &file, const basix::SqliteSchema &schema);
};
