#include "individual/selmarindividualwizard.h"

#include "fakepayscontroller.h"
#include "fakeregister.h"
#include "guitestguard.h"
#include "markingtranslator.h"
#include "sampleproviders.h"
#include "wizardshellchecks.h"

#include <QTest>

#include <memory>

class TestSelmarIndividualWizard : public QObject
{
    Q_OBJECT

    using Checks = WizardShellChecks<SelmarIndividualWizard>;

private slots:
    void init() { m_guard = std::make_unique<GuiTestGuard>(); }
    void cleanup()
    {
        const QStringList problems = m_guard->problems();
        m_guard.reset();
        QCOMPARE(problems, QStringList());
    }

    void metaObject() { Checks::metaObject("SelmarIndividualWizard"); }
    void startsEmpty() { Checks::startsEmpty(); }
    void dialogResults() { Checks::dialogResults(SampleProviders::individuals()); }
    void form() { Checks::form("SelmarIndividualWizard", QSizePolicy::Preferred); }
    void pages();
    void textsPassThroughTheTranslationContext();
    void recordsAreCopies() { Checks::recordsAreCopies(SampleProviders::individuals()); }
    void parametersByName() { Checks::parametersByName(); }
    void hasNoMinimumSizeOfItsOwn();
    void knownParameterIsReplaced();
    void unknownParameterAddsNothing();
    void nullHostObjects() { Checks::nullHostObjects(); }
    void wrongSignatures();
    void rightSignatures() { Checks::rightSignatures(); }
    void relayPaths()
    {
        Checks::relayPaths(SampleProviders::individuals(), BillingAnswers::individual());
    }
    void hostDestroyedWhileOpen();
    void languageChangeTakesTheTitle()
    {
        Checks::languageChangeTakesTheTitle(SampleProviders::individuals());
    }
    void execute_data();
    void execute();
    void executeByEscape() { Checks::executeByEscape(); }
    void registerIsGuarded();
    void controllerIsShared();

private:
    std::unique_ptr<GuiTestGuard> m_guard;
};

void TestSelmarIndividualWizard::pages()
{
    Checks::pages({QStringLiteral("SrIStartPage"), QStringLiteral("SrIServicesPage"),
                   QStringLiteral("SrIPaymentPage")},
                  SampleProviders::individuals());
}

void TestSelmarIndividualWizard::textsPassThroughTheTranslationContext()
{
    const MarkingTranslator translator(QStringLiteral("SelmarIndividualWizard"));
    OpenWizard<SelmarIndividualWizard> open(SampleProviders::individuals());
    QCOMPARE(open.wizard.page(0)->subTitle(),
             QStringLiteral("SelmarIndividualWizard:Ввод данных абонента"));
    QCOMPARE(open.wizard.page(2)->subTitle(),
             QStringLiteral("SelmarIndividualWizard:Оплата услуг"));
    QEvent event(QEvent::LanguageChange);
    QCoreApplication::sendEvent(&open.wizard, &event);
    QCOMPARE(open.wizard.windowTitle(), QStringLiteral("SelmarIndividualWizard:Wizard"));
}

void TestSelmarIndividualWizard::hasNoMinimumSizeOfItsOwn()
{
    // The legal wizard's form has one; the two differ on purpose.
    const auto wizard = Checks::bare();
    wizard->createPages(SampleProviders::individuals());
    QVERIFY(wizard->minimumWidth() < 800 && wizard->minimumHeight() < 600);
}

void TestSelmarIndividualWizard::knownParameterIsReplaced()
{
    const auto wizard = Checks::bare();
    wizard->setProvider(SampleProviders::individuals());
    wizard->setParam(QStringLiteral("account"),
                     {QStringLiteral("renamed"), QStringLiteral("Счёт"), QStringLiteral("5")});
    wizard->setParamValue(QStringLiteral("period"), QStringLiteral("03-2024"));
    const QMap<QString, ProviderParameter> params = wizard->providerParams();
    QCOMPARE(params.value(QStringLiteral("account")).title(), QStringLiteral("Счёт"));
    QCOMPARE(params.value(QStringLiteral("account")).value(), QStringLiteral("5"));
    QCOMPARE(params.value(QStringLiteral("period")).value(), QStringLiteral("03-2024"));
    QCOMPARE(params.value(QStringLiteral("period")).title(), QStringLiteral("PERIOD"));
    QVERIFY2(!params.contains(QStringLiteral("renamed")),
             "the key is the name given, not the parameter's own");
    // The wizard's provider keeps its own parameters.
    QCOMPARE(wizard->provider()->parameters().last()->value(), QString());
}

void TestSelmarIndividualWizard::unknownParameterAddsNothing()
{
    const auto wizard = Checks::bare();
    wizard->setProvider(SampleProviders::individuals());
    const QMap<QString, ProviderParameter> before = wizard->providerParams();
    wizard->setParam(QStringLiteral("unknown"), ProviderParameter());
    wizard->setParamValue(QStringLiteral("Account"), QStringLiteral("names differ in case"));
    wizard->setParamValue(QString(), QStringLiteral("x"));
    QVERIFY(wizard->providerParams() == before);
}

void TestSelmarIndividualWizard::wrongSignatures()
{
    m_guard->expectWarning(QStringLiteral("QObject::connect"));
    Checks::wrongSignatures();
    QCOMPARE(m_guard->log.containing(QtWarningMsg, QStringLiteral("QObject::connect")).isEmpty(),
             false);
}

void TestSelmarIndividualWizard::hostDestroyedWhileOpen()
{
    const auto wizard = Checks::bare();
    wizard->createPages(SampleProviders::individuals());
    {
        FakeHost host;
        QVERIFY(wizard->setMessageSender(&host, SLOT(sendMessage(QString, QVariant))));
        QVERIFY(wizard->setMessageReciever(&host, SIGNAL(incomingMessage(QVariantMap, QString))));
    }
    emit wizard->sendMessage(QStringLiteral("/nobody"), QVariant());
}

void TestSelmarIndividualWizard::execute_data()
{
    QTest::addColumn<int>("result");
    QTest::addColumn<bool>("accepted");
    QTest::newRow("accepted") << int(QDialog::Accepted) << true;
    QTest::newRow("rejected") << int(QDialog::Rejected) << false;
    QTest::newRow("another result") << 2 << false;
    QTest::newRow("closed") << -1 << false;
}

void TestSelmarIndividualWizard::execute()
{
    QFETCH(const int, result);
    QFETCH(const bool, accepted);
    Checks::execute(result, accepted);
}

void TestSelmarIndividualWizard::registerIsGuarded()
{
    const auto wizard = Checks::bare();
    QVERIFY(wizard->frHandler().isNull());
    {
        FakeRegister fiscalRegister;
        wizard->setFrHandler(&fiscalRegister);
        QCOMPARE(wizard->frHandler().data(), &fiscalRegister);
        QVERIFY(!fiscalRegister.parent());
    }
    QVERIFY(wizard->frHandler().isNull());
}

void TestSelmarIndividualWizard::controllerIsShared()
{
    const auto record = QSharedPointer<FakePaysController::Record>::create();
    auto wizard = Checks::bare();
    {
        const QSharedPointer<IPaysControllerWrapper> controller(new FakePaysController(record));
        wizard->setPcWrapper(controller);
        QCOMPARE(wizard->pcWrapper(), controller);
    }
    QCOMPARE(record->alive, 1);
    wizard.reset();
    QCOMPARE(record->alive, 0);
}

QTEST_MAIN(TestSelmarIndividualWizard)
#include "tst_selmarindividualwizard.moc"
