#pragma once

class QModelIndex;
class QWidget;

/// Editor of an amount in a table cell: rubles from 0.00 to 1000000.00, starting at the cell's edit
/// value. The caller (a view, through its delegate) owns the editor by `parent`.
QWidget *srCreateSumEditor(QWidget *parent, const QModelIndex &index);
