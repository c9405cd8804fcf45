#include "paymentflow.h"

#include "billinganswers.h"
#include "keyboardscanner.h"

#include <molvacore/ipaydialog.h>

#include <QAbstractButton>
#include <QApplication>
#include <QLineEdit>
#include <QTest>

namespace {

constexpr int lookEveryMs = 5;
constexpr int watchdogMs = 4000;
/// More than any page has widgets.
constexpr int tabsAtMost = 40;
constexpr int pauseMs = 80;

} // namespace

PaymentFlow::PaymentFlow(int cardTerminal)
    : guard({QStringLiteral("SrIPaymentPage::"), QStringLiteral("SRDocumentsModel::setData")}),
      pays(QSharedPointer<FakePaysController::Record>::create()),
      fiscalRegister(new FakeRegister),
      handler(std::make_unique<SelmarRivenholdHandler>()),
      window(std::make_unique<QWidget>())
{
    database.setCardTerminal(cardTerminal);
    IPayByProviderPlugin *plugin = handler.get();
    plugin->setInputFont(QFont());
    plugin->setMessageReciever(&host, SIGNAL(incomingMessage(QVariantMap, QString)));
    plugin->setMessageSender(&host, SLOT(sendMessage(QString, QVariant)));
    plugin->setPayStatusReciever(&host, SIGNAL(paymentStatus(QVariant)));
    plugin->setPaysControllerWrapper(new FakePaysController(pays));
    plugin->setFrHandler(fiscalRegister);
    m_timer.setInterval(lookEveryMs);
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { next(); });
}

PaymentFlow::~PaymentFlow() = default;

PaymentFlow &PaymentFlow::step(const std::function<void()> &action,
                               const std::function<bool()> &when)
{
    m_steps.enqueue({action, when});
    return *this;
}

PaymentFlow &PaymentFlow::scan(const QString &code)
{
    return step([code] { KeyboardScanner::scan(code); });
}

PaymentFlow &PaymentFlow::type(const QString &text)
{
    return step([text] { KeyboardScanner::type(text); });
}

PaymentFlow &PaymentFlow::press(Qt::Key key)
{
    return step([key] { KeyboardScanner::press(key); });
}

bool PaymentFlow::goTo(const QWidget *target)
{
    for (int i = 0; target && i < tabsAtMost; ++i) {
        if (QApplication::focusWidget() == target)
            return true;
        KeyboardScanner::press(Qt::Key_Tab);
    }
    return false;
}

PaymentFlow &PaymentFlow::tabTo(const char *name)
{
    return step([this, name] {
        if (!goTo(field<QWidget>(name)))
            fail(QStringLiteral("Tab does not lead to ") + QLatin1String(name));
    });
}

PaymentFlow &PaymentFlow::tabTo(QWizard::WizardButton button)
{
    return step([this, button] {
        if (!goTo(m_wizard->button(button)))
            fail(QStringLiteral("Tab does not lead to ") + m_wizard->button(button)->text());
    });
}

PaymentFlow &PaymentFlow::billingAnswers(const QVariantList &account)
{
    return step(
        [this, account] {
            emit host.incomingMessage(BillingAnswers::headers(),
                                      BillingAnswers::data(host.lastUid(), account));
        },
        [this] { return !host.sent().isEmpty(); });
}

PaymentFlow &PaymentFlow::pause()
{
    auto since = std::make_shared<QElapsedTimer>();
    return step([] {},
                [since] {
                    if (!since->isValid())
                        since->start();
                    return since->elapsed() > pauseMs;
                });
}

PaymentFlow &PaymentFlow::enterInDialog(const QString &text)
{
    guard.answers.run([text](QDialog *dialog) {
        QWidget *target = dialog;
        if (auto *field = dialog->findChild<QLineEdit *>()) {
            target = field;
            field->selectAll();
            QTest::keyClicks(field, text);
        }
        QTest::keyClick(target, Qt::Key_Return);
    });
    return *this;
}

void PaymentFlow::fail(const QString &why)
{
    m_failures << why;
    m_steps.clear();
    if (m_wizard)
        m_wizard->reject();
}

void PaymentFlow::next()
{
    if (!m_wizard)
        return;
    const bool dialogOpen = QApplication::activeModalWidget() != m_wizard;
    if (!dialogOpen && QApplication::activeWindow() != m_wizard) {
        // Without a window manager nobody gives the focus back to a window whose message box was
        // closed.
        m_wizard->activateWindow();
        return;
    }
    if (dialogOpen || m_steps.isEmpty() || (m_steps.head().when && !m_steps.head().when())) {
        if (m_sinceStep.elapsed() > watchdogMs)
            fail(QStringLiteral("the payment does not go on, %1 steps left").arg(m_steps.size()));
        return;
    }
    const Step step = m_steps.dequeue();
    m_sinceStep.start();
    // A step may open dialogs, which run an event loop of their own, and the timer with it.
    step.action();
}

bool PaymentFlow::execute(const Provider &provider)
{
    m_dialog = handler->start(basix::FixNumber(), provider, window.get());
    m_wizard = dynamic_cast<QWizard *>(m_dialog);
    if (!m_wizard) {
        fail(QStringLiteral("no wizard"));
        return false;
    }
    m_sinceStep.start();
    m_timer.start();
    const bool done = m_dialog->execute();
    m_timer.stop();
    return done && m_failures.isEmpty();
}

QString PaymentFlow::problems()
{
    window.reset();
    handler.reset();
    QStringList found = m_failures;
    if (!m_steps.isEmpty())
        found << QStringLiteral("%1 steps were not done").arg(m_steps.size());
    if (pays->alive != 0)
        found << QStringLiteral("the payments controller outlives the handler and the wizard");
    return (found + guard.problems()).join(QLatin1Char('\n'));
}
