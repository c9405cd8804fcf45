#include "processuse.h"

#include <QDir>
#include <QFile>
#include <QSqlDatabase>

#include <malloc.h>
#include <unistd.h>

namespace {

int entries(const QString &folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot).size();
}

qint64 residentPages()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    return file.readAll().split(' ').value(1).toLongLong();
}

} // namespace

ProcessUse ProcessUse::now()
{
    ProcessUse use;
    use.files = entries(QStringLiteral("/proc/self/fd"));
    use.threads = entries(QStringLiteral("/proc/self/task"));
    use.databases = QSqlDatabase::connectionNames().size();
    use.residentBytes = residentPages() * sysconf(_SC_PAGESIZE);
    const struct mallinfo2 heap = mallinfo2();
    use.heapBytes = qint64(heap.uordblks) + qint64(heap.hblkhd);
    return use;
}

QString ProcessUse::text() const
{
    return QStringLiteral("heap %1 KiB, resident %2 KiB, files %3, threads %4, databases %5")
        .arg(QString::number(heapBytes / 1024), QString::number(residentBytes / 1024),
             QString::number(files), QString::number(threads), QString::number(databases));
}
