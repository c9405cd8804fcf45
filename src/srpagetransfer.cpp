#include "srpagetransfer.h"

#include "isriwizardpage.h"
#include "sraccount.h"

#include <QWizard>

QSharedPointer<SRAccount> srAccountOfPreviousPage(const QWizard *wizard)
{
    if (!wizard || wizard->visitedIds().isEmpty())
        return {};
    const auto *page =
        dynamic_cast<ISrIWizardPage *>(wizard->page(wizard->visitedIds().constLast()));
    return page ? page->outputData() : QSharedPointer<SRAccount>();
}
