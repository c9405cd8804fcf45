#pragma once

#include "fakehost.h"
#include "fakepayscontroller.h"
#include "fakeregister.h"
#include "guitestguard.h"
#include "hostdatabase.h"
#include "selmarrivenholdhandler.h"

#include <QElapsedTimer>
#include <QPointer>
#include <QQueue>
#include <QTimer>
#include <QWizard>

#include <functional>
#include <memory>

class IPayDialog;

/// A host that runs one payment the way hosts do: it makes the plugin's handler, gives it its
/// objects, starts a wizard on its window and executes it modally, while a cashier with nothing but
/// a keyboard goes through planned steps.
class PaymentFlow
{
public:
    explicit PaymentFlow(int cardTerminal = 0);
    ~PaymentFlow();
    PaymentFlow(const PaymentFlow &) = delete;
    PaymentFlow &operator=(const PaymentFlow &) = delete;

    /// One step of the cashier or of the world. It runs in the wizard's event loop when the steps
    /// before it are done and no message box is open; `when` delays it further. Every key goes to
    /// the widget that has the focus.
    PaymentFlow &step(const std::function<void()> &action,
                      const std::function<bool()> &when = nullptr);
    PaymentFlow &scan(const QString &code);
    PaymentFlow &type(const QString &text);
    PaymentFlow &press(Qt::Key key);
    /// Goes by Tab to a widget of the current page, or to a button of the wizard; the flow fails
    /// when Tab does not lead there.
    PaymentFlow &tabTo(const char *name);
    PaymentFlow &tabTo(QWizard::WizardButton button);
    /// Billing answers the request that was sent last, as soon as one was sent.
    PaymentFlow &billingAnswers(const QVariantList &account);
    /// A person leaves the keyboard alone for longer than a scanner does.
    PaymentFlow &pause();
    /// Presses Enter in the message box or dialog that comes next, after typing `text` over what
    /// stands there.
    PaymentFlow &enterInDialog(const QString &text = QString());

    /// Forgets the steps that a flow which ended early did not come to.
    void dropSteps() { m_steps.clear(); }

    /// Runs the payment to its end. What execute() returned; false too when a step could not be
    /// done (see problems()).
    bool execute(const Provider &provider);
    /// What went wrong in the steps and around them; empty when all is well. Destroys the host's
    /// objects.
    QString problems();

    QWizard *wizard() const { return m_wizard; }
    IPayDialog *dialog() const { return m_dialog; }
    template<class Widget>
    Widget *field(const char *name) const
    {
        return m_wizard->currentPage()->findChild<Widget *>(QLatin1String(name));
    }

    GuiTestGuard guard;
    HostDatabase database;
    FakeHost host;
    QSharedPointer<FakePaysController::Record> pays;
    QPointer<FakeRegister> fiscalRegister; ///< the handler owns it
    std::unique_ptr<SelmarRivenholdHandler> handler;
    std::unique_ptr<QWidget> window;

private:
    struct Step
    {
        std::function<void()> action;
        std::function<bool()> when;
    };

    void next();
    void fail(const QString &why);
    bool goTo(const QWidget *target);

    QQueue<Step> m_steps;
    QTimer m_timer;
    QElapsedTimer m_sinceStep;
    QStringList m_failures;
    QPointer<QWizard> m_wizard;
    IPayDialog *m_dialog = nullptr;
};
