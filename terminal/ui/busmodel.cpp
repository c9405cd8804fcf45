#include "busmodel.h"

#include "shownreason.h"

#include <bus/busjournal.h>
#include <bus/messagetext.h>

#include <QColor>

namespace {

bool isTrouble(const BusJournalEntry &entry)
{
    using Kind = BusJournalEntry::Relation;
    return !entry.refusal.isEmpty() || entry.relation == Kind::Repeated
        || entry.relation == Kind::Unmatched || entry.relation == Kind::Unreadable;
}

} // namespace

BusModel::BusModel(const BusJournal &journal, QObject *parent)
    : QAbstractTableModel(parent), m_journal(journal)
{
    connect(&journal, &BusJournal::appended, this, &BusModel::append);
    connect(&journal, &BusJournal::dropped, this, &BusModel::drop);
    connect(&journal, &BusJournal::changed, this, &BusModel::update);
    reload();
}

void BusModel::setPaused(bool paused)
{
    if (paused == m_paused)
        return;
    m_paused = paused;
    if (!paused)
        reload();
}

int BusModel::rowOf(qint64 number) const
{
    if (m_entries.empty() || number < m_entries.front().number || number > m_entries.back().number)
        return -1;
    return int(number - m_entries.front().number);
}

int BusModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_entries.size());
}

int BusModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(ColumnCount);
}

QVariant BusModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const BusJournalEntry &entry = m_entries.at(std::size_t(index.row()));
    if (role == Qt::ForegroundRole && isTrouble(entry))
        return QColor(0xb0, 0x20, 0x20);
    if (role == Qt::TextAlignmentRole
        && (index.column() == Number || index.column() == RoundTrip || index.column() == Size))
        return int(Qt::AlignRight | Qt::AlignVCenter);
    if (role == Qt::ToolTipRole && index.column() == Relation)
        return shownReason(MessageText::relation(entry)).toHtmlEscaped();
    if (role != Qt::DisplayRole)
        return {};
    switch (Column(index.column())) {
    case Number:
        return entry.number;
    case Time:
        return entry.message.time.toString(QStringLiteral("HH:mm:ss.zzz"));
    case Direction:
        return entry.message.direction == BusMessage::Direction::Outgoing ? tr("→ отправлено")
                                                                          : tr("← получено");
    case Address:
        return shownCell(entry.message.address);
    case Relation:
        return shownCell(MessageText::relation(entry));
    case RoundTrip:
        return entry.roundTrip < 0 ? QVariant() : QVariant(entry.roundTrip);
    case Size:
        return entry.message.body.bytes().size();
    case ColumnCount:
        break;
    }
    return {};
}

QVariant BusModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    switch (Column(section)) {
    case Number:
        return tr("№");
    case Time:
        return tr("Время");
    case Direction:
        return tr("Куда");
    case Address:
        return tr("Адрес или тип");
    case Relation:
        return tr("К чему относится");
    case RoundTrip:
        return tr("Ответ, мс");
    case Size:
        return tr("Байт");
    case ColumnCount:
        break;
    }
    return {};
}

void BusModel::append()
{
    if (m_paused)
        return;
    const int row = rowCount();
    beginInsertRows(QModelIndex(), row, row);
    m_entries.push_back(m_journal.at(m_journal.size() - 1));
    endInsertRows();
}

void BusModel::drop(int count)
{
    if (m_paused)
        return;
    beginRemoveRows(QModelIndex(), 0, count - 1);
    m_entries.erase(m_entries.begin(), m_entries.begin() + count);
    endRemoveRows();
}

void BusModel::update(qint64 number)
{
    const int row = m_paused ? -1 : rowOf(number);
    const BusJournalEntry *entry = m_journal.find(number);
    if (row < 0 || !entry)
        return;
    m_entries.at(std::size_t(row)) = *entry;
    emit dataChanged(index(row, 0), index(row, ColumnCount - 1));
}

void BusModel::reload()
{
    beginResetModel();
    m_entries.clear();
    for (int i = 0; i < m_journal.size(); ++i)
        m_entries.push_back(m_journal.at(i));
    endResetModel();
}
