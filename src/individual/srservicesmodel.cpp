#include "srservicesmodel.h"

#include "srservicecells.h"
#include "srshowntext.h"

#include <QColor>

namespace {

constexpr int moneyMultiplier = 100;

} // namespace

void SRServicesModel::setServices(const QList<SrService> &services, const basix::FixNumber &charge,
                                  const basix::FixNumber &debt)
{
    beginResetModel();
    m_services = services;
    m_titles = services.isEmpty() ? QMap<QString, QString>() : services.constFirst().titles();
    m_accountCharge = charge;
    m_accountDebt = debt;
    updateDistributed();
    endResetModel();
}

void SRServicesModel::updateDistributed()
{
    m_distributed = basix::FixNumber(moneyMultiplier, 0);
    for (const SrService &service : qAsConst(m_services))
        m_distributed += service.distributed();
}

void SRServicesModel::distribute(basix::FixNumber (SrService::*amount)() const)
{
    beginResetModel();
    for (SrService &service : m_services)
        service.setDistributed((service.*amount)());
    updateDistributed();
    endResetModel();
    emit valueChanged();
}

void SRServicesModel::calcByCharge()
{
    distribute(&SrService::charge);
}

void SRServicesModel::calcByDebt()
{
    distribute(&SrService::topay);
}

bool SRServicesModel::isReady() const
{
    return SrService::areReadyToPay(m_services);
}

QVariant SRServicesModel::totalText(int column) const
{
    switch (column) {
    case NameColumn:
        return tr("ИТОГО");
    case ChargeColumn:
        return m_accountCharge.toString();
    case ToPayColumn:
        return m_accountDebt.toString();
    case DistributedColumn:
        return m_distributed.toString();
    }
    return {};
}

QVariant SRServicesModel::data(const QModelIndex &index, int role) const
{
    static const QVariant serviceColor = QColor(Qt::white);
    static const QVariant totalColor = QColor(Qt::gray);
    if (!index.isValid() || index.row() > rowCount())
        return {};
    const bool isService = index.row() < m_services.size();
    switch (role) {
    case Qt::BackgroundRole:
        return isService ? serviceColor : totalColor;
    case Qt::DisplayRole:
        return isService ? SrServiceCells::text(m_services.at(index.row()), index.column())
                         : totalText(index.column());
    case Qt::EditRole:
        return isService ? SrServiceCells::value(m_services.at(index.row()), index.column())
                         : QVariant();
    }
    return {};
}

QVariant SRServicesModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole && section >= 0
        && section < ColumnCount)
        return SrShownText::line(m_titles.value(SrServiceCells::field(section)));
    return QAbstractTableModel::headerData(section, orientation, role);
}

bool SRServicesModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    // The total row has no service behind it.
    if (!index.isValid() || role != Qt::EditRole || index.row() >= m_services.size())
        return false;
    if (!SrServiceCells::edit(m_services[index.row()], index.column(), value))
        return false;
    updateDistributed();
    emit valueChanged();
    return true;
}

int SRServicesModel::rowCount(const QModelIndex &) const
{
    return m_services.size() + 1;
}

int SRServicesModel::columnCount(const QModelIndex &) const
{
    return ColumnCount;
}

Qt::ItemFlags SRServicesModel::flags(const QModelIndex &index) const
{
    // Never editable: amounts change only through the two distributions.
    return QAbstractTableModel::flags(index);
}
