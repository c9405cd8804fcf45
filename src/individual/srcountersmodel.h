#pragma once

#include "srcounter.h"

#include <QAbstractTableModel>
#include <QList>
#include <QMap>

/// The meters of a personal account, one row each: name, last reading, current reading (whole
/// numbers).
///
/// A cell may be edited where billing's descriptor of its field says so. Whatever changes a reading
/// emits valueChanged().
class SrCountersModel final : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { NameColumn, LastValueColumn, CurValueColumn, ColumnCount };

    using QAbstractTableModel::QAbstractTableModel;

    /// Shows `counters`; the captions are those of the first meter. Emits no valueChanged().
    void setCounters(const QList<SrCounter> &counters);
    QList<SrCounter> counters() const { return m_counters; }

    /// Readings of the meter in the index's row; 0 outside the list.
    qint64 lastCounterValue(const QModelIndex &index) const;
    qint64 curCounterValue(const QModelIndex &index) const;

    /// True when no current reading is below its last one.
    bool isReady() const;

    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;

signals:
    void valueChanged();

private:
    const SrCounter *counterAt(const QModelIndex &index) const;

    QList<SrCounter> m_counters;
    QMap<QString, QString> m_titles;
};
