#include "workeroptions.h"

#include "billingworker.h"

#include <app/programoptions.h>

#include <QCommandLineOption>

namespace {

constexpr int LARGEST_PREFETCH = 1000;

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

    const ProgramOptions given(
        QStringLiteral("Обработчик биллинга: отвечает рабочим местам и принимает пачки платежей. "
                       "SIGTERM завершает его, ничего не теряя."),
        {bus, database, prefetch}, arguments);
    if (!given.isSet(bus) || !given.isSet(database))
        ProgramOptions::refuse(QStringLiteral("Нужны оба ключа: --bus и --database."));

    WorkerOptions result;
    result.bus = given.value(bus);
    result.database = given.value(database);
    bool ok = false;
    result.prefetch = given.value(prefetch).toInt(&ok);
    if (!ok || result.prefetch < 1 || result.prefetch > LARGEST_PREFETCH)
        ProgramOptions::refuse(QStringLiteral("Ключ --prefetch: нужно целое число от 1 до 1000."));
    return result;
}
