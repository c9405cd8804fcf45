#include "rowprocess.h"

#include "benchrows.h"
#include "benchrun.h"
#include "ratiotable.h"
#include "support/benchfolder.h"

#include <QCommandLineParser>
#include <QProcess>

#include <algorithm>
#include <cstdio>

namespace {

enum ExitCode { Ok = 0, NoSuchRow = 1, NotWritten = 2 };

constexpr int passes = 2;

const QLatin1String ROW("row");
const QLatin1String SIZES("sizes");
const QLatin1String FILES("files");

QString option(QLatin1String name)
{
    return QLatin1String("--") + name;
}

QString shown(const QVector<int> &numbers)
{
    QStringList texts;
    for (const int number : numbers)
        texts.append(QString::number(number));
    return texts.join(QLatin1Char(','));
}

} // namespace

RowProcess::RowProcess(const QString &program) : m_program(program) {}

void RowProcess::addOptions(QCommandLineParser &parser)
{
    for (const QLatin1String name : {ROW, SIZES, FILES}) {
        QCommandLineOption hidden(name, QString(), name);
        hidden.setFlags(QCommandLineOption::HiddenFromHelp);
        parser.addOption(hidden);
    }
}

bool RowProcess::isMeant(const QCommandLineParser &parser)
{
    return parser.isSet(ROW);
}

int RowProcess::work(const QCommandLineParser &parser, const BenchRun &run)
{
    const QVector<BenchRow> all = allBenchRows();
    const auto known = std::find_if(all.cbegin(), all.cend(), [&parser](const BenchRow &candidate) {
        return candidate.id == parser.value(ROW);
    });
    if (known == all.cend())
        return NoSuchRow;
    BenchRow wanted = *known;
    wanted.sizes.clear();
    const QStringList texts = parser.value(SIZES).split(QLatin1Char(','));
    for (const QString &text : texts)
        wanted.sizes.append(text.toInt());
    BenchFolder::use(parser.value(FILES));
    RatioTable table({wanted});
    run.run(wanted, table);
    const QStringList missing = table.missing();
    for (const QString &line : missing)
        std::fprintf(stderr, "%s\n", qUtf8Printable(line));
    const QByteArray json = table.toJson();
    return std::fwrite(json.constData(), 1, json.size(), stdout) == size_t(json.size())
        ? Ok
        : NotWritten;
}

void RowProcess::run(const QVector<BenchRow> &rows, const BenchRun &run, RatioTable &table) const
{
    for (int pass = 0; pass < (run.once ? 1 : passes); ++pass) {
        for (const BenchRow &known : rows) {
            if (!known.sizes.isEmpty())
                table.addJson(measure(known, run));
        }
    }
}

QByteArray RowProcess::measure(const BenchRow &known, const BenchRun &run) const
{
    const QStringList arguments{option(ROW),        known.id,      option(SIZES),
                                shown(known.sizes), option(FILES), m_files.path()};
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(m_program, arguments + run.toArguments());
    process.waitForFinished(-1);
    return process.readAllStandardOutput();
}
