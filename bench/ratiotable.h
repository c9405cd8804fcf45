#pragma once

#include "benchrow.h"

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QVector>

/// Collects what the rows measured and compares it with their floors.
///
/// Of several repetitions the least counts: whatever else the machine does can only add to it.
class RatioTable final : public benchmark::BenchmarkReporter
{
public:
    explicit RatioTable(const QVector<BenchRow> &rows);

    struct Line
    {
        const BenchRow *row;
        int size;
        double bare;
        double measured;

        double ratio() const { return bare > 0 ? measured / bare : 0; }
        bool isComplete() const { return bare > 0 && measured > 0; }
    };

    /// The name under which one side of a row is registered.
    static std::string name(const QString &id, int size, bool isFloor);

    bool ReportContext(const Context &context) override;
    void ReportRuns(const std::vector<Run> &runs) override;

    /// Adds what another table of the same rows wrote with toJson().
    void addJson(const QByteArray &json);

    /// A line per row and size, in order; its row lives as long as the table.
    QVector<Line> lines() const;
    /// A line per row and size: floor, measured, ratio, what is allowed, whether it holds.
    QString toText() const;
    QByteArray toJson() const;
    /// Rows and sizes of which a side is missing or failed; empty when everything was measured.
    QStringList missing() const;

private:
    void add(const QString &key, double value);

    QVector<BenchRow> m_rows;
    QHash<QString, BenchRow::Unit> m_units;
    QHash<QString, double> m_least;
    QStringList m_failures;
};
