#include "guitestguard.h"

#include <QApplication>
#include <QWidget>

#include <algorithm>

GuiTestGuard::GuiTestGuard(const QStringList &expectedWarnings) : m_expected(expectedWarnings)
{
    // The trace that the plugin leaves at warning level while everything is well.
    m_expected.append(
        {QStringLiteral("#_#"), QStringLiteral("CREATE"), QStringLiteral("DESTROY 1 "),
         QStringLiteral("DESTROY 2"), QStringLiteral("::toPayParamsList("),
         QStringLiteral("::setClientPhoneOrEmail("), QStringLiteral("::parseCheckList("),
         QStringLiteral("ServicesPage::isComplete("),
         // The offscreen platform's own.
         QStringLiteral("propagateSizeHints")});
}

QStringList GuiTestGuard::problems() const
{
    QStringList found = answers.problems();
    if (answers.pending() > 0)
        found.append(QStringLiteral("%1 expected dialogs did not open").arg(answers.pending()));
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (const QWidget *window : windows) {
        // Popups of combo boxes and tool tips belong to the application.
        if (window->windowType() != Qt::ToolTip && window->windowType() != Qt::Popup)
            found.append(QStringLiteral("left over: %1 %2")
                             .arg(QString::fromLatin1(window->metaObject()->className()),
                                  window->windowTitle()));
    }
    for (const MessageLog::Message &message : log.messages()) {
        if (message.type != QtDebugMsg && message.type != QtInfoMsg && !isExpected(message))
            found.append(QStringLiteral("logged: ") + message.text);
    }
    return found;
}

bool GuiTestGuard::isExpected(const MessageLog::Message &message) const
{
    return std::any_of(m_expected.cbegin(), m_expected.cend(), [&message](const QString &part) {
        return message.text.contains(part) || message.function.contains(part);
    });
}
