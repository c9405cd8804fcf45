#pragma once

#include "srservice.h"

#include <basixcore/fixnumber.h>

#include <QAbstractTableModel>
#include <QList>
#include <QMap>

/// The services of a personal account and, below them, their total row: name, charge, amount to
/// pay, distributed amount.
///
/// The total row shows the account's own charge and debt and the sum of what is distributed. No
/// cell is editable: the cashier distributes by charge or by debt, all services at once. Whatever
/// changes an amount emits valueChanged().
class SRServicesModel final : public QAbstractTableModel
{
    Q_OBJECT

public:
    /// The columns are the cells of a service (SrServiceCells::Cell).
    enum Column { NameColumn, ChargeColumn, ToPayColumn, DistributedColumn, ColumnCount };

    using QAbstractTableModel::QAbstractTableModel;

    /// Shows `services`, with the captions of the first one, and the account's own totals. Emits no
    /// valueChanged().
    void setServices(const QList<SrService> &services, const basix::FixNumber &charge,
                     const basix::FixNumber &debt);
    QList<SrService> services() const { return m_services; }

    /// True when no distributed amount is negative and, as long as anything is to be paid,
    /// something is distributed.
    bool isReady() const;

    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

public slots:
    /// Each service gets exactly its charge.
    void calcByCharge();
    /// Each service gets exactly its amount to pay.
    void calcByDebt();

signals:
    void valueChanged();

private:
    void distribute(basix::FixNumber (SrService::*amount)() const);
    void updateDistributed();
    QVariant totalText(int column) const;

    QList<SrService> m_services;
    QMap<QString, QString> m_titles;
    basix::FixNumber m_accountCharge;
    basix::FixNumber m_accountDebt;
    basix::FixNumber m_distributed; ///< sum of the third column's amounts, kept because views ask
                                    ///< for it at every paint
};
