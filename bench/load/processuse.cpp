#include "processuse.h"

#include <QByteArray>
#include <QFile>
#include <QList>
#include <QString>

#include <unistd.h>

namespace {

QByteArray read(qint64 pid, const char *name)
{
    QFile file(QStringLiteral("/proc/%1/%2").arg(QString::number(pid), QLatin1String(name)));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

double ProcessUse::processorMs(qint64 pid)
{
    // After the name, which may hold anything but ends with the last bracket: state is the first.
    constexpr int USER = 11;
    constexpr int SYSTEM = 12;
    const QByteArray stat = read(pid, "stat");
    const QList<QByteArray> fields = stat.mid(stat.lastIndexOf(')') + 2).split(' ');
    if (fields.size() <= SYSTEM)
        return 0;
    const double ticks = fields.at(USER).toDouble() + fields.at(SYSTEM).toDouble();
    return ticks * 1000 / double(::sysconf(_SC_CLK_TCK));
}

double ProcessUse::residentMiB(qint64 pid)
{
    const QList<QByteArray> fields = read(pid, "statm").split(' ');
    const double pages = fields.size() > 1 ? fields.at(1).toDouble() : 0;
    return pages * double(::sysconf(_SC_PAGESIZE)) / (1024 * 1024);
}
