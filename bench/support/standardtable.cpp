#include "standardtable.h"

#include "srtablecolumns.h"

#include <QHeaderView>
#include <QImage>
#include <QPainter>
#include <QScrollBar>

namespace {

constexpr int places = 10;

} // namespace

StandardTable::Cells::Cells(const QAbstractItemModel &model)
    : m_rows(model.rowCount()), m_columns(model.columnCount())
{
    for (int column = 0; column < m_columns; ++column)
        m_captions.append(model.headerData(column, Qt::Horizontal).toString());
    m_cells.reserve(m_rows * m_columns);
    for (int row = 0; row < m_rows; ++row) {
        for (int column = 0; column < m_columns; ++column) {
            const QModelIndex index = model.index(row, column);
            m_cells.append({index.data().toString(), index.data(Qt::BackgroundRole),
                            index.data(Qt::CheckStateRole), index.flags()});
        }
    }
}

std::unique_ptr<QStandardItemModel> StandardTable::Cells::fill() const
{
    auto model = std::make_unique<QStandardItemModel>(m_rows, m_columns);
    model->setHorizontalHeaderLabels(m_captions);
    for (int row = 0; row < m_rows; ++row) {
        for (int column = 0; column < m_columns; ++column) {
            const Cell &cell = m_cells.at(row * m_columns + column);
            auto *item = new QStandardItem(cell.text);
            item->setData(cell.background, Qt::BackgroundRole);
            if (cell.tick.isValid())
                item->setData(cell.tick, Qt::CheckStateRole);
            item->setFlags(cell.flags);
            model->setItem(row, column, item);
        }
    }
    return model;
}

std::unique_ptr<QTableView> StandardTable::viewOf(QAbstractItemModel *model, const QTableView &like)
{
    auto view = std::make_unique<QTableView>();
    view->setModel(model);
    srPrepareTable(view.get());
    view->resize(like.size());
    view->show();
    for (int column = 0; column < model->columnCount(); ++column)
        view->setColumnWidth(column, like.columnWidth(column));
    return view;
}

void StandardTable::paint(QTableView &view)
{
    static QImage image;
    if (image.size() != view.size())
        image = QImage(view.size(), QImage::Format_ARGB32_Premultiplied);
    view.render(&image);
}

void StandardTable::scroll(QTableView &view, int step)
{
    QScrollBar *bar = view.verticalScrollBar();
    bar->setValue(bar->maximum() * (step % places) / (places - 1));
}
