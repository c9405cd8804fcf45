#pragma once

#include <QString>
#include <QVector>
#include <Qt>

/// A barcode scanner that works as a keyboard: it types into whatever has the focus, key after key,
/// and ends with its suffix.
namespace KeyboardScanner {

/// Types `text` without a suffix. Each key goes to the widget that has the focus by then.
void type(const QString &text);
void press(Qt::Key key);
void scan(const QString &text, const QVector<Qt::Key> &suffix = {Qt::Key_Return});

} // namespace KeyboardScanner
