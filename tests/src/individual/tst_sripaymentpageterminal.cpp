#include "individual/sripaymentpage.h"

#include "testrecords.h"
#include "wizardbench.h"

#include <molvacore/ingericolibhandler.h>

#include <QPushButton>
#include <QTest>

#include <functional>
#include <memory>

namespace {

std::function<void()> whileGettingReady;
int payCalls = 0;

} // namespace

// The program's own terminal stands before that of the host's library: one that keeps the events
// going while it gets ready.
bool IngericoLibHandler::init(QString &error)
{
    error.clear();
    if (whileGettingReady)
        whileGettingReady();
    return true;
}

bool IngericoLibHandler::pay(const basix::FixNumber &, QString &error, QStringList &)
{
    error.clear();
    ++payCalls;
    return true;
}

/// What may happen to a payment while the card terminal is made ready.
class TestSrIPaymentPageTerminal : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void readyTerminalCharges();
    void wizardDestroyed();
    void wizardClosed();
    void pageLeft();

private:
    std::unique_ptr<WizardBench> m_bench;
};

void TestSrIPaymentPageTerminal::init()
{
    whileGettingReady = nullptr;
    payCalls = 0;
    m_bench =
        std::make_unique<WizardBench>(WizardBench::Individual, HostDatabase::Parts(), 1, QString());
    const QString amount = QStringLiteral("100.00");
    m_bench->openPayment(TestRecords::personalAccount(
        {TestRecords::service(QStringLiteral("Вода"), amount, amount, amount)}));
    m_bench->answers.enter(amount);
}

void TestSrIPaymentPageTerminal::cleanup()
{
    const QString leftovers = m_bench->leftovers();
    m_bench.reset();
    QCOMPARE(leftovers, QString());
}

void TestSrIPaymentPageTerminal::readyTerminalCharges()
{
    m_bench->paymentPage()->payByCard();
    QCOMPARE(payCalls, 1);
    QVERIFY(!m_bench->button(QWizard::CancelButton)->isEnabled());
}

void TestSrIPaymentPageTerminal::wizardDestroyed()
{
    whileGettingReady = [this] { m_bench->destroyWizard(); };
    m_bench->paymentPage()->payByCard();
    QVERIFY(!m_bench->wizard());
    QCOMPARE(payCalls, 0);
}

void TestSrIPaymentPageTerminal::wizardClosed()
{
    whileGettingReady = [this] { m_bench->wizard()->reject(); };
    m_bench->paymentPage()->payByCard();
    QVERIFY(!m_bench->wizard()->isVisible());
    QCOMPARE(payCalls, 0);
}

void TestSrIPaymentPageTerminal::pageLeft()
{
    whileGettingReady = [this] { m_bench->wizard()->back(); };
    m_bench->paymentPage()->payByCard();
    QVERIFY(!m_bench->paymentPage()->isVisible());
    QCOMPARE(payCalls, 0);
    QVERIFY(
        m_bench->paymentPage()->findChild<QPushButton *>(QStringLiteral("pbCard"))->isEnabled());
}

QTEST_MAIN(TestSrIPaymentPageTerminal)
#include "tst_sripaymentpageterminal.moc"
