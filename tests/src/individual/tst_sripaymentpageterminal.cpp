#include "individual/sripaymentpage.h"

#include "testrecords.h"
#include "wizardbench.h"

#include <molvacore/ingericolibhandler.h>

#include <QDoubleSpinBox>
#include <QPointer>
#include <QPushButton>
#include <QTest>

#include <functional>
#include <memory>

namespace {

std::function<void()> whileGettingReady;
std::function<void()> whilePaying;
bool getsReady = true;
int readyCalls = 0;
int payCalls = 0;
QPointer<PosHandler> terminal;
const QString amount = QStringLiteral("100.00");

} // namespace

// The program's own terminal stands before that of the host's library: one that keeps the events
// going while it gets ready.
bool IngericoLibHandler::init(QString &error)
{
    error.clear();
    ++readyCalls;
    terminal = this;
    if (whileGettingReady)
        whileGettingReady();
    return getsReady;
}

bool IngericoLibHandler::pay(const basix::FixNumber &, QString &error, QStringList &)
{
    error.clear();
    ++payCalls;
    if (whilePaying)
        whilePaying();
    return true;
}

/// What may happen to a payment while the card terminal is made ready and waits for the card.
class TestSrIPaymentPageTerminal : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void readyTerminalCharges();
    void closedInTheAmountDialog();
    void wizardDestroyed_data();
    void wizardDestroyed();
    void wizardClosed();
    void pageLeft();
    void failedWhenThePageWasLeft();
    void wizardDestroyedWhileTheCardIsCharged();
    void pageTakenOutWhileTheCardIsCharged_data();
    void pageTakenOutWhileTheCardIsCharged();

private:
    std::unique_ptr<WizardBench> m_bench;
};

void TestSrIPaymentPageTerminal::init()
{
    whileGettingReady = nullptr;
    whilePaying = nullptr;
    getsReady = true;
    readyCalls = 0;
    payCalls = 0;
    m_bench =
        std::make_unique<WizardBench>(WizardBench::Individual, HostDatabase::Parts(), 1, QString());
    m_bench->openPayment(TestRecords::personalAccount(
        {TestRecords::service(QStringLiteral("Вода"), amount, amount, amount)}));
}

void TestSrIPaymentPageTerminal::cleanup()
{
    const QString leftovers = m_bench->leftovers();
    m_bench.reset();
    QCOMPARE(leftovers, QString());
}

void TestSrIPaymentPageTerminal::readyTerminalCharges()
{
    m_bench->answers.enter(amount);
    m_bench->paymentPage()->payByCard();
    QCOMPARE(payCalls, 1);
    QVERIFY(!m_bench->button(QWizard::CancelButton)->isEnabled());
    QVERIFY2(!terminal, "the next press makes its own");
}

void TestSrIPaymentPageTerminal::closedInTheAmountDialog()
{
    m_bench->answers.run([this](QDialog *dialog) {
        m_bench->wizard()->reject();
        dialog->accept();
    });
    m_bench->paymentPage()->payByCard();
    QCOMPARE(readyCalls, 0);
}

void TestSrIPaymentPageTerminal::wizardDestroyed_data()
{
    QTest::addColumn<bool>("ready");
    QTest::newRow("terminal gets ready") << true;
    QTest::newRow("terminal fails") << false;
}

void TestSrIPaymentPageTerminal::wizardDestroyed()
{
    QFETCH(const bool, ready);
    getsReady = ready;
    whileGettingReady = [this] { m_bench->destroyWizard(); };
    m_bench->answers.enter(amount);
    m_bench->paymentPage()->payByCard();
    QVERIFY(!m_bench->wizard());
    QCOMPARE(payCalls, 0);
    QCOMPARE(m_bench->answers.seen().size(), 1);
}

void TestSrIPaymentPageTerminal::wizardClosed()
{
    whileGettingReady = [this] { m_bench->wizard()->reject(); };
    m_bench->answers.enter(amount);
    m_bench->paymentPage()->payByCard();
    QVERIFY(!m_bench->wizard()->isVisible());
    QCOMPARE(payCalls, 0);
}

void TestSrIPaymentPageTerminal::pageLeft()
{
    whileGettingReady = [this] { m_bench->wizard()->back(); };
    m_bench->answers.enter(amount);
    m_bench->paymentPage()->payByCard();
    QVERIFY(!m_bench->paymentPage()->isVisible());
    QCOMPARE(payCalls, 0);
    QVERIFY(
        m_bench->paymentPage()->findChild<QPushButton *>(QStringLiteral("pbCard"))->isEnabled());
    QVERIFY(!terminal);
}

void TestSrIPaymentPageTerminal::failedWhenThePageWasLeft()
{
    getsReady = false;
    whileGettingReady = [this] { m_bench->wizard()->back(); };
    m_bench->answers.enter(amount).ok();
    m_bench->paymentPage()->payByCard();
    QCOMPARE(m_bench->answers.seen().last().text,
             QStringLiteral("Pos terminal initialization error"));
    QVERIFY(
        m_bench->paymentPage()->findChild<QPushButton *>(QStringLiteral("pbCard"))->isEnabled());
    QVERIFY(!terminal);
}

void TestSrIPaymentPageTerminal::wizardDestroyedWhileTheCardIsCharged()
{
    whilePaying = [this] { m_bench->destroyWizard(); };
    m_bench->answers.enter(amount);
    m_bench->paymentPage()->payByCard();
    QVERIFY(!m_bench->wizard());
    QCOMPARE(payCalls, 1);
}

void TestSrIPaymentPageTerminal::pageTakenOutWhileTheCardIsCharged_data()
{
    QTest::addColumn<int>("id");
    QTest::newRow("the payment") << 2;
    QTest::newRow("the page before it") << 0;
}

void TestSrIPaymentPageTerminal::pageTakenOutWhileTheCardIsCharged()
{
    QFETCH(const int, id);
    const SrIPaymentPage *page = m_bench->paymentPage();
    const auto *card = page->findChild<QDoubleSpinBox *>(QStringLiteral("dsbCard"));
    whilePaying = [this, id] { m_bench->wizard()->removePage(id); };
    m_bench->answers.enter(amount);
    m_bench->paymentPage()->payByCard();
    QCOMPARE(card->value(), 100.0);
    QVERIFY(!m_bench->button(QWizard::BackButton)->isEnabled());
    QVERIFY(!m_bench->button(QWizard::CancelButton)->isEnabled());
}

QTEST_MAIN(TestSrIPaymentPageTerminal)
#include "tst_sripaymentpageterminal.moc"
