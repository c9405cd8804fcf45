#pragma once

#include <scenario/cashierhands.h>
#include <scenario/steprunner.h>

#include <QObject>
#include <QString>

#include <functional>

class DemoVerdict;
class MainWindow;
class TerminalContext;

/// One whole payment made through the plugin's own dialog with keys and mouse, told step by step on
/// the console.
///
/// The dialog is modal: the steps run inside its event loop. What a payment leaves behind is then
/// counted where it is kept.
class DemoRun : public QObject
{
    Q_OBJECT

public:
    struct Options
    {
        QString outFolder; ///< empty: no files are left
        int pause = 0;     ///< milliseconds between two steps
    };

    /// `context` and `window` must outlive the run.
    DemoRun(TerminalContext &context, MainWindow &window, const Options &options);
    ~DemoRun() override;

    /// True when the payment went through and everything that knows of it agrees to the kopeck.
    bool run();

protected:
    virtual qint64 providerId() const = 0;
    virtual QString title() const = 0;
    /// Why this payment cannot be made with what billing holds now; empty when it can.
    virtual QString obstacle() = 0;
    /// Plans the steps from the wizard's first page to its payment page.
    virtual void planAccount() = 0;

    /// `act` returns false when the hands could not do it; the run then fails with their reason.
    void step(const QString &text, const std::function<bool()> &ready,
              const std::function<bool()> &act);
    void picture(const QString &name);
    void clickNext();
    /// A wizard page is in front that holds a shown and enabled widget of this name.
    static std::function<bool()> pageWith(const QString &objectName);
    /// Billing has answered: the start page shows the account and lets the cashier go on.
    static std::function<bool()> accountShown();

    TerminalContext &context() { return m_context; }
    CashierHands &hands() { return m_hands; }
    void say(const QString &text);

private:
    bool waitForBus();
    void planPayment();
    void planFinish();
    bool payPartByCard();
    bool confirmSent();
    /// The bill of an account, and its code on the way to the scanner; pictures of both.
    bool showBillInScanner();
    void removeOldPictures();
    /// Of `window`; without one, of the dialog in front or the terminal's window.
    bool savePicture(const QString &name, QWidget *window = nullptr);
    void tellReceipt(const DemoVerdict &verdict);
    bool writeFiles(const DemoVerdict &verdict);
    bool writeFile(const QString &name, const QByteArray &content);

    TerminalContext &m_context;
    MainWindow &m_window;
    Options m_options;
    StepRunner m_runner;
    CashierHands m_hands;
    QString m_cardPart; ///< as typed
    int m_pictures = 0;
    int m_steps = 0;
};
