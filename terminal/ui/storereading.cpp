#include "storereading.h"

#include <basixcore/sqliteschema.h>

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

namespace {

constexpr qint64 PART = 1024 * 1024;
/// Less is there at once, from any disk and in any order.
constexpr qint64 WORTH_IT = 16 * PART;

QStringList lookedThrough(const QStringList &files, qint64 *bytes)
{
    QStringList result;
    for (const QString &file : files) {
        const qint64 size = QFileInfo(file).size();
        if (size > basix::SqliteSchema().wholeFileLimit)
            continue;
        result.append(file);
        *bytes += size;
    }
    return result;
}

} // namespace

bool StoreReading::run(const QStringList &files, QString *error, const Reader &reader)
{
    qint64 bytes = 0;
    lookedThrough(files, &bytes);
    if (bytes < WORTH_IT)
        return true;
    const auto shown = [](const char *text) {
        return QCoreApplication::translate("StoreReading", text);
    };
    const bool whole = LongWork::run(
        nullptr, shown("Открытие рабочего места"),
        shown("Файлы данных читаются с диска, чтобы проверить, целы ли они."),
        [&files, &reader](const LongWork::Step &step) { return reader(files, step); });
    if (!whole)
        *error = shown("Проверка файлов данных прервана. Данные не изменены. Чтобы работать, "
                       "запустите программу снова.");
    return whole;
}

bool StoreReading::read(const QStringList &files, const LongWork::Step &step)
{
    qint64 total = 0;
    qint64 done = 0;
    const QStringList wanted = lookedThrough(files, &total);
    QByteArray part(int(PART), Qt::Uninitialized);
    for (const QString &name : wanted) {
        QFile file(name);
        if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
            continue;
        for (qint64 got = PART; got == PART;) {
            if (!step(int(done / PART), int(total / PART)))
                return false;
            got = file.read(part.data(), PART);
            done += qMax(got, qint64(0));
        }
    }
    return true;
}
