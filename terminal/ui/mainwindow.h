#pragma once

#include <plugin/pluginhost.h>

#include <QMainWindow>

#include <memory>

class BillsPage;
class JournalPage;
template<class Page>
class LazyPage;
class ModulePage;
class PaymentPage;
class SideWindows;
class QLabel;
class QTabWidget;
class TerminalContext;

/// The cashier's window: payments, their journal, sample bills, the plugin, and the state of the
/// register and the bus.
class MainWindow final : public QMainWindow
{
    Q_OBJECT

public:
    /// `context` must outlive the window.
    explicit MainWindow(TerminalContext &context, QWidget *parent = nullptr);
    ~MainWindow() override;

    /// Runs a payment to the provider in the plugin's dialog; returns when that dialog is gone.
    PluginHost::Outcome startPayment(const Provider &provider);
    /// Shows the journal with the payment taken last.
    void showJournal();
    /// Shows the page of sample bills.
    void showBills();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    BillsPage *makeBills(QWidget *owner);
    void addPage(QWidget *page, const QString &title);
    void makeMenu();
    void makeStatusBar();
    void showRegister();
    void showBus();
    void showOutbox();

    TerminalContext &m_context;
    QTabWidget *m_pages;
    PaymentPage *m_paymentPage;
    LazyPage<JournalPage> *m_journalPage;
    LazyPage<BillsPage> *m_billsPage;
    LazyPage<ModulePage> *m_modulePage;
    std::unique_ptr<SideWindows> m_sideWindows;
    QLabel *m_register;
    QLabel *m_bus;
    QLabel *m_outbox;
};
