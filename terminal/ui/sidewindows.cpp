#include "sidewindows.h"

#include "buspage.h"
#include "scannerpage.h"

#include <app/terminalcontext.h>

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QMenu>

namespace {

constexpr Qt::Key busKey = Qt::Key_F8;
/// With Shift; alone it is the scanner's own trigger.
constexpr Qt::Key scannerKey = Qt::Key_F9;

} // namespace

SideWindows::SideWindows(TerminalContext &context)
    : m_bus(std::make_unique<BusPage>(context.busJournal(), context.bus())),
      m_scanner(std::make_unique<ScannerPage>())
{
    m_bus->setObjectName(QStringLiteral("busWindow"));
    m_bus->setWindowTitle(tr("Шина — %1").arg(context.box().name()));
    m_bus->resize(960, 620);
    m_bus->setAttribute(Qt::WA_GroupLeader);
    m_scanner->setObjectName(QStringLiteral("scannerWindow"));
    m_scanner->setWindowTitle(tr("Сканер — %1").arg(context.box().name()));
    m_scanner->resize(860, 600);
    m_scanner->setAttribute(Qt::WA_GroupLeader);
    qApp->installEventFilter(this);
}

SideWindows::~SideWindows() = default;

void SideWindows::addActions(QMenu &menu)
{
    QAction *bus = menu.addAction(tr("&Шина"));
    bus->setShortcut(busKey);
    connect(bus, &QAction::triggered, this, &SideWindows::showBus);
    QAction *scanner = menu.addAction(tr("&Сканер"));
    scanner->setShortcut(Qt::SHIFT | scannerKey);
    connect(scanner, &QAction::triggered, this, &SideWindows::showScanner);
}

void SideWindows::showBus()
{
    bringUp(*m_bus);
}

void SideWindows::showScanner()
{
    bringUp(*m_scanner);
}

void SideWindows::scan(const QByteArray &code)
{
    m_scanner->setCode(code);
    showScanner();
}

void SideWindows::close()
{
    m_bus->close();
    m_scanner->close();
}

bool SideWindows::eventFilter(QObject *watched, QEvent *event)
{
    // A menu that a dialog holds up does not hear its shortcuts.
    if (event->type() == QEvent::KeyPress && watched->isWidgetType()) {
        const auto *key = static_cast<QKeyEvent *>(event);
        if (key->key() == busKey && key->modifiers() == Qt::NoModifier) {
            showBus();
            return true;
        }
        if (key->key() == scannerKey && key->modifiers() == Qt::ShiftModifier) {
            showScanner();
            return true;
        }
    }
    return QObject::eventFilter(watched, event);
}

void SideWindows::bringUp(QWidget &window)
{
    window.show();
    window.raise();
    window.activateWindow();
}
