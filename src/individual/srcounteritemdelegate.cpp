#include "srcounteritemdelegate.h"

#include "srcountersmodel.h"

#include <QSpinBox>

#include <limits>

namespace {

/// A spin box holds an int, a reading 64 bits; a reading beyond it must not wrap around to a
/// smaller one.
int asSpinBoxValue(qint64 reading)
{
    constexpr qint64 lowest = std::numeric_limits<int>::min();
    constexpr qint64 highest = std::numeric_limits<int>::max();
    return static_cast<int>(qBound(lowest, reading, highest));
}

} // namespace

QWidget *SrCounterItemDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &,
                                             const QModelIndex &index) const
{
    auto *editor = new QSpinBox(parent);
    editor->setMaximum(std::numeric_limits<int>::max());
    if (const auto *model = qobject_cast<const SrCountersModel *>(index.model()))
        editor->setMinimum(asSpinBoxValue(model->lastCounterValue(index)));
    editor->setValue(asSpinBoxValue(index.data(Qt::EditRole).toLongLong()));
    return editor;
}
