#include <scenario/scenariochecks.h>

#include <app/terminalcontext.h>

#include <molvacore/payment.h>
#include <molvacore/paypack.h>

#include <QApplication>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>
#include <QVBoxLayout>

using Verb = ScenarioCommand::Verb;

class TestScenarioChecks : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<TerminalContext> m_context;
    std::unique_ptr<ScenarioChecks> m_checks;

    ScenarioChecks::Found found(Verb verb, const QStringList &arguments)
    {
        ScenarioCommand command;
        command.verb = verb;
        command.arguments = arguments;
        return m_checks->checkOf(command)();
    }
    bool holds(Verb verb, const QStringList &arguments) { return found(verb, arguments).holds; }

    /// 12.50 in cash.
    void savePack()
    {
        Payment payment;
        payment.setProviderData(m_context->providers().constFirst(), true);
        payment.setAccount(SampleNumber::ORDINARY);
        payment.setSumm(basix::FixNumber(100, 1250));
        PayPack pack;
        pack.addPayment(payment);
        pack.addCashOperations(payment.summ(), m_context->box().currency());
        QVERIFY(m_context->paysController().savePack(pack, true));
    }

    void arrive(const QByteArray &body)
    {
        BusMessage message;
        message.direction = BusMessage::Direction::Incoming;
        message.body = body;
        m_context->bus().replay(message);
    }

private slots:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        QString error;
        m_context = TerminalContext::open(m_folder->path(), &error);
        QVERIFY2(m_context, qPrintable(error));
        m_checks = std::make_unique<ScenarioChecks>(*m_context);
        m_checks->begin();
    }

    void cleanup()
    {
        m_checks.reset();
        m_context.reset();
        QVERIFY(QApplication::topLevelWidgets().isEmpty());
    }

    void countsWhatCameSinceTheBeginning()
    {
        savePack();
        QVERIFY(holds(Verb::CheckCount, {QStringLiteral("saved"), QStringLiteral("1")}));
        QVERIFY(holds(Verb::CheckCount, {QStringLiteral("receipts"), QStringLiteral("0")}));
        QVERIFY(holds(Verb::CheckSum, {QStringLiteral("cash"), QStringLiteral("12,50")}));
        QVERIFY(holds(Verb::CheckSum, {QStringLiteral("card"), QStringLiteral("0")}));
        const auto wrong = found(Verb::CheckSum, {QStringLiteral("cash"), QStringLiteral("12,51")});
        QVERIFY(!wrong.holds);
        QCOMPARE(wrong.text, QStringLiteral("найдено 12,50"));
        m_checks->begin();
        QVERIFY(holds(Verb::CheckCount, {QStringLiteral("saved"), QStringLiteral("0")}));
        QVERIFY(holds(Verb::CheckSum, {QStringLiteral("cash"), QStringLiteral("0")}));
    }

    void countsAnswersThatNobodyWaitsFor()
    {
        arrive(R"({"uid":"1"})");
        arrive("{");
        m_context->bus().sendMessage(QStringLiteral("/app/nowhere"),
                                     QVariantMap{{QStringLiteral("uid"), QStringLiteral("2")}});
        arrive(R"({"uid":"2"})");
        arrive(R"({"uid":"2"})");
        QVERIFY(holds(Verb::CheckCount, {QStringLiteral("foreign"), QStringLiteral("2")}));
        QVERIFY(holds(Verb::CheckCount, {QStringLiteral("repeated"), QStringLiteral("1")}));
        m_checks->begin();
        QVERIFY(holds(Verb::CheckCount, {QStringLiteral("foreign"), QStringLiteral("0")}));
        QVERIFY(holds(Verb::CheckCount, {QStringLiteral("repeated"), QStringLiteral("0")}));
    }

    void looksAtTheWindowInFront()
    {
        QWizard wizard;
        auto *page = new QWizardPage;
        auto *layout = new QVBoxLayout(page);
        auto *field = new QLineEdit(QStringLiteral("7001"), page);
        field->setObjectName(QStringLiteral("leAccount"));
        layout->addWidget(field);
        wizard.addPage(page);
        QVERIFY(holds(Verb::CheckWizard, {QStringLiteral("0")}));
        QVERIFY(!holds(Verb::CheckButton,
                       {QString::number(QWizard::FinishButton), QStringLiteral("1")}));
        wizard.show();
        QVERIFY(QTest::qWaitForWindowActive(&wizard));
        QVERIFY(holds(Verb::CheckWizard, {QStringLiteral("1")}));
        const QString finish = QString::number(QWizard::FinishButton);
        QVERIFY(holds(Verb::CheckButton, {finish, QStringLiteral("1")}));
        QVERIFY(!holds(Verb::CheckButton, {finish, QStringLiteral("0")}));
        QVERIFY(holds(Verb::CheckText, {QStringLiteral("leAccount"), QStringLiteral("700")}));
        QVERIFY(!holds(Verb::CheckText, {QStringLiteral("leAccount"), QStringLiteral("702")}));
        const auto widget = [this](const char *what, const char *name) {
            return holds(Verb::CheckWidget, {QLatin1String(what), QLatin1String(name)});
        };
        QVERIFY(widget("enabled", "leAccount") && widget("shown", "leAccount"));
        QVERIFY(!widget("disabled", "leAccount") && !widget("hidden", "leAccount"));
        field->setEnabled(false);
        QVERIFY(widget("disabled", "leAccount") && widget("shown", "leAccount"));
        field->hide();
        QVERIFY(widget("hidden", "leAccount") && !widget("disabled", "leAccount"));
        QVERIFY(widget("hidden", "absent"));
    }

    void everyDisagreementIsNamed()
    {
        QCOMPARE(m_checks->disagreements(0, {}, false), QStringList());
        savePack();
        QCOMPARE(m_checks->disagreements(1250, {}, false),
                 QStringList({QStringLiteral("Суммы не сошлись, в журнале кассы: ожидалось 12,50, "
                                             "найдено 0,00"),
                              QStringLiteral("Суммы не сошлись, у биллинга: ожидалось 12,50, "
                                             "найдено 0,00")}));
        const QStringList expected{QStringLiteral("12,50"), QStringLiteral("0"),
                                   QStringLiteral("12.5"), QStringLiteral("0")};
        QCOMPARE(m_checks->disagreements(1250, expected, false), QStringList());
        QCOMPARE(m_checks->disagreements(1251, expected, false).size(), 1);
    }
};

QTEST_MAIN(TestScenarioChecks)
#include "tst_scenariochecks.moc"
