#include "benchfolder.h"

#include <QDir>
#include <QTemporaryDir>

namespace {

QString &given()
{
    static QString path;
    return path;
}

} // namespace

void BenchFolder::use(const QString &path)
{
    given() = path;
}

QString BenchFolder::filePath(const QString &name)
{
    if (!given().isEmpty())
        return QDir(given()).filePath(name);
    static const QTemporaryDir own;
    return own.filePath(name);
}
