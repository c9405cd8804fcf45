#include "billinganswers.h"
#include "paymentflow.h"
#include "sampleproviders.h"

#include <molvacore/cardchargelog.h>
#include <molvacore/ipaydialog.h>
#include <molvacore/paypack.h>

#include <QDate>
#include <QJsonDocument>
#include <QTest>

#include <memory>

namespace {

const QString bill =
    QStringLiteral("ST00012|Name=Водоканал|PersAcc=100200300|PaymPeriod=03.2024|Sum=15050");

/// Value of a parameter of the payment's provider.
QString parameter(const Payment &payment, const char *name)
{
    // Keeps the provider, and with it the parameters, alive.
    const Provider provider = payment.providerData();
    for (const auto &candidate : provider.parameters()) {
        if (candidate->name() == QLatin1String(name))
            return candidate->value();
    }
    return QStringLiteral("no such parameter");
}

} // namespace

/// Whole payments of an individual, from the scanned bill to the posted pay pack, by keyboard
/// alone.
class TestWizardFlowIndividual : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void paidInCash();
    void paidByCardAndCash();
    void cancelledByEscape();
    void secondPaymentWithTheSameHandler();
    void backAndForthKeepsTheMoneyRight();

    void hostDestroysTheWizardWhileItWaits();
    void hostDestroysTheWindowBehindAMessage();
    void registerDestroyedBeforeTheReceipt();
    void busDestroyedWhileItWaits();
    void handlerDestroyedWhileTheWizardRuns();

private:
    /// From the start page to the payment page: bill, answer, readings, distribution.
    void toThePayment();

    std::unique_ptr<PaymentFlow> m_flow;
};

void TestWizardFlowIndividual::init()
{
    CardChargeLog::clear();
    m_flow = std::make_unique<PaymentFlow>(1);
}

void TestWizardFlowIndividual::cleanup()
{
    const QString problems = m_flow->problems();
    m_flow.reset();
    QCOMPARE(problems, QString());
}

void TestWizardFlowIndividual::toThePayment()
{
    m_flow->tabTo("lePhone")
        .type(QStringLiteral("+7 912 345-67-89"))
        .tabTo("leAccount")
        .pause()
        .scan(bill)
        .billingAnswers(BillingAnswers::individual())
        .tabTo(QWizard::NextButton)
        .press(Qt::Key_Space)
        .tabTo("tvCounters")
        .press(Qt::Key_Right)
        .press(Qt::Key_Right)
        .press(Qt::Key_F2)
        .type(QStringLiteral("125"))
        .press(Qt::Key_Return)
        .pause()
        .press(Qt::Key_Down)
        .type(QStringLiteral("81"))
        .press(Qt::Key_Return)
        .tabTo("pbByDebt")
        .pause()
        .press(Qt::Key_Space)
        .tabTo(QWizard::NextButton)
        .press(Qt::Key_Return);
}

