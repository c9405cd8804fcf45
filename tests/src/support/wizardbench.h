#pragma once

#include "accountpage.h"
#include "fakepayscontroller.h"
#include "fakeregister.h"
#include "guitestguard.h"
#include "hostdatabase.h"

#include <QAbstractButton>
#include <QSharedPointer>
#include <QVariant>
#include <QVector>
#include <QWizard>

#include <memory>

class SrIPaymentPage;
class SelmarIndividualWizard;
class SelmarLegalWizard;

/// A real wizard with everything that a host gives it, but with an AccountPage for its first page.
///
/// Pages 1 and 2 are the plugin's. The wizard may be destroyed by a test; whatever else is here
/// outlives it.
class WizardBench
{
public:
    enum Kind { Individual, Legal };

    explicit WizardBench(Kind kind, HostDatabase::Parts leftOut = HostDatabase::Parts(),
                         int cardTerminal = 0, const QString &cardOutcome = QString());
    ~WizardBench();
    WizardBench(const WizardBench &) = delete;
    WizardBench &operator=(const WizardBench &) = delete;

    /// Shows the wizard and goes on from the first page with `account`, to the second page or,
    /// passing it by, to the payment.
    void openServices(const QSharedPointer<SRAccount> &account);
    void openPayment(const QSharedPointer<SRAccount> &account);

    QWizard *wizard() const { return m_wizard.get(); }
    void destroyWizard() { m_wizard.reset(); }
    void setRegister(FrHandler *handler);
    void setController(const QSharedPointer<IPaysControllerWrapper> &controller);
    SrIPaymentPage *paymentPage() const;
    QAbstractButton *button(QWizard::WizardButton which) const { return m_wizard->button(which); }

    /// A widget of the wizard's current page.
    template<class Widget>
    Widget *child(const char *name) const
    {
        return m_wizard->currentPage()->findChild<Widget *>(QLatin1String(name));
    }

    /// What the plugin sent to the bus, in order.
    struct Sent
    {
        QString destination;
        QVariant data;
    };
    const QVector<Sent> &sent() const { return m_sent; }

    /// Ends the wizard and tells what is not as it should be (GuiTestGuard); empty when all is
    /// well.
    QString leftovers(const QStringList &expectedWarnings = {});

    GuiTestGuard guard;
    MessageLog &log = guard.log;
    ModalAnswers &answers = guard.answers;
    HostDatabase database;
    std::unique_ptr<FakeRegister> fiscalRegister;
    QSharedPointer<FakePaysController::Record> pays;

private:
    void open(const QSharedPointer<SRAccount> &account, int next);

    std::unique_ptr<QWizard> m_wizard;
    AccountPage *m_first = nullptr;
    QVector<Sent> m_sent;
};
