#include "cashierhands.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QInputDialog>
#include <QKeyEvent>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPointer>
#include <QPushButton>
#include <QStyle>
#include <QStyleOptionViewItem>

namespace {

void mouse(QWidget &widget, QEvent::Type type, const QPoint &position)
{
    const bool release = type == QEvent::MouseButtonRelease;
    QMouseEvent event(type, position, widget.window()->mapFromGlobal(widget.mapToGlobal(position)),
                      widget.mapToGlobal(position), Qt::LeftButton,
                      release ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&widget, &event);
}

void clickAt(QWidget &widget, const QPoint &position)
{
    // The press may already destroy the widget (a button that closes its dialog does so on
    // release).
    const QPointer<QWidget> alive(&widget);
    mouse(widget, QEvent::MouseButtonPress, position);
    if (alive)
        mouse(widget, QEvent::MouseButtonRelease, position);
}

/// Where keys go: the focus of the window in front, also of one that has just opened and is not yet
/// active.
QWidget *focused()
{
    const QWidget *window = CashierHands::front();
    return window ? window->focusWidget() : nullptr;
}

void key(int code, const QString &text, Qt::KeyboardModifiers modifiers)
{
    QPointer<QWidget> target(focused());
    if (!target)
        target = CashierHands::front();
    if (!target)
        return;
    QKeyEvent press(QEvent::KeyPress, code, modifiers, text);
    QApplication::sendEvent(target, &press);
    if (target) {
        QKeyEvent release(QEvent::KeyRelease, code, modifiers, text);
        QApplication::sendEvent(target, &release);
    }
}

int keyOf(QChar character)
{
    const ushort code = character.toUpper().unicode();
    return code < 0x80 ? int(code) : int(Qt::Key_unknown);
}

} // namespace

QWidget *CashierHands::front()
{
    if (QWidget *modal = QApplication::activeModalWidget())
        return modal;
    return QApplication::activeWindow();
}

QWidget *CashierHands::find(const QString &objectName)
{
    const QWidget *window = front();
    if (!window)
        return nullptr;
    const QList<QWidget *> widgets = window->findChildren<QWidget *>(objectName);
    for (QWidget *widget : widgets) {
        if (widget->isVisible())
            return widget;
    }
    return nullptr;
}

bool CashierHands::click(QWidget *widget)
{
    if (!reach(widget, widget ? widget->objectName() : QString()))
        return false;
    if (widget->focusPolicy() & Qt::ClickFocus)
        widget->setFocus(Qt::MouseFocusReason);
    clickAt(*widget, widget->rect().center());
    return true;
}

bool CashierHands::click(const QString &objectName)
{
    QWidget *widget = find(objectName);
    return widget ? click(widget) : refuse(QStringLiteral("«%1» на экране нет").arg(objectName));
}

bool CashierHands::clickWizard(QWizard::WizardButton which)
{
    auto *wizard = qobject_cast<QWizard *>(front());
    if (!wizard)
        return refuse(QStringLiteral("впереди не мастер платежа"));
    return click(wizard->button(which));
}

bool CashierHands::confirmMessage()
{
    auto *box = qobject_cast<QMessageBox *>(front());
    if (!box)
        return refuse(QStringLiteral("сообщения на экране нет"));
    QAbstractButton *button = box->defaultButton();
    return click(button ? button : box->buttons().value(0));
}

bool CashierHands::type(const QString &text)
{
    if (!focused())
        return refuse(QStringLiteral("курсора нет ни в одном поле"));
    int from = 0;
    while (from < text.size()) {
        // A pair of surrogates is one key, as an input method sends it.
        const int length = text.at(from).isHighSurrogate() ? 2 : 1;
        key(keyOf(text.at(from)), text.mid(from, length), Qt::NoModifier);
        from += length;
    }
    return true;
}

bool CashierHands::press(Qt::Key code, Qt::KeyboardModifiers modifiers)
{
    QString text;
    if (code == Qt::Key_Return || code == Qt::Key_Enter)
        text = QStringLiteral("\r");
    else if (code == Qt::Key_Space)
        text = QStringLiteral(" ");
    key(code, text, modifiers);
    return true;
}

bool CashierHands::fill(const QString &objectName, const QString &text)
{
    if (!click(objectName))
        return false;
    press(Qt::Key_A, Qt::ControlModifier);
    return type(text);
}

bool CashierHands::scan(const QString &text)
{
    return type(text) && press(Qt::Key_Return);
}

bool CashierHands::enterCell(QAbstractItemView &view, const QModelIndex &index, const QString &text)
{
    if (!reach(&view, view.objectName()))
        return false;
    view.scrollTo(index);
    const QPoint position = view.visualRect(index).center();
    view.setFocus(Qt::MouseFocusReason);
    clickAt(*view.viewport(), position);
    mouse(*view.viewport(), QEvent::MouseButtonDblClick, position);
    mouse(*view.viewport(), QEvent::MouseButtonRelease, position);
    const QWidget *editor = focused();
    if (!editor || editor == &view || !view.isAncestorOf(editor))
        return refuse(
            QStringLiteral("ячейка таблицы «%1» не редактируется").arg(view.objectName()));
    press(Qt::Key_A, Qt::ControlModifier);
    return type(text) && press(Qt::Key_Return);
}

bool CashierHands::tickCell(QAbstractItemView &view, const QModelIndex &index)
{
    if (!reach(&view, view.objectName()))
        return false;
    view.scrollTo(index);
    QStyleOptionViewItem option;
    option.initFrom(&view);
    option.rect = view.visualRect(index);
    option.features = QStyleOptionViewItem::HasCheckIndicator | QStyleOptionViewItem::HasDisplay;
    option.text = index.data().toString();
    const QRect box =
        view.style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, &view);
    if (box.isEmpty())
        return refuse(QStringLiteral("в ячейке таблицы «%1» нет отметки").arg(view.objectName()));
    view.setFocus(Qt::MouseFocusReason);
    clickAt(*view.viewport(), box.center());
    return true;
}

bool CashierHands::toggleCell(QAbstractItemView &view, const QModelIndex &index)
{
    if (!reach(&view, view.objectName()))
        return false;
    view.scrollTo(index);
    view.setFocus(Qt::MouseFocusReason);
    // At the right edge: a click on the check box would already toggle it.
    const QRect cell = view.visualRect(index);
    clickAt(*view.viewport(), QPoint(cell.right() - 2, cell.center().y()));
    return press(Qt::Key_Space);
}

bool CashierHands::enterAmount(const QString &text)
{
    auto *dialog = qobject_cast<QInputDialog *>(front());
    auto *field = dialog ? dialog->findChild<QAbstractSpinBox *>() : nullptr;
    if (!field)
        return refuse(QStringLiteral("окна для ввода суммы на экране нет"));
    field->setFocus(Qt::MouseFocusReason);
    press(Qt::Key_A, Qt::ControlModifier);
    return type(text) && press(Qt::Key_Return);
}

bool CashierHands::reach(const QWidget *widget, const QString &name)
{
    if (!widget)
        return refuse(QStringLiteral("«%1» на экране нет").arg(name));
    if (!widget->isVisible())
        return refuse(QStringLiteral("«%1» скрыт").arg(name));
    if (!widget->isEnabled())
        return refuse(QStringLiteral("«%1» недоступен").arg(name));
    const QWidget *modal = QApplication::activeModalWidget();
    if (modal && widget->window() != modal) {
        return refuse(QStringLiteral("«%1» заслонён окном «%2»").arg(name, modal->windowTitle()));
    }
    return true;
}

bool CashierHands::refuse(const QString &error)
{
    m_error = error;
    return false;
}
