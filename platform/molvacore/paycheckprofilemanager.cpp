#include <molvacore/paycheckprofilemanager.h>

#include <molvacore/dbconnector.h>
#include <molvacore/hosttables.h>

PayCheckProfileManager::PayCheckProfileManager(DbConnector &db) : m_db(db) {}

PaymentCheckProfile PayCheckProfileManager::getCurrentProfile()
{
    const HostTables::NamedRecord record = HostTables::currentRecord(
        m_db, QStringLiteral("receipt_profiles"), QStringLiteral("receipt_profile"));
    return PaymentCheckProfile(record.id, record.name);
}

bool PayCheckProfileManager::setCurrentProfile(const PaymentCheckProfile &profile)
{
    return HostTables::setCurrentRecord(m_db, QStringLiteral("receipt_profiles"),
                                        QStringLiteral("receipt_profile"),
                                        {profile.id(), profile.name()});
}
