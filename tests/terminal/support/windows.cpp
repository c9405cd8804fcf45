#include "windows.h"

#include <QApplication>
#include <QFont>

void Windows::useFontOfTheTerminal()
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(13);
    QApplication::setFont(font);
}

QWidget *Windows::window(const char *name)
{
    for (QWidget *each : QApplication::topLevelWidgets()) {
        if (each->objectName() == QLatin1String(name))
            return each;
    }
    return nullptr;
}

QWidget *Windows::shownWindow(const char *name)
{
    QWidget *found = window(name);
    return found && found->isVisible() ? found : nullptr;
}
