#pragma once

#include <QIdentityProxyModel>

/// A table as a model without children. The plugin's tables answer rowCount() alike for every
/// parent, on purpose; no view asks a table for children, but QAbstractItemModelTester does.
class FlatTableProxy : public QIdentityProxyModel
{
public:
    using QIdentityProxyModel::QIdentityProxyModel;

    int rowCount(const QModelIndex &parent = QModelIndex()) const override
    {
        return parent.isValid() ? 0 : QIdentityProxyModel::rowCount(parent);
    }
    int columnCount(const QModelIndex &parent = QModelIndex()) const override
    {
        return parent.isValid() ? 0 : QIdentityProxyModel::columnCount(parent);
    }
    bool hasChildren(const QModelIndex &parent = QModelIndex()) const override
    {
        return !parent.isValid();
    }
};
