#include "billinganswers.h"
#include "paymentflow.h"
#include "sampleproviders.h"

#include <molvacore/cardchargelog.h>
#include <molvacore/ipaydialog.h>
#include <molvacore/paypack.h>

#include <QTest>

#include <memory>

/// Whole payments of a legal entity, from the contract's number to the posted pay pack, by keyboard
/// alone.
class TestWizardFlowLegal : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void twoDocumentsInCash();
    void oneOfTwoDocumentsByCardUnderAPowerOfAttorney();
    void scannedBillOfTheOnlyDocument();
    void hostDestroysTheWizardBehindTheLastMessage();

private:
    void toTheDocuments();

    std::unique_ptr<PaymentFlow> m_flow;
};

void TestWizardFlowLegal::init()
{
    CardChargeLog::clear();
    m_flow = std::make_unique<PaymentFlow>(2);
}

void TestWizardFlowLegal::cleanup()
{
    const QString problems = m_flow->problems();
    m_flow.reset();
    QCOMPARE(problems, QString());
}

void TestWizardFlowLegal::toTheDocuments()
{
    QVariantList account = BillingAnswers::legal();
    account.append(BillingAnswers::field(QStringLiteral("inn"), QStringLiteral("7701000001"),
                                         QStringLiteral("ИНН")));
    m_flow->tabTo("leAccount")
        .type(QStringLiteral("77/1"))
        .tabTo("pbGetData")
        .pause()
        .press(Qt::Key_Space)
        .billingAnswers(account)
        .tabTo(QWizard::NextButton)
        .press(Qt::Key_Space)
        .tabTo("tvServices");
}

void TestWizardFlowLegal::twoDocumentsInCash()
{
    toTheDocuments();
    m_flow->press(Qt::Key_Space)
        .press(Qt::Key_Down)
        .press(Qt::Key_Down)
        .press(Qt::Key_Down)
        .press(Qt::Key_Space)
        .tabTo(QWizard::NextButton)
        .press(Qt::Key_Space)
        .tabTo(QWizard::FinishButton)
        .press(Qt::Key_Space)
        .enterInDialog();
    QVERIFY(m_flow->execute(SampleProviders::legalEntities()));

    QCOMPARE(m_flow->host.sent().size(), 2);
    const QVariantMap request = m_flow->host.sent().first().data.toMap();
    QCOMPARE(request.value(QStringLiteral("providerId")).toLongLong(), 18723);
    QCOMPARE(m_flow->host.sent().last().destination, QStringLiteral("/app/add_pay_pack"));
    QCOMPARE(m_flow->host.sent().last().data.toMap(), m_flow->pays->message);

    const QVariantMap document = m_flow->fiscalRegister->receipts.first().document;
    QCOMPARE(document.value(QStringLiteral("1020")).toInt(), 17050);
    QCOMPARE(document.value(QStringLiteral("1031")).toInt(), 17050);
    QCOMPARE(document.value(QStringLiteral("1059")).toList().size(), 3);
    QVERIFY(!document.contains(QStringLiteral("1227")));
    QCOMPARE(document.value(QStringLiteral("printable")).toStringList(),
             QStringList({QStringLiteral("ул. Речная, 5"), QStringLiteral("Договор №\t77/1"),
                          QStringLiteral("Документ №\tВК-1"), QStringLiteral("Документ №\tВК-2")}));

    const PayPack pack = m_flow->pays->packs.first();
    QCOMPARE(pack.payments().size(), 2);
    QCOMPARE(pack.payments().first().summ().toString(), QStringLiteral("150.50"));
    QCOMPARE(pack.payments().last().summ().toString(), QStringLiteral("20.00"));
    QCOMPARE(pack.payments().last().account(), QStringLiteral("77/1"));
    QCOMPARE(pack.operations().size(), 1);
    QCOMPARE(pack.operations().first().sum().toString(), QStringLiteral("170.50"));
}

