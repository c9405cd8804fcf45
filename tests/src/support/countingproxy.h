#pragma once

#include <QIdentityProxyModel>

/// Counts what a view asks of a model.
class CountingProxy : public QIdentityProxyModel
{
public:
    using QIdentityProxyModel::QIdentityProxyModel;

    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override
    {
        ++calls;
        highestRow = qMax(highestRow, index.row());
        return QIdentityProxyModel::data(index, role);
    }
    void forget() { calls = 0, highestRow = -1; }

    mutable int calls = 0;
    mutable int highestRow = -1;
};
