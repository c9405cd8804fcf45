#pragma once

#include <QString>
#include <QStringList>
#include <QVector>
#include <QtGlobal>

#include <functional>

namespace basix {

/// One step of a schema: its statements run in order in one transaction, which also stores the new
/// version.
struct SqliteMigration
{
    /// Above the version of the step before it; the first is 1.
    int version = 0;
    QStringList statements;
};

/// What a program expects of its database file.
struct SqliteSchema
{
    /// Marks the file as this program's own (PRAGMA application_id); not 0.
    qint32 applicationId = 0;
    /// What the file is to a person, in the nominative case: "База касс". Used in error texts.
    QString title;
    /// In ascending order of version.
    QVector<SqliteMigration> migrations;
    /// Reads the whole file for damage before it is used. Switch it off for a store whose size
    /// makes that slow.
    bool checkWholeFile = true;
    /// Bytes; a larger file is not read as a whole (that takes about three seconds for a gigabyte),
    /// only its head and its schema. Damage further on is then met by the query that reads it.
    qint64 wholeFileLimit = 256 * 1024 * 1024;

    /// Told before each statement of a step how many of the step are done, of how many, in the
    /// thread that opens the file. False gives up: the step is undone as a whole and open() fails.
    std::function<bool(int done, int total)> progress;

    int version() const { return migrations.isEmpty() ? 0 : migrations.last().version; }
};

} // namespace basix
