#include "selmarrivenholdhandler.h"

#include "fakehost.h"
#include "fakepayscontroller.h"
#include "fakeregister.h"
#include "guitestguard.h"
#include "hostdatabase.h"
#include "individual/selmarindividualwizard.h"
#include "legal/selmarlegalwizard.h"
#include "sampleproviders.h"

#include <molvacore/boxinfocontroller.h>
#include <molvacore/dbconnector.h>

#include <QSignalSpy>
#include <QTest>

#include <memory>

namespace {

QWidget *widgetOf(IPayDialog *dialog)
{
    return dynamic_cast<QWidget *>(dialog);
}

template<class Wizard>
void compareWizard(const Wizard &wizard, const Provider &provider, const QFont &font,
                   const SelmarRivenholdHandler &handler)
{
    QVERIFY(*wizard.provider() == provider);
    QVERIFY(*wizard.comProfile() == HostDatabase::commissionProfile());
    QVERIFY(*wizard.payCheckProfile() == HostDatabase::receiptProfile());
    QVERIFY(*wizard.currency() == HostDatabase::box().currency());
    QVERIFY(*wizard.prepay() == basix::FixNumber(100, 12345));
    QCOMPARE(wizard.inputFont(), font);
    QVERIFY(wizard.info() == HostDatabase::box());
    QCOMPARE(wizard.pcWrapper().data(), handler.pcWrapper().data());
    QCOMPARE(wizard.providerParams().size(), provider.parameters().size());
    QCOMPARE(wizard.windowTitle(), provider.checkName());
    QCOMPARE(wizard.pageIds(), (QList<int>{0, 1, 2}));
}

} // namespace

/// What a start shows, builds and hands to the wizard, and who owns what afterwards.
class TestHandlerStart : public QObject
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

    void startFailureShowsOneBox_data();
    void startFailureShowsOneBox();
    void startWithoutReceiptProfile();
    void startWithoutDatabase();
    void wizardFollowsTheWorkingId_data();
    void wizardFollowsTheWorkingId();
    void wizardGetsEverything_data();
    void wizardGetsEverything();
    void everyStartReadsTheBoxAnew();
    void dialogBelongsToTheParent();
    void wizardIsWiredToTheHost_data();
    void wizardIsWiredToTheHost();
    void deletedAndMissingHostObjects_data();
    void deletedAndMissingHostObjects();
    void payChecStatusReceiverChangesNothing();
    void controllerDiesWithItsLastHolder();
    void controllerReplacedLetsTheFirstGo();
    void registerDestroyedByTheHost();

private:
    std::unique_ptr<GuiTestGuard> m_guard;
};

void TestHandlerStart::startFailureShowsOneBox_data()
{
    QTest::addColumn<int>("leftOut");
    QTest::addColumn<QString>("text");
    QTest::newRow("no box information")
        << int(HostDatabase::Box) << QStringLiteral("BoxInfo loading error");
    QTest::newRow("no commission profile") << int(HostDatabase::CommissionProfile)
                                           << QStringLiteral("Commission profile loading error");
    QTest::newRow("neither: the box counts")
        << int(HostDatabase::Box | HostDatabase::CommissionProfile)
        << QStringLiteral("BoxInfo loading error");
}

void TestHandlerStart::startFailureShowsOneBox()
{
    QFETCH(const int, leftOut);
    QFETCH(const QString, text);

    const HostDatabase database{HostDatabase::Parts(leftOut)};
    QWidget window;
    SelmarRivenholdHandler handler;
    QWidget *boxParent = nullptr;
    m_guard->answers.run([&boxParent](QDialog *dialog) {
        boxParent = dialog->parentWidget();
        QTest::keyClick(dialog, Qt::Key_Escape);
    });
    QVERIFY(!handler.start(basix::FixNumber(), SampleProviders::individuals(), &window));

    QCOMPARE(m_guard->answers.seen().size(), 1);
    const ModalAnswers::Seen box = m_guard->answers.seen().first();
    QCOMPARE(box.className, QStringLiteral("QMessageBox"));
    QCOMPARE(box.title, QStringLiteral("Selmar Rivenhold plugin starting error"));
    QCOMPARE(box.text, text);
    QCOMPARE(box.icon, QMessageBox::Critical);
    QCOMPARE(box.buttons.size(), 1);
    QCOMPARE(boxParent, &window);
    QVERIFY2(window.findChildren<QDialog *>().isEmpty(),
             "no half-made wizard is left on the host's window");
}

