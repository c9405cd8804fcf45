#pragma once

class QAbstractItemModel;
class QTableView;

/// The tables of both wizards look and behave alike.
///
/// Prepares a table once: the last column takes the rest of the width, Tab leaves the table.
void srPrepareTable(QTableView *table);
/// Gives the model to a table that is not shown yet; the captions are measured when it is.
void srSetTableModel(QTableView *table, QAbstractItemModel *model);
/// Fits every column but the last to what it shows; called when the table has got its rows.
void srFitColumnsButLast(QTableView *table);
