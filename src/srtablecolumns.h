#pragma once

class QTableView;

/// The tables of both wizards look and behave alike.
///
/// Prepares a table once: the last column takes the rest of the width, Tab leaves the table.
void srPrepareTable(QTableView *table);
/// Fits every column but the last to what it shows; called when the table has got its rows.
void srFitColumnsButLast(QTableView *table);
