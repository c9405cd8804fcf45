#include "loadoptions.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>

#include <cstdio>
#include <cstdlib>

namespace {

constexpr int MOST_BOXES = 5000;
constexpr int MOST_WORKERS = 64;
constexpr int MOST_SECONDS = 3600;

[[noreturn]] void refuse(const QString &text)
{
    std::fprintf(stderr, "%s\nСправка: selmar-load --help\n", qUtf8Printable(text));
    std::exit(2);
}

QVector<int> numbersOf(const QString &text, const QString &key, int most)
{
    QVector<int> numbers;
    const QStringList parts = text.split(QLatin1Char(','));
    for (const QString &part : parts) {
        bool ok = false;
        const int number = part.toInt(&ok);
        if (!ok || number < 1 || number > most)
            refuse(QStringLiteral("Ключ %1: нужны целые числа от 1 до %2 через запятую, а не «%3».")
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
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Нагрузка: много касс без окон, один сервер сообщений, несколько "
                       "обработчиков биллинга."));
    const QCommandLineOption help = parser.addHelpOption();
    parser.addOptions({boxBus, workerBus, boxes, workers, seconds, program, brokerPid, noRaw});
    if (!parser.parse(arguments))
        refuse(parser.errorText());
    if (parser.isSet(help))
        parser.showHelp();
    if (!parser.isSet(boxBus) || !parser.isSet(workerBus))
        refuse(QStringLiteral("Нужны оба ключа: --bus и --worker-bus."));

    LoadOptions options;
    options.boxBus = parser.value(boxBus);
    options.workerBus = parser.value(workerBus);
    options.boxes = numbersOf(parser.value(boxes), QStringLiteral("--boxes"), MOST_BOXES);
    options.workers = numbersOf(parser.value(workers), QStringLiteral("--workers"), MOST_WORKERS);
    options.seconds =
        numbersOf(parser.value(seconds), QStringLiteral("--seconds"), MOST_SECONDS).constFirst();
    options.workerProgram = parser.value(program);
    options.brokerPid = parser.value(brokerPid).toLongLong();
    options.raw = !parser.isSet(noRaw);
    return options;
}
