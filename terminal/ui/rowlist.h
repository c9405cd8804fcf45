#pragma once

#include <QStringList>

class QTableView;
class QTableWidget;

/// How every table of these windows looks and behaves that lists things, one in a row.
namespace RowList {

/// Whole rows are chosen, one at a time, and nothing is edited in place. Tab goes on to what stands
/// after the table, since the arrows are enough inside it. Widths and heights stay as they are.
void prepare(QTableView &table);

/// Puts a text into each cell of an existing row, bounded and without markup whatever it holds; the
/// tool tip shows more of it.
void put(QTableWidget &table, int row, const QStringList &texts);

} // namespace RowList
