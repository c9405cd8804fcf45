#pragma once

#include <QAbstractItemModel>
#include <QStandardItemModel>
#include <QStringList>
#include <QTableView>
#include <QVector>

#include <memory>

/// The floor of a table: a QStandardItemModel with the cells of another model.
namespace StandardTable {

/// The cells of a model, read once: what a QStandardItemModel is filled with.
class Cells final
{
public:
    explicit Cells(const QAbstractItemModel &model);

    /// A model with every text, colour and tick, row by row, and the captions.
    std::unique_ptr<QStandardItemModel> fill() const;

private:
    struct Cell
    {
        QString text;
        QVariant background;
        QVariant tick;
        Qt::ItemFlags flags;
    };

    int m_rows;
    int m_columns;
    QStringList m_captions;
    QVector<Cell> m_cells;
};

/// A view of `model` as wide and high as `like`, prepared in the same way and shown off the screen.
std::unique_ptr<QTableView> viewOf(QAbstractItemModel *model, const QTableView &like);
/// Paints one frame of the view.
void paint(QTableView &view);
/// Scrolls to `step` of ten places from the first row to the last.
void scroll(QTableView &view, int step);

} // namespace StandardTable
