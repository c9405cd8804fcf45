#include "goldenfile.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <QStringList>

namespace {

bool write(const QString &path, const QString &text)
{
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(text.toUtf8()) >= 0 && file.commit();
}

QString lineDifferences(const QString &expected, const QString &actual)
{
    const QStringList wanted = expected.split(QLatin1Char('\n'));
    const QStringList got = actual.split(QLatin1Char('\n'));
    QStringList report;
    for (int i = 0; i < qMax(wanted.size(), got.size()); ++i) {
        if (i < wanted.size() && i < got.size() && wanted.at(i) == got.at(i))
            continue;
        if (i < wanted.size())
            report.append(QStringLiteral("%1 - %2").arg(QString::number(i + 1), wanted.at(i)));
        if (i < got.size())
            report.append(QStringLiteral("%1 + %2").arg(QString::number(i + 1), got.at(i)));
    }
    return report.join(QLatin1Char('\n'));
}

} // namespace

QString GoldenFile::difference(const QString &name, const QString &text)
{
    const QString path = QStringLiteral(SELMAR_GOLDEN_DIR "/") + name;
    const QString actual = text + QLatin1Char('\n');
    if (qEnvironmentVariableIsSet("SELMAR_REFRESH_GOLDEN"))
        return write(path, actual) ? QString() : QStringLiteral("cannot write %1").arg(path);

    QFile file(path);
    const bool found = file.open(QIODevice::ReadOnly);
    const QString expected = found ? QString::fromUtf8(file.readAll()) : QString();
    if (found && expected == actual)
        return {};

    const QString failDir = QStringLiteral(SELMAR_GOLDEN_FAIL_DIR);
    const QString failed = QStringLiteral("%1/%2.fail").arg(failDir, name);
    QDir().mkpath(failDir);
    write(failed, actual);
    const QString reason =
        found ? lineDifferences(expected, actual) : QStringLiteral("no golden file");
    return QStringLiteral("%1 (see %2)\n%3").arg(path, failed, reason);
}
