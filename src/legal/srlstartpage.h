#pragma once

#include "isriwizardpage.h"
#include "srlegalaccount.h"

#include <QVariantMap>
#include <QWizardPage>

#include <memory>

class QTimer;
class SrStartPageExchange;
class Ui_SrLStartPage;

/// First page of the legal entity's payment: the cashier types or scans the contract and the
/// billing document's number, billing answers with the contract's documents.
///
/// One request is under way at a time: input is disabled from the request to its answer, and the
/// page is complete only with the answer for what stands in the form. Any edit drops an answer. The
/// widget leAccount holds the contract's number, leContract the document's.
class SrLStartPage final : public QWizardPage, public ISrIWizardPage
{
    Q_OBJECT

public:
    explicit SrLStartPage(QWizard *wizard);
    ~SrLStartPage() override;

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
    /// Offers the planned amount only together with a document's number.
    void accountChanged(QString text);
    /// Looks for a payment code in the line edit that sent the signal.
    void parseQr();

signals:
    /// A request for the host's bus.
    void sendMessage(QString destination, QVariant data);

private:
    void disableInput(bool disable);
    void resetAccount();
    void setAccount(const QVariantList &payParamList);
    basix::FixNumber amount() const;

    std::unique_ptr<Ui_SrLStartPage> m_ui;
    QTimer *m_timer;
    std::unique_ptr<SrStartPageExchange> m_exchange;
    SrLegalAccount m_account;
};
