#include "srfiscalreadiness.h"

#include <molvacore/frhandler.h>
#include <molvacore/fsstatus.h>
#include <molvacore/onlinekkmprofile.h>
#include <molvacore/onlinekktprofilemanager.h>

namespace {

/// Where an agent sets up the profiles of its cash registers.
const QLatin1String agentPortalHost("agent.molva.example");

bool canPrint(const QPointer<FrHandler> &fiscalRegister)
{
    if (!fiscalRegister)
        return false;
    QSharedPointer<FsStatus> status;
    return fiscalRegister->getFiscalStatus(status) && status && status->readyForReceipts();
}

} // namespace

QString SrFiscalReadiness::obstacle(const QPointer<FrHandler> &fiscalRegister, QObject *parent)
{
    if (!canPrint(fiscalRegister))
        return noRegisterText();
    if (!currentProfile(parent).isValid())
        return noProfileText();
    return {};
}

OnlineKkmProfile SrFiscalReadiness::currentProfile(QObject *parent)
{
    OnlineKktProfileManager manager(basix::BaseSqliteDbConnector::SharedConnection, parent);
    return manager.getCurrentProfile();
}

QString SrFiscalReadiness::noProfileText()
{
    return tr("Не настроен профиль онлайн касс на ") + agentPortalHost;
}

QString SrFiscalReadiness::noRegisterText()
{
    return tr("ККТ не доступна");
}
