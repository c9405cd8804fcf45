#include "srlsumitemdelegate.h"

#include "srsumeditor.h"

QWidget *SrLSumItemDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &,
                                          const QModelIndex &index) const
{
    return srCreateSumEditor(parent, index);
}
