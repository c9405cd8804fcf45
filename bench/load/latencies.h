#pragma once

#include <QVector>
#include <QtGlobal>

/// How long something took, each time: microseconds.
class Latencies final
{
public:
    void add(qint64 microseconds) { m_values.append(microseconds); }
    void clear() { m_values.clear(); }
    int count() const { return m_values.size(); }

    /// The smallest value that `percent` of all values do not exceed; 0 without values.
    qint64 percentile(double percent) const;
    qint64 largest() const { return percentile(100); }

private:
    QVector<qint64> m_values;
};
