#include "latencies.h"

#include <algorithm>
#include <cmath>

qint64 Latencies::percentile(double percent) const
{
    if (m_values.isEmpty())
        return 0;
    QVector<qint64> sorted = m_values;
    const int rank = int(std::ceil(percent / 100 * sorted.size()));
    const int at = std::clamp(rank - 1, 0, sorted.size() - 1);
    std::nth_element(sorted.begin(), sorted.begin() + at, sorted.end());
    return sorted.at(at);
}