void TestWizardFlowIndividual::paidInCash()
{
    toThePayment();
    m_flow->tabTo(QWizard::FinishButton).press(Qt::Key_Space).enterInDialog();
    QVERIFY(m_flow->execute(SampleProviders::individuals()));
    QVERIFY(m_flow->dialog()->payment().isEmpty());
    QVERIFY(m_flow->dialog()->paymentIsSended());

    QCOMPARE(m_flow->host.sent().size(), 2);
    const FakeHost::Sent request = m_flow->host.sent().first();
    QCOMPARE(request.destination, QStringLiteral("/app/box_plugin_check_pay"));
    QCOMPARE(request.data.toMap().value(QStringLiteral("providerId")).toLongLong(), 18722);
    QCOMPARE(request.data.toMap().value(QStringLiteral("currencyId")).toInt(), 643);
    QCOMPARE(request.data.toMap().value(QStringLiteral("summ")).toDouble(), 150.5);
    const FakeHost::Sent posted = m_flow->host.sent().last();
    QCOMPARE(posted.destination, QStringLiteral("/app/add_pay_pack"));
    QCOMPARE(posted.data.toMap(), m_flow->pays->message);

    QCOMPARE(m_flow->fiscalRegister->receipts.size(), 1);
    const QVariantMap document = m_flow->fiscalRegister->receipts.first().document;
    QVERIFY(m_flow->fiscalRegister->receipts.first().number.endsWith(QStringLiteral("100200300")));
    QCOMPARE(document.value(QStringLiteral("1020")).toInt(), 15050);
    QCOMPARE(document.value(QStringLiteral("1031")).toInt(), 15050);
    QCOMPARE(document.value(QStringLiteral("1081")).toInt(), 0);
    QCOMPARE(document.value(QStringLiteral("1008")).toString(), QStringLiteral("+79123456789"));
    QStringList lines;
    for (const QVariant &line : document.value(QStringLiteral("1059")).toList()) {
        const QVariantMap map = line.toMap();
        lines << QStringLiteral("%1 %2 %3 %4")
                     .arg(map.value(QStringLiteral("1030")).toString(),
                          map.value(QStringLiteral("1043")).toString(),
                          map.value(QStringLiteral("1212")).toString(),
                          map.value(QStringLiteral("1222")).toString());
    }
    QCOMPARE(lines,
             QStringList({QStringLiteral("Вода 10000 4 1"), QStringLiteral("Стоки 5050 4 1")}));
    QCOMPARE(
        document.value(QStringLiteral("printable")).toStringList(),
        QStringList({QStringLiteral("ул. Речная, 5"), QStringLiteral("Лицевой счет\t100200300"),
                     QStringLiteral("ПЕРИОД\t03-2024"), QStringLiteral("Показания счетчиков"),
                     QStringLiteral("ХВС 0011\t120/125"), QStringLiteral("ГВС 0012\t80/81")}));

    QCOMPARE(m_flow->pays->packs.size(), 1);
    const PayPack pack = m_flow->pays->packs.first();
    QCOMPARE(m_flow->pays->handedOn, QVector<qint64>{pack.id()});
    QCOMPARE(pack.payments().size(), 1);
    const Payment payment = pack.payments().first();
    QCOMPARE(payment.summ().toString(), QStringLiteral("150.50"));
    QCOMPARE(payment.account(), QStringLiteral("100200300"));
    QCOMPARE(parameter(payment, "account"), QStringLiteral("100200300"));
    QCOMPARE(parameter(payment, "period"), QStringLiteral("03-2024"));
    QCOMPARE(parameter(payment, "qrcode"), m_flow->fiscalRegister->qrText);
    const QByteArray payData = parameter(payment, "paydata").toUtf8();
    QVERIFY(!QJsonDocument::fromJson(payData).isNull());
    QVERIFY2(payData.contains("{\"name\":\"currvalue\",\"value\":\"125\"}"), payData.constData());
    QVERIFY2(payData.contains("{\"name\":\"currvalue\",\"value\":\"81\"}"), payData.constData());
    QVERIFY2(payData.contains("{\"name\":\"distributed\",\"value\":\"100.00\"}"),
             payData.constData());
    QCOMPARE(pack.operations().size(), 1);
    QCOMPARE(pack.operations().first().moneyType(), MoneyType::Cash);
    QCOMPARE(pack.operations().first().sum().toString(), QStringLiteral("150.50"));
}

void TestWizardFlowIndividual::paidByCardAndCash()
{
    toThePayment();
    m_flow->tabTo("pbCard").press(Qt::Key_Space).enterInDialog(QStringLiteral("50.00"));
    m_flow->tabTo(QWizard::FinishButton).pause().press(Qt::Key_Return).enterInDialog();
    QVERIFY(m_flow->execute(SampleProviders::individuals()));
    QCOMPARE(CardChargeLog::charges().size(), 1);
    QCOMPARE(CardChargeLog::total().toString(), QStringLiteral("50.00"));
    const QVariantMap document = m_flow->fiscalRegister->receipts.first().document;
    QCOMPARE(document.value(QStringLiteral("1031")).toInt(), 10050);
    QCOMPARE(document.value(QStringLiteral("1081")).toInt(), 5000);
    const PayPack pack = m_flow->pays->packs.first();
    QCOMPARE(pack.operations().size(), 2);
    QCOMPARE(pack.operations().first().moneyType(), MoneyType::Card);
    QCOMPARE(pack.operations().first().sum().toString(), QStringLiteral("50.00"));
    QCOMPARE(pack.operations().last().sum().toString(), QStringLiteral("100.50"));
}

void TestWizardFlowIndividual::cancelledByEscape()
{
    toThePayment();
    m_flow->press(Qt::Key_Escape);
    QVERIFY(!m_flow->execute(SampleProviders::individuals()));
    QVERIFY(m_flow->fiscalRegister->receipts.isEmpty());
    QVERIFY(m_flow->pays->packs.isEmpty());
    QCOMPARE(m_flow->host.sent().size(), 1);
}

void TestWizardFlowIndividual::secondPaymentWithTheSameHandler()
{
    for (int i = 1; i <= 2; ++i) {
        m_flow->host.clear();
        toThePayment();
        m_flow->tabTo(QWizard::FinishButton).press(Qt::Key_Space).enterInDialog();
        QVERIFY(m_flow->execute(SampleProviders::individuals()));
        QCOMPARE(m_flow->fiscalRegister->receipts.size(), i);
        QCOMPARE(m_flow->pays->packs.size(), i);
    }
    QVERIFY(m_flow->pays->packs.first().id() != m_flow->pays->packs.last().id());
}

