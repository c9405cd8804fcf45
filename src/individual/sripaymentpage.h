#pragma once

#include "isriwizardpage.h"

#include <basixcore/fixnumber.h>
#include <molvacore/paypack.h>

#include <QVariant>
#include <QWizardPage>

#include <memory>
#include <optional>

struct SrWizardContext;
class OnlineKkmProfile;
class PosHandler;
class Ui_SrIPaymentPage;

/// Last page of both wizards: the cashier takes cash and card, the receipt is printed, the pay pack
/// saved and posted.
///
/// From the first step that cannot be undone (a card charged, a receipt printed) until the payment
/// is finished, the wizard can be neither left backwards nor cancelled. A receipt that was printed
/// for a payment that could then not be saved is not printed again: the next attempt to finish
/// saves the same pay pack.
class SrIPaymentPage final : public QWizardPage, public ISrIWizardPage
{
    Q_OBJECT

public:
    explicit SrIPaymentPage(QWizard *wizard);
    ~SrIPaymentPage() override;

    void initializePage() override;
    /// True when cash and card add up to the amount to pay, to the hundredth.
    bool isComplete() const override;
    /// Prints, saves and posts; true when the payment is finished.
    bool validatePage() override;

    QString preview() const override;
    QSharedPointer<SRAccount> outputData() const override;
    void showMsg(ISrIWizardPage::MsgType type, const QString &text);

    bool eventFilter(QObject *watched, QEvent *event) override;

public slots:
    void sumChanged();
    void payByCard();

signals:
    /// A message for the host's bus: a finished pay pack for "/app/add_pay_pack".
    void sendMessage(QString destination, QVariant data);

private:
    std::optional<basix::FixNumber> askCardAmount();
    PosHandler *createTerminal(int type);
    void cardCharged(const basix::FixNumber &amount);
    /// From here on the payment can only be finished. The page has its account from its wizard.
    void lockWizard();
    /// Prints the receipt; the pay pack of a printed one, nothing when it could not be printed.
    std::optional<PayPack> print(const SrWizardContext &context, const OnlineKkmProfile &profile);
    /// Saves the unsaved pack and hands it on; false when it could not be saved, or when the wizard
    /// was destroyed meanwhile.
    bool saveAndPost(const SrWizardContext &context);
    basix::FixNumber cashAmount() const;
    basix::FixNumber cardAmount() const;

    std::unique_ptr<Ui_SrIPaymentPage> m_ui;
    QSharedPointer<SRAccount> m_account;
    bool m_takingCard = false;
    /// The receipt that was last given to the register, and its document number.
    struct Attempt
    {
        QVariantMap document;
        QString number;
    };
    Attempt m_attempted;

    /// The pack of a printed receipt until it is saved, and what the register answered for it.
    std::optional<PayPack> m_unsavedPack;
    QVariantMap m_printed;
};
