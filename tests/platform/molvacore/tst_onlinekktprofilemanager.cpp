#include "hosttest.h"
#include "sampleinfo.h"

#include <molvacore/onlinekktprofilemanager.h>

#include <QTest>

#include <memory>

using basix::BaseSqliteDbConnector;

namespace {

OnlineKkmProfile sample(qint64 id = 9)
{
    OnlineKkmProfile profile;
    profile.setId(id);
    profile.setName(QStringLiteral("Профиль касс"));
    profile.setDefaultKkmInfo(sampleInfo());
    profile.setGroupKkmInfo(5, sampleInfo(QStringLiteral(" а")));
    profile.setGroupKkmInfo(6, sampleInfo(QStringLiteral(" б")));
    profile.setProviderKkmInfo(5, sampleInfo(QStringLiteral(" в")));
    return profile;
}

} // namespace

class tst_OnlineKktProfileManager : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_host = std::make_unique<HostTest>(); }
    void cleanup() { m_host.reset(); }

    void freshDatabaseHasNone();
    void roundTrip_data();
    void roundTrip();
    void replacingLeavesNothingBehind();
    void defaultClears();
    void idBelowOneIsRefused();
    void closedDatabase();

private:
    std::unique_ptr<HostTest> m_host;
};

void tst_OnlineKktProfileManager::freshDatabaseHasNone()
{
    OnlineKktProfileManager manager(BaseSqliteDbConnector::SharedConnection, nullptr);
    QVERIFY(!manager.getCurrentProfile().isValid());
}

void tst_OnlineKktProfileManager::roundTrip_data()
{
    QTest::addColumn<BaseSqliteDbConnector::ConnectionMode>("mode");
    QTest::newRow("shared") << BaseSqliteDbConnector::SharedConnection;
    QTest::newRow("private") << BaseSqliteDbConnector::PrivateConnection;
}

void tst_OnlineKktProfileManager::roundTrip()
{
    QFETCH(BaseSqliteDbConnector::ConnectionMode, mode);
    QObject parent;
    auto *writer = new OnlineKktProfileManager(mode, &parent);
    QCOMPARE(writer->parent(), &parent);
    QVERIFY(writer->setCurrentProfile(sample()));
    OnlineKktProfileManager reader(mode, nullptr);
    QCOMPARE(reader.getCurrentProfile(), sample());
    QCOMPARE(m_host->unexpectedWarnings(), QStringList());
}

void tst_OnlineKktProfileManager::replacingLeavesNothingBehind()
{
    OnlineKktProfileManager manager(BaseSqliteDbConnector::SharedConnection, nullptr);
    QVERIFY(manager.setCurrentProfile(sample()));
    OnlineKkmProfile small;
    small.setId(9);
    small.setDefaultKkmInfo(sampleInfo(QStringLiteral("!")));
    QVERIFY(manager.setCurrentProfile(small));
    QCOMPARE(manager.getCurrentProfile(), small);
    QVERIFY(manager.setCurrentProfile(sample(10)));
    QCOMPARE(manager.getCurrentProfile(), sample(10));
}

void tst_OnlineKktProfileManager::defaultClears()
{
    OnlineKktProfileManager manager(BaseSqliteDbConnector::SharedConnection, nullptr);
    QVERIFY(manager.setCurrentProfile(sample()));
    QVERIFY(manager.setCurrentProfile(OnlineKkmProfile()));
    QVERIFY(!manager.getCurrentProfile().isValid());
}

void tst_OnlineKktProfileManager::idBelowOneIsRefused()
{
    OnlineKktProfileManager manager(BaseSqliteDbConnector::SharedConnection, nullptr);
    QVERIFY(manager.setCurrentProfile(sample()));
    QVERIFY(!manager.setCurrentProfile(sample(0)));
    QVERIFY(!manager.setCurrentProfile(sample(-9)));
    QCOMPARE(manager.getCurrentProfile(), sample());
}

void tst_OnlineKktProfileManager::closedDatabase()
{
    m_host->damage();
    OnlineKktProfileManager manager(BaseSqliteDbConnector::SharedConnection, nullptr);
    QVERIFY(!manager.setCurrentProfile(sample()));
    QVERIFY(!manager.setCurrentProfile(OnlineKkmProfile()));
    QVERIFY(!manager.getCurrentProfile().isValid());
}

QTEST_GUILESS_MAIN(tst_OnlineKktProfileManager)
#include "tst_onlinekktprofilemanager.moc"
