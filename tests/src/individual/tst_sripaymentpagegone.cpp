#include "individual/sripaymentpage.h"

#include "testrecords.h"
#include "wizardbench.h"

#include <molvacore/paypack.h>

#include <QTest>

#include <memory>

/// The host takes the wizard away while the receipt is printed or the pack saved: what is printed
/// is saved, what is saved stays so, and nobody talks to a window that is gone.
class TestSrIPaymentPageGone : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void whilePrinting_data();
    void whilePrinting();
    void whileSaving_data();
    void whileSaving();
    void whileHandingOn_data();
    void whileHandingOn();
    void whileTheMessageIsTaken();

private:
    bool finish() const { return m_bench->paymentPage()->validatePage(); }

    std::unique_ptr<WizardBench> m_bench;
};

void TestSrIPaymentPageGone::init()
{
    m_bench = std::make_unique<WizardBench>(WizardBench::Individual);
    const QString amount = QStringLiteral("100.00");
    m_bench->openPayment(TestRecords::personalAccount(
        {TestRecords::service(QStringLiteral("Вода"), amount, amount, amount)}));
}

void TestSrIPaymentPageGone::cleanup()
{
    const QString leftovers = m_bench->leftovers({QStringLiteral("SrIPaymentPage::")});
    m_bench.reset();
    QCOMPARE(leftovers, QString());
}

void TestSrIPaymentPageGone::whilePrinting_data()
{
    QTest::addColumn<QString>("printError");
    QTest::addColumn<bool>("saves");
    QTest::addColumn<bool>("controller");
    QTest::addColumn<int>("packs");
    QTest::addColumn<int>("traces");
    QTest::newRow("printed and saved") << QString() << true << true << 1 << 1;
    // Nobody is there to read a box, so the trace names the pack once more.
    QTest::newRow("printed, not saved") << QString() << false << true << 1 << 2;
    QTest::newRow("printed, nobody to save it") << QString() << true << false << 0 << 1;
    QTest::newRow("not printed") << QStringLiteral("Нет бумаги") << true << true << 0 << 1;
}

void TestSrIPaymentPageGone::whilePrinting()
{
    QFETCH(const QString, printError);
    QFETCH(const bool, saves);
    QFETCH(const bool, controller);
    QFETCH(const int, packs);
    QFETCH(const int, traces);
    m_bench->fiscalRegister->printError = printError;
    m_bench->pays->saves = saves;
    if (!controller)
        m_bench->setController({});
    m_bench->fiscalRegister->whilePrinting = [this] { m_bench->destroyWizard(); };
    QVERIFY(!finish());
    QVERIFY(!m_bench->wizard());
    QCOMPARE(m_bench->fiscalRegister->receipts.size(), 1);
    QCOMPARE(m_bench->pays->packs.size(), packs);
    QCOMPARE(m_bench->pays->complete, QVector<bool>(packs, true));
    QVERIFY(m_bench->answers.seen().isEmpty());
    QCOMPARE(m_bench->log.containing(QtWarningMsg, QStringLiteral("SrIPaymentPage::")).size(),
             traces);
    if (packs > 0) {
        const QString id = QString::number(m_bench->pays->packs.first().id());
        QCOMPARE(m_bench->log.containing(QtWarningMsg, id).size(), traces);
    }
}

void TestSrIPaymentPageGone::whileSaving_data()
{
    QTest::addColumn<bool>("saves");
    QTest::newRow("saved") << true;
    QTest::newRow("not saved") << false;
}

void TestSrIPaymentPageGone::whileSaving()
{
    QFETCH(const bool, saves);
    m_bench->pays->saves = saves;
    m_bench->pays->whileSaving = [this] { m_bench->destroyWizard(); };
    QVERIFY2(!finish(), "a wizard that is gone must not be accepted");
    QVERIFY(!m_bench->wizard());
    QCOMPARE(m_bench->pays->packs.size(), 1);
    QVERIFY(m_bench->pays->handedOn.isEmpty());
    QVERIFY(m_bench->answers.seen().isEmpty());
}

void TestSrIPaymentPageGone::whileHandingOn_data()
{
    QTest::addColumn<bool>("handsOn");
    QTest::newRow("handed on") << true;
    QTest::newRow("refused") << false;
}

void TestSrIPaymentPageGone::whileHandingOn()
{
    QFETCH(const bool, handsOn);
    m_bench->pays->handsOn = handsOn;
    m_bench->pays->whileHandingOn = [this] { m_bench->destroyWizard(); };
    QVERIFY2(!finish(), "a wizard that is gone must not be accepted");
    QVERIFY(!m_bench->wizard());
    QCOMPARE(m_bench->pays->packs.size(), 1);
    QCOMPARE(m_bench->pays->handedOn.size(), 1);
    QVERIFY(m_bench->sent().isEmpty());
    QVERIFY(m_bench->answers.seen().isEmpty());
}

void TestSrIPaymentPageGone::whileTheMessageIsTaken()
{
    connect(m_bench->paymentPage(), &SrIPaymentPage::sendMessage, this,
            [this] { m_bench->destroyWizard(); });
    QVERIFY2(!finish(), "a wizard that is gone must not be accepted");
    QVERIFY(!m_bench->wizard());
    QCOMPARE(m_bench->sent().size(), 1);
    QVERIFY(m_bench->answers.seen().isEmpty());
}

QTEST_MAIN(TestSrIPaymentPageGone)
#include "tst_sripaymentpagegone.moc"
