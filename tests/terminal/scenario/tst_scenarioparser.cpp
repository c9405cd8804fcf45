#include <devices/devicestates.h>
#include <scenario/roubles.h>
#include <scenario/scenarioparser.h>

#include <QTest>

using Verb = ScenarioCommand::Verb;

class TestScenarioParser : public QObject
{
    Q_OBJECT

private slots:
    void goodLines_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<int>("verb");
        QTest::addColumn<QStringList>("arguments");
        const auto row = [](const char *name, const QString &line, Verb verb,
                            const QStringList &arguments) {
            QTest::newRow(name) << line << int(verb) << arguments;
        };
        row("quoted text with a comment sign", QStringLiteral("сценарий \"а # б\" # примечание"),
            Verb::Title, {QStringLiteral("а # б")});
        row("Russian quotation marks", QStringLiteral("сообщение «ККТ не доступна»"), Verb::Message,
            {QStringLiteral("ККТ не доступна")});
        row("colon", QStringLiteral("касса: нет бумаги"), Verb::State,
            {QStringLiteral("register"), QStringLiteral("paper-out"), QString()});
        row("once", QStringLiteral("касса нет бумаги один раз"), Verb::State,
            {QStringLiteral("register"), QStringLiteral("paper-out"), QStringLiteral("once")});
        row("longer state of the same beginning", QStringLiteral("карта нет связи после списания"),
            Verb::State,
            {QStringLiteral("card"), QStringLiteral("connection-lost-after"), QString()});
        row("capitals", QStringLiteral("Ввести 7001000101 в leAccount"), Verb::Fill,
            {QStringLiteral("7001000101"), QStringLiteral("leAccount")});
        row("sum with a comma", QStringLiteral("оплатить картой 700,00"), Verb::CardAmount,
            {QStringLiteral("700,00")});
        row("sum with a point", QStringLiteral("проверить картой 700.5"), Verb::CheckSum,
            {QStringLiteral("card"), QStringLiteral("700.5")});
        row("carriage return", QStringLiteral("далее\r"), Verb::WizardButton,
            {QStringLiteral("1")});
    }

    void goodLines()
    {
        QFETCH(QString, line);
        QFETCH(QStringList, arguments);
        ScenarioParser parser;
        QVERIFY2(parser.parse(line.toUtf8()), qPrintable(parser.error()));
        QCOMPARE(parser.commands().size(), 1);
        QTEST(int(parser.commands().constFirst().verb), "verb");
        QCOMPARE(parser.commands().constFirst().arguments, arguments);
    }

    void everyStateHasItsPhrase()
    {
        for (const Device device : DeviceStates::devices()) {
            for (const DeviceState &state : DeviceStates::of(device)) {
                const QString line = DeviceStates::word(device) + QLatin1Char(' ') + state.phrase;
                ScenarioParser parser;
                QVERIFY2(parser.parse(line.toUtf8()), qPrintable(line));
                QCOMPARE(parser.commands().constFirst().verb, Verb::State);
                QCOMPARE(parser.commands().constFirst().arguments,
                         QStringList({DeviceStates::option(device), state.key, QString()}));
            }
        }
    }

    void badLines_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<int>("line");
        QTest::addColumn<int>("column");
        QTest::addColumn<QString>("error");
        QTest::newRow("misspelled verb")
            << QByteArray("далее\nзаверщить") << 2 << 1
            << QStringLiteral("непонятное слово «заверщить»; возможно, «завершить»");
        QTest::newRow("misspelled condition")
            << QByteArray("касса нет бумагт") << 1 << 11
            << QStringLiteral("непонятное слово «бумагт»; возможно, «бумаги»");
        QTest::newRow("not a number")
            << QByteArray("поставщик второй") << 1 << 11
            << QStringLiteral("непонятное слово «второй»; ожидалось: целое число");
        QTest::newRow("three decimals")
            << QByteArray("оплатить картой 1,005") << 1 << 17
            << QStringLiteral("непонятное слово «1,005»; ожидалось: сумма вида 700,50");
        QTest::newRow("unfinished")
            << QByteArray("ввести 7 в") << 1 << 11
            << QStringLiteral("строка не закончена; ожидалось: имя поля или кнопки");
        QTest::newRow("one word too many") << QByteArray("закрыть окно сейчас") << 1 << 14
                                           << QStringLiteral("лишнее слово «сейчас»");
        QTest::newRow("open quotation mark") << QByteArray("сообщение «ККТ") << 1 << 11
                                             << QStringLiteral("кавычка открыта и не закрыта");
        QTest::newRow("empty file") << QByteArray("# ничего\n") << 0 << 0
                                    << QStringLiteral("в сценарии нет ни одного шага");
        QTest::newRow("another encoding")
            << QByteArray("\xe4\xe0\xeb\xe5\xe5") << 0 << 0
            << QStringLiteral("текст не в кодировке UTF-8, сохраните его в ней");
    }

    void badLines()
    {
        QFETCH(QByteArray, text);
        ScenarioParser parser;
        QVERIFY(!parser.parse(text));
        QTEST(parser.error(), "error");
        QTEST(parser.line(), "line");
        QTEST(parser.column(), "column");
    }

    void missingFileIsRefused()
    {
        ScenarioParser parser;
        QVERIFY(!parser.parseFile(QStringLiteral("/nonexistent/a.scenario")));
        QVERIFY(parser.error().startsWith(QStringLiteral("файл не открылся")));
    }

    void roubles()
    {
        QCOMPARE(Roubles::kopecks(QStringLiteral("700,5")), qint64(70050));
        QCOMPARE(Roubles::kopecks(QStringLiteral("0.07")), qint64(7));
        QCOMPARE(Roubles::kopecks(QStringLiteral("12")), qint64(1200));
        QCOMPARE(Roubles::text(70005), QStringLiteral("700,05"));
    }
};

QTEST_GUILESS_MAIN(TestScenarioParser)
#include "tst_scenarioparser.moc"
