#include "loadhost.h"

#include <hostdata/hostdataseeder.h>

#include <molvacore/boxinfo.h>
#include <molvacore/boxinfocontroller.h>
#include <molvacore/onlinekkmprofile.h>
#include <molvacore/onlinekktprofilemanager.h>
#include <molvacore/providerscontroller.h>

#include <QDir>

std::unique_ptr<LoadHost> LoadHost::open(const QString &folder, QString *error)
{
    DbConnector::setDatabaseFile(QDir(folder).filePath(QStringLiteral("host.sqlite")));
    HostDataSeeder seeder;
    if (!seeder.seed(error))
        return nullptr;
    std::unique_ptr<LoadHost> result(new LoadHost);
    if (!result->m_held.isOpen()) {
        *error = result->m_held.lastError();
        return nullptr;
    }
    LoadBox::Host &host = result->m_host;
    host.provider =
        ProvidersController(result->m_held).provider(HostDataSeeder::PROVIDER_INDIVIDUAL);
    host.currency = BoxInfoController(result->m_held).boxInfo(true).currency();
    OnlineKktProfileManager profiles(basix::BaseSqliteDbConnector::SharedConnection, nullptr);
    host.kkm = profiles.getCurrentProfile().getKkmInfo(host.provider.groupId(), host.provider.id());
    return result;
}
