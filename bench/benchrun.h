#pragma once

#include "benchrow.h"

#include <QStringList>
#include <QVector>

class QCommandLineParser;
class RatioTable;

/// How the rows are measured.
struct BenchRun
{
    /// The least time of so many runs counts.
    int repetitions = 4;
    /// A single pass of everything, to see that it works.
    bool once = false;

    /// Measures both sides of all `rows` by turns and adds what they took to `table`. The
    /// application must exist; everything that the rows keep is gone afterwards.
    void run(const QVector<BenchRow> &rows, RatioTable &table) const;

    /// The two options above on a command line, there and back.
    static void addOptions(QCommandLineParser &parser);
    static BenchRun fromOptions(const QCommandLineParser &parser);
    QStringList toArguments() const;
};
