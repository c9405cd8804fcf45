#include <molvacore/comissionsmanager.h>

#include <molvacore/dbconnector.h>
#include <molvacore/hosttables.h>

ComissionsManager::ComissionsManager(DbConnector &db) : m_db(db) {}

BoxComProfile ComissionsManager::getCurrentProfile()
{
    const HostTables::NamedRecord record = HostTables::currentRecord(
        m_db, QStringLiteral("commission_profiles"), QStringLiteral("commission_profile"));
    return BoxComProfile(record.id, record.name);
}

bool ComissionsManager::setCurrentProfile(const BoxComProfile &profile)
{
    return HostTables::setCurrentRecord(m_db, QStringLiteral("commission_profiles"),
                                        QStringLiteral("commission_profile"),
                                        {profile.id(), profile.name()});
}
