#include "sidewindows.h"

#include "buspage.h"

#include <app/terminalcontext.h>

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QMenu>

namespace {

constexpr Qt::Key busKey = Qt::Key_F8;

} // namespace

SideWindows::SideWindows(TerminalContext &context)
    : m_bus(std::make_unique<BusPage>(context.busJournal(), context.bus()))
{
    m_bus->setObjectName(QStringLiteral("busWindow"));
    m_bus->setWindowTitle(tr("Шина — %1").arg(context.box().name()));
    m_bus->resize(960, 620);
    m_bus->setAttribute(Qt::WA_GroupLeader);
    qApp->installEventFilter(this);
}

SideWindows::~SideWindows() = default;

void SideWindows::addActions(QMenu &menu)
{
    QAction *bus = menu.addAction(tr("&Шина"));
    bus->setShortcut(busKey);
    connect(bus, &QAction::triggered, this, &SideWindows::showBus);
}

void SideWindows::showBus()
{
    bringUp(*m_bus);
}

void SideWindows::close()
{
    m_bus->close();
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
    }
    return QObject::eventFilter(watched, event);
}

void SideWindows::bringUp(QWidget &window)
{
    window.show();
    window.raise();
    window.activateWindow();
}
