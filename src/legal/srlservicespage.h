#pragma once

#include "isriwizardpage.h"
#include "srlegalaccount.h"

#include <QWizardPage>

class QPushButton;
class QTableView;
class SRDocumentsModel;

/// Second page of the legal entity's payment: the cashier ticks the billing documents to be paid.
///
/// Each entry loads the account that the page before hands on, so ticks start anew. The page's own
/// account stays as it came: outputData() hands on a copy that holds the ticked documents only.
class SrLServicesPage final : public QWizardPage, public ISrIWizardPage
{
    Q_OBJECT

public:
    explicit SrLServicesPage(QWizard *wizard);

    void initializePage() override;
    bool isComplete() const override;
    /// Lets the cashier on only when a receipt could be printed; says why when not.
    bool validatePage() override;

    QString preview() const override;
    QSharedPointer<SRAccount> outputData() const override;
    void showMsg(ISrIWizardPage::MsgType type, const QString &text);

private:
    void buildForm();

    QWizard *m_wizard;
    QPushButton *m_byDebt = nullptr;
    QTableView *m_table = nullptr;
    QSharedPointer<SrLegalAccount> m_account;
    SRDocumentsModel *m_documents;
};
