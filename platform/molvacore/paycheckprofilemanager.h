#pragma once

#include <molvacore/molvacore_global.h>
#include <molvacore/paymentcheckprofile.h>

class DbConnector;

/// Access to the receipt profile that the box works with.
///
/// Every call reads the database; with a closed one the record is invalid and setting is refused.
class MOLVACORE_EXPORT PayCheckProfileManager
{
public:
    /// `db` must outlive this object.
    explicit PayCheckProfileManager(DbConnector &db);

    PaymentCheckProfile getCurrentProfile();
    /// Stores the profile and makes it the current one. A default-constructed profile leaves none
    /// current; any other with an id of zero or less is refused.
    bool setCurrentProfile(const PaymentCheckProfile &profile);

private:
    DbConnector &m_db;
};