void TestHandlerStart::startWithoutReceiptProfile()
{
    const HostDatabase database(HostDatabase::ReceiptProfile);
    SelmarRivenholdHandler handler;
    const std::unique_ptr<QWidget> dialog(
        widgetOf(handler.start(basix::FixNumber(), SampleProviders::individuals(), nullptr)));
    const auto *wizard = qobject_cast<SelmarIndividualWizard *>(dialog.get());
    QVERIFY(wizard);
    QVERIFY(wizard->payCheckProfile());
    QVERIFY(!wizard->payCheckProfile()->isValid());
}

void TestHandlerStart::startWithoutDatabase()
{
    m_guard->expectWarning(QString()); // whatever the host's database layer has to say
    DbConnector::setDatabaseFile(QStringLiteral("/nonexistent/folder/host.sqlite"));
    SelmarRivenholdHandler handler;
    m_guard->answers.ok();
    QVERIFY(!handler.start(basix::FixNumber(), SampleProviders::individuals(), nullptr));
    DbConnector::setDatabaseFile(QString());
    QCOMPARE(m_guard->answers.seen().size(), 1);
    QCOMPARE(m_guard->answers.seen().first().text, QStringLiteral("BoxInfo loading error"));
}

void TestHandlerStart::wizardFollowsTheWorkingId_data()
{
    QTest::addColumn<qint64>("id");
    QTest::addColumn<qint64>("workId");
    QTest::addColumn<bool>("individual");
    QTest::newRow("individuals") << qint64(18722) << qint64(18722) << true;
    QTest::newRow("legal entities") << qint64(18723) << qint64(18723) << false;
    QTest::newRow("working id zero") << qint64(18722) << qint64(0) << false;
    QTest::newRow("unsupported working id") << qint64(18722) << qint64(4711) << false;
    QTest::newRow("negative working id") << qint64(18722) << qint64(-1) << false;
    QTest::newRow("another id, individuals' working id") << qint64(900) << qint64(18722) << true;
    QTest::newRow("legal id, individuals' working id") << qint64(18723) << qint64(18722) << true;
}

void TestHandlerStart::wizardFollowsTheWorkingId()
{
    QFETCH(const qint64, id);
    QFETCH(const qint64, workId);
    QFETCH(const bool, individual);

    const HostDatabase database;
    Provider provider = SampleProviders::individuals();
    provider.setId(id);
    provider.setWorkProviderId(workId);
    SelmarRivenholdHandler handler;
    IPayDialog *dialog = handler.start(basix::FixNumber(), provider, nullptr);
    const std::unique_ptr<QWidget> widget(widgetOf(dialog));
    QVERIFY(widget);
    QCOMPARE(qobject_cast<SelmarIndividualWizard *>(widget.get()) != nullptr, individual);
    QCOMPARE(qobject_cast<SelmarLegalWizard *>(widget.get()) != nullptr, !individual);
    QCOMPARE(dialog->providerId(), id);
}

void TestHandlerStart::wizardGetsEverything_data()
{
    QTest::addColumn<bool>("individual");
    QTest::newRow("individual") << true;
    QTest::newRow("legal") << false;
}

void TestHandlerStart::wizardGetsEverything()
{
    QFETCH(const bool, individual);

    const HostDatabase database;
    const auto record = QSharedPointer<FakePaysController::Record>::create();
    const Provider provider =
        individual ? SampleProviders::individuals() : SampleProviders::legalEntities();
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPointSize(21);
    auto *fiscalRegister = new FakeRegister;
    SelmarRivenholdHandler handler;
    handler.setInputFont(font);
    handler.setPaysControllerWrapper(new FakePaysController(record));
    handler.setFrHandler(fiscalRegister);

    const std::unique_ptr<QWidget> dialog(
        widgetOf(handler.start(basix::FixNumber(100, 12345), provider, nullptr)));
    if (individual) {
        const auto *wizard = qobject_cast<SelmarIndividualWizard *>(dialog.get());
        QVERIFY(wizard);
        compareWizard(*wizard, provider, font, handler);
        QCOMPARE(wizard->frHandler().data(), fiscalRegister);
    } else {
        const auto *wizard = qobject_cast<SelmarLegalWizard *>(dialog.get());
        QVERIFY(wizard);
        compareWizard(*wizard, provider, font, handler);
        QCOMPARE(wizard->fr().data(), fiscalRegister);
    }
}

