#include "srcountersmodel.h"

#include "srshowntext.h"

#include <algorithm>

namespace {

const QString &fieldOf(int column)
{
    static const QString none;
    switch (column) {
    case SrCountersModel::NameColumn:
        return SrCounter::FIELD_NAME;
    case SrCountersModel::LastValueColumn:
        return SrCounter::FIELD_LAST_VALUE;
    case SrCountersModel::CurValueColumn:
        return SrCounter::FIELD_CUR_VALUE;
    }
    return none;
}

} // namespace

void SrCountersModel::setCounters(const QList<SrCounter> &counters)
{
    beginResetModel();
    m_counters = counters;
    m_titles = counters.isEmpty() ? QMap<QString, QString>() : counters.constFirst().titles();
    endResetModel();
}

const SrCounter *SrCountersModel::counterAt(const QModelIndex &index) const
{
    return index.isValid() && index.row() < m_counters.size() ? &m_counters.at(index.row())
                                                              : nullptr;
}

qint64 SrCountersModel::lastCounterValue(const QModelIndex &index) const
{
    const SrCounter *counter = counterAt(index);
    return counter ? counter->lastValue() : 0;
}

qint64 SrCountersModel::curCounterValue(const QModelIndex &index) const
{
    const SrCounter *counter = counterAt(index);
    return counter ? counter->curValue() : 0;
}

bool SrCountersModel::isReady() const
{
    return std::none_of(m_counters.cbegin(), m_counters.cend(), [](const SrCounter &counter) {
        return counter.curValue() < counter.lastValue();
    });
}

QVariant SrCountersModel::data(const QModelIndex &index, int role) const
{
    const SrCounter *counter = counterAt(index);
    if (!counter || (role != Qt::DisplayRole && role != Qt::EditRole))
        return {};
    switch (index.column()) {
    case NameColumn:
        return counter->name();
    case LastValueColumn:
        return counter->lastValue();
    case CurValueColumn:
        return counter->curValue();
    }
    return {};
}

QVariant SrCountersModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole && section >= 0
        && section < ColumnCount)
        return SrShownText::line(m_titles.value(fieldOf(section)));
    return QAbstractTableModel::headerData(section, orientation, role);
}

bool SrCountersModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (!counterAt(index) || role != Qt::EditRole)
        return false;
    SrCounter &counter = m_counters[index.row()];
    switch (index.column()) {
    case NameColumn:
        counter.setName(value.toString());
        break;
    case LastValueColumn:
        counter.setLastValue(value.toInt());
        break;
    case CurValueColumn:
        counter.setCurValue(value.toInt());
        break;
    default:
        return false;
    }
    emit valueChanged();
    return true;
}

Qt::ItemFlags SrCountersModel::flags(const QModelIndex &index) const
{
    Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    if (const SrCounter *counter = counterAt(index)) {
        // isEditable() is declared without const; a copy shares its data and costs nothing.
        SrCounter copy = *counter;
        if (copy.isEditable(fieldOf(index.column())))
            flags |= Qt::ItemIsEditable;
    }
    return flags;
}

int SrCountersModel::rowCount(const QModelIndex &) const
{
    return m_counters.size();
}

int SrCountersModel::columnCount(const QModelIndex &) const
{
    return ColumnCount;
}
