#include "storeupgrade.h"

#include "longwork.h"

#include <basixcore/sqlitedatabase.h>

#include <QCoreApplication>
#include <QFile>
#include <QtEndian>

namespace {

// Where SQLite keeps PRAGMA user_version in the head of a file.
constexpr int versionOffset = 60;
constexpr int headSize = 100;

} // namespace

bool StoreUpgrade::isNeeded(const QString &file, const basix::SqliteSchema &schema)
{
    QFile stored(file);
    if (!stored.open(QIODevice::ReadOnly))
        return false;
    const QByteArray head = stored.read(headSize);
    if (head.size() < headSize || !head.startsWith("SQLite format 3"))
        return false;
    const auto version = qFromBigEndian<qint32>(head.constData() + versionOffset);
    return version > 0 && version < schema.version();
}

bool StoreUpgrade::run(const QString &file, const basix::SqliteSchema &schema, QString *error)
{
    if (!isNeeded(file, schema))
        return true;
    QString problem;
    const QString text =
        QCoreApplication::translate("StoreUpgrade",
                                    "%1: данные переводятся на новую версию программы.\n"
                                    "Прервать можно: тогда файл останется прежним.")
            .arg(schema.title);
    // One statement is finished first: minutes at the very worst, and not to be torn.
    LongWork::run(nullptr, QCoreApplication::applicationName(), text,
                  [&](const LongWork::Step &step) {
                      basix::SqliteSchema watched = schema;
                      watched.progress = [&step](int, int) { return step(0, 0); };
                      basix::SqliteDatabase database;
                      if (!database.open(file, watched))
                          problem = database.lastError();
                      return problem.isEmpty();
                  });
    *error = problem;
    return problem.isEmpty();
}
