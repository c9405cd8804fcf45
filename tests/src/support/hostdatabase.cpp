#include "hostdatabase.h"

#include <molvacore/appsession.h>
#include <molvacore/boxinfocontroller.h>
#include <molvacore/cardreadersettings.h>
#include <molvacore/comissionsmanager.h>
#include <molvacore/dbconnector.h>
#include <molvacore/frsettings.h>
#include <molvacore/onlinekktprofilemanager.h>
#include <molvacore/paycheckprofilemanager.h>
#include <molvacore/userscontroller.h>

HostDatabase::HostDatabase(Parts leftOut)
{
    DbConnector::setDatabaseFile(file());
    DbConnector db;
    bool stored = db.isOpen();
    if (!leftOut.testFlag(Box))
        stored = stored && BoxInfoController(db).setBoxInfo(box());
    if (!leftOut.testFlag(CommissionProfile))
        stored = stored && ComissionsManager(db).setCurrentProfile(commissionProfile());
    if (!leftOut.testFlag(ReceiptProfile))
        stored = stored && PayCheckProfileManager(db).setCurrentProfile(receiptProfile());
    if (!leftOut.testFlag(RegisterProfile)) {
        OnlineKktProfileManager manager(basix::BaseSqliteDbConnector::SharedConnection, nullptr);
        stored = stored && manager.setCurrentProfile(registerProfile());
    }
    AppSession::setCurrentSession(AppSession(leftOut.testFlag(Cashier) ? 0 : cashierId));
    if (!leftOut.testFlag(Cashier)) {
        stored = stored
            && UsersController(db).setUserFullName(AppSession::currentSession(),
                                                   QStringLiteral("Кассирова Анна Петровна"));
    }
    if (!leftOut.testFlag(RegisterSettings)) {
        FrSettings settings;
        settings.setCashboxInn(QStringLiteral("7700000001"));
        settings.setCashboxRegNumber(QStringLiteral("0000000001012345"));
        stored = stored && settings.save();
    }
    if (!stored)
        qFatal("the host database of the test could not be filled: %s", qPrintable(db.lastError()));
}

HostDatabase::~HostDatabase()
{
    AppSession::setCurrentSession(AppSession());
    DbConnector::setDatabaseFile(QString());
}

QString HostDatabase::file() const
{
    return m_dir.filePath(QStringLiteral("host.sqlite"));
}

void HostDatabase::setCardTerminal(int type, const QString &outcome)
{
    CardReaderSettings settings;
    settings.setType(type);
    settings.setOutcome(outcome);
    if (!settings.save())
        qFatal("the card terminal of the test could not be stored");
}

BoxInfo HostDatabase::box()
{
    BoxInfo info;
    info.setBoxId(boxId);
    info.setCurrency(
        basix::Currency(currencyNumber, QStringLiteral("RUB"), QStringLiteral("Рубль")));
    info.setName(QStringLiteral("Касса 77"));
    info.setAddress(QStringLiteral("г. Ривенхолд, ул. Речная, 1"));
    return info;
}

BoxComProfile HostDatabase::commissionProfile()
{
    return BoxComProfile(3, QStringLiteral("Без комиссии"));
}

PaymentCheckProfile HostDatabase::receiptProfile()
{
    return PaymentCheckProfile(4, QStringLiteral("Обычный чек"));
}

OnlineKkmProfile HostDatabase::registerProfile()
{
    OnlineKkmInfo info;
    info.setAdditionalProp(QStringLiteral("Участок"));
    info.setAdditionalPropValue(QStringLiteral("12"));
    info.setTaxSystem(FDTax::General);
    info.setTaxRate(6);
    info.setDefaultCalcType(PaymentMethod::FullPayment);
    info.setAgentSign(AgentFlag::BankPayAgent);
    info.setPayAgentOp(QStringLiteral("Приём платежей"));
    info.setPayAgentPhone(QStringLiteral("+74950000001"));
    info.setPayOperatorPhone(QStringLiteral("+74950000002"));
    info.setTransferOperatorAddress(QStringLiteral("г. Ривенхолд, пл. Банковская, 2"));
    info.setTransferOperatorInn(QStringLiteral("7700000002"));
    info.setTransferOperatorName(QStringLiteral("Банк переводов"));
    info.setTransferOperatorPhone(QStringLiteral("+74950000003"));
    OnlineKkmProfile profile;
    profile.setId(6);
    profile.setName(QStringLiteral("Касса онлайн"));
    profile.setDefaultKkmInfo(info);
    return profile;
}
