#pragma once

#include <QModelIndex>
#include <QPair>
#include <QVector>

class QTableView;

/// What a view asks its model for when it paints.
struct AskedCells
{
    /// Cell and role, in the order of asking.
    QVector<QPair<QModelIndex, int>> asked;

    /// Of the frame that `view` would paint now; the view keeps its model and its place.
    static AskedCells ofFrame(QTableView &view);
    /// The same cells and roles in another model with the same shape.
    AskedCells in(const QAbstractItemModel &model) const;
};
