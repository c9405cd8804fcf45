#include "srdocumentsmodel.h"

#include "srservicecells.h"
#include "srshowntext.h"

#include <QColor>
#include <QDebug>

namespace {

constexpr int moneyMultiplier = 100;

/// Markers in the place of a service index: the document's own row.
constexpr int untickedDocument = -1;
constexpr int tickedDocument = -2;

/// The cells of a service stand behind the document's number.
int serviceCell(int column)
{
    return column - SRDocumentsModel::NameColumn;
}

const QString &fieldOf(int column)
{
    return column == SRDocumentsModel::NumberColumn ? SrDocument::FIELD_NUM
                                                    : SrServiceCells::field(serviceCell(column));
}

} // namespace

void SRDocumentsModel::setDocuments(const QList<SrDocument> &documents,
                                    const basix::FixNumber &charge, const basix::FixNumber &debt)
{
    beginResetModel();
    m_documents = documents;
    m_changed.clear();
    m_rows.clear();
    m_standings.clear();
    m_standings.resize(documents.size());
    m_total = basix::FixNumber(moneyMultiplier, 0);
    m_tickedCount = 0;
    m_tickedAndReadyCount = 0;

    const bool ticked = documents.size() == 1;
    for (int d = 0; d < documents.size(); ++d) {
        m_rows.append({d, ticked ? tickedDocument : untickedDocument});
        const int serviceCount = documents.at(d).services().size();
        for (int s = 0; s < serviceCount; ++s)
            m_rows.append({d, s});
        updateStanding(d, ticked);
    }
    m_titles =
        documents.isEmpty() ? QMap<QString, QString>() : documents.constFirst().modelTitles();
    m_accountCharge = charge;
    m_accountDebt = debt;
    endResetModel();
}

QList<SrDocument> SRDocumentsModel::documents() const
{
    QList<SrDocument> ticked;
    for (const QPair<int, int> &row : m_rows) {
        if (row.second == tickedDocument)
            ticked.append(document(row.first));
    }
    return ticked;
}

const SrDocument &SRDocumentsModel::document(int index) const
{
    const auto changed = m_changed.constFind(index);
    return changed == m_changed.constEnd() ? m_documents.at(index) : *changed;
}

bool SRDocumentsModel::isReady() const
{
    return m_tickedCount > 0 && m_tickedAndReadyCount == m_tickedCount;
}

bool SRDocumentsModel::isDocumentRow(int row) const
{
    return row < m_rows.size() && m_rows.at(row).second < 0;
}

bool SRDocumentsModel::isTicked(int row) const
{
    return m_rows.at(row).second == tickedDocument;
}

void SRDocumentsModel::updateStanding(int index, bool ticked)
{
    const SrDocument &record = document(index);
    const Standing now{record.amount(), ticked, ticked && record.isReady()};
    Standing &kept = m_standings[index];
    m_total -= kept.amount;
    m_total += now.amount;
    m_tickedCount += int(now.ticked) - int(kept.ticked);
    m_tickedAndReadyCount += int(now.tickedAndReady) - int(kept.tickedAndReady);
    kept = now;
}

void SRDocumentsModel::redistribute(int row)
{
    const int index = m_rows.at(row).first;
    SrDocument changed = document(index);
    if (isTicked(row))
        changed.calcByDebt();
    else
        changed.cleanDebt();
    m_changed.insert(index, changed);
    updateStanding(index, isTicked(row));
}

void SRDocumentsModel::calcByDebt()
{
    beginResetModel();
    for (int row = 0; row < m_rows.size(); ++row) {
        if (isDocumentRow(row))
            redistribute(row);
    }
    endResetModel();
    emit valueChanged();
}

QVariant SRDocumentsModel::documentText(int index, int column) const
{
    const SrDocument &record = document(index);
    switch (column) {
    case NumberColumn:
        return record.docNumber();
    case NameColumn:
        return tr("ПОДИТОГ");
    case ChargeColumn:
        return record.charge().toString();
    case ToPayColumn:
        return record.topay().toString();
    case DistributedColumn:
        return m_standings.at(index).amount.toString();
    }
    return {};
}

