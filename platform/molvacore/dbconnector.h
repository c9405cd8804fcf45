#pragma once

#include <molvacore/molvacore_global.h>

#include <basixcore/basesqlitedbconnector.h>

#include <QString>

#include <memory>

namespace basix {
class SqliteDatabase;
}

/// A connection to the host's database: box, profiles, users, device settings, catalogue of
/// providers.
///
/// The file is opened, and created with its schema if it is missing, on construction; a connector
/// that could not open it stays closed for its life, and what reads through it gets empty records.
/// Use a connector in the thread that made it.
class MOLVACORE_EXPORT DbConnector : public basix::BaseSqliteDbConnector
{
    Q_OBJECT

public:
    explicit DbConnector(ConnectionMode mode = SharedConnection, QObject *parent = nullptr);
    ~DbConnector() override;

    bool isOpen() const;
    /// Why the database could not be opened, in Russian; empty when it is open.
    QString lastError() const;
    /// Never null as long as the connector lives; closed when isOpen() is false.
    basix::SqliteDatabase &database() const;

    /// The file of connectors made from now on. Without it: host.sqlite in the application's data
    /// folder.
    static void setDatabaseFile(const QString &path);
    static QString databaseFile();

private:
    std::shared_ptr<basix::SqliteDatabase> m_database;
};
