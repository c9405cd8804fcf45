#include <recovery/privatedata.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

#ifdef Q_OS_UNIX
#include <sys/resource.h>
#include <sys/stat.h>
#endif
#ifdef Q_OS_LINUX
#include <sys/prctl.h>
#endif

namespace {

constexpr QFileDevice::Permissions OWNER_FILE = QFileDevice::ReadOwner | QFileDevice::WriteOwner;
constexpr QFileDevice::Permissions OWNER_FOLDER = OWNER_FILE | QFileDevice::ExeOwner;
constexpr QFileDevice::Permissions OTHERS = QFileDevice::ReadGroup | QFileDevice::WriteGroup
    | QFileDevice::ExeGroup | QFileDevice::ReadOther | QFileDevice::WriteOther
    | QFileDevice::ExeOther;

QStringList ownNames()
{
    return {QStringLiteral("*.sqlite"),     QStringLiteral("*.sqlite-wal"),
            QStringLiteral("*.sqlite-shm"), QStringLiteral("terminal.lock"),
            QStringLiteral("trace.log"),    QStringLiteral("trace.log.old")};
}

bool isOpenToOthers(const QFileInfo &file)
{
    return file.permissions() & OTHERS;
}

} // namespace

void PrivateData::hardenProcess()
{
#ifdef Q_OS_UNIX
    ::umask(077);
    const rlimit none = {0, 0};
    ::setrlimit(RLIMIT_CORE, &none);
#endif
#ifdef Q_OS_LINUX
    // The limit does not hold for a system that pipes core files to a program; this does.
    ::prctl(PR_SET_DUMPABLE, 0, 0, 0, 0);
#endif
}

bool PrivateData::closeFolder(const QString &folder)
{
    const QDir dir(folder);
    if (!dir.exists())
        return QDir().mkpath(folder) && QFile::setPermissions(folder, OWNER_FOLDER);
    const QFileInfoList own = dir.entryInfoList(ownNames(), QDir::Files | QDir::Hidden);
    const QStringList all =
        dir.entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    if (own.size() == all.size() && isOpenToOthers(QFileInfo(folder)))
        QFile::setPermissions(folder, OWNER_FOLDER);
    bool closed = true;
    for (const QFileInfo &file : own) {
        if (isOpenToOthers(file))
            closed = QFile::setPermissions(file.filePath(), OWNER_FILE) && closed;
    }
    return closed;
}
