#include "storeupgrade.h"

#include <basixcore/sqlitedatabase.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <QFile>
#include <QProgressDialog>
#include <QPushButton>
#include <QThread>
#include <QtEndian>

#include <atomic>
#include <memory>

namespace {

constexpr int quiet = 500; // ms: what is done by then needs no window
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
    QProgressDialog window;
    window.setObjectName(QStringLiteral("StoreUpgrade"));
    window.setWindowTitle(QCoreApplication::applicationName());
    window.setLabelText(
        QCoreApplication::translate("StoreUpgrade",
                                    "%1: данные переводятся на новую версию программы.\n"
                                    "Прервать можно: тогда файл останется прежним.")
            .arg(schema.title));
    auto *stop = new QPushButton(QCoreApplication::translate("StoreUpgrade", "Прервать"));
    window.setCancelButton(stop); // takes it over
    window.setWindowModality(Qt::ApplicationModal);
    window.setAutoReset(false);
    window.setMinimumDuration(quiet);
    window.setRange(0, 0);

    std::atomic_bool stopped(false);
    basix::SqliteSchema watched = schema;
    watched.progress = [&stopped](int, int) { return !stopped; };
    QString problem;
    const std::unique_ptr<QThread> worker(QThread::create([&] {
        basix::SqliteDatabase database;
        if (!database.open(file, watched))
            problem = database.lastError();
    }));
    QEventLoop loop;
    QObject::connect(worker.get(), &QThread::finished, &loop, &QEventLoop::quit);
    QObject::connect(&window, &QProgressDialog::canceled, &window, [&] {
        stopped = true;
        // One statement is finished first: minutes at the very worst, and not to be torn.
        stop->setEnabled(false);
        window.setLabelText(QCoreApplication::translate("StoreUpgrade", "Прерывается…"));
        window.show();
    });
    worker->start();
    loop.exec();
    worker->wait();
    *error = problem;
    return problem.isEmpty();
}
