#include "benchrows.h"
#include "benchrun.h"
#include "offscreen.h"
#include "ratiotable.h"
#include "rowprocess.h"

#include <QCommandLineParser>
#include <QFile>

#include <algorithm>
#include <cstdio>

namespace {

enum ExitCode { Ok = 0, RowMissing = 1, NotWritten = 2 };

void addOptions(QCommandLineParser &parser)
{
    parser.setApplicationDescription(
        QStringLiteral("Измеряет каждую строку таблицы рядом с её основой в одном прогоне."));
    parser.addHelpOption();
    parser.addOptions({
        {QStringLiteral("json"), QStringLiteral("Записать отношения в файл."),
         QStringLiteral("файл")},
        {QStringLiteral("rows"), QStringLiteral("Только строки, чьё имя начинается так."),
         QStringLiteral("имя")},
        {QStringLiteral("largest"), QStringLiteral("Без размеров больше этого."),
         QStringLiteral("число"), QStringLiteral("1000000")},
    });
    BenchRun::addOptions(parser);
    RowProcess::addOptions(parser);
}

} // namespace

int main(int argc, char *argv[])
{
    const Offscreen application(argc, argv);

    QCommandLineParser parser;
    addOptions(parser);
    parser.process(*qApp);
    const BenchRun run = BenchRun::fromOptions(parser);
    if (RowProcess::isMeant(parser))
        return RowProcess::work(parser, run);

    QVector<BenchRow> rows;
    const QVector<BenchRow> all = allBenchRows();
    for (const BenchRow &known : all) {
        if (!known.id.startsWith(parser.value(QStringLiteral("rows"))))
            continue;
        BenchRow row = known;
        const int largest = parser.value(QStringLiteral("largest")).toInt();
        row.sizes.erase(std::remove_if(row.sizes.begin(), row.sizes.end(),
                                       [largest](int size) { return size > largest; }),
                        row.sizes.end());
        if (run.once)
            row.sizes.resize(1);
        rows.append(row);
    }
    if (rows.isEmpty()) {
        std::fprintf(stderr, "Нет строки, чьё имя начинается с «%s».\n",
                     qUtf8Printable(parser.value(QStringLiteral("rows"))));
        return RowMissing;
    }
    RatioTable table(rows);
    RowProcess(QCoreApplication::applicationFilePath()).run(rows, run, table);
    std::fputs(qUtf8Printable(table.toText()), stdout);
    const QString json = parser.value(QStringLiteral("json"));
    if (!json.isEmpty()) {
        QFile file(json);
        if (!file.open(QIODevice::WriteOnly) || file.write(table.toJson()) < 0) {
            std::fprintf(stderr, "%s: %s\n", qUtf8Printable(json),
                         qUtf8Printable(file.errorString()));
            return NotWritten;
        }
    }
    const QStringList missing = table.missing();
    for (const QString &line : missing)
        std::fprintf(stderr, "Не измерено: %s\n", qUtf8Printable(line));
    return missing.isEmpty() ? Ok : RowMissing;
}
