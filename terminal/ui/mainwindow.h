#pragma once

#include <plugin/pluginhost.h>

#include <QMainWindow>

class JournalPage;
class ModulePage;
class PaymentPage;
class QLabel;
class QTabWidget;
class TerminalContext;

/// The cashier's window: payments, their journal, the plugin, and the state of the register and the
/// bus.
class MainWindow final : public QMainWindow
{
    Q_OBJECT

public:
    /// `context` must outlive the window.
    explicit MainWindow(TerminalContext &context, QWidget *parent = nullptr);

    /// Runs a payment to the provider in the plugin's dialog; returns when that dialog is gone.
    PluginHost::Outcome startPayment(const Provider &provider);
    /// Shows the journal with the payment taken last.
    void showJournal();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void makeMenu();
    void makeStatusBar();
    void showRegister();
    void showBus();
    void showOutbox();

    TerminalContext &m_context;
    QTabWidget *m_pages;
    PaymentPage *m_paymentPage;
    JournalPage *m_journalPage;
    ModulePage *m_modulePage;
    QLabel *m_register;
    QLabel *m_bus;
    QLabel *m_outbox;
};
