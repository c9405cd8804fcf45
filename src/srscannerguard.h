#pragma once

#include <QElapsedTimer>
#include <QObject>

class QWizard;

/// Keeps a keyboard scanner from pressing buttons.
///
/// A scanner ends its text with Enter, some with two, and its text holds blanks. In a dialog Enter
/// presses the default button from any field, and both press a button that has the focus. In a
/// wizard that takes money that would go on to the next page or finish the payment. So Enter does
/// nothing outside a button, and a button is not pressed by a key that comes as fast behind another
/// character as no hand types. A child of the wizard whose pages and buttons it guards; to be
/// created when the wizard has all its pages.
class SrScannerGuard final : public QObject
{
public:
    explicit SrScannerGuard(QWizard *wizard);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QElapsedTimer m_sinceCharacter;
};
