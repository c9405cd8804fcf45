#pragma once

#include <payments/paymentrecord.h>

#include <QAbstractTableModel>
#include <QVector>

class PaymentsStore;

/// The journal of payments, newest first, read from the store a page at a time as the view asks for
/// more.
class JournalModel final : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { Time, ProviderName, Account, Sum, Cash, Card, State, ColumnCount };
    static constexpr int pageSize = 100;

    /// `store` must outlive the model.
    explicit JournalModel(PaymentsStore &store, QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    bool canFetchMore(const QModelIndex &parent) const override;
    void fetchMore(const QModelIndex &parent) override;

    void setFilter(const PaymentFilter &filter);
    const PaymentFilter &filter() const { return m_filter; }
    /// All payments that the filter lets through, read or not.
    int total() const { return m_total; }
    /// Why the store could not be read; empty when it could.
    QString error() const { return m_error; }
    /// The row's payment; a default record when there is no such row.
    PaymentRecord record(int row) const { return m_records.value(row); }
    /// -1 when it is not among the rows read so far.
    int rowOf(qint64 packId) const;

public slots:
    /// Takes in a payment that was stored or has changed, leaving the other rows where they are.
    void refresh(qint64 packId);
    void reload();

signals:
    void totalChanged(int total);

private:
    void setTotal(int total);

    PaymentsStore &m_store;
    PaymentFilter m_filter;
    QVector<PaymentRecord> m_records;
    QString m_error;
    int m_total = 0;
};
