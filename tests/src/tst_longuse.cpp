#include "billinganswers.h"
#include "paymentflow.h"
#include "processuse.h"
#include "sampleproviders.h"

#include <molvacore/cardchargelog.h>

#include <QTest>

#include <memory>

namespace {

/// Fonts, styles, translations and the allocator's own tables are made in the first payments.
constexpr int settlingPayments = 12;
constexpr int payments = 60;
/// Per payment on the average. A record, a connection or a widget that stays is more.
constexpr int allowedBytes = 256;

/// SELMAR_PAYMENTS asks for the long form.
int paymentsToMake()
{
    const int asked = qEnvironmentVariableIntValue("SELMAR_PAYMENTS");
    return asked > 0 ? asked : payments;
}

} // namespace

/// A day at the cash desk in one process: what a payment takes from the system, it gives back.
class TestLongUse : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void paymentsGiveBackWhatTheyTake();

private:
    void individual();
    void refusedReceipt();
    void legal();
    void cancelled();
    void pay(int number);

    std::unique_ptr<PaymentFlow> m_flow;
};

void TestLongUse::init()
{
    m_flow = std::make_unique<PaymentFlow>(1);
}

void TestLongUse::cleanup()
{
    const QString problems = m_flow->problems();
    m_flow.reset();
    QCOMPARE(problems, QString());
}

void TestLongUse::individual()
{
    m_flow->scan(QStringLiteral("ST00012|PersAcc=100200300|PaymPeriod=03.2024|Sum=15050"))
        .billingAnswers(BillingAnswers::individual())
        .tabTo(QWizard::NextButton)
        .pause()
        .press(Qt::Key_Space)
        .tabTo("pbByDebt")
        .press(Qt::Key_Space)
        .tabTo(QWizard::NextButton)
        .press(Qt::Key_Space)
        .tabTo("pbCard")
        .press(Qt::Key_Space)
        .enterInDialog(QStringLiteral("50.00"))
        .tabTo(QWizard::FinishButton)
        .pause()
        .press(Qt::Key_Return)
        .enterInDialog();
    QVERIFY(m_flow->execute(SampleProviders::individuals()));
    QCOMPARE(CardChargeLog::charges().size(), 1);
    QCOMPARE(m_flow->pays->packs.size(), 1);
}

void TestLongUse::refusedReceipt()
{
    m_flow->fiscalRegister->printError = QStringLiteral("Нет бумаги");
    m_flow->scan(QStringLiteral("ST00012|PersAcc=100200300|Sum=15050"))
        .billingAnswers(BillingAnswers::individual())
        .tabTo(QWizard::NextButton)
        .pause()
        .press(Qt::Key_Space)
        .tabTo("pbByDebt")
        .press(Qt::Key_Space)
        .tabTo(QWizard::NextButton)
        .press(Qt::Key_Space)
        .tabTo(QWizard::FinishButton)
        .press(Qt::Key_Space)
        .enterInDialog()
        .enterInDialog()
        .step([this] { m_flow->fiscalRegister->printError.clear(); })
        .tabTo(QWizard::FinishButton)
        .press(Qt::Key_Space)
        .enterInDialog();
    QVERIFY(m_flow->execute(SampleProviders::individuals()));
    QCOMPARE(m_flow->fiscalRegister->receipts.size(), 2);
    QCOMPARE(m_flow->pays->packs.size(), 1);
}

void TestLongUse::legal()
{
    m_flow->tabTo("leAccount")
        .type(QStringLiteral("77/1"))
        .tabTo("pbGetData")
        .pause()
        .press(Qt::Key_Space)
        .billingAnswers(BillingAnswers::legal())
        .tabTo(QWizard::NextButton)
        .press(Qt::Key_Space)
        .tabTo("tvServices")
        .press(Qt::Key_Space)
        .tabTo(QWizard::NextButton)
        .press(Qt::Key_Space)
        .tabTo(QWizard::FinishButton)
        .press(Qt::Key_Space)
        .enterInDialog();
    QVERIFY(m_flow->execute(SampleProviders::legalEntities()));
    QCOMPARE(m_flow->pays->packs.size(), 1);
}

void TestLongUse::cancelled()
{
    m_flow->scan(QStringLiteral("ST00012|PersAcc=100200300|Sum=15050"))
        .step([] {}, [this] { return !m_flow->host.sent().isEmpty(); })
        .press(Qt::Key_Escape);
    QVERIFY(!m_flow->execute(SampleProviders::individuals()));
    QVERIFY(m_flow->pays->packs.isEmpty());
}

void TestLongUse::pay(int number)
{
    switch (number % 4) {
    case 0:
        individual();
        break;
    case 1:
        refusedReceipt();
        break;
    case 2:
        legal();
        break;
    case 3:
        cancelled();
        break;
    }
    // The host owns the dialog and is done with it.
    delete m_flow->wizard();
    QCOMPARE(m_flow->host.listeners(), 0);
    QVERIFY(m_flow->window->children().isEmpty());
    QCOMPARE(m_flow->handler->children().size(), 1); // the register
    QVERIFY(m_flow->fiscalRegister->children().isEmpty());
    QCOMPARE(m_flow->pays->alive, 1);

    // What the test itself remembers.
    m_flow->guard.log.clear();
    m_flow->guard.answers.forget();
    m_flow->host.clear();
    m_flow->fiscalRegister->receipts.clear();
    m_flow->pays->packs.clear();
    m_flow->pays->complete.clear();
    m_flow->pays->handedOn.clear();
    m_flow->pays->taken.clear();
    CardChargeLog::clear();
}

void TestLongUse::paymentsGiveBackWhatTheyTake()
{
    for (int i = 0; i < settlingPayments; ++i) {
        pay(i);
        if (QTest::currentTestFailed())
            return;
    }
    const ProcessUse before = ProcessUse::now();
    const int count = paymentsToMake();
    for (int i = 0; i < count; ++i) {
        pay(i);
        if (QTest::currentTestFailed())
            return;
    }
    const ProcessUse after = ProcessUse::now();
    qInfo("before %d payments: %s", count, qPrintable(before.text()));
    qInfo("after %d payments: %s", count, qPrintable(after.text()));
    QCOMPARE(after.files, before.files);
    QCOMPARE(after.threads, before.threads);
    QCOMPARE(after.databases, before.databases);
    QVERIFY2(after.heapBytes - before.heapBytes < qint64(allowedBytes) * count,
             qPrintable(QString::number((after.heapBytes - before.heapBytes) / count)));
}

QTEST_MAIN(TestLongUse)
#include "tst_longuse.moc"
