#include "benchrun.h"

#include "ratiotable.h"
#include "support/atend.h"
#include "support/quietlog.h"

#include <QCommandLineParser>

namespace {

constexpr double secondsPerRepetition = 0.05;
const QLatin1String REPETITIONS("repetitions");
const QLatin1String SMOKE("smoke");

void registerSide(const BenchRow &row, int size, bool isFloor, const BenchRun &run)
{
    const BenchRow::Body body = isFloor ? row.bare : row.measured;
    auto *registered =
        benchmark::RegisterBenchmark(RatioTable::name(row.id, size, isFloor).c_str(),
                                     [body, size](benchmark::State &state) { body(state, size); });
    if (row.unit == BenchRow::Unit::RealTime)
        registered->UseRealTime();
    else if (row.unit == BenchRow::Unit::OwnTime)
        registered->UseManualTime();
    if (run.once || row.unit == BenchRow::Unit::Bytes)
        registered->Iterations(1)->Repetitions(1);
    else
        registered->MinTime(secondsPerRepetition)->Repetitions(run.repetitions);
}

} // namespace

void BenchRun::run(const BenchRow &row, RatioTable &table) const
{
    for (const int size : row.sizes) {
        for (const bool isFloor : {true, false})
            registerSide(row, size, isFloor, *this);
    }
    // Floor and subject take turns: a minute in which the machine is busy hits both.
    QByteArray name("bench");
    QByteArray interleaving("--benchmark_enable_random_interleaving=true");
    char *arguments[] = {name.data(), interleaving.data(), nullptr};
    int count = 2;
    benchmark::Initialize(&count, arguments);

    const QuietLog log;
    benchmark::RunSpecifiedBenchmarks(&table);
    AtEnd::run();
}

void BenchRun::addOptions(QCommandLineParser &parser)
{
    parser.addOptions(
        {{REPETITIONS, QStringLiteral("Сколько раз в каждом проходе; считается лучшее время."),
          QStringLiteral("число"), QString::number(BenchRun().repetitions)},
         {SMOKE, QStringLiteral("Один проход наименьших размеров: все ли строки на месте.")}});
}

BenchRun BenchRun::fromOptions(const QCommandLineParser &parser)
{
    BenchRun run;
    run.repetitions = qMax(1, parser.value(REPETITIONS).toInt());
    run.once = parser.isSet(SMOKE);
    return run;
}

QStringList BenchRun::toArguments() const
{
    QStringList arguments{QLatin1String("--") + REPETITIONS, QString::number(repetitions)};
    if (once)
        arguments.append(QLatin1String("--") + SMOKE);
    return arguments;
}
