#include <storage/writecheck.h>

#include <basixcore/sqlitedatabase.h>
#include <basixcore/sqlitetransaction.h>

#include <QDir>

QString writeProblem(basix::SqliteDatabase &database)
{
    const basix::SqliteTransaction transaction(database);
    if (transaction.isActive())
        return QString();
    return QStringLiteral("Файл %1 открылся, но не записывается (%2). Проверьте права доступа и "
                          "место на диске, затем запустите программу снова.")
        .arg(QDir::toNativeSeparators(database.fileName()), transaction.lastError());
}
