#include "commandline.h"

#include <app/optionvalues.h>

#include <QCommandLineParser>
#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>
#include <optional>

namespace {

[[noreturn]] void refuse(const QString &text)
{
    std::fprintf(stderr, "%s\nСправка: selmar-terminal --help\n", qUtf8Printable(text));
    std::exit(2);
}

CommandLine::Demo demoOf(const QString &name)
{
    if (name == QLatin1String("individual"))
        return CommandLine::Demo::Individual;
    if (name == QLatin1String("legal"))
        return CommandLine::Demo::Legal;
    refuse(
        QStringLiteral(
            "Показа «%1» нет. Есть два: individual (физическое лицо) и legal (юридическое лицо).")
            .arg(name));
}

QCommandLineOption stateOption(Device device)
{
    return QCommandLineOption(DeviceStates::option(device),
                              QStringLiteral("%1, состояние с начала работы: %2.")
                                  .arg(DeviceStates::title(device),
                                       DeviceStates::keys(device).join(QStringLiteral(", "))),
                              QStringLiteral("состояние"));
}

QVector<QPair<Device, QString>> statesIn(const QCommandLineParser &parser)
{
    QVector<QPair<Device, QString>> states;
    for (const Device device : DeviceStates::devices()) {
        const QString option = DeviceStates::option(device);
        const QString key = parser.value(option);
        if (!parser.isSet(option))
            continue;
        if (!DeviceStates::find(device, key))
            refuse(QStringLiteral("Состояния «%1» у ключа --%2 нет. Есть %3.")
                       .arg(key, option, DeviceStates::keys(device).join(QStringLiteral(", "))));
        states.append({device, key});
    }
    return states;
}

} // namespace

