#include "benchrows.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>

namespace {

/// Seconds until a program says that its window can be used; how it comes to its end afterwards is
/// no part of its start. Negative when it did not say so or ended badly.
double secondsToWindow(const char *program, const QStringList &arguments)
{
    QProcess process;
    process.setStandardErrorFile(QProcess::nullDevice());
    QElapsedTimer timer;
    timer.start();
    process.start(QString::fromLocal8Bit(program), arguments);
    const bool told = process.waitForReadyRead();
    const auto nanoseconds = static_cast<double>(timer.nsecsElapsed());
    const bool ended = process.waitForFinished() && process.exitCode() == 0;
    return told && ended ? nanoseconds / 1e9 : -1;
}

void start(benchmark::State &state, const char *program, const QStringList &arguments)
{
    secondsToWindow(program, arguments);
    for (auto _ : state) {
        const double seconds = secondsToWindow(program, arguments);
        if (seconds < 0)
            state.SkipWithError("the program did not come to its end");
        else
            state.SetIterationTime(seconds);
    }
}

void startTerminal(benchmark::State &state, int)
{
    // A folder that exists: what the very first start puts into it is not part of a working day.
    static const QTemporaryDir folder;
    const QStringList arguments{QStringLiteral("--check-start"), QStringLiteral("--data"),
                                folder.filePath(QStringLiteral("data")), QStringLiteral("--plugin"),
                                QString::fromLocal8Bit(SELMAR_PLUGIN_FILE)};
    start(state, SELMAR_TERMINAL_FILE, arguments);
}

void startEmptyWindow(benchmark::State &state, int)
{
    start(state, SELMAR_EMPTY_WINDOW_FILE, {});
}

} // namespace

QVector<BenchRow> startRows()
{
    BenchRow row;
    row.id = QStringLiteral("start");
    row.subject = QStringLiteral("Холодный запуск рабочего места до готового окна");
    row.floorText = QStringLiteral("программа с пустым QMainWindow");
    row.atMost = 3;
    row.unit = BenchRow::Unit::OwnTime;
    row.sizes = {1};
    row.measured = startTerminal;
    row.bare = startEmptyWindow;
    return {row};
}
