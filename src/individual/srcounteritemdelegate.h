#pragma once

#include <QStyledItemDelegate>

/// Editor of a meter's readings: whole numbers from the meter's last reading upwards.
class SrCounterItemDelegate final : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                          const QModelIndex &index) const override;
};
