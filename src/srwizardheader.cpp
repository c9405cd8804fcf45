#include "srwizardheader.h"

#include "srshowntext.h"

#include <QLabel>
#include <QWizard>
#include <QWizardPage>

namespace {

/// What two lines of the header take in a window of 800 pixels.
constexpr int longestTitle = 150;
constexpr int longestSubtitle = 170;
constexpr int longestWord = 25;
/// The framework makes the labels of its header itself, when the wizard is first shown, and keeps
/// them to itself.
void wrapTitle(const QWizard &wizard)
{
    const QWizardPage *page = wizard.currentPage();
    if (!page)
        return;
    const QList<QLabel *> labels = wizard.findChildren<QLabel *>();
    for (QLabel *label : labels) {
        if (!page->isAncestorOf(label) && label->text() == page->title())
            label->setWordWrap(true);
    }
}

} // namespace

void srPrepareHeader(QWizard *wizard)
{
    wizard->setTitleFormat(Qt::PlainText);
    wizard->setSubTitleFormat(Qt::PlainText);
    QObject::connect(wizard, &QWizard::currentIdChanged, wizard, [wizard] { wrapTitle(*wizard); });
}

void srShowPayer(QWizardPage *page, const QString &name, const QString &address)
{
    page->setTitle(SrShownText::breakable(SrShownText::line(name, longestTitle), longestWord));
    page->setSubTitle(
        SrShownText::breakable(SrShownText::line(address, longestSubtitle), longestWord));
}
