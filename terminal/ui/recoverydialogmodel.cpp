#include "recoverydialogmodel.h"

#include "shownreason.h"

RecoveryDialogModel::RecoveryDialogModel(QObject *parent) : QAbstractTableModel(parent) {}

void RecoveryDialogModel::setCases(const QVector<PaymentCase> &cases)
{
    beginResetModel();
    m_cases = cases;
    endResetModel();
}

void RecoveryDialogModel::update(int row, const PaymentCase &payment)
{
    if (!payment.isOpen()) {
        remove(row);
        return;
    }
    m_cases[row] = payment;
    emit dataChanged(index(row, 0), index(row, ColumnCount - 1));
}

void RecoveryDialogModel::remove(int row)
{
    beginRemoveRows({}, row, row);
    m_cases.removeAt(row);
    endRemoveRows();
}

int RecoveryDialogModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_cases.size();
}

int RecoveryDialogModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(ColumnCount);
}

QVariant RecoveryDialogModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= m_cases.size())
        return QVariant();
    const PaymentCase &payment = m_cases.at(index.row());
    if (role == Qt::TextAlignmentRole && index.column() == Sum)
        return int(Qt::AlignRight | Qt::AlignVCenter);
    if (role == Qt::ToolTipRole)
        return shownReason(payment.story).toHtmlEscaped();
    if (role != Qt::DisplayRole)
        return QVariant();
    switch (Column(index.column())) {
    case Time:
        return payment.time.toString(QStringLiteral("dd.MM.yyyy HH:mm:ss"));
    case Account:
        return payment.account.isEmpty() ? tr("неизвестен") : payment.account;
    case Sum:
        return payment.sum.toString();
    case State:
        return PaymentCase::stateText(payment.state);
    case ColumnCount:
        break;
    }
    return QVariant();
}

QVariant RecoveryDialogModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QVariant();
    switch (Column(section)) {
    case Time:
        return tr("Время");
    case Account:
        return tr("Счёт");
    case Sum:
        return tr("Сумма, р.");
    case State:
        return tr("Состояние");
    case ColumnCount:
        break;
    }
    return QVariant();
}
