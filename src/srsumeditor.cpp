#include "srsumeditor.h"

#include <QDoubleSpinBox>
#include <QModelIndex>

QWidget *srCreateSumEditor(QWidget *parent, const QModelIndex &index)
{
    auto *editor = new QDoubleSpinBox(parent);
    editor->setMinimum(0.0);
    editor->setMaximum(1000000.0);
    editor->setDecimals(2);
    editor->setValue(index.data(Qt::EditRole).toDouble());
    return editor;
}
