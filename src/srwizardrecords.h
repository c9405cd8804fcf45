#pragma once

#include <basixcore/currency.h>
#include <basixcore/fixnumber.h>
#include <molvacore/boxcomprofile.h>
#include <molvacore/boxinfo.h>
#include <molvacore/frhandler.h>
#include <molvacore/ipayscontrollerwrapper.h>
#include <molvacore/paymentcheckprofile.h>
#include <molvacore/provider.h>
#include <molvacore/providerparameter.h>

#include <QFont>
#include <QMap>
#include <QPointer>
#include <QSharedPointer>

/// What a wizard knows of the payment that it was opened for; held by value in each wizard, filled
/// by the plugin's handler.
///
/// Records that pages may keep are shared pointers to copies of their own: replacing one leaves the
/// copy that a page holds as it was. Host objects stay the host's; the payments controller is
/// shared with the handler.
struct SrWizardRecords
{
    SrWizardRecords(const QFont &font, const basix::Currency &paymentCurrency,
                    const basix::FixNumber &prepayAmount);

    void setProvider(const Provider &record);
    void setComProfile(const BoxComProfile &record);
    void setPayCheckProfile(const PaymentCheckProfile &record);
    /// Provider::id(), or -1 without a provider.
    qint64 providerId() const;

    QSharedPointer<Provider> provider;
    QSharedPointer<BoxComProfile> comProfile;
    QSharedPointer<PaymentCheckProfile> payCheckProfile;
    QSharedPointer<basix::Currency> currency;
    QSharedPointer<basix::FixNumber> prepay; ///< the amount that the host proposes
    QFont inputFont;
    BoxInfo info;
    QSharedPointer<IPaysControllerWrapper> pcWrapper;
    QMap<QString, ProviderParameter> providerParams; ///< by name; of two with one name the later
    QPointer<FrHandler> fiscalRegister;
};
