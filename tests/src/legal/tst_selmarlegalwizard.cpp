#include "legal/selmarlegalwizard.h"

#include "fakepayscontroller.h"
#include "fakeregister.h"
#include "guitestguard.h"
#include "markingtranslator.h"
#include "sampleproviders.h"
#include "wizardshellchecks.h"

#include <QTest>

#include <memory>

class TestSelmarLegalWizard : public QObject
{
    Q_OBJECT

    using Checks = WizardShellChecks<SelmarLegalWizard>;

private slots:
    void init() { m_guard = std::make_unique<GuiTestGuard>(); }
    void cleanup()
    {
        const QStringList problems = m_guard->problems();
        m_guard.reset();
        QCOMPARE(problems, QStringList());
    }

    void metaObject() { Checks::metaObject("SelmarLegalWizard"); }
    void startsEmpty() { Checks::startsEmpty(); }
    void dialogResults() { Checks::dialogResults(SampleProviders::legalEntities()); }
    void form() { Checks::form("SelmarLegalWizard", QSizePolicy::Fixed); }
    void pages();
    void textsPassThroughTheTranslationContext();
    void recordsAreCopies() { Checks::recordsAreCopies(SampleProviders::legalEntities()); }
    void parametersByName() { Checks::parametersByName(); }
    void cannotBeMadeSmallerThanItsForm();
    void providerIdsOfALegalEntity();
    void nullHostObjects() { Checks::nullHostObjects(); }
    void wrongSignatures();
    void rightSignatures() { Checks::rightSignatures(); }
    void relayPaths()
    {
        Checks::relayPaths(SampleProviders::legalEntities(), BillingAnswers::legalSingle());
    }
    void hostDestroyedWhileOpen();
    void languageChangeTakesTheTitle()
    {
        Checks::languageChangeTakesTheTitle(SampleProviders::legalEntities());
    }
    void execute_data();
    void execute();
    void executeByEscape() { Checks::executeByEscape(); }
    void registerIsGuarded();
    void controllerIsShared();

private:
    std::unique_ptr<GuiTestGuard> m_guard;
};

void TestSelmarLegalWizard::pages()
{
    Checks::pages({QStringLiteral("SrLStartPage"), QStringLiteral("SrLServicesPage"),
                   QStringLiteral("SrIPaymentPage")},
                  SampleProviders::legalEntities());
}

void TestSelmarLegalWizard::textsPassThroughTheTranslationContext()
{
    const MarkingTranslator translator(QStringLiteral("SelmarLegalWizard"));
    OpenWizard<SelmarLegalWizard> open(SampleProviders::legalEntities());
    QCOMPARE(open.wizard.page(0)->subTitle(),
             QStringLiteral("SelmarLegalWizard:Ввод данных абонента"));
    QCOMPARE(open.wizard.page(2)->subTitle(), QStringLiteral("SelmarLegalWizard:Оплата услуг"));
    QEvent event(QEvent::LanguageChange);
    QCoreApplication::sendEvent(&open.wizard, &event);
    QCOMPARE(open.wizard.windowTitle(), QStringLiteral("SelmarLegalWizard:Wizard"));
}

void TestSelmarLegalWizard::cannotBeMadeSmallerThanItsForm()
{
    OpenWizard<SelmarLegalWizard> open(SampleProviders::legalEntities());
    QCOMPARE(open.wizard.minimumSize(), QSize(800, 600));
    open.open();
    open.wizard.resize(400, 300);
    QVERIFY2(open.wizard.width() >= 800 && open.wizard.height() >= 600,
             "resized below its minimum");
}

void TestSelmarLegalWizard::providerIdsOfALegalEntity()
{
    OpenWizard<SelmarLegalWizard> open(SampleProviders::legalEntities());
    QCOMPARE(open.wizard.providerId(), qint64(18723));
    QCOMPARE(open.wizard.newProviderId(), qint64(18723));
}

void TestSelmarLegalWizard::wrongSignatures()
{
    m_guard->expectWarning(QStringLiteral("QObject::connect"));
    Checks::wrongSignatures();
    QCOMPARE(m_guard->log.containing(QtWarningMsg, QStringLiteral("QObject::connect")).isEmpty(),
             false);
}

void TestSelmarLegalWizard::hostDestroyedWhileOpen()
{
    const auto wizard = Checks::bare();
    wizard->createPages(SampleProviders::legalEntities());
    {
        FakeHost host;
        QVERIFY(wizard->setMessageSender(&host, SLOT(sendMessage(QString, QVariant))));
        QVERIFY(wizard->setMessageReciever(&host, SIGNAL(incomingMessage(QVariantMap, QString))));
    }
    emit wizard->sendMessage(QStringLiteral("/nobody"), QVariant());
}

void TestSelmarLegalWizard::execute_data()
{
    QTest::addColumn<int>("result");
    QTest::addColumn<bool>("accepted");
    QTest::newRow("accepted") << int(QDialog::Accepted) << true;
    QTest::newRow("rejected") << int(QDialog::Rejected) << false;
    QTest::newRow("another result") << 2 << false;
    QTest::newRow("closed") << -1 << false;
}

void TestSelmarLegalWizard::execute()
{
    QFETCH(const int, result);
    QFETCH(const bool, accepted);
    Checks::execute(result, accepted);
}

void TestSelmarLegalWizard::registerIsGuarded()
{
    const auto wizard = Checks::bare();
    QVERIFY(wizard->fr().isNull());
    {
        FakeRegister fiscalRegister;
        wizard->setFr(&fiscalRegister);
        QCOMPARE(wizard->fr().data(), &fiscalRegister);
        QVERIFY(!fiscalRegister.parent());
    }
    QVERIFY(wizard->fr().isNull());
}

void TestSelmarLegalWizard::controllerIsShared()
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

QTEST_MAIN(TestSelmarLegalWizard)
#include "tst_selmarlegalwizard.moc"
