#include <hostdata/hostdataseeder.h>

#include <molvacore/appsession.h>
#include <molvacore/boxcomprofile.h>
#include <molvacore/boxinfo.h>
#include <molvacore/boxinfocontroller.h>
#include <molvacore/cardreadersettings.h>
#include <molvacore/comissionsmanager.h>
#include <molvacore/dbconnector.h>
#include <molvacore/frsettings.h>
#include <molvacore/onlinekkmprofile.h>
#include <molvacore/onlinekktprofilemanager.h>
#include <molvacore/paycheckprofilemanager.h>
#include <molvacore/paymentcheckprofile.h>
#include <molvacore/provider.h>
#include <molvacore/providerscontroller.h>
#include <molvacore/userscontroller.h>

const qint64 HostDataSeeder::BOX_ID = 4107;
const qint64 HostDataSeeder::PROVIDER_INDIVIDUAL = 18722;
const qint64 HostDataSeeder::PROVIDER_LEGAL = 18723;
const qint64 HostDataSeeder::CASHIER_ID = 21;

namespace {

constexpr qint64 GROUP_ID = 310;

bool seedBox(DbConnector &db)
{
    BoxInfoController controller(db);
    if (controller.boxInfo(true).isValid())
        return true;
    BoxInfo box;
    box.setBoxId(HostDataSeeder::BOX_ID);
    box.setName(QStringLiteral("Касса № 7"));
    box.setAddress(QStringLiteral("г. Приреченск, ул. Центральная, д. 3"));
    box.setCurrency(
        basix::Currency(643, QStringLiteral("RUB"), QStringLiteral("Российский рубль")));
    return controller.setBoxInfo(box);
}

bool seedCommission(DbConnector &db)
{
    ComissionsManager manager(db);
    if (manager.getCurrentProfile().isValid())
        return true;
    BoxComProfile profile;
    profile.setId(1);
    profile.setName(QStringLiteral("Без комиссии"));
    return manager.setCurrentProfile(profile);
}

bool seedReceipt(DbConnector &db)
{
    PayCheckProfileManager manager(db);
    if (manager.getCurrentProfile().isValid())
        return true;
    PaymentCheckProfile profile;
    profile.setId(1);
    profile.setName(QStringLiteral("Чек агента"));
    return manager.setCurrentProfile(profile);
}

OnlineKkmInfo agentInfo(int vatRate)
{
    OnlineKkmInfo info;
    info.setAdditionalProp(QStringLiteral("Терминал"));
    info.setAdditionalPropValue(QString::number(HostDataSeeder::BOX_ID));
    info.setTaxSystem(FDTax::General);
    info.setTaxRate(static_cast<unsigned char>(vatRate));
    info.setDefaultCalcType(PaymentMethod::FullPayment);
    info.setAgentSign(AgentFlag::PayAgent);
    info.setPayAgentPhone(QStringLiteral("+78001004107"));
    info.setPayOperatorPhone(QStringLiteral("+78001004100"));
    return info;
}

bool seedRegisterProfile()
{
    constexpr int vatZero = 5;
    constexpr int vatNone = 6;
    OnlineKktProfileManager manager(basix::BaseSqliteDbConnector::SharedConnection, nullptr);
    if (manager.getCurrentProfile().isValid())
        return true;
    OnlineKkmProfile profile;
    profile.setId(1);
    profile.setName(QStringLiteral("Платёжный агент"));
    profile.setDefaultKkmInfo(agentInfo(vatNone));
    profile.setGroupKkmInfo(GROUP_ID, agentInfo(vatNone));
    profile.setProviderKkmInfo(HostDataSeeder::PROVIDER_LEGAL, agentInfo(vatZero));
    return manager.setCurrentProfile(profile);
}

bool seedCashier(DbConnector &db)
{
    if (!AppSession::currentSession().isValid())
        AppSession::setCurrentSession(AppSession(HostDataSeeder::CASHIER_ID));
    UsersController users(db);
    const AppSession session = AppSession::currentSession();
    QString name;
    if (session.userId() != HostDataSeeder::CASHIER_ID || users.getUserFullName(session, name))
        return true;
    return users.setUserFullName(session, QStringLiteral("Фёдорова Вера Ильинична"));
}

bool seedRegister()
{
    FrSettings settings;
    if (!settings.cashboxInn().isEmpty() || !settings.cashboxRegNumber().isEmpty())
        return true;
    settings.setCashboxInn(QStringLiteral("0012003454"));
    settings.setCashboxRegNumber(QStringLiteral("0004107000012345"));
    return settings.save();
}

bool seedCardReader()
{
    CardReaderSettings settings;
    if (settings.configured())
        return true;
    settings.setType(CardReaderSettings::SberPosLib);
    return settings.save();
}

Provider utility(qint64 id, const QString &who)
{
    Provider provider;
    provider.setId(id);
    provider.setWorkProviderId(id);
    provider.setGroupId(GROUP_ID);
    provider.setName(QStringLiteral("Водоканал Селмар Ривенхолд %1").arg(who));
    provider.setCheckName(QStringLiteral("Водоканал %1").arg(who));
    provider.setLegalName(QStringLiteral("АО «Селмар Ривенхолд»"));
    provider.setInn(QStringLiteral("0012003461"));
    provider.setPhones(QStringLiteral("+7 800 100 18 72, +7 495 100 18 73"));
    return provider;
}

bool seedProviders(DbConnector &db)
{
    ProvidersController controller(db);
    const ProviderParameter payData(QStringLiteral("paydata"),
                                    QStringLiteral("Услуги и показания"));
    const ProviderParameter qrCode(QStringLiteral("qrcode"), QStringLiteral("QR-код чека"));

    Provider individual = utility(HostDataSeeder::PROVIDER_INDIVIDUAL, QStringLiteral("ФЛ"));
    individual.addParameter({QStringLiteral("account"), QStringLiteral("Лицевой счёт")});
    individual.addParameter({QStringLiteral("period"), QStringLiteral("Период")});
    individual.addParameter(payData);
    individual.addParameter(qrCode);

    Provider legal = utility(HostDataSeeder::PROVIDER_LEGAL, QStringLiteral("ЮЛ"));
    legal.addParameter({QStringLiteral("account"), QStringLiteral("Договор")});
    legal.addParameter({QStringLiteral("numdoc"), QStringLiteral("Документ")});
    legal.addParameter(payData);
    legal.addParameter(qrCode);

    for (const Provider &provider : {individual, legal}) {
        if (controller.provider(provider.id()).id() == 0 && !controller.saveProvider(provider))
            return false;
    }
    return true;
}

} // namespace

bool HostDataSeeder::seed(QString *error)
{
    DbConnector db;
    if (!db.isOpen()) {
        *error = db.lastError();
        return false;
    }
    const bool seeded = seedBox(db) && seedCommission(db) && seedReceipt(db) &&
                        seedRegisterProfile() && seedCashier(db) && seedRegister() &&
                        seedCardReader() && seedProviders(db);
    *error =
        seeded ? QString()
               : QStringLiteral("Данные кассы не записаны в %1. Проверьте место на диске и права.")
                     .arg(DbConnector::databaseFile());
    return seeded;
}
