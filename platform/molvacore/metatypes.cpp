#include <molvacore/appsession.h>
#include <molvacore/boxcomprofile.h>
#include <molvacore/boxinfo.h>
#include <molvacore/cardchargelog.h>
#include <molvacore/check.h>
#include <molvacore/onlinekkmprofile.h>
#include <molvacore/paymentcheckprofile.h>
#include <molvacore/paypack.h>

#include <QMetaType>

namespace {

/// The name is what queued and string-based connections look a type up by; the comparator makes
/// variants of it comparable.
template<typename Type>
void registerRecord(const char *name)
{
    qRegisterMetaType<Type>(name);
    QMetaType::registerEqualsComparator<Type>();
}

void registerRecords()
{
    registerRecord<AppSession>("AppSession");
    registerRecord<BoxComProfile>("BoxComProfile");
    registerRecord<BoxInfo>("BoxInfo");
    registerRecord<Check>("Check");
    registerRecord<OnlineKkmInfo>("OnlineKkmInfo");
    registerRecord<OnlineKkmProfile>("OnlineKkmProfile");
    registerRecord<Payment>("Payment");
    registerRecord<PaymentCheckProfile>("PaymentCheckProfile");
    registerRecord<PayPack>("PayPack");
    registerRecord<PayPackOperation>("PayPackOperation");
    registerRecord<Provider>("Provider");
    registerRecord<ProviderParameter>("ProviderParameter");
    qRegisterMetaType<CardCharge>("CardCharge");
}

} // namespace

Q_CONSTRUCTOR_FUNCTION(registerRecords)
