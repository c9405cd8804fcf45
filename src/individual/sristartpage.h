#pragma once

#include "isriwizardpage.h"
#include "srpersonalaccount.h"

#include <QVariantMap>
#include <QWizardPage>

#include <memory>

class QTimer;
class SrStartPageExchange;
class Ui_SrIStartPage;

/// First page of the individual's payment: the cashier types or scans the account, billing answers
/// with its data.
///
/// One request is under way at a time: input is disabled from the request to its answer, and the
/// page is complete only with the answer for what stands in the form. Any edit drops an answer.
class SrIStartPage final : public QWizardPage, public ISrIWizardPage
{
    Q_OBJECT

public:
    explicit SrIStartPage(QWizard *wizard);
    ~SrIStartPage() override;

    bool isComplete() const override;

    QString preview() const override;
    QSharedPointer<SRAccount> outputData() const override;
    void showMsg(ISrIWizardPage::MsgType type, const QString &text);

    /// Fills the form from the text of a payment code and asks billing; any other text changes
    /// nothing.
    void parseQr(const QString &text);

public slots:
    /// An answer from the host's bus; ignored unless it belongs to a request of this page and the
    /// page is the current one.
    void incomingMessage(QVariantMap headers, QString message);
    void getClientData();
    void progress();
    void cleanAnswer();
    void onMonthChanged(int index);
    void onYearChanged(int year);
    /// Looks for a payment code in the line edit that sent the signal.
    void parseQr();

signals:
    /// A request for the host's bus.
    void sendMessage(QString destination, QVariant data);

private:
    void disableInput(bool disable);
    void resetAccount();
    void setAccount(const QVariantList &payParamList);
    QString period() const;
    basix::FixNumber amount() const;

    std::unique_ptr<Ui_SrIStartPage> m_ui;
    QTimer *m_timer;
    std::unique_ptr<SrStartPageExchange> m_exchange;
    SrPersonalAccount m_account;
};
