#include "hosttest.h"

#include <molvacore/boxcomprofile.h>
#include <molvacore/comissionsmanager.h>
#include <molvacore/paycheckprofilemanager.h>
#include <molvacore/paymentcheckprofile.h>

#include <QTest>

#include <memory>

namespace {

/// The two managers promise the same; so they are held to it by the same steps.
template<typename Manager, typename Profile>
void checkManager()
{
    {
        DbConnector db;
        Manager manager(db);
        QVERIFY(!manager.getCurrentProfile().isValid());
        QVERIFY(manager.setCurrentProfile(Profile(3, QStringLiteral("Основной"))));
    }
    DbConnector db;
    Manager manager(db);
    QCOMPARE(manager.getCurrentProfile(), Profile(3, QStringLiteral("Основной")));
    QVERIFY(Manager(db).setCurrentProfile(Profile(4, QString())));
    QCOMPARE(manager.getCurrentProfile().id(), 4);
    QVERIFY(manager.setCurrentProfile(Profile(3, QStringLiteral("Переименован"))));
    QCOMPARE(manager.getCurrentProfile(), Profile(3, QStringLiteral("Переименован")));
    QVERIFY(!manager.setCurrentProfile(Profile(0, QStringLiteral("без номера"))));
    QVERIFY(!manager.setCurrentProfile(Profile(-3, QStringLiteral("Основной"))));
    QCOMPARE(manager.getCurrentProfile().id(), 3);
    QVERIFY(manager.setCurrentProfile(Profile()));
    QCOMPARE(manager.getCurrentProfile(), Profile());
}

template<typename Manager, typename Profile>
void checkClosed()
{
    DbConnector db;
    Manager manager(db);
    QVERIFY(!manager.setCurrentProfile(Profile(3, QStringLiteral("Основной"))));
    QVERIFY(!manager.setCurrentProfile(Profile()));
    QVERIFY(!manager.getCurrentProfile().isValid());
}

} // namespace

class tst_ProfileManagers : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_host = std::make_unique<HostTest>(); }
    void cleanup() { m_host.reset(); }

    void commissions() { checkManager<ComissionsManager, BoxComProfile>(); }
    void receipts() { checkManager<PayCheckProfileManager, PaymentCheckProfile>(); }
    void theTwoAreIndependent();
    void closedDatabase();

private:
    std::unique_ptr<HostTest> m_host;
};

void tst_ProfileManagers::theTwoAreIndependent()
{
    DbConnector db;
    QVERIFY(ComissionsManager(db).setCurrentProfile(BoxComProfile(3, QStringLiteral("комиссия"))));
    QVERIFY(!PayCheckProfileManager(db).getCurrentProfile().isValid());
    QVERIFY(PayCheckProfileManager(db).setCurrentProfile(
        PaymentCheckProfile(3, QStringLiteral("чек"))));
    QCOMPARE(ComissionsManager(db).getCurrentProfile().name(), QStringLiteral("комиссия"));
}

void tst_ProfileManagers::closedDatabase()
{
    m_host->damage();
    checkClosed<ComissionsManager, BoxComProfile>();
    checkClosed<PayCheckProfileManager, PaymentCheckProfile>();
}

QTEST_GUILESS_MAIN(tst_ProfileManagers)
#include "tst_profilemanagers.moc"
