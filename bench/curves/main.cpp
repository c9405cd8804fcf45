#include "benchrows.h"
#include "benchrun.h"
#include "growthchart.h"
#include "offscreen.h"
#include "ratiotable.h"
#include "rowprocess.h"

#include <QCommandLineParser>
#include <QDir>

#include <algorithm>
#include <cstdio>

namespace {

enum ExitCode { Ok = 0, NotWritten = 2 };

constexpr int repetitions = 2;

/// The rows whose work has a size, each from one element upwards.
QVector<BenchRow> growingRows(const QString &prefix, int largest)
{
    QVector<BenchRow> growing;
    const QVector<BenchRow> rows = allBenchRows();
    for (const BenchRow &known : rows) {
        if (known.sizes.size() < 2 || known.unit != BenchRow::Unit::CpuTime
            || !known.id.startsWith(prefix))
            continue;
        const int last = std::min(largest, std::max(100000, known.sizes.last()));
        BenchRow row = known;
        row.sizes.clear();
        for (int size = 1; size <= last; size *= 10)
            row.sizes.append(size);
        growing.append(row);
    }
    return growing;
}

GrowthChart chartOf(const BenchRow &row, const RatioTable &table)
{
    constexpr double nanosecondsPerMicrosecond = 1000;
    GrowthChart chart;
    chart.title = row.subject;
    chart.sizeText = row.sizeText;
    chart.floorText = QStringLiteral("основа: ") + row.floorText;
    const QVector<RatioTable::Line> lines = table.lines();
    for (const RatioTable::Line &line : lines) {
        if (line.row->id != row.id || !line.isComplete())
            continue;
        chart.measured.append({double(line.size), line.measured / nanosecondsPerMicrosecond});
        chart.floor.append({double(line.size), line.bare / nanosecondsPerMicrosecond});
    }
    return chart;
}

} // namespace

int main(int argc, char *argv[])
{
    const Offscreen application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Рисует, как время растёт с размером: от одного элемента до ста тысяч."));
    parser.addHelpOption();
    parser.addPositionalArgument(QStringLiteral("папка"),
                                 QStringLiteral("Куда положить картинки."));
    parser.addOptions(
        {{QStringLiteral("rows"), QStringLiteral("Только строки с таким началом имени."),
          QStringLiteral("имя")},
         {QStringLiteral("largest"), QStringLiteral("Без размеров больше этого."),
          QStringLiteral("число"), QStringLiteral("1000000")}});
    parser.process(*qApp);
    if (parser.positionalArguments().size() != 1)
        parser.showHelp(NotWritten);
    const QDir folder(parser.positionalArguments().constFirst());
    folder.mkpath(QStringLiteral("."));

    const QVector<BenchRow> rows = growingRows(parser.value(QStringLiteral("rows")),
                                               parser.value(QStringLiteral("largest")).toInt());
    RatioTable table(rows);
    RowProcess(QString::fromLocal8Bit(SELMAR_BENCH_FILE)).run(rows, {repetitions, false}, table);
    for (const BenchRow &row : rows) {
        const QString file = folder.filePath(row.id + QStringLiteral(".png"));
        const GrowthChart chart = chartOf(row, table);
        if (chart.measured.isEmpty() || !chart.draw().save(file)) {
            std::fprintf(stderr, "%s\n", qUtf8Printable(file));
            return NotWritten;
        }
    }
    return Ok;
}
