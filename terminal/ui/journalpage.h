#pragma once

#include <QWidget>

class JournalModel;
class PaymentDetails;
class QCheckBox;
class QComboBox;
class QDateEdit;
class QLabel;
class QLineEdit;
class QTableView;
class TerminalContext;

/// The journal of payments with the chosen one beside it.
class JournalPage final : public QWidget
{
    Q_OBJECT

public:
    /// `context` must outlive the page.
    explicit JournalPage(TerminalContext &context, QWidget *parent = nullptr);

    /// Chooses the payment taken last.
    void showNewest();

private:
    void makeFilter();
    /// Two orders by the column, the one that a click on its head takes first.
    void addOrders(int column, Qt::SortOrder first, const QString &firstTitle,
                   const QString &secondTitle);
    void makeTable();
    void makeLayout();
    void applyFilter();
    void applyOrder();
    void showExtent();
    void showPayment();

    JournalModel *m_model;
    QLineEdit *m_account;
    QCheckBox *m_oneDay;
    QDateEdit *m_day;
    QComboBox *m_state;
    QComboBox *m_order;
    QTableView *m_table;
    QLabel *m_extent;
    QLabel *m_summary;
    PaymentDetails *m_payment;
};
