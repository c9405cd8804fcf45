#include "askedcells.h"

#include "standardtable.h"

#include <QIdentityProxyModel>
#include <QTableView>

namespace {

class ListeningModel final : public QIdentityProxyModel
{
public:
    QVariant data(const QModelIndex &index, int role) const override
    {
        asked.append({mapToSource(index), role});
        return QIdentityProxyModel::data(index, role);
    }

    mutable QVector<QPair<QModelIndex, int>> asked;
};

} // namespace

AskedCells AskedCells::ofFrame(QTableView &view)
{
    ListeningModel listening;
    listening.setSourceModel(view.model());
    const std::unique_ptr<QTableView> same = StandardTable::viewOf(&listening, view);
    const int row = view.rowAt(0);
    same->scrollTo(listening.index(qMax(0, row), 0), QAbstractItemView::PositionAtTop);
    listening.asked.clear();
    StandardTable::paint(*same);
    return {listening.asked};
}

AskedCells AskedCells::in(const QAbstractItemModel &model) const
{
    AskedCells same;
    same.asked.reserve(asked.size());
    for (const auto &cell : asked)
        same.asked.append({model.index(cell.first.row(), cell.first.column()), cell.second});
    return same;
}
