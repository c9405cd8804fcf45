#include "journalmodel.h"

#include "shownreason.h"

#include <payments/paymentsstore.h>

#include <QBrush>
#include <QColor>
#include <QFont>

#include <algorithm>

namespace {

QVariant textOf(const PaymentRecord &record, int column)
{
    switch (JournalModel::Column(column)) {
    case JournalModel::Time:
        return record.created.toLocalTime().toString(QStringLiteral("dd.MM.yy hh:mm"));
    case JournalModel::ProviderName:
        return record.providerName;
    case JournalModel::Account:
        return record.account;
    case JournalModel::Sum:
        return record.sum.toString();
    case JournalModel::Cash:
        return record.cash.toString();
    case JournalModel::Card:
        return record.card.toString();
    case JournalModel::State:
        return packStateText(record.state);
    case JournalModel::ColumnCount:
        break;
    }
    return QVariant();
}

bool isMoney(int column)
{
    return column == JournalModel::Sum || column == JournalModel::Cash
        || column == JournalModel::Card;
}

QString titleOf(int section)
{
    switch (JournalModel::Column(section)) {
    case JournalModel::Time:
        return JournalModel::tr("Время");
    case JournalModel::ProviderName:
        return JournalModel::tr("Поставщик");
    case JournalModel::Account:
        return JournalModel::tr("Счёт");
    case JournalModel::Sum:
        return JournalModel::tr("Сумма");
    case JournalModel::Cash:
        return JournalModel::tr("Наличными");
    case JournalModel::Card:
        return JournalModel::tr("Картой");
    case JournalModel::State:
        return JournalModel::tr("Состояние");
    case JournalModel::ColumnCount:
        break;
    }
    return QString();
}

PaymentOrder::Key keyOf(int column)
{
    switch (JournalModel::Column(column)) {
    case JournalModel::ProviderName:
        return PaymentOrder::Key::Provider;
    case JournalModel::Account:
        return PaymentOrder::Key::Account;
    case JournalModel::Sum:
        return PaymentOrder::Key::Sum;
    case JournalModel::Cash:
        return PaymentOrder::Key::Cash;
    case JournalModel::Card:
        return PaymentOrder::Key::Card;
    case JournalModel::State:
        return PaymentOrder::Key::State;
    case JournalModel::Time:
    case JournalModel::ColumnCount:
        break;
    }
    return PaymentOrder::Key::Time;
}

} // namespace

JournalModel::JournalModel(PaymentsStore &store, QObject *parent)
    : QAbstractTableModel(parent), m_store(store)
{
    reload();
}

int JournalModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_records.size();
}

int JournalModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant JournalModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= m_records.size())
        return QVariant();
    const PaymentRecord &record = m_records.at(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return textOf(record, index.column());
    case Qt::TextAlignmentRole:
        return int(Qt::AlignVCenter | (isMoney(index.column()) ? Qt::AlignRight : Qt::AlignLeft));
    case Qt::ToolTipRole:
        return record.lastError.isEmpty() ? QVariant()
                                          : QVariant(shownReason(record.lastError).toHtmlEscaped());
    case Qt::ForegroundRole:
        // A payment that nobody but this workstation knows of must catch the eye.
        if (index.column() == State && record.state < PackState::Posted)
            return QBrush(QColor(0xa8, 0x1e, 0x1e));
        return QVariant();
    default:
        return QVariant();
    }
}

QVariant JournalModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Vertical && role == Qt::DisplayRole)
        return section + 1;
    if (orientation == Qt::Horizontal && role == Qt::TextAlignmentRole)
        return int(Qt::AlignVCenter | (isMoney(section) ? Qt::AlignRight : Qt::AlignLeft));
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QVariant();
    // Qt's own arrow would keep room for itself in every column.
    const QString title = titleOf(section);
    if (section != columnOf(m_order.key))
        return title;
    return title + (m_order.descending ? QStringLiteral(" ▼") : QStringLiteral(" ▲"));
}

bool JournalModel::canFetchMore(const QModelIndex &parent) const
{
    return !parent.isValid() && m_more;
}