void TestHandlerStart::everyStartReadsTheBoxAnew()
{
    const HostDatabase database;
    SelmarRivenholdHandler handler;
    const auto boxId = [&handler] {
        const std::unique_ptr<QWidget> dialog(
            widgetOf(handler.start(basix::FixNumber(), SampleProviders::individuals(), nullptr)));
        return qobject_cast<SelmarIndividualWizard *>(dialog.get())->info().boxId();
    };
    QCOMPARE(boxId(), HostDatabase::boxId);
    {
        DbConnector db;
        BoxInfo moved = HostDatabase::box();
        moved.setBoxId(78);
        QVERIFY(BoxInfoController(db).setBoxInfo(moved));
    }
    QCOMPARE(boxId(), qint64(78));
}

void TestHandlerStart::dialogBelongsToTheParent()
{
    const HostDatabase database;
    SelmarRivenholdHandler handler;
    QPointer<QWidget> first;
    QPointer<QWidget> second;
    {
        QWidget window;
        first =
            widgetOf(handler.start(basix::FixNumber(), SampleProviders::individuals(), &window));
        second =
            widgetOf(handler.start(basix::FixNumber(), SampleProviders::individuals(), &window));
        QVERIFY(first && second && first != second);
        QCOMPARE(first->parentWidget(), &window);
        QVERIFY(!first->isVisible());
    }
    QVERIFY(!first);
    QVERIFY(!second);
}

void TestHandlerStart::wizardIsWiredToTheHost_data()
{
    wizardGetsEverything_data();
}

void TestHandlerStart::wizardIsWiredToTheHost()
{
    QFETCH(const bool, individual);
    const HostDatabase database;
    FakeHost host;
    SelmarRivenholdHandler handler;
    QVERIFY(handler.setMessageReciever(&host, SIGNAL(incomingMessage(QVariantMap, QString))));
    QVERIFY(handler.setMessageSender(&host, SLOT(sendMessage(QString, QVariant))));
    QVERIFY(handler.setPayStatusReciever(&host, SIGNAL(paymentStatus(QVariant))));
    const std::unique_ptr<QWidget> dialog(widgetOf(handler.start(
        basix::FixNumber(),
        individual ? SampleProviders::individuals() : SampleProviders::legalEntities(), nullptr)));

    QSignalSpy incoming(dialog.get(), SIGNAL(incomingMessage(QVariantMap, QString)));
    QSignalSpy status(dialog.get(), SIGNAL(paymentStatus(QVariant)));
    emit host.incomingMessage({{QStringLiteral("a"), 1}}, QStringLiteral("text"));
    emit host.paymentStatus(QStringLiteral("posted"));
    QVERIFY(QMetaObject::invokeMethod(dialog.get(), "sendMessage",
                                      Q_ARG(QString, QStringLiteral("/to")), Q_ARG(QVariant, 7)));
    QCOMPARE(incoming.size(), 1);
    QCOMPARE(incoming.first().at(0).toMap(), (QVariantMap{{QStringLiteral("a"), 1}}));
    QCOMPARE(incoming.first().at(1).toString(), QStringLiteral("text"));
    QCOMPARE(status.size(), 1);
    QCOMPARE(status.first().at(0).value<QVariant>().toString(), QStringLiteral("posted"));
    QCOMPARE(host.sent().size(), 1);
    QCOMPARE(host.sent().first().destination, QStringLiteral("/to"));
    QCOMPARE(host.sent().first().data, QVariant(7));
}

void TestHandlerStart::deletedAndMissingHostObjects_data()
{
    QTest::addColumn<bool>("deleted");
    QTest::newRow("deleted before the start") << true;
    QTest::newRow("never set") << false;
}

