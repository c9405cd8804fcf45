#include "rowlist.h"

#include <text/showntext.h>

#include <QHeaderView>
#include <QTableView>
#include <QTableWidget>

void RowList::prepare(QTableView &table)
{
    table.setSelectionBehavior(QAbstractItemView::SelectRows);
    table.setSelectionMode(QAbstractItemView::SingleSelection);
    table.setEditTriggers(QAbstractItemView::NoEditTriggers);
    table.setAlternatingRowColors(true);
    table.setWordWrap(false);
    table.setTabKeyNavigation(false);
    table.verticalHeader()->hide();
    table.horizontalHeader()->setHighlightSections(false);
}

void RowList::put(QTableWidget &table, int row, const QStringList &texts)
{
    for (int column = 0; column < texts.size(); ++column) {
        auto *cell = new QTableWidgetItem(shownCell(texts.at(column)));
        cell->setToolTip(shownReason(texts.at(column)).toHtmlEscaped());
        table.setItem(row, column, cell);
    }
}