void TestWizardFlowLegal::oneOfTwoDocumentsByCardUnderAPowerOfAttorney()
{
    toTheDocuments();
    m_flow->press(Qt::Key_Down)
        .press(Qt::Key_Down)
        .press(Qt::Key_Down)
        .press(Qt::Key_Space)
        .tabTo(QWizard::NextButton)
        .press(Qt::Key_Space)
        .tabTo("cbAttornayDoc")
        .press(Qt::Key_Space)
        .tabTo("pbCard")
        .press(Qt::Key_Space)
        .enterInDialog(QStringLiteral("20.00"))
        .tabTo(QWizard::FinishButton)
        .pause()
        .press(Qt::Key_Space)
        .enterInDialog();
    QVERIFY(m_flow->execute(SampleProviders::legalEntities()));
    QCOMPARE(CardChargeLog::total().toString(), QStringLiteral("20.00"));
    const QVariantMap document = m_flow->fiscalRegister->receipts.first().document;
    QCOMPARE(document.value(QStringLiteral("1081")).toInt(), 2000);
    QCOMPARE(document.value(QStringLiteral("1031")).toInt(), 0);
    QCOMPARE(document.value(QStringLiteral("1227")).toString(), QStringLiteral("Иванов Пётр"));
    QCOMPARE(document.value(QStringLiteral("1228")).toString(), QStringLiteral("7701000001  "));
    const PayPack pack = m_flow->pays->packs.first();
    QCOMPARE(pack.payments().size(), 1);
    QCOMPARE(pack.operations().size(), 1);
    QCOMPARE(pack.operations().first().moneyType(), MoneyType::Card);
}

void TestWizardFlowLegal::scannedBillOfTheOnlyDocument()
{
    m_flow->tabTo("leAccount")
        .scan(QStringLiteral("ST00012|PersAcc=77/1|BarCode=ВК-9|Sum=15050"))
        .billingAnswers(BillingAnswers::legalSingle())
        .tabTo(QWizard::NextButton)
        .pause()
        .press(Qt::Key_Space)
        .tabTo("pbByDebt")
        .press(Qt::Key_Space)
        .tabTo(QWizard::NextButton)
        .press(Qt::Key_Space)
        .tabTo(QWizard::FinishButton)
        .press(Qt::Key_Space)
        .enterInDialog();
    QVERIFY(m_flow->execute(SampleProviders::legalEntities()));
    QCOMPARE(m_flow->host.sent().first().data.toMap().value(QStringLiteral("summ")).toDouble(),
             150.5);
    const QVariantMap document = m_flow->fiscalRegister->receipts.first().document;
    QCOMPARE(document.value(QStringLiteral("1020")).toInt(), 15050);
    QVERIFY(document.value(QStringLiteral("printable"))
                .toStringList()
                .contains(QStringLiteral("Документ №\tВК-9")));
    QCOMPARE(m_flow->pays->packs.first().payments().first().summ().toString(),
             QStringLiteral("150.50"));
}

void TestWizardFlowLegal::hostDestroysTheWizardBehindTheLastMessage()
{
    toTheDocuments();
    m_flow->guard.answers.run([this](QDialog *) { delete m_flow->wizard(); });
    m_flow->press(Qt::Key_Space)
        .tabTo(QWizard::NextButton)
        .press(Qt::Key_Space)
        .tabTo(QWizard::FinishButton)
        .press(Qt::Key_Space);
    m_flow->execute(SampleProviders::legalEntities());
    QVERIFY(!m_flow->wizard());
    // The payment itself was finished before the message.
    QCOMPARE(m_flow->fiscalRegister->receipts.size(), 1);
    QCOMPARE(m_flow->pays->packs.size(), 1);
    QCOMPARE(m_flow->host.sent().size(), 2);
}

QTEST_MAIN(TestWizardFlowLegal)
#include "tst_wizardflow_legal.moc"
