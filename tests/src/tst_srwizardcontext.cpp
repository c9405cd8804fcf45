#include "srwizardcontext.h"

#include "fakepayscontroller.h"
#include "fakeregister.h"
#include "guitestguard.h"
#include "hostdatabase.h"
#include "individual/selmarindividualwizard.h"
#include "legal/selmarlegalwizard.h"
#include "sampleproviders.h"

#include <QTest>
#include <QWizard>

#include <memory>

class TestSrWizardContext : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_guard = std::make_unique<GuiTestGuard>(); }
    void cleanup()
    {
        const QStringList problems = m_guard->problems();
        m_guard.reset();
        QCOMPARE(problems, QStringList());
    }

    void individualWizard();
    void legalWizard();
    void wizardWithoutAnything();
    void foreignWizard();
    void noWizard();
    void isASnapshot();

private:
    template<class Wizard>
    static std::unique_ptr<Wizard> filled(const Provider &provider,
                                          const QSharedPointer<IPaysControllerWrapper> &controller)
    {
        auto wizard = std::make_unique<Wizard>(QFont(), HostDatabase::box().currency(),
                                               basix::FixNumber(), nullptr);
        wizard->setProvider(provider);
        wizard->setInfo(HostDatabase::box());
        wizard->setPcWrapper(controller);
        return wizard;
    }
    static void compare(const SrWizardContext &context, const Provider &provider,
                        FrHandler *fiscalRegister,
                        const QSharedPointer<IPaysControllerWrapper> &controller)
    {
        QVERIFY(*context.provider == provider);
        QVERIFY(*context.currency == HostDatabase::box().currency());
        QVERIFY(context.info == HostDatabase::box());
        QCOMPARE(context.fiscalRegister.data(), fiscalRegister);
        QCOMPARE(context.paysController, controller);
        QCOMPARE(context.checkName(), provider.checkName());
    }
    static void compareEmpty(const SrWizardContext &context)
    {
        QVERIFY(context.provider);
        QVERIFY(*context.provider == Provider());
        QVERIFY(context.currency);
        QVERIFY(!context.info.isValid());
        QVERIFY(context.fiscalRegister.isNull());
        QVERIFY(!context.paysController);
        QCOMPARE(context.checkName(), QString());
    }

    std::unique_ptr<GuiTestGuard> m_guard;
};

void TestSrWizardContext::individualWizard()
{
    const QSharedPointer<IPaysControllerWrapper> controller(
        new FakePaysController(QSharedPointer<FakePaysController::Record>::create()));
    FakeRegister fiscalRegister;
    const auto wizard = filled<SelmarIndividualWizard>(SampleProviders::individuals(), controller);
    wizard->setFrHandler(&fiscalRegister);
    compare(SrWizardContext::of(wizard.get()), SampleProviders::individuals(), &fiscalRegister,
            controller);
}

void TestSrWizardContext::legalWizard()
{
    const QSharedPointer<IPaysControllerWrapper> controller(
        new FakePaysController(QSharedPointer<FakePaysController::Record>::create()));
    FakeRegister fiscalRegister;
    const auto wizard = filled<SelmarLegalWizard>(SampleProviders::legalEntities(), controller);
    wizard->setFr(&fiscalRegister);
    compare(SrWizardContext::of(wizard.get()), SampleProviders::legalEntities(), &fiscalRegister,
            controller);
}

void TestSrWizardContext::wizardWithoutAnything()
{
    const SelmarIndividualWizard individual(QFont(), basix::Currency(), basix::FixNumber(),
                                            nullptr);
    compareEmpty(SrWizardContext::of(&individual));
    const SelmarLegalWizard legal(QFont(), basix::Currency(), basix::FixNumber(), nullptr);
    compareEmpty(SrWizardContext::of(&legal));
}

void TestSrWizardContext::foreignWizard()
{
    const QWizard foreign;
    compareEmpty(SrWizardContext::of(&foreign));
}

void TestSrWizardContext::noWizard()
{
    compareEmpty(SrWizardContext::of(nullptr));
}

void TestSrWizardContext::isASnapshot()
{
    const auto wizard = filled<SelmarIndividualWizard>(SampleProviders::individuals(), {});
    auto *fiscalRegister = new FakeRegister;
    wizard->setFrHandler(fiscalRegister);
    const SrWizardContext context = SrWizardContext::of(wizard.get());
    wizard->setProvider(SampleProviders::legalEntities());
    QCOMPARE(context.provider->id(), qint64(18722));
    delete fiscalRegister;
    QVERIFY2(context.fiscalRegister.isNull(), "the register stays the host's");
}

QTEST_MAIN(TestSrWizardContext)
#include "tst_srwizardcontext.moc"