void TestHandlerStart::deletedAndMissingHostObjects()
{
    QFETCH(const bool, deleted);
    const HostDatabase database;
    SelmarRivenholdHandler handler;
    if (deleted) {
        FakeHost host;
        handler.setMessageReciever(&host, SIGNAL(incomingMessage(QVariantMap, QString)));
        handler.setMessageSender(&host, SLOT(sendMessage(QString, QVariant)));
        handler.setPayStatusReciever(&host, SIGNAL(paymentStatus(QVariant)));
        auto *fiscalRegister = new FakeRegister;
        handler.setFrHandler(fiscalRegister);
        delete fiscalRegister;
    }
    const std::unique_ptr<QWidget> dialog(
        widgetOf(handler.start(basix::FixNumber(), SampleProviders::individuals(), nullptr)));
    auto *wizard = qobject_cast<SelmarIndividualWizard *>(dialog.get());
    QVERIFY(wizard);
    QVERIFY(wizard->frHandler().isNull());
    QVERIFY(wizard->pcWrapper().isNull());
    emit wizard->sendMessage(QStringLiteral("/nobody"), QVariant());
}

void TestHandlerStart::payChecStatusReceiverChangesNothing()
{
    const HostDatabase database;
    FakeHost host;
    SelmarRivenholdHandler handler;
    QVERIFY(handler.setPayStatusReciever(&host, SIGNAL(paymentStatus(QVariant))));
    QVERIFY(handler.setPayChecStatusReciever(nullptr, nullptr));
    QVERIFY(handler.setPayChecStatusReciever(&host, SIGNAL(noSuchSignal())));
    const std::unique_ptr<QWidget> dialog(
        widgetOf(handler.start(basix::FixNumber(), SampleProviders::individuals(), nullptr)));
    QSignalSpy status(dialog.get(), SIGNAL(paymentStatus(QVariant)));
    emit host.paymentStatus(1);
    QCOMPARE(status.size(), 1);
}

void TestHandlerStart::controllerDiesWithItsLastHolder()
{
    const HostDatabase database;
    const auto record = QSharedPointer<FakePaysController::Record>::create();
    auto handler = std::make_unique<SelmarRivenholdHandler>();
    handler->setPaysControllerWrapper(new FakePaysController(record));
    QCOMPARE(record->alive, 1);
    std::unique_ptr<QWidget> dialog(
        widgetOf(handler->start(basix::FixNumber(), SampleProviders::legalEntities(), nullptr)));
    handler.reset();
    QCOMPARE(record->alive, 1);
    dialog.reset();
    QCOMPARE(record->alive, 0);
}

void TestHandlerStart::controllerReplacedLetsTheFirstGo()
{
    const HostDatabase database;
    const auto first = QSharedPointer<FakePaysController::Record>::create();
    const auto second = QSharedPointer<FakePaysController::Record>::create();
    SelmarRivenholdHandler handler;
    handler.setPaysControllerWrapper(new FakePaysController(first));
    std::unique_ptr<QWidget> dialog(
        widgetOf(handler.start(basix::FixNumber(), SampleProviders::individuals(), nullptr)));
    auto *controller = new FakePaysController(second);
    handler.setPaysControllerWrapper(controller);
    QCOMPARE(handler.pcWrapper().data(), controller);
    QCOMPARE(first->alive, 1); // the running wizard holds it
    dialog.reset();
    QCOMPARE(first->alive, 0);
    handler.setPaysControllerWrapper(nullptr);
    QCOMPARE(second->alive, 0);
    QVERIFY(!handler.pcWrapper());
}

void TestHandlerStart::registerDestroyedByTheHost()
{
    const HostDatabase database;
    SelmarRivenholdHandler handler;
    auto *fiscalRegister = new FakeRegister;
    handler.setFrHandler(fiscalRegister);
    const std::unique_ptr<QWidget> dialog(
        widgetOf(handler.start(basix::FixNumber(), SampleProviders::individuals(), nullptr)));
    const auto *wizard = qobject_cast<SelmarIndividualWizard *>(dialog.get());
    QVERIFY(!wizard->frHandler().isNull());
    delete fiscalRegister;
    QVERIFY(wizard->frHandler().isNull());
}

QTEST_MAIN(TestHandlerStart)
#include "tst_handlerstart.moc"
