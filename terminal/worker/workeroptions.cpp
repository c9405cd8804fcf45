#include "workeroptions.h"

#include "billingworker.h"

#include <app/optionvalues.h>

#include <QCommandLineParser>

#include <cstdio>
#include <cstdlib>

namespace {

constexpr int LARGEST_PREFETCH = 1000;

[[noreturn]] void refuse(const QString &text)
{
    std::fprintf(stderr, "%s\nСправка: selmar-billing-worker --help\n", qUtf8Printable(text));
    std::exit(2);
}

} // namespace

WorkerOptions WorkerOptions::parse(const QStringList &arguments)
{
    const QCommandLineOption bus(
        QStringLiteral("bus"),
        QStringLiteral("Сервер сообщений: amqps://имя@сервер:порт/раздел?cacert=ФАЙЛ. Пароль лучше "
                       "держать в переменной SELMAR_BUS_PASSWORD или в файле (passwordfile=ФАЙЛ)."),
        QStringLiteral("адрес"));
    const QCommandLineOption database(
        QStringLiteral("database"),
        QStringLiteral("Файл базы биллинга, общий для всех обработчиков; если его нет, создаётся с "
                       "образцами счетов."),
        QStringLiteral("файл"));
    const QCommandLineOption prefetch(
        QStringLiteral("prefetch"),
        QStringLiteral("Сколько сообщений каждой очереди брать вперёд, от 1 до 1000."),
        QStringLiteral("число"), QString::number(BillingWorker::PREFETCH));

    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Обработчик биллинга: отвечает рабочим местам и принимает пачки платежей. "
                       "SIGTERM завершает его, ничего не теряя."));
    const QCommandLineOption help = parser.addHelpOption();
    const QCommandLineOption version = parser.addVersionOption();
    const QList<QCommandLineOption> options{bus, database, prefetch};
    parser.addOptions(options);
    const QString missing = missingOptionValue(options + QList{help, version}, arguments);
    if (!missing.isEmpty())
        refuse(missing);
    if (!parser.parse(arguments))
        refuse(parser.errorText());
    if (parser.isSet(help))
        parser.showHelp();
    if (parser.isSet(version))
        parser.showVersion();
    if (!parser.positionalArguments().isEmpty())
        refuse(
            QStringLiteral("Лишнее слово: «%1».").arg(parser.positionalArguments().constFirst()));
    if (!parser.isSet(bus) || !parser.isSet(database))
        refuse(QStringLiteral("Нужны оба ключа: --bus и --database."));

    WorkerOptions result;
    result.bus = parser.value(bus);
    result.database = parser.value(database);
    bool ok = false;
    result.prefetch = parser.value(prefetch).toInt(&ok);
    if (!ok || result.prefetch < 1 || result.prefetch > LARGEST_PREFETCH)
        refuse(QStringLiteral("Ключ --prefetch: нужно целое число от 1 до 1000."));
    return result;
}
