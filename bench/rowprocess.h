#pragma once

#include "benchrow.h"

#include <QStringList>
#include <QTemporaryDir>
#include <QVector>

class QCommandLineParser;
class RatioTable;
struct BenchRun;

/// Measures each row in a process of its own.
///
/// In one process for all, a row would be measured in a heap that fifty thousand services of
/// another had left in pieces, and a program would be started by a parent of two gigabytes, whose
/// copying takes ten times as long as the start.
class RowProcess final
{
public:
    /// `program` is the benchmark, which understands the options below.
    explicit RowProcess(const QString &program);

    /// Goes through all `rows` several times, so that a busy minute of the machine does not decide
    /// about one of them, and adds the figures to `table`. What a process complains about goes to
    /// the standard error; its rows are then missing from the table.
    void run(const QVector<BenchRow> &rows, const BenchRun &run, RatioTable &table) const;

    /// The options of a program that is started so.
    static void addOptions(QCommandLineParser &parser);
    /// Whether this is such a process.
    static bool isMeant(const QCommandLineParser &parser);
    /// The work of such a process: measures its row and writes the figures to the standard output.
    /// The result is the exit code.
    static int work(const QCommandLineParser &parser, const BenchRun &run);

private:
    QByteArray measure(const BenchRow &known, const BenchRun &run) const;

    QString m_program;
    QTemporaryDir m_files;
};
