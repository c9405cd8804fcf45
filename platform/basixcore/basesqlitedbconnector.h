#pragma once

#include <basixcore/basixcore_global.h>

#include <QObject>

namespace basix {

/// What every connector to an SQLite database of the host has in common: how it gets its
/// connection.
class BASIXCORE_EXPORT BaseSqliteDbConnector : public QObject
{
    Q_OBJECT

public:
    enum ConnectionMode {
        /// Connectors of one thread share one open connection; it closes with the last of them.
        SharedConnection = 0,
        /// The connector has a connection of its own.
        PrivateConnection = 1
    };
    Q_ENUM(ConnectionMode)

    explicit BaseSqliteDbConnector(ConnectionMode mode = SharedConnection,
                                   QObject *parent = nullptr);
    ~BaseSqliteDbConnector() override;

    ConnectionMode connectionMode() const { return m_mode; }

private:
    ConnectionMode m_mode;
};

} // namespace basix
