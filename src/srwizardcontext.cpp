#include "srwizardcontext.h"

#include "individual/selmarindividualwizard.h"
#include "legal/selmarlegalwizard.h"

namespace {

template<class Wizard>
SrWizardContext contextOf(const Wizard &wizard, const QPointer<FrHandler> &fiscalRegister)
{
    return {wizard.provider(), wizard.currency(), wizard.info(), fiscalRegister,
            wizard.pcWrapper()};
}

} // namespace

SrWizardContext SrWizardContext::of(const QWizard *wizard)
{
    SrWizardContext context;
    if (const auto *individual = qobject_cast<const SelmarIndividualWizard *>(wizard))
        context = contextOf(*individual, individual->frHandler());
    else if (const auto *legal = qobject_cast<const SelmarLegalWizard *>(wizard))
        context = contextOf(*legal, legal->fr());
    if (!context.provider)
        context.provider = QSharedPointer<Provider>::create();
    if (!context.currency)
        context.currency = QSharedPointer<basix::Currency>::create();
    return context;
}

QString SrWizardContext::checkName() const
{
    return provider->checkName();
}
