#pragma once

#include <QHeaderView>
#include <QTableView>

/// How wide the columns of a table are, and how wide they have to be for all that they show.
namespace ColumnFit {

inline QList<int> widths(const QTableView &table)
{
    QList<int> all;
    for (int column = 0; column < table.model()->columnCount() - 1; ++column)
        all << table.columnWidth(column);
    return all;
}

/// Of all columns but the last, like widths().
inline QList<int> needed(const QTableView &table)
{
    const QAbstractItemView &cells = table;
    QList<int> all;
    for (int column = 0; column < table.model()->columnCount() - 1; ++column)
        all << qMax(cells.sizeHintForColumn(column),
                    table.horizontalHeader()->sectionSizeHint(column));
    return all;
}

} // namespace ColumnFit
