#include "benchrows.h"

#include <QProcess>
#include <QTemporaryDir>

namespace {

/// Runs a program to its end; it shows its window and goes.
void run(benchmark::State &state, const char *program, const QStringList &arguments)
{
    QProcess process;
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(QString::fromLocal8Bit(program), arguments);
    if (!process.waitForFinished() || process.exitCode() != 0)
        state.SkipWithError("the program did not come to its end");
}

void startTerminal(benchmark::State &state, int)
{
    // A folder that exists: what the very first start puts into it is not part of a working day.
    static const QTemporaryDir folder;
    const QStringList arguments{QStringLiteral("--check-start"), QStringLiteral("--data"),
                                folder.filePath(QStringLiteral("data")), QStringLiteral("--plugin"),
                                QString::fromLocal8Bit(SELMAR_PLUGIN_FILE)};
    run(state, SELMAR_TERMINAL_FILE, arguments);
    for (auto _ : state)
        run(state, SELMAR_TERMINAL_FILE, arguments);
}

void startEmptyWindow(benchmark::State &state, int)
{
    run(state, SELMAR_EMPTY_WINDOW_FILE, {});
    for (auto _ : state)
        run(state, SELMAR_EMPTY_WINDOW_FILE, {});
}

} // namespace

QVector<BenchRow> startRows()
{
    BenchRow row;
    row.id = QStringLiteral("start");
    row.subject = QStringLiteral("Холодный запуск рабочего места до готового окна");
    row.floorText = QStringLiteral("программа с пустым QMainWindow");
    row.atMost = 3;
    row.unit = BenchRow::Unit::RealTime;
    row.sizes = {1};
    row.measured = startTerminal;
    row.bare = startEmptyWindow;
    return {row};
}
