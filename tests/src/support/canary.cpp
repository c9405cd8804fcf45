#include "canary.h"

#include <QFile>
#include <QImage>
#include <QUrl>

#include <array>
#include <sys/inotify.h>
#include <unistd.h>

Canary::Canary() : m_file(m_dir.filePath(QStringLiteral("canary.png")))
{
    QImage picture(8, 8, QImage::Format_RGB32);
    picture.fill(Qt::yellow);
    if (!picture.save(m_file) || !m_server.listen(QHostAddress::LocalHost))
        qFatal("the canary could not be set up");
    m_watch = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    if (inotify_add_watch(m_watch, QFile::encodeName(m_file).constData(), IN_OPEN) < 0)
        qFatal("the canary's file cannot be watched");
}

Canary::~Canary()
{
    close(m_watch);
}

QStringList Canary::addresses() const
{
    return {QUrl::fromLocalFile(m_file).toString(), m_file,
            QStringLiteral("http://127.0.0.1:%1/canary.png").arg(m_server.serverPort())};
}

bool Canary::untouched()
{
    alignas(inotify_event) std::array<char, 4096> events;
    m_opened = m_opened || read(m_watch, events.data(), events.size()) > 0;
    m_server.waitForNewConnection(0);
    return !m_opened && !m_server.hasPendingConnections();
}

QString Canary::report() const
{
    return QStringLiteral("file opened: %1, server asked: %2")
        .arg(QString::number(int(m_opened)),
             QString::number(int(m_server.hasPendingConnections())));
}
