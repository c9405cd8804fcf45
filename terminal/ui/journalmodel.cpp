#include "journalmodel.h"

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
        return record.lastError.isEmpty() ? QVariant() : QVariant(record.lastError.toHtmlEscaped());
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
    switch (Column(section)) {
    case Time:
        return tr("Время");
    case ProviderName:
        return tr("Поставщик");
    case Account:
        return tr("Счёт");
    case Sum:
        return tr("Сумма");
    case Cash:
        return tr("Наличными");
    case Card:
        return tr("Картой");
    case State:
        return tr("Состояние");
    case ColumnCount:
        break;
    }
    return QVariant();
}

bool JournalModel::canFetchMore(const QModelIndex &parent) const
{
    return !parent.isValid() && m_records.size() < m_total;
}

void JournalModel::fetchMore(const QModelIndex &parent)
{
    if (!canFetchMore(parent))
        return;
    const QVector<PaymentRecord> more = m_store.records(m_filter, m_records.size(), pageSize);
    if (more.isEmpty()) {
        // The store has fewer than it counted, or cannot be read: asking again for ever would not
        // help.
        setTotal(m_records.size());
        return;
    }
    beginInsertRows(QModelIndex(), m_records.size(), m_records.size() + more.size() - 1);
    m_records += more;
    endInsertRows();
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
    const bool stateFits = record && (m_filter.state < 0 || int(record->state) == m_filter.state);
    const bool newest =
        record && (m_records.isEmpty() || record->created > m_records.constFirst().created);
    const bool onlyStateFiltered =
        m_filter.account.isEmpty() && m_filter.from.isNull() && m_filter.until.isNull();
    if (row < 0 && stateFits && newest && onlyStateFiltered) {
        beginInsertRows(QModelIndex(), 0, 0);
        m_records.prepend(*record);
        endInsertRows();
        setTotal(m_total + 1);
        return;
    }
    if (row < 0 || !stateFits) {
        reload();
        return;
    }
    m_records[row] = *record;
    emit dataChanged(index(row, 0), index(row, ColumnCount - 1));
}

void JournalModel::reload()
{
    beginResetModel();
    m_records = m_store.records(m_filter, 0, std::max(pageSize, m_records.size()));
    m_error = m_records.isEmpty() ? m_store.lastError() : QString();
    endResetModel();
    setTotal(std::max(m_store.count(m_filter), m_records.size()));
}

void JournalModel::setTotal(int total)
{
    m_total = total;
    emit totalChanged(total);
}
