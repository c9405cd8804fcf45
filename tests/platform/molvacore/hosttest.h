#pragma once

#include "messagelog.h"

#include <molvacore/dbconnector.h>

#include <QFile>
#include <QTemporaryDir>

/// A host database of its own for the life of the object; the connectors of a test must go before
/// it.
class HostTest
{
public:
    HostTest() { DbConnector::setDatabaseFile(file()); }
    ~HostTest() { DbConnector::setDatabaseFile(QString()); }

    QString file() const { return m_dir.filePath(QStringLiteral("host.sqlite")); }

    /// Puts something that is no database in place of the file; connectors made from now on stay
    /// closed.
    void damage()
    {
        QFile garbage(file());
        if (garbage.open(QIODevice::WriteOnly))
            garbage.write("this is no database");
    }

    QStringList unexpectedWarnings(const QStringList &allowed = {}) const
    {
        return m_log.unexpectedWarnings(allowed);
    }

private:
    QTemporaryDir m_dir;
    MessageLog m_log;
};
