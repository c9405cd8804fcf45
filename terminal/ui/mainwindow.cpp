#include "mainwindow.h"

#include "billspage.h"
#include "connectionbanner.h"
#include "devicealert.h"
#include "journalpage.h"
#include "lazypage.h"
#include "modulepage.h"
#include "paymentpage.h"
#include "recoverydialog.h"
#include "shownreason.h"
#include "sidewindows.h"

#include <app/terminalcontext.h>

#include <basixcore/fixnumber.h>

#include <QAction>
#include <QCloseEvent>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QStatusBar>
#include <QTabWidget>
#include <QVBoxLayout>

MainWindow::MainWindow(TerminalContext &context, QWidget *parent)
    : QMainWindow(parent),
      m_context(context),
      m_pages(new QTabWidget(this)),
      m_paymentPage(new PaymentPage(context, this)),
      m_journalPage(new LazyPage<JournalPage>(
          [&context](QWidget *owner) { return new JournalPage(context, owner); }, this)),
      m_billsPage(
          new LazyPage<BillsPage>([this](QWidget *owner) { return makeBills(owner); }, this)),
      m_modulePage(new LazyPage<ModulePage>(
          [&context](QWidget *owner) { return new ModulePage(context.pluginHost(), owner); },
          this)),
      m_sideWindows(std::make_unique<SideWindows>(context)),
      m_register(new QLabel(this)),
      m_bus(new QLabel(this)),
      m_outbox(new QLabel(this))
{
    setWindowTitle(tr("Рабочее место кассира — %1").arg(context.box().name()));
    resize(1000, 640);
    // Dialogs of a payment hold up this window alone: the windows beside it stay usable.
    setAttribute(Qt::WA_GroupLeader);
    m_pages->setObjectName(QStringLiteral("twPages"));
    m_pages->setDocumentMode(true);
    addPage(m_paymentPage, tr("Приём платежей"));
    addPage(m_journalPage, tr("Журнал"));
    addPage(m_billsPage, tr("Квитанции"));
    addPage(m_modulePage, tr("О модуле"));
    auto *central = new QWidget(this);
    auto *column = new QVBoxLayout(central);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(new ConnectionBanner(context.bus(), central));
    column->addWidget(m_pages, 1);
    setCentralWidget(central);
    makeMenu();
    makeStatusBar();

    connect(m_paymentPage, &PaymentPage::paymentRequested, this,
            [this] { startPayment(m_paymentPage->provider()); });
    connect(&context.fiscalRegister(), &EmulatedRegister::conditionChanged, this,
            &MainWindow::showRegister);
    connect(&context.fiscalRegister(), &EmulatedRegister::receiptRegistered, this,
            &MainWindow::showRegister);
    connect(&context.bus(), &MessageBus::stateChanged, this, &MainWindow::showBus);
    connect(&context.paysController(), &PaysController::changed, this, &MainWindow::showOutbox);
}

MainWindow::~MainWindow() = default;

PluginHost::Outcome MainWindow::startPayment(const Provider &provider)
{
    const PluginHost::Outcome outcome =
        m_context.pluginHost().start(basix::FixNumber(), provider, this);
    if (outcome.accepted)
        statusBar()->showMessage(tr("Платёж принят"), 5000);
    else if (outcome.started)
        statusBar()->showMessage(tr("Платёж отменён"), 5000);
    return outcome;
}

void MainWindow::showJournal()
{
    m_pages->setCurrentWidget(m_journalPage);
    m_journalPage->page().showNewest();
}

void MainWindow::showBills()
{
    m_pages->setCurrentWidget(m_billsPage);
}

BillsPage *MainWindow::makeBills(QWidget *owner)
{
    auto *page = new BillsPage(m_context.billing(), owner);
    connect(page, &BillsPage::sentToScanner, m_sideWindows.get(), &SideWindows::scan);
    return page;
}

void MainWindow::addPage(QWidget *page, const QString &title)
{
    // Without a letter for Alt: those belong to the fields and buttons of the page that is shown.
    const int number = m_pages->addTab(page, title);
    m_pages->setTabToolTip(number, tr("Ctrl+%1").arg(number + 1));
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    if (m_context.pluginHost().isDialogOpen()) {
        // The plugin's dialog hangs on this window; a payment half made must not vanish with it.
        QMessageBox::information(this, windowTitle(), tr("Сначала закончите или отмените платёж."));
        event->ignore();
        return;
    }
    QMainWindow::closeEvent(event);
    if (event->isAccepted())
        m_sideWindows->close();
}

