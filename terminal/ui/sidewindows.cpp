#include "sidewindows.h"

#include "buspage.h"
#include "devicespage.h"
#include "scannerpage.h"

#include <app/terminalcontext.h>

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QSize>

namespace {

constexpr Qt::Key devicesKey = Qt::Key_F7;
constexpr Qt::Key busKey = Qt::Key_F8;
/// With Shift; alone it is the scanner's own trigger.
constexpr Qt::Key scannerKey = Qt::Key_F9;

void prepare(QWidget &window, const QString &name, const QString &title, const QSize &size)
{
    window.setObjectName(name);
    window.setWindowTitle(title);
    window.resize(size);
    // Its own dialogs hold up no other window.
    window.setAttribute(Qt::WA_GroupLeader);
}

} // namespace

SideWindows::SideWindows(TerminalContext &context) : m_context(context)
{
    qApp->installEventFilter(this);
}

SideWindows::~SideWindows() = default;

void SideWindows::addActions(QMenu &menu)
{
    QAction *devices = menu.addAction(tr("Устройства"));
    devices->setShortcut(devicesKey);
    connect(devices, &QAction::triggered, this, &SideWindows::showDevices);
    QAction *bus = menu.addAction(tr("Шина"));
    bus->setShortcut(busKey);
    connect(bus, &QAction::triggered, this, &SideWindows::showBus);
    QAction *scanner = menu.addAction(tr("Сканер"));
    scanner->setShortcut(QKeySequence(int(Qt::SHIFT) | scannerKey));
    connect(scanner, &QAction::triggered, this, &SideWindows::showScanner);
}

void SideWindows::showBus()
{
    if (!m_bus) {
        m_bus = std::make_unique<BusPage>(m_context.busJournal(), m_context.bus());
        prepare(*m_bus, QStringLiteral("busWindow"), tr("Шина — %1").arg(m_context.box().name()),
                {960, 620});
    }
    bringUp(*m_bus);
}

void SideWindows::showDevices()
{
    if (!m_devices) {
        m_devices = std::make_unique<DevicesPage>(m_context.devices());
        prepare(*m_devices, QStringLiteral("devicesWindow"),
                tr("Устройства — %1").arg(m_context.box().name()), {1000, 700});
    }
    bringUp(*m_devices);
}

void SideWindows::showScanner()
{
    bringUp(scanner());
}

void SideWindows::scan(const QByteArray &code)
{
    scanner().setCode(code);
    showScanner();
}

ScannerPage &SideWindows::scanner()
{
    if (!m_scanner) {
        m_scanner = std::make_unique<ScannerPage>();
        prepare(*m_scanner, QStringLiteral("scannerWindow"),
                tr("Сканер — %1").arg(m_context.box().name()), {860, 600});
    }
    return *m_scanner;
}

void SideWindows::close()
{
    for (QWidget *window :
         {m_bus.get(), m_devices.get(), static_cast<QWidget *>(m_scanner.get())}) {
        if (window)
            window->close();
    }
}

bool SideWindows::eventFilter(QObject *watched, QEvent *event)
{
    // A menu that a dialog holds up does not hear its shortcuts.
    if (event->type() != QEvent::KeyPress || !watched->isWidgetType())
        return QObject::eventFilter(watched, event);
    const auto *key = static_cast<QKeyEvent *>(event);
    const auto pressed = [key](Qt::Key wanted, Qt::KeyboardModifiers modifiers) {
        return key->key() == wanted && key->modifiers() == modifiers;
    };
    if (pressed(devicesKey, Qt::NoModifier))
        showDevices();
    else if (pressed(busKey, Qt::NoModifier))
        showBus();
    else if (pressed(scannerKey, Qt::ShiftModifier))
        showScanner();
    else
        return QObject::eventFilter(watched, event);
    return true;
}

void SideWindows::bringUp(QWidget &window)
{
    window.show();
    window.raise();
    window.activateWindow();
}
