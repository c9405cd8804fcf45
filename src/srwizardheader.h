#pragma once

#include <QString>

class QWizard;
class QWizardPage;

/// Makes the titles of `wizard` plain text, which Qt would otherwise take for markup when they look
/// like it, and lets a long title go on in a second line instead of widening the window beyond the
/// screen. Once per wizard, whose first page has title and subtitle: the header is made for those.
void srPrepareHeader(QWizard *wizard);

/// Puts the payer into the title of `page` and the address below it, as far as two lines of the
/// header hold them (SrShownText); the account's document shows the rest.
void srShowPayer(QWizardPage *page, const QString &name, const QString &address);
