#include "srfiscalreadiness.h"

#include "fakeregister.h"
#include "hostdatabase.h"
#include "messagelog.h"

#include <molvacore/onlinekkmprofile.h>
#include <molvacore/onlinekktprofilemanager.h>

#include <QTest>

#include <memory>

namespace {

const QString noRegister = QStringLiteral("ККТ не доступна");
/// The portal's host follows the blank.
const QString noProfile = QStringLiteral("Не настроен профиль онлайн касс на agent.molva.example");

} // namespace

class TestSrFiscalReadiness : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_log = std::make_unique<MessageLog>(); }
    void cleanup()
    {
        const QStringList unexpected = m_log->unexpectedWarnings({});
        m_log.reset();
        QCOMPARE(unexpected, QStringList());
    }

    void texts();
    void obstacle_data();
    void obstacle();
    void statusFromBeforeIsNone();
    void withoutARegister();
    void destroyedRegister();
    void registerIsAskedBeforeTheProfileOnce();
    void profileIsReadAnew();
    void leavesNoObjectBehind();

private:
    std::unique_ptr<MessageLog> m_log;
};

void TestSrFiscalReadiness::texts()
{
    QCOMPARE(SrFiscalReadiness::noRegisterText(), noRegister);
    QCOMPARE(SrFiscalReadiness::noProfileText(), noProfile);
}

void TestSrFiscalReadiness::obstacle_data()
{
    QTest::addColumn<bool>("answers");
    QTest::addColumn<bool>("withoutStatus");
    QTest::addColumn<bool>("ready");
    QTest::addColumn<bool>("profile");
    QTest::addColumn<QString>("text");
    QTest::newRow("all well") << true << false << true << true << QString();
    QTest::newRow("status cannot be read") << false << false << true << true << noRegister;
    QTest::newRow("no status although it answers") << true << true << true << true << noRegister;
    QTest::newRow("not ready for receipts") << true << false << false << true << noRegister;
    QTest::newRow("no profile") << true << false << true << false << noProfile;
    QTest::newRow("neither register nor profile") << false << false << true << false << noRegister;
}

void TestSrFiscalReadiness::obstacle()
{
    QFETCH(bool, answers);
    QFETCH(bool, withoutStatus);
    QFETCH(bool, ready);
    QFETCH(bool, profile);
    QFETCH(QString, text);
    const HostDatabase database(profile ? HostDatabase::Parts() : HostDatabase::RegisterProfile);
    FakeRegister fiscalRegister;
    fiscalRegister.answers = answers;
    fiscalRegister.withoutStatus = withoutStatus;
    fiscalRegister.ready = ready;
    QObject parent;
    QCOMPARE(SrFiscalReadiness::obstacle(&fiscalRegister, &parent), text);
}

void TestSrFiscalReadiness::statusFromBeforeIsNone()
{
    const HostDatabase database;
    FakeRegister fiscalRegister;
    fiscalRegister.answers = false;
    fiscalRegister.oldStatus = true;
    QCOMPARE(SrFiscalReadiness::obstacle(&fiscalRegister, nullptr), noRegister);
}

void TestSrFiscalReadiness::withoutARegister()
{
    const HostDatabase database;
    QCOMPARE(SrFiscalReadiness::obstacle(nullptr, nullptr), noRegister);
}

void TestSrFiscalReadiness::destroyedRegister()
{
    const HostDatabase database;
    auto fiscalRegister = std::make_unique<FakeRegister>();
    const QPointer<FrHandler> guarded(fiscalRegister.get());
    QCOMPARE(SrFiscalReadiness::obstacle(guarded, nullptr), QString());
    fiscalRegister.reset();
    QCOMPARE(SrFiscalReadiness::obstacle(guarded, nullptr), noRegister);
}

void TestSrFiscalReadiness::registerIsAskedBeforeTheProfileOnce()
{
    const HostDatabase database(HostDatabase::RegisterProfile);
    FakeRegister fiscalRegister;
    SrFiscalReadiness::obstacle(&fiscalRegister, nullptr);
    QCOMPARE(fiscalRegister.statusCalls, 1);
    QVERIFY(fiscalRegister.receipts.isEmpty());
}

void TestSrFiscalReadiness::profileIsReadAnew()
{
    const HostDatabase database(HostDatabase::RegisterProfile);
    QVERIFY(!SrFiscalReadiness::currentProfile(nullptr).isValid());
    OnlineKktProfileManager(basix::BaseSqliteDbConnector::SharedConnection, nullptr)
        .setCurrentProfile(HostDatabase::registerProfile());
    QCOMPARE(SrFiscalReadiness::currentProfile(nullptr), HostDatabase::registerProfile());
}

void TestSrFiscalReadiness::leavesNoObjectBehind()
{
    const HostDatabase database;
    FakeRegister fiscalRegister;
    QObject parent;
    SrFiscalReadiness::obstacle(&fiscalRegister, &parent);
    QVERIFY(parent.children().isEmpty());
}

QTEST_GUILESS_MAIN(TestSrFiscalReadiness)
#include "tst_srfiscalreadiness.moc"
