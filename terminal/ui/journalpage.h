#pragma once

#include <QWidget>

class FiscalJournal;
class JournalModel;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableView;
class ReceiptView;
class TerminalContext;

/// The journal of payments with the receipt of the chosen one beside it.
class JournalPage final : public QWidget
{
    Q_OBJECT

public:
    /// `context` must outlive the page.
    explicit JournalPage(TerminalContext &context, QWidget *parent = nullptr);

    /// Chooses the payment taken last.
    void showNewest();

private:
    void applyFilter();
    void showTotal(int total);
    void showReceipt();
    void savePicture();

    TerminalContext &m_context;
    JournalModel *m_model;
    QLineEdit *m_account;
    QComboBox *m_state;
    QTableView *m_table;
    QLabel *m_total;
    QLabel *m_details;
    ReceiptView *m_receipt;
    QPushButton *m_save;
};
