#pragma once

#include <recovery/paymentcase.h>

#include <QAbstractTableModel>
#include <QVector>

/// Open payments as the recovery dialog lists them.
class RecoveryDialogModel final : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { Time, Account, Sum, State, ColumnCount };

    explicit RecoveryDialogModel(QObject *parent = nullptr);

    void setCases(const QVector<PaymentCase> &cases);
    const QVector<PaymentCase> &cases() const { return m_cases; }
    PaymentCase at(int row) const { return m_cases.value(row); }
    /// Replaces a row; a payment that is not open any more leaves the list.
    void update(int row, const PaymentCase &payment);
    void remove(int row);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QVector<PaymentCase> m_cases;
};
