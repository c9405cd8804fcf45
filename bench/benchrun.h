#pragma once

#include "benchrow.h"

#include <QStringList>

class QCommandLineParser;
class RatioTable;

/// How the rows are measured.
struct BenchRun
{
    /// The least time of so many runs counts.
    int repetitions = 4;
    /// A single pass of everything, to see that it works.
    bool once = false;

    /// Measures both sides of `row` by turns and adds what they took to `table`. The application
    /// must exist; everything that the row keeps is gone afterwards.
    void run(const BenchRow &row, RatioTable &table) const;

    /// The two options above on a command line, there and back.
    static void addOptions(QCommandLineParser &parser);
    static BenchRun fromOptions(const QCommandLineParser &parser);
    QStringList toArguments() const;
};
