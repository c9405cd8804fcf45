#include "commandline.h"

#include <app/programoptions.h>

#include <QCommandLineOption>

#include <optional>

namespace {

CommandLine::Demo demoOf(const QString &name)
{
    if (name == QLatin1String("individual"))
        return CommandLine::Demo::Individual;
    if (name == QLatin1String("legal"))
        return CommandLine::Demo::Legal;
    ProgramOptions::refuse(
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

QVector<QPair<Device, QString>> statesIn(const ProgramOptions &given)
{
    QVector<QPair<Device, QString>> states;
    for (const Device device : DeviceStates::devices()) {
        const QString option = DeviceStates::option(device);
        const QString key = given.value(option);
        if (!given.isSet(option))
            continue;
        if (!DeviceStates::find(device, key))
            ProgramOptions::refuse(
                QStringLiteral("Состояния «%1» у ключа --%2 нет. Есть %3.")
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

    QList<QCommandLineOption> options{data, plugin, bus};
    for (const Device device : DeviceStates::devices())
        options.append(stateOption(device));
    options +=
        {demo, scenario, out, visible, slow, checkStart, bill, document, encoding, file, readCode};
    const ProgramOptions given(
        QStringLiteral(
            "Образцовое рабочее место кассира: принимает платежи через подключаемый модуль."),
        options, arguments);

    CommandLine result;
    result.dataFolder = given.value(data);
    result.pluginFile = given.value(plugin);
    result.busAddress = given.value(bus);
    result.deviceStates = statesIn(given);
    if (given.isSet(bus) && given.isSet(DeviceStates::option(Device::Billing)))
        ProgramOptions::refuse(
            QStringLiteral("За сервером сообщений биллинг не здешний, поэтому ключ --bus с "
                           "--billing не употребляется."));
    if (given.isSet(demo))
        result.demo = demoOf(given.value(demo));
    result.scenarioFile = given.value(scenario);
    if (given.isSet(bus) && given.isSet(scenario))
        ProgramOptions::refuse(
            QStringLiteral("Сценарий управляет биллингом внутри программы, поэтому ключ --bus "
                           "с --scenario не употребляется."));
    result.outFolder = given.value(out);
    result.visible = given.isSet(visible);
    result.checkStart = given.isSet(checkStart);
    bool ok = false;
    result.pause = given.value(slow).toInt(&ok);
    if (!ok || result.pause < 0 || result.pause > 60000)
        ProgramOptions::refuse(
            QStringLiteral("Пауза «%1» не годится: нужно целое число миллисекунд от 0 до 60000.")
                .arg(given.value(slow)));
    if ((given.isSet(out) || given.isSet(slow) || result.visible) && result.demo == Demo::None
        && result.scenarioFile.isEmpty())
        ProgramOptions::refuse(
            QStringLiteral("Ключи --out, --slow и --visible имеют смысл только вместе с --demo "
                           "или --scenario."));

    result.billAccount = given.value(bill);
    result.billDocument = given.value(document);
    result.billFile = given.value(file);
    result.codePicture = given.value(readCode);
    const std::optional<CodeEncoding> known = CodeEncodings::fromName(given.value(encoding));
    if (!known)
        ProgramOptions::refuse(
            QStringLiteral("Кодировки «%1» у кода не бывает. Есть utf-8, windows-1251 и koi8-r.")
                .arg(given.value(encoding)));
    result.billEncoding = *known;
    if (given.isSet(bill) != given.isSet(file))
        ProgramOptions::refuse(
            QStringLiteral("Ключи --bill и --file нужны вместе: чья квитанция и в какой файл."));
    if ((given.isSet(document) || given.isSet(encoding)) && !given.isSet(bill))
        ProgramOptions::refuse(
            QStringLiteral("Ключи --document и --encoding имеют смысл только вместе с --bill."));
    const int tasks = int(given.isSet(demo)) + int(given.isSet(scenario)) + int(given.isSet(bill))
        + int(given.isSet(readCode)) + int(result.checkStart);
    if (tasks > 1)
        ProgramOptions::refuse(
            QStringLiteral("Из ключей --demo, --scenario, --check-start, --bill и --read-code "
                           "употребляется один за раз."));
    return result;
}
