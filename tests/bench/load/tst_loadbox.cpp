#include <loadbox.h>
#include <loadhost.h>

#include <billing/billingdatabase.h>
#include <billing/billingendpoint.h>
#include <billing/billingservice.h>
#include <bus/inprocessbus.h>

#include <QTemporaryDir>
#include <QtTest>

/// A box that only looks busy would make every figure of the load program a lie: each payment of
/// it is one that billing has.
class tst_LoadBox : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void everyPaymentIsAtBilling();
    void aRefusalIsAFailureAndTheNextPaymentFollows();
    void anUnknownAccountIsAFailure();

private:
    std::unique_ptr<LoadBox> box(const QString &account);

    QTemporaryDir m_hostFolder;
    std::unique_ptr<LoadHost> m_host;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<BillingDatabase> m_billing;
    std::unique_ptr<BillingService> m_service;
    LoadFigures m_figures;
    InProcessBus *m_bus = nullptr;
};

void tst_LoadBox::initTestCase()
{
    QString error;
    m_host = LoadHost::open(m_hostFolder.path(), &error);
    QVERIFY2(m_host, qPrintable(error));
}

void tst_LoadBox::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_billing = std::make_unique<BillingDatabase>();
    QVERIFY(m_billing->open(m_folder->filePath(QStringLiteral("billing.sqlite"))));
    m_service = std::make_unique<BillingService>(*m_billing);
    m_figures.clear();
}

void tst_LoadBox::cleanup()
{
    m_service.reset();
    m_billing.reset();
    m_folder.reset();
}

std::unique_ptr<LoadBox> tst_LoadBox::box(const QString &account)
{
    auto bus = std::make_unique<InProcessBus>();
    m_bus = bus.get();
    BillingEndpoint::attach(*m_bus, *m_service);
    return std::make_unique<LoadBox>(std::move(bus), m_host->host(), 4107, account, m_figures);
}

void tst_LoadBox::everyPaymentIsAtBilling()
{
    const auto paying = box(SampleNumber::ORDINARY);
    const qint64 debt =
        m_billing->account(SampleAccount::Payer::Individual, SampleNumber::ORDINARY)->debt;
    paying->start();
    QTRY_VERIFY(m_figures.payments >= 5);
    paying->stop();
    QTRY_VERIFY(paying->isIdle());
    QCOMPARE(m_figures.failures, 0);
    QCOMPARE(m_billing->packCount(), m_figures.payments);
    QCOMPARE(m_figures.request.count(), m_figures.payments);
    QCOMPARE(m_figures.confirm.count(), m_figures.payments);
    QCOMPARE(m_figures.taken.count(), m_figures.payments);
    const auto account =
        m_billing->account(SampleAccount::Payer::Individual, SampleNumber::ORDINARY);
    QVERIFY(!account->services.isEmpty());
    QCOMPARE(account->debt, debt - qint64(m_figures.payments) * account->services.size() * 100);
    // As large as the messages of a real payment are.
    QVERIFY(m_figures.requestBytes > 100);
    QVERIFY(m_figures.answerBytes > 1000);
    QVERIFY(m_figures.packBytes > 1000);
}

void tst_LoadBox::aRefusalIsAFailureAndTheNextPaymentFollows()
{
    const auto paying = box(SampleNumber::ORDINARY);
    m_bus->setConnected(false);
    paying->start();
    QTRY_VERIFY(m_figures.failures > 0);
    QVERIFY(!m_figures.lastFailure.isEmpty());
    QCOMPARE(m_figures.payments, 0);
    m_bus->setConnected(true);
    QTRY_VERIFY(m_figures.payments > 0);
    paying->stop();
    QTRY_VERIFY(paying->isIdle());
    QCOMPARE(m_billing->packCount(), m_figures.payments);
}

void tst_LoadBox::anUnknownAccountIsAFailure()
{
    const auto paying = box(SampleNumber::UNKNOWN);
    paying->start();
    QTRY_VERIFY(m_figures.failures > 0);
    QCOMPARE(m_figures.payments, 0);
    paying->stop();
    QTRY_VERIFY(paying->isIdle());
}

QTEST_GUILESS_MAIN(tst_LoadBox)
#include "tst_loadbox.moc"