CommandLine CommandLine::parse(const QStringList &arguments)
{
    const QCommandLineOption data(QStringLiteral("data"),
                                  QStringLiteral("Папка данных рабочего места; без ключа — папка "
                                                 "данных пользователя, у показа — временная."),
                                  QStringLiteral("папка"));
    const QCommandLineOption plugin(
        QStringLiteral("plugin"),
        QStringLiteral(
            "Файл модуля; без ключа — модуль, собранный или установленный вместе с программой."),
        QStringLiteral("файл"));
    const QCommandLineOption bus(
        QStringLiteral("bus"),
        QStringLiteral("Биллинг за сервером сообщений: "
                       "amqps://имя@сервер:порт/раздел?cacert=ФАЙЛ&passwordfile=ФАЙЛ. Пароль — в "
                       "файле или в переменной SELMAR_BUS_PASSWORD. Без ключа биллинг внутри "
                       "программы."),
        QStringLiteral("адрес"));
    const QCommandLineOption demo(
        QStringLiteral("demo"),
        QStringLiteral("Провести целый платёж самой и выйти: individual — физическое лицо, legal — "
                       "юридическое. "
                       "Код выхода 0, только если все суммы и счётчики сошлись."),
        QStringLiteral("кто"));
    const QCommandLineOption scenario(
        QStringLiteral("scenario"),
        QStringLiteral("Провести сценарий из файла и выйти. Код выхода 0, только если выполнены "
                       "все шаги и проверки и суммы сошлись; 2 — ошибка в самом файле."),
        QStringLiteral("файл"));
    const QCommandLineOption out(
        QStringLiteral("out"), QStringLiteral("Куда показ складывает картинки, чек, пачку и итог."),
        QStringLiteral("папка"));
    const QCommandLineOption visible(QStringLiteral("visible"),
                                     QStringLiteral("Показ на экране, а не за кадром."));
    const QCommandLineOption slow(QStringLiteral("slow"),
                                  QStringLiteral("Пауза между шагами показа."),
                                  QStringLiteral("мс"), QStringLiteral("0"));

    const QCommandLineOption checkStart(
        QStringLiteral("check-start"),
        QStringLiteral("Открыть рабочее место за кадром и выйти, как только им можно "
                       "пользоваться. Код выхода 0, только если открылось всё, и модуль тоже."));
    const QCommandLineOption bill(
        QStringLiteral("bill"),
        QStringLiteral("Записать образец квитанции этого счёта или договора в файл ключа --file и "
                       "выйти."),
        QStringLiteral("счёт"));
    const QCommandLineOption document(
        QStringLiteral("document"),
        QStringLiteral("Документ договора для --bill; без ключа — первый неоплаченный."),
        QStringLiteral("номер"));
    const QCommandLineOption encoding(
        QStringLiteral("encoding"),
        QStringLiteral("Кодировка кода для --bill: utf-8, windows-1251 или koi8-r."),
        QStringLiteral("имя"), CodeEncodings::name(CodeEncoding::Utf8));
    const QCommandLineOption file(QStringLiteral("file"),
                                  QStringLiteral("Файл квитанции для --bill: имя.pdf или имя.png."),
                                  QStringLiteral("файл"));
    const QCommandLineOption readCode(
        QStringLiteral("read-code"),
        QStringLiteral("Напечатать текст кода с картинки, как его ввёл бы сканер, и выйти."),
        QStringLiteral("картинка"));

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "Образцовое рабочее место кассира: принимает платежи через подключаемый модуль."));
    const QCommandLineOption help = parser.addHelpOption();
    const QCommandLineOption version = parser.addVersionOption();
    QList<QCommandLineOption> options{data, plugin, bus};
    for (const Device device : DeviceStates::devices())
        options.append(stateOption(device));
    options +=
        {demo, scenario, out, visible, slow, checkStart, bill, document, encoding, file, readCode};
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

    CommandLine result;
    result.dataFolder = parser.value(data);
    result.pluginFile = parser.value(plugin);
    result.busAddress = parser.value(bus);
    result.deviceStates = statesIn(parser);
    if (parser.isSet(bus) && parser.isSet(DeviceStates::option(Device::Billing)))
        refuse(QStringLiteral("За сервером сообщений биллинг не здешний, поэтому ключ --bus с "
                              "--billing не употребляется."));
    if (parser.isSet(demo))
        result.demo = demoOf(parser.value(demo));
    result.scenarioFile = parser.value(scenario);
    if (parser.isSet(bus) && parser.isSet(scenario))
        refuse(QStringLiteral("Сценарий управляет биллингом внутри программы, поэтому ключ --bus "
                              "с --scenario не употребляется."));
    result.outFolder = parser.value(out);
    result.visible = parser.isSet(visible);
    result.checkStart = parser.isSet(checkStart);
    bool ok = false;
    result.pause = parser.value(slow).toInt(&ok);
    if (!ok || result.pause < 0 || result.pause > 60000)
        refuse(QStringLiteral("Пауза «%1» не годится: нужно целое число миллисекунд от 0 до 60000.")
                   .arg(parser.value(slow)));
    if ((parser.isSet(out) || parser.isSet(slow) || result.visible) && result.demo == Demo::None
        && result.scenarioFile.isEmpty())
        refuse(QStringLiteral("Ключи --out, --slow и --visible имеют смысл только вместе с --demo "
                              "или --scenario."));

    result.billAccount = parser.value(bill);
    result.billDocument = parser.value(document);
    result.billFile = parser.value(file);
    result.codePicture = parser.value(readCode);
    const std::optional<CodeEncoding> known = CodeEncodings::fromName(parser.value(encoding));
    if (!known)
        refuse(QStringLiteral("Кодировки «%1» у кода не бывает. Есть utf-8, windows-1251 и koi8-r.")
                   .arg(parser.value(encoding)));
    result.billEncoding = *known;
    if (parser.isSet(bill) != parser.isSet(file))
        refuse(QStringLiteral("Ключи --bill и --file нужны вместе: чья квитанция и в какой файл."));
    if ((parser.isSet(document) || parser.isSet(encoding)) && !parser.isSet(bill))
        refuse(QStringLiteral("Ключи --document и --encoding имеют смысл только вместе с --bill."));
    const int tasks = int(parser.isSet(demo)) + int(parser.isSet(scenario))
        + int(parser.isSet(bill)) + int(parser.isSet(readCode)) + int(result.checkStart);
    if (tasks > 1)
        refuse(QStringLiteral("Из ключей --demo, --scenario, --check-start, --bill и --read-code "
                              "употребляется один за раз."));
    return result;
}
