#pragma once

#include <payments/paymentrecord.h>

#include <QAbstractTableModel>
#include <QVector>

class PaymentsStore;

/// The journal of payments in the order asked for, sorted and read by the store a page at a time as
/// the view asks for more. How many there are in all is never counted.
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

    /// Ascending by Time is the oldest first, by State those that are the least far.
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;
    /// The order that the rows have. The newest stand first while the filter lets too many through
    /// to sort them by another column than Time.
    PaymentOrder order() const { return m_order; }
    bool tooManyToSort() const { return m_order != m_wanted; }
    static Column columnOf(PaymentOrder::Key key);

    void setFilter(const PaymentFilter &filter);
    const PaymentFilter &filter() const { return m_filter; }
    /// Whether the store has payments below those that were read.
    bool hasMore() const { return m_more; }
    /// Why the store could not be read; empty when it could.
    QString error() const { return m_error; }
    /// The row's payment; a default record when there is no such row.
    PaymentRecord record(int row) const { return m_records.value(row); }
    /// -1 when it is not among the rows read so far.
    int rowOf(qint64 packId) const;

public slots:
    /// Takes in a payment that was stored or has changed; the other rows stay as they stand.
    void refresh(qint64 packId);
    /// Reads the first page anew.
    void reload();

signals:
    /// After every change of the rows or of hasMore().
    void extentChanged();

private:
    QVector<PaymentRecord> readPage(const PaymentRecord *after);
    void insert(const PaymentRecord &record);
    void change(int row, const PaymentRecord &record);
    int placeOf(const PaymentRecord &record) const;
    void removeAt(int row);

    PaymentsStore &m_store;
    PaymentFilter m_filter;
    QVector<PaymentRecord> m_records;
    QString m_error;
    PaymentOrder m_wanted = PaymentOrder::NewestFirst;
    PaymentOrder m_order = PaymentOrder::NewestFirst;
    bool m_more = false;
};