void MainWindow::makeMenu()
{
    QMenu *work = menuBar()->addMenu(tr("&Работа"));
    QAction *start = work->addAction(tr("Начать платёж"));
    start->setShortcut(Qt::Key_F2);
    connect(start, &QAction::triggered, this, [this] {
        if (m_context.pluginHost().isLoaded())
            startPayment(m_paymentPage->provider());
    });
    QAction *drain = work->addAction(tr("Отправить непроведённые"));
    drain->setShortcut(Qt::Key_F5);
    connect(drain, &QAction::triggered, this, [this] {
        const int sent = m_context.paysController().drain(m_context.bus());
        statusBar()->showMessage(
            sent > 0 ? tr("Отправлено платежей: %1").arg(sent) : tr("Отправлять нечего"), 5000);
    });
    QAction *check = work->addAction(tr("Сверка платежей…"));
    check->setShortcut(Qt::Key_F6);
    connect(check, &QAction::triggered, this, [this] {
        RecoveryDialog dialog(m_context.reconciler(), m_context.paysController(), this);
        dialog.load();
        dialog.exec();
    });
    QAction *shift = work->addAction(tr("Закрыть смену"));
    connect(shift, &QAction::triggered, this, [this] {
        QString error;
        if (!m_context.fiscalRegister().closeShift(error))
            showWarning(this, tr("Смена не закрыта"), error);
        showRegister();
    });
    work->addSeparator();
    QAction *quit = work->addAction(tr("Выход"));
    quit->setShortcut(QKeySequence(QStringLiteral("Ctrl+Q")));
    connect(quit, &QAction::triggered, this, &QWidget::close);

    QMenu *view = menuBar()->addMenu(tr("&Вид"));
    for (int page = 0; page < m_pages->count(); ++page) {
        QAction *action = view->addAction(m_pages->tabText(page));
        action->setShortcut(QKeySequence(QStringLiteral("Ctrl+%1").arg(page + 1)));
        connect(action, &QAction::triggered, this,
                [this, page] { m_pages->setCurrentIndex(page); });
    }
    view->addSeparator();
    m_sideWindows->addActions(*view);
}

void MainWindow::makeStatusBar()
{
    statusBar()->addPermanentWidget(new DeviceAlert(m_context.devices(), this));
    m_outbox->setObjectName(QStringLiteral("lOutbox"));
    statusBar()->addPermanentWidget(m_outbox);
    statusBar()->addPermanentWidget(m_register);
    statusBar()->addPermanentWidget(m_bus);
    const QString name = m_context.cashier().isEmpty() ? tr("не указан") : m_context.cashier();
    statusBar()->addPermanentWidget(new QLabel(tr("Кассир: %1").arg(name), this));
    showRegister();
    showBus();
    showOutbox();
}

void MainWindow::showRegister()
{
    const EmulatedRegister &fiscalRegister = m_context.fiscalRegister();
    const QString shift = fiscalRegister.shiftIsOpen() ? tr("смена открыта") : tr("смена закрыта");
    m_register->setText(
        tr("Касса: %1, %2")
            .arg(EmulatedRegister::conditionText(fiscalRegister.condition()), shift));
}

void MainWindow::showBus()
{
    m_bus->setText(m_context.bus().connected() ? tr("Связь: есть") : tr("Связь: нет"));
    m_bus->setToolTip(shownReason(m_context.bus().stateText()).toHtmlEscaped());
}

void MainWindow::showOutbox()
{
    const int waiting = m_context.paysController().unposted().size();
    const QString error = m_context.payments().lastError();
    // A label that is not there says that everything was sent.
    m_outbox->setVisible(waiting > 0 || !error.isEmpty());
    m_outbox->setText(
        tr("Не отправлено: %1").arg(error.isEmpty() ? QString::number(waiting) : tr("неизвестно")));
    m_outbox->setToolTip(shownReason(error).toHtmlEscaped());
}
