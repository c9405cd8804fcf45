#include "srtablecolumns.h"

#include "srtextitemdelegate.h"

#include <QAbstractItemModel>
#include <QHeaderView>
#include <QSignalBlocker>
#include <QTableView>

namespace {

/// A column's width is taken from this many rows, those on screen first; measuring every row of a
/// contract with thousands of documents would keep the cashier waiting.
constexpr int measuredRows = 100;
/// How wide a column may grow; the narrower limits are for tables whose columns would otherwise
/// leave no room for the last one. A name or a title of some hundred letters must not push the
/// amounts out of the window.
constexpr int widestColumnPixels[] = {360, 240, 160};
/// All columns but the last together, in a window of 800 pixels.
constexpr int roomPixels = 680;
/// Above and below a row's text together; enough for an editor's frame.
constexpr int rowPaddingPixels = 10;

} // namespace

void srPrepareTable(QTableView *table)
{
    table->setItemDelegate(new SrTextItemDelegate(table));
    table->horizontalHeader()->setStretchLastSection(true);
    table->horizontalHeader()->setResizeContentsPrecision(measuredRows);
    table->verticalHeader()->hide();
    table->verticalHeader()->setDefaultSectionSize(table->fontMetrics().height()
                                                   + rowPaddingPixels);
    table->setTabKeyNavigation(false);
}

void srSetTableModel(QTableView *table, QAbstractItemModel *model)
{
    // A header that tells of its columns makes the table lay itself out, and lays out every caption
    // for it, long before the page is shown and all of it is done anew.
    const QSignalBlocker unheard(table->horizontalHeader());
    table->setModel(model);
}

void srFitColumnsButLast(QTableView *table)
{
    const int last = table->model()->columnCount() - 1;
    for (int column = 0; column < last; ++column)
        table->resizeColumnToContents(column);
    for (const int widest : widestColumnPixels) {
        int together = 0;
        for (int column = 0; column < last; ++column) {
            table->setColumnWidth(column, qMin(table->columnWidth(column), widest));
            together += table->columnWidth(column);
        }
        if (together <= roomPixels)
            return;
    }
}
