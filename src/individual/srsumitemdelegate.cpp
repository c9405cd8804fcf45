#include "srsumitemdelegate.h"

#include "srsumeditor.h"

QWidget *SrSumItemDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &,
                                         const QModelIndex &index) const
{
    return srCreateSumEditor(parent, index);
}
