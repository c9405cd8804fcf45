#include "hoststation.h"

#include <molvacore/appsession.h>
#include <molvacore/dbconnector.h>
#include <molvacore/fiscaltypes.h>
#include <molvacore/frsettings.h>
#include <molvacore/providerparameter.h>
#include <molvacore/userscontroller.h>

HostStation::HostStation()
{
    DbConnector::setDatabaseFile(m_dir.filePath(QStringLiteral("host.sqlite")));
    AppSession::setCurrentSession(AppSession(7));
    DbConnector db;
    if (!UsersController(db).setUserFullName(AppSession::currentSession(), cashier()))
        qFatal("the cashier's name was not stored");
    FrSettings settings;
    settings.setCashboxInn(registerInn());
    settings.setCashboxRegNumber(registerNumber());
    if (!settings.save())
        qFatal("the register's settings were not stored");
}

HostStation::~HostStation()
{
    AppSession::setCurrentSession(AppSession());
    DbConnector::setDatabaseFile(QString());
}

basix::Currency HostStation::roubles()
{
    return basix::Currency(643, QStringLiteral("RUB"), QStringLiteral("Российский рубль"));
}

OnlineKkmInfo HostStation::profile()
{
    OnlineKkmInfo info;
    info.setAdditionalProp(QStringLiteral("Участок"));
    info.setAdditionalPropValue(QStringLiteral("Северный"));
    info.setTaxSystem(FDTax::SimplifiedIncome);
    info.setTaxRate(6);
    info.setDefaultCalcType(PaymentMethod::FullPayment);
    info.setAgentSign(AgentFlag::PayAgent);
    info.setPayAgentOp(QStringLiteral("Приём платежа"));
    info.setPayAgentPhone(QStringLiteral("79120000001"));
    info.setPayOperatorPhone(QStringLiteral("79120000002"));
    info.setTransferOperatorAddress(QStringLiteral("Москва, ул. Переводная, 3"));
    info.setTransferOperatorInn(QStringLiteral("7701112223"));
    info.setTransferOperatorName(QStringLiteral("ПАО \"Перевод\""));
    info.setTransferOperatorPhone(QStringLiteral("79120000003"));
    return info;
}

QSharedPointer<Provider> HostStation::provider()
{
    auto provider = QSharedPointer<Provider>::create();
    provider->setId(18722);
    provider->setWorkProviderId(18722);
    provider->setName(QStringLiteral("Селмар Ривенхолд"));
    provider->setLegalName(QStringLiteral("АО \"Селмар Ривенхолд\""));
    provider->setCheckName(QStringLiteral("Селмар"));
    provider->setInn(QStringLiteral("5900000001"));
    provider->setPhones(QStringLiteral("8 342 200-00-01, +73422000002"));
    for (const char *name : {"account", "period", "paydata", "qrcode", "numdoc", "Account"}) {
        provider->addParameter(
            ProviderParameter(QLatin1String(name), QString(), QStringLiteral("before")));
    }
    return provider;
}
