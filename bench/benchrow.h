#pragma once

#include <benchmark/benchmark.h>

#include <QString>
#include <QVector>

#include <functional>

/// One row of the table: what is measured, beside a floor that is measured in the same run.
///
/// Both bodies get the size of the input and loop over the state. The floor does the least that any
/// program would have to do for the same result, with the same input.
struct BenchRow
{
    enum class Unit {
        CpuTime,  ///< of this process: what computes
        RealTime, ///< what waits for a disk, another process or an event
        OwnTime,  ///< what the body tells the state, measured where this process cannot look
        Bytes     ///< the counter `bytesCounter` of the state
    };
    using Body = std::function<void(benchmark::State &state, int size)>;

    static const char *const bytesCounter;

    QString id; ///< no "/" in it
    QString subject;
    QString floorText;
    QString sizeText; ///< what is counted: "строк", "документов"; empty for a row without a size
    double atMost = 0;
    Unit unit = Unit::CpuTime;
    QVector<int> sizes;
    Body measured;
    Body bare;
};