void TestWizardFlowIndividual::backAndForthKeepsTheMoneyRight()
{
    toThePayment();
    // Back to the services, distributed by charge this time, and on.
    m_flow->tabTo(QWizard::BackButton)
        .press(Qt::Key_Space)
        .tabTo("pbByCharge")
        .press(Qt::Key_Space)
        .tabTo(QWizard::NextButton)
        .press(Qt::Key_Space)
        .tabTo(QWizard::FinishButton)
        .press(Qt::Key_Space)
        .enterInDialog();
    QVERIFY(m_flow->execute(SampleProviders::individuals()));
    QCOMPARE(m_flow->fiscalRegister->receipts.size(), 1);
    QCOMPARE(m_flow->pays->packs.first().payments().first().summ().toString(),
             QStringLiteral("150.50"));
    // The readings entered before going back were still there.
    const QStringList printed = m_flow->fiscalRegister->receipts.first()
                                    .document.value(QStringLiteral("printable"))
                                    .toStringList();
    QVERIFY(printed.contains(QStringLiteral("ХВС 0011\t120/125")));
}

void TestWizardFlowIndividual::hostDestroysTheWizardWhileItWaits()
{
    m_flow->scan(bill).step([this] { delete m_flow->wizard(); },
                            [this] { return !m_flow->host.sent().isEmpty(); });
    QVERIFY(!m_flow->execute(SampleProviders::individuals()));
    // The answer comes late.
    emit m_flow->host.incomingMessage(
        BillingAnswers::headers(),
        BillingAnswers::data(m_flow->host.lastUid(), BillingAnswers::individual()));
    QVERIFY(m_flow->pays->packs.isEmpty());
}

void TestWizardFlowIndividual::hostDestroysTheWindowBehindAMessage()
{
    toThePayment();
    m_flow->fiscalRegister->printError = QStringLiteral("Нет бумаги");
    m_flow->guard.answers.run([this](QDialog *) { m_flow->window.reset(); });
    m_flow->tabTo(QWizard::FinishButton).press(Qt::Key_Space);
    QVERIFY(!m_flow->execute(SampleProviders::individuals()));
    QVERIFY(!m_flow->wizard());
    QVERIFY(m_flow->pays->packs.isEmpty());
}

void TestWizardFlowIndividual::registerDestroyedBeforeTheReceipt()
{
    toThePayment();
    m_flow->step([this] { delete m_flow->fiscalRegister; })
        .tabTo(QWizard::FinishButton)
        .press(Qt::Key_Space)
        .enterInDialog()
        .enterInDialog()
        .press(Qt::Key_Escape);
    QVERIFY(!m_flow->execute(SampleProviders::individuals()));
    QCOMPARE(m_flow->guard.answers.seen().size(), 2);
    QCOMPARE(m_flow->guard.answers.seen().first().text, QStringLiteral("ККТ не доступна"));
    QVERIFY(m_flow->pays->packs.isEmpty());
}

void TestWizardFlowIndividual::busDestroyedWhileItWaits()
{
    // A bus of its own, since the one of the flow lives as long as the flow.
    auto bus = std::make_unique<FakeHost>();
    m_flow->handler->setMessageReciever(bus.get(), SIGNAL(incomingMessage(QVariantMap, QString)));
    m_flow->handler->setMessageSender(bus.get(), SLOT(sendMessage(QString, QVariant)));
    m_flow->scan(bill)
        .step([&bus] { bus.reset(); }, [&bus] { return bus && !bus->sent().isEmpty(); })
        .press(Qt::Key_Escape);
    QVERIFY(!m_flow->execute(SampleProviders::individuals()));
}

void TestWizardFlowIndividual::handlerDestroyedWhileTheWizardRuns()
{
    // The host's plugin goes down; the register goes with it, the payments controller stays for the
    // wizard.
    m_flow->scan(bill)
        .billingAnswers(BillingAnswers::individual())
        .step([this] { m_flow->handler.reset(); })
        .tabTo(QWizard::NextButton)
        .press(Qt::Key_Space)
        .tabTo("pbByDebt")
        .press(Qt::Key_Space)
        .tabTo(QWizard::NextButton)
        .press(Qt::Key_Space)
        .enterInDialog()
        .press(Qt::Key_Escape);
    QVERIFY(!m_flow->execute(SampleProviders::individuals()));
    QCOMPARE(m_flow->guard.answers.seen().first().text, QStringLiteral("ККТ не доступна"));
    QCOMPARE(m_flow->pays->alive, 1);
}

QTEST_MAIN(TestWizardFlowIndividual)
#include "tst_wizardflow_individual.moc"
