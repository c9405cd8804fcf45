#include "srscannerguard.h"

#include <QAbstractButton>
#include <QKeyEvent>
#include <QWizard>
#include <QWizardPage>

namespace {

/// Scanners leave 1 to 30 ms between two keys; nobody types a letter and then a blank on a button
/// within this time.
constexpr qint64 scannerPauseMs = 60;

bool isEnter(const QKeyEvent &key)
{
    return key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
}

} // namespace

SrScannerGuard::SrScannerGuard(QWizard *wizard) : QObject(wizard)
{
    const QList<int> ids = wizard->pageIds();
    for (const int id : ids)
        wizard->page(id)->installEventFilter(this);
    const auto buttons = wizard->findChildren<QAbstractButton *>();
    for (QAbstractButton *button : buttons)
        button->installEventFilter(this);
}

bool SrScannerGuard::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress)
        return false;
    const auto &key = *static_cast<QKeyEvent *>(event);
    if (!qobject_cast<QAbstractButton *>(watched))
        // The focused field has had its Enter; this is the rest of the way up to the wizard's
        // default button.
        return isEnter(key);

    const bool presses = isEnter(key) || key.key() == Qt::Key_Space;
    const bool inScan = m_sinceCharacter.isValid() && m_sinceCharacter.elapsed() < scannerPauseMs;
    if (!presses || inScan) {
        if (!key.text().isEmpty() && key.text().at(0).isPrint())
            m_sinceCharacter.start();
    }
    return presses && inScan;
}
