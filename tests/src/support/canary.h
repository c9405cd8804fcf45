#pragma once

#include <QStringList>
#include <QTcpServer>
#include <QTemporaryDir>

/// A file and a server that nobody has a reason to touch: hostile texts point at them, and a test
/// sees whether anything followed.
class Canary
{
public:
    Canary();
    ~Canary();
    Canary(const Canary &) = delete;
    Canary &operator=(const Canary &) = delete;

    /// A real picture as "file:" address and as a bare path, and the server's "http:" address.
    QStringList addresses() const;
    /// Nothing has opened the file, and nothing has connected to the server.
    bool untouched();
    QString report() const;

private:
    QTemporaryDir m_dir;
    QString m_file;
    QTcpServer m_server;
    int m_watch = -1;
    bool m_opened = false;
};
