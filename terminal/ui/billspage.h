#pragma once

#include <bills/bill.h>

#include <QByteArray>
#include <QWidget>

#include <memory>
#include <optional>

class BillingDatabase;
class BillsPreview;
class BillWriter;
class QComboBox;
class QDateEdit;
class QDoubleSpinBox;
class QLabel;
class QPlainTextEdit;
class QPushButton;

/// Makes sample bills with payment codes out of what billing knows now.
class BillsPage final : public QWidget
{
    Q_OBJECT

public:
    /// `billing` must be open and outlive the page.
    explicit BillsPage(BillingDatabase &billing, QWidget *parent = nullptr);
    ~BillsPage() override;

    /// The bytes in the code of the bill shown; empty when there is none.
    QByteArray code() const { return m_code; }

signals:
    /// The person wants this code typed in by the scanner.
    void sentToScanner(const QByteArray &code);

protected:
    /// Payments may have changed the balances meanwhile.
    void showEvent(QShowEvent *event) override;

private:
    enum class SumChoice { Due, Own, None };

    void fillAccounts();
    void makeLayout();
    void connectInputs();
    void chooseAccount();
    void fillDocuments();
    void refresh();
    void showNothing(const QString &reason);
    void save();
    std::optional<Bill> chosenBill(QString *reason);
    SampleAccount::Payer payer() const;
    QString number() const;
    CodeEncoding encoding() const;

    BillingDatabase &m_billing;
    std::unique_ptr<BillWriter> m_writer;
    QByteArray m_code;
    /// Kept beside the viewer, which would turn special blanks into ordinary ones.
    QString m_codeText;
    QString m_fileName;

    QComboBox *m_account;
    QComboBox *m_document;
    QLabel *m_documentLabel;
    QDateEdit *m_period;
    QComboBox *m_sumChoice;
    QDoubleSpinBox *m_sum;
    QComboBox *m_encoding;
    QLabel *m_problems;
    QPlainTextEdit *m_text;
    QPushButton *m_copy;
    QPushButton *m_save;
    QPushButton *m_send;
    BillsPreview *m_preview;
};
