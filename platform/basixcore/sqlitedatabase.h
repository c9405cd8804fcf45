#pragma once

#include <basixcore/basixcore_global.h>
#include <basixcore/sqliteschema.h>

#include <QString>

QT_BEGIN_NAMESPACE
class QSqlDatabase;
QT_END_NAMESPACE

namespace basix {

/// One connection to one SQLite file with a known schema; closed and removed when the object goes.
///
/// A missing file is created with its folder and schema, readable by its owner only. An existing
/// file is looked at through a read-only connection first: a file that is damaged, that another
/// program made or that a newer version of this program made is refused, and stays as it was byte
/// for byte. An older file is brought up to the schema's version step by step; a step that fails is
/// undone as a whole and open() fails.
///
/// A transaction is on the disk when its commit returns (write-ahead log, synchronous=FULL).
/// Foreign keys are enforced. Another process that holds the file locked is waited for, up to
/// `busyTimeoutMs`.
///
/// Used from the thread that called open(); destroyed in the same thread, after every query made on
/// connection().
class BASIXCORE_EXPORT SqliteDatabase
{
public:
    static constexpr int busyTimeoutMs = 5000;

    SqliteDatabase();
    ~SqliteDatabase();
    SqliteDatabase(const SqliteDatabase &) = delete;
    SqliteDatabase &operator=(const SqliteDatabase &) = delete;

    /// Closes what was open. False leaves the object closed with the reason in lastError().
    bool open(const QString &file, const SqliteSchema &schema);
    void close();
    bool isOpen() const;

    /// Absolute path of the open file; empty when closed.
    QString fileName() const { return m_file; }
    /// Why the last open() failed: Russian, what happened and what to do. Empty after a success.
    QString lastError() const { return m_error; }
    /// For queries; an invalid connection when closed. Do not keep copies: they outlive close().
    QSqlDatabase connection() const;

private:
    bool connectTo(const QString &file);
    bool migrate(const SqliteSchema &schema);
    bool applyMigration(const SqliteSchema &schema, const SqliteMigration &migration);
    bool fail(const QString &text);

    QString m_connectionName;
    QString m_file;
    QString m_error;
};

} // namespace basix