void JournalModel::fetchMore(const QModelIndex &parent)
{
    if (!canFetchMore(parent))
        return;
    const PaymentRecord last = m_records.constLast();
    const QVector<PaymentRecord> more = readPage(&last);
    if (!more.isEmpty()) {
        beginInsertRows(QModelIndex(), m_records.size(), m_records.size() + more.size() - 1);
        m_records += more;
        endInsertRows();
    }
    emit extentChanged();
}

void JournalModel::sort(int column, Qt::SortOrder order)
{
    const PaymentOrder wanted{keyOf(column), order == Qt::DescendingOrder};
    if (column < 0 || column >= ColumnCount || wanted == m_wanted)
        return;
    m_wanted = wanted;
    reload();
}

JournalModel::Column JournalModel::columnOf(PaymentOrder::Key key)
{
    int column = Time;
    while (column < State && keyOf(column) != key)
        ++column;
    return Column(column);
}

void JournalModel::setFilter(const PaymentFilter &filter)
{
    m_filter = filter;
    reload();
}

int JournalModel::rowOf(qint64 packId) const
{
    const auto found =
        std::find_if(m_records.cbegin(), m_records.cend(),
                     [packId](const PaymentRecord &record) { return record.packId == packId; });
    return found == m_records.cend() ? -1 : int(found - m_records.cbegin());
}

void JournalModel::refresh(qint64 packId)
{
    const int row = rowOf(packId);
    const std::optional<PaymentRecord> record = m_store.record(packId);
    if (!record)
        return;
    const bool fits = m_filter.lets(*record);
    if (row < 0 && fits) {
        insert(*record);
    } else if (row >= 0 && !fits) {
        removeAt(row);
    } else if (row >= 0) {
        change(row, *record);
    }
}

int JournalModel::placeOf(const PaymentRecord &record) const
{
    return int(std::upper_bound(m_records.cbegin(), m_records.cend(), record,
                                [this](const PaymentRecord &first, const PaymentRecord &second) {
                                    return standsAbove(first, second, m_order);
                                })
               - m_records.cbegin());
}

void JournalModel::change(int row, const PaymentRecord &record)
{
    const bool fromAbove = row > 0 && standsAbove(record, m_records.at(row - 1), m_order);
    const bool fromBelow =
        row + 1 < m_records.size() && standsAbove(m_records.at(row + 1), record, m_order);
    if (!fromAbove && !fromBelow && (row + 1 < m_records.size() || !m_more)) {
        m_records[row] = record;
        emit dataChanged(index(row, 0), index(row, ColumnCount - 1));
        return;
    }
    // Its place has changed with it, perhaps to one that was not read yet.
    const PaymentRecord before = m_records.takeAt(row);
    const int place = placeOf(record);
    m_records.insert(row, before);
    if (place == m_records.size() - 1 && m_more) {
        removeAt(row);
        return;
    }
    if (place != row) {
        beginMoveRows(QModelIndex(), row, row, QModelIndex(), place > row ? place + 1 : place);
        m_records.move(row, place);
        endMoveRows();
    }
    m_records[place] = record;
    emit dataChanged(index(place, 0), index(place, ColumnCount - 1));
}

void JournalModel::insert(const PaymentRecord &record)
{
    const int row = placeOf(record);
    // Below what was read it comes with its page.
    if (row == m_records.size() && m_more)
        return;
    beginInsertRows(QModelIndex(), row, row);
    m_records.insert(row, record);
    endInsertRows();
    emit extentChanged();
}

void JournalModel::removeAt(int row)
{
    beginRemoveRows(QModelIndex(), row, row);
    m_records.removeAt(row);
    endRemoveRows();
    if (m_records.isEmpty())
        reload();
    else
        emit extentChanged();
}

void JournalModel::reload()
{
    beginResetModel();
    const bool sortable = m_wanted.key == PaymentOrder::Key::Time || m_store.canSort(m_filter);
    m_order = sortable ? m_wanted : PaymentOrder::NewestFirst;
    m_records = readPage(nullptr);
    endResetModel();
    emit extentChanged();
}

QVector<PaymentRecord> JournalModel::readPage(const PaymentRecord *after)
{
    // One more than is shown: it tells whether there is another page.
    QVector<PaymentRecord> page = m_store.page(m_filter, m_order, after, pageSize + 1);
    m_error = page.isEmpty() ? m_store.lastError() : QString();
    m_more = page.size() > pageSize;
    if (m_more)
        page.removeLast();
    return page;
}