QVariant SRDocumentsModel::serviceText(const QPair<int, int> &row, int column) const
{
    const SrDocument &record = document(row.first);
    if (column == NumberColumn)
        return record.docNumber();
    return SrServiceCells::text(record.services().at(row.second), serviceCell(column));
}

QVariant SRDocumentsModel::serviceValue(const QPair<int, int> &row, int column) const
{
    return SrServiceCells::value(document(row.first).services().at(row.second),
                                 serviceCell(column));
}

QVariant SRDocumentsModel::totalText(int column) const
{
    switch (column) {
    case NameColumn:
        return tr("ИТОГО");
    case ChargeColumn:
        return m_accountCharge.toString();
    case ToPayColumn:
        return m_accountDebt.toString();
    case DistributedColumn:
        return m_total.toString();
    }
    return {};
}

QVariant SRDocumentsModel::data(const QModelIndex &index, int role) const
{
    static const QVariant serviceColor = QColor(Qt::white);
    static const QVariant documentColor = QColor(Qt::gray);
    static const QVariant totalColor = QColor(Qt::darkGray);
    if (!index.isValid() || index.row() > rowCount())
        return {};
    const bool isTotal = index.row() >= m_rows.size();
    const bool isDocument = isDocumentRow(index.row());
    switch (role) {
    case Qt::DisplayRole:
        if (isTotal)
            return totalText(index.column());
        return isDocument ? documentText(m_rows.at(index.row()).first, index.column())
                          : serviceText(m_rows.at(index.row()), index.column());
    case Qt::EditRole:
        return isTotal || isDocument ? QVariant()
                                     : serviceValue(m_rows.at(index.row()), index.column());
    case Qt::BackgroundRole:
        return isTotal ? totalColor : isDocument ? documentColor : serviceColor;
    case Qt::CheckStateRole:
        if (!isDocument || index.column() != NumberColumn)
            return {};
        return isTicked(index.row()) ? Qt::Checked : Qt::Unchecked;
    }
    return {};
}

QVariant SRDocumentsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole && section >= 0
        && section < ColumnCount)
        return SrShownText::line(m_titles.value(fieldOf(section)));
    return QAbstractTableModel::headerData(section, orientation, role);
}

bool SRDocumentsModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (!index.isValid() || index.row() >= m_rows.size())
        return false;
    if (role == Qt::EditRole)
        return !isDocumentRow(index.row())
            && editService(m_rows.at(index.row()), index.column(), value);
    if (role != Qt::CheckStateRole)
        return false;

    qWarning() << Q_FUNC_INFO << value;
    if (isDocumentRow(index.row())) {
        m_rows[index.row()].second =
            value.toInt() == Qt::Checked ? tickedDocument : untickedDocument;
        redistribute(index.row());
        emit valueChanged();
    }
    // False even for a tick that took effect, and no dataChanged(): the page listens to
    // valueChanged() alone and repaints.
    return false;
}

bool SRDocumentsModel::editService(const QPair<int, int> &row, int column, const QVariant &value)
{
    SrDocument changed = document(row.first);
    QList<SrService> services = changed.services();
    if (!SrServiceCells::edit(services[row.second], serviceCell(column), value))
        return false;
    changed.setServices(services);
    m_changed.insert(row.first, changed);
    updateStanding(row.first, m_standings.at(row.first).ticked);
    emit valueChanged();
    return true;
}

int SRDocumentsModel::rowCount(const QModelIndex &) const
{
    return m_rows.size() + 1;
}

int SRDocumentsModel::columnCount(const QModelIndex &) const
{
    return ColumnCount;
}

Qt::ItemFlags SRDocumentsModel::flags(const QModelIndex &index) const
{
    Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    if (index.column() == NumberColumn && isDocumentRow(index.row()))
        flags |= Qt::ItemIsUserCheckable;
    return flags;
}
