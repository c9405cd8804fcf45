#pragma once

#include "isriwizardpage.h"

#include <QCoreApplication>
#include <QString>

class QWidget;

/// The message boxes of the wizards' pages: one way to show a text, whichever page and wizard it
/// comes from.
///
/// A box runs its own event loop, in which the host may destroy the wizard: a page that goes on
/// behind a box has to make sure that it is still there.
class SrMessageBox
{
    Q_DECLARE_TR_FUNCTIONS(SrMessageBox)

public:
    /// Shows `text` in a modal box with the single button OK and returns when the cashier has
    /// closed it.
    ///
    /// Errors are titled "Ошибка " followed by `checkName`, the provider's receipt name; warnings
    /// and information with `checkName` alone. The text is shown as plain text: what billing sends
    /// is never taken for markup.
    static void show(QWidget *parent, const QString &checkName, ISrIWizardPage::MsgType type,
                     const QString &text);
    /// Shows an error in a box with a title of its own.
    static void showError(QWidget *parent, const QString &title, const QString &text);
};
