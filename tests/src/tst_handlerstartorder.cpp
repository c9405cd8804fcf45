#include "selmarrivenholdhandler.h"

#include "guitestguard.h"
#include "hostdatabase.h"
#include "individual/selmarindividualwizard.h"
#include "sampleproviders.h"

#include <molvacore/boxinfocontroller.h>
#include <molvacore/comissionsmanager.h>
#include <molvacore/dbconnector.h>
#include <molvacore/paycheckprofilemanager.h>

#include <QTest>

#include <memory>

namespace {

struct Reads
{
    QStringList order;
    bool reload = true;
    BoxInfo box = HostDatabase::box();
    BoxComProfile commission = HostDatabase::commissionProfile();
};

Reads *reads = nullptr;

} // namespace

// These three take the place of the host library's own in this program.

BoxInfo BoxInfoController::boxInfo(bool reload)
{
    reads->order.append(QStringLiteral("box"));
    reads->reload = reload;
    return reads->box;
}

BoxComProfile ComissionsManager::getCurrentProfile()
{
    reads->order.append(QStringLiteral("commission"));
    return reads->commission;
}

PaymentCheckProfile PayCheckProfileManager::getCurrentProfile()
{
    reads->order.append(QStringLiteral("receipt"));
    return HostDatabase::receiptProfile();
}

/// What a start reads of the host's database, and in which order.
class TestHandlerStartOrder : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_guard = std::make_unique<GuiTestGuard>();
        m_database = std::make_unique<HostDatabase>();
        m_reads = std::make_unique<Reads>();
        reads = m_reads.get();
    }
    void cleanup()
    {
        const QStringList problems = m_guard->problems();
        m_guard.reset();
        m_database.reset();
        QCOMPARE(problems, QStringList());
    }

    void boxThenCommissionThenReceipt();
    void invalidBoxNeverReadsTheProfiles();
    void invalidCommissionProfileNeverReadsTheReceiptProfile();

private:
    QWidget *start()
    {
        return dynamic_cast<QWidget *>(
            m_handler.start(basix::FixNumber(), SampleProviders::individuals(), nullptr));
    }

    std::unique_ptr<GuiTestGuard> m_guard;
    std::unique_ptr<HostDatabase> m_database;
    std::unique_ptr<Reads> m_reads;
    SelmarRivenholdHandler m_handler;
};

void TestHandlerStartOrder::boxThenCommissionThenReceipt()
{
    const std::unique_ptr<QWidget> dialog(start());
    QVERIFY(dialog);
    QCOMPARE(m_reads->order,
             (QStringList{QStringLiteral("box"), QStringLiteral("commission"),
                          QStringLiteral("receipt")}));
    QCOMPARE(m_reads->reload, false);
}

void TestHandlerStartOrder::invalidBoxNeverReadsTheProfiles()
{
    m_reads->box = BoxInfo();
    m_guard->answers.ok();
    QVERIFY(!start());
    QCOMPARE(m_guard->answers.seen().size(), 1);
    QCOMPARE(m_reads->order, QStringList{QStringLiteral("box")});
}

void TestHandlerStartOrder::invalidCommissionProfileNeverReadsTheReceiptProfile()
{
    m_reads->commission = BoxComProfile();
    m_guard->answers.ok();
    QVERIFY(!start());
    QCOMPARE(m_guard->answers.seen().size(), 1);
    QCOMPARE(m_reads->order, (QStringList{QStringLiteral("box"), QStringLiteral("commission")}));
}

QTEST_MAIN(TestHandlerStartOrder)
#include "tst_handlerstartorder.moc"
