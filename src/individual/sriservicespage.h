#pragma once

#include "isriwizardpage.h"
#include "srpersonalaccount.h"

#include <QWizardPage>

#include <memory>

class SRServicesModel;
class SrCountersModel;

class Ui_SrIServicesPage;

/// Second page of the individual's payment: the cashier distributes the payment over the services
/// and enters meter readings.
///
/// Each entry loads the account that the page before hands on; what was done here on an earlier
/// visit is dropped. The page's own account stays as it came: outputData() hands on a copy with the
/// distribution and the readings.
class SrIServicesPage final : public QWizardPage, public ISrIWizardPage
{
    Q_OBJECT

public:
    explicit SrIServicesPage(QWizard *wizard);
    ~SrIServicesPage() override;

    void initializePage() override;
    bool isComplete() const override;
    /// Lets the cashier on only when a receipt could be printed; says why when not.
    bool validatePage() override;

    QString preview() const override;
    QSharedPointer<SRAccount> outputData() const override;
    void showMsg(ISrIWizardPage::MsgType type, const QString &text);

private:
    QWizard *m_wizard;
    std::unique_ptr<Ui_SrIServicesPage> m_ui;
    QSharedPointer<SrPersonalAccount> m_account;
    SRServicesModel *m_services;
    SrCountersModel *m_counters;
};
