#include "keyboardscanner.h"

#include <QApplication>
#include <QTest>

namespace {

Qt::Key keyOf(QChar character)
{
    const ushort code = character.toUpper().unicode();
    return code >= 0x20 && code < 0x7f ? static_cast<Qt::Key>(code) : Qt::Key_unknown;
}

QWidget *target()
{
    if (QWidget *focused = QApplication::focusWidget())
        return focused;
    return QApplication::activeWindow();
}

} // namespace

void KeyboardScanner::type(const QString &text)
{
    for (const QChar character : text) {
        if (QWidget *widget = target())
            QTest::sendKeyEvent(QTest::Click, widget, keyOf(character), QString(character),
                                Qt::NoModifier);
    }
}

void KeyboardScanner::press(Qt::Key key)
{
    if (QWidget *widget = target())
        QTest::keyClick(widget, key);
}

void KeyboardScanner::scan(const QString &text, const QVector<Qt::Key> &suffix)
{
    type(text);
    for (const Qt::Key key : suffix)
        press(key);
}
