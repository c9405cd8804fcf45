#include "loadoptions.h"

#include <app/programoptions.h>

#include <QCommandLineOption>
#include <QCoreApplication>
#include <QDir>

namespace {

constexpr int MOST_BOXES = 5000;
constexpr int MOST_WORKERS = 64;
constexpr int MOST_SECONDS = 3600;

QVector<int> numbersOf(const QString &text, const QString &key, int most)
{
    QVector<int> numbers;
    const QStringList parts = text.split(QLatin1Char(','));
    for (const QString &part : parts) {
        bool ok = false;
        const int number = part.toInt(&ok);
        if (!ok || number < 1 || number > most)
            ProgramOptions::refuse(
                QStringLiteral("Ключ %1: нужны целые числа от 1 до %2 через запятую, а не «%3».")
                    .arg(key, QString::number(most), text));
        numbers.append(number);
    }
    return numbers;
}

} // namespace

LoadOptions LoadOptions::parse(const QStringList &arguments)
{
    const QString address = QStringLiteral("адрес");
    const QString numbers = QStringLiteral("числа");
    const QCommandLineOption boxBus(QStringLiteral("bus"),
                                    QStringLiteral("Сервер сообщений, как входит касса."), address);
    const QCommandLineOption workerBus(QStringLiteral("worker-bus"),
                                       QStringLiteral("Он же, как входит обработчик биллинга."),
                                       address);
    const QCommandLineOption boxes(QStringLiteral("boxes"),
                                   QStringLiteral("Сколько касс, через запятую."), numbers,
                                   QStringLiteral("1,10,50,200"));
    const QCommandLineOption workers(QStringLiteral("workers"),
                                     QStringLiteral("Сколько обработчиков, через запятую."),
                                     numbers, QStringLiteral("1,2,4"));
    const QCommandLineOption seconds(QStringLiteral("seconds"),
                                     QStringLiteral("Сколько секунд мерить каждый прогон."),
                                     QStringLiteral("число"), QStringLiteral("10"));
    const QCommandLineOption program(QStringLiteral("worker-program"),
                                     QStringLiteral("Программа обработчика."),
                                     QStringLiteral("файл"),
                                     QDir(QCoreApplication::applicationDirPath())
                                         .filePath(QStringLiteral("selmar-billing-worker")));
    const QCommandLineOption brokerPid(
        QStringLiteral("broker-pid"),
        QStringLiteral(
            "Номер процесса сервера сообщений на этой машине: для его времени и памяти."),
        QStringLiteral("число"), QStringLiteral("0"));
    const QCommandLineOption noRaw(QStringLiteral("no-raw"),
                                   QStringLiteral("Не мерить сервер сообщений сам по себе."));
    const ProgramOptions given(
        QStringLiteral("Нагрузка: много касс без окон, один сервер сообщений, несколько "
                       "обработчиков биллинга."),
        {boxBus, workerBus, boxes, workers, seconds, program, brokerPid, noRaw}, arguments);
    if (!given.isSet(boxBus) || !given.isSet(workerBus))
        ProgramOptions::refuse(QStringLiteral("Нужны оба ключа: --bus и --worker-bus."));

    LoadOptions options;
    options.boxBus = given.value(boxBus);
    options.workerBus = given.value(workerBus);
    options.boxes = numbersOf(given.value(boxes), QStringLiteral("--boxes"), MOST_BOXES);
    options.workers = numbersOf(given.value(workers), QStringLiteral("--workers"), MOST_WORKERS);
    options.seconds =
        numbersOf(given.value(seconds), QStringLiteral("--seconds"), MOST_SECONDS).constFirst();
    options.workerProgram = given.value(program);
    options.brokerPid = given.value(brokerPid).toLongLong();
    options.raw = !given.isSet(noRaw);
    return options;
}
