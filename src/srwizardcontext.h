#pragma once

#include <basixcore/currency.h>
#include <molvacore/boxinfo.h>
#include <molvacore/frhandler.h>
#include <molvacore/ipayscontrollerwrapper.h>
#include <molvacore/provider.h>

#include <QPointer>
#include <QSharedPointer>

class QWizard;

/// What a page may ask of the wizard that holds it, whichever of the two it is. The one place that
/// knows both.
struct SrWizardContext
{
    QSharedPointer<Provider>
        provider; ///< never null; an empty record in a wizard without a provider
    QSharedPointer<basix::Currency> currency; ///< never null
    BoxInfo info;
    QPointer<FrHandler> fiscalRegister;
    QSharedPointer<IPaysControllerWrapper> paysController;

    /// The context of `wizard` as it is now; empty records when it is neither of the plugin's
    /// wizards.
    static SrWizardContext of(const QWizard *wizard);
    /// Title of the page's message boxes: the provider's receipt name.
    QString checkName() const;
};
