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

#include <QTemporaryDir>
#include <QtTest>

class tst_HostDataSeeder : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void fillsAnEmptyDatabase();
    void leavesWhatIsThere();
    void saysWhatFailed();

private:
    QTemporaryDir m_folder;
    int m_number = 0;
};

void tst_HostDataSeeder::init()
{
    DbConnector::setDatabaseFile(
        m_folder.filePath(QStringLiteral("%1/host.sqlite").arg(++m_number)));
    AppSession::setCurrentSession(AppSession());
}

void tst_HostDataSeeder::fillsAnEmptyDatabase()
{
    QString error;
    QVERIFY2(HostDataSeeder().seed(&error), qPrintable(error));
    DbConnector db;
    const BoxInfo box = BoxInfoController(db).boxInfo(true);
    QVERIFY(box.isValid());
    QCOMPARE(box.boxId(), HostDataSeeder::BOX_ID);
    QCOMPARE(box.currency().number3(), 643);
    QVERIFY(ComissionsManager(db).getCurrentProfile().isValid());
    QVERIFY(PayCheckProfileManager(db).getCurrentProfile().isValid());
    OnlineKktProfileManager registers(basix::BaseSqliteDbConnector::SharedConnection, nullptr);
    const OnlineKkmProfile profile = registers.getCurrentProfile();
    QVERIFY(profile.isValid());
    const QList<Provider> providers = ProvidersController(db).providers();
    QCOMPARE(providers.size(), 2);
    for (const Provider &provider : providers) {
        QCOMPARE(provider.id(), provider.workProviderId());
        const OnlineKkmInfo info = profile.getKkmInfo(provider.groupId(), provider.id());
        QCOMPARE(info.agentSign(), AgentFlag::PayAgent);
        QCOMPARE(info.defaultCalcType(), PaymentMethod::FullPayment);
        QCOMPARE(int(info.taxRate()), provider.id() == HostDataSeeder::PROVIDER_LEGAL ? 5 : 6);
        QVERIFY(info.payAgentPhone().startsWith(QStringLiteral("+7")));
        QStringList names;
        for (const QSharedPointer<ProviderParameter> &parameter : provider.parameters())
            names.append(parameter->name());
        const QString second = provider.id() == HostDataSeeder::PROVIDER_LEGAL
                                   ? QStringLiteral("numdoc")
                                   : QStringLiteral("period");
        QCOMPARE(names, (QStringList{QStringLiteral("account"), second, QStringLiteral("paydata"),
                                     QStringLiteral("qrcode")}));
    }
    QString cashier;
    QVERIFY(UsersController(db).getUserFullName(AppSession::currentSession(), cashier));
    QVERIFY(!cashier.isEmpty());
    QCOMPARE(FrSettings().cashboxInn().size(), 10);
    QCOMPARE(FrSettings().cashboxRegNumber().size(), 16);
    QCOMPARE(CardReaderSettings().type(), int(CardReaderSettings::SberPosLib));
}

void tst_HostDataSeeder::leavesWhatIsThere()
{
    QString error;
    QVERIFY(HostDataSeeder().seed(&error));
    DbConnector db;
    BoxInfo box = BoxInfoController(db).boxInfo(true);
    box.setName(QStringLiteral("Моя касса"));
    QVERIFY(BoxInfoController(db).setBoxInfo(box));
    Provider provider = ProvidersController(db).provider(HostDataSeeder::PROVIDER_LEGAL);
    provider.setCheckName(QStringLiteral("Мой поставщик"));
    QVERIFY(ProvidersController(db).saveProvider(provider));
    CardReaderSettings reader;
    reader.setType(CardReaderSettings::QEftPos);
    QVERIFY(reader.save());
    AppSession::setCurrentSession(AppSession(99));

    QVERIFY(HostDataSeeder().seed(&error));
    QCOMPARE(BoxInfoController(db).boxInfo(true).name(), QStringLiteral("Моя касса"));
    QCOMPARE(ProvidersController(db).provider(HostDataSeeder::PROVIDER_LEGAL).checkName(),
             QStringLiteral("Мой поставщик"));
    QCOMPARE(ProvidersController(db).providers().size(), 2);
    QCOMPARE(CardReaderSettings().type(), int(CardReaderSettings::QEftPos));
    QCOMPARE(AppSession::currentSession().userId(), Q_INT64_C(99));
}

void tst_HostDataSeeder::saysWhatFailed()
{
    DbConnector::setDatabaseFile(QStringLiteral("/proc/nowhere/host.sqlite"));
    QString error;
    QVERIFY(!HostDataSeeder().seed(&error));
    QVERIFY(!error.isEmpty());
}

QTEST_GUILESS_MAIN(tst_HostDataSeeder)
#include "tst_hostdataseeder.moc"
