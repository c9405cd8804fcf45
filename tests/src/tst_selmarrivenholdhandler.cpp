#include "selmarrivenholdhandler.h"

#include "fakepayscontroller.h"
#include "fakeregister.h"
#include "guitestguard.h"
#include "hostdatabase.h"
#include "markingtranslator.h"
#include "sampleproviders.h"

#include <molvacore/ipaydialog.h>

#include <QDateTime>
#include <QFont>
#include <QTest>

#include <functional>
#include <memory>

namespace {

using Operation = std::function<void(SelmarRivenholdHandler &)>;

/// A controller that is a QObject too, as a host may have it.
class ObjectController : public QObject, public FakePaysController
{
    Q_OBJECT

public:
    ObjectController(const QSharedPointer<Record> &record, QObject *parent)
        : QObject(parent), FakePaysController(record)
    {
    }
};

QWidget *widgetOf(IPayDialog *dialog)
{
    return dynamic_cast<QWidget *>(dialog);
}

} // namespace

Q_DECLARE_METATYPE(Operation)

class TestSelmarRivenholdHandler : public QObject
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

    void identity();
    void buildIsAMomentInIsoForm();
    void descriptionKeepsItsUnfilledPercentOne();
    void textsPassThroughTheTranslationContext();
    void supportsById_data();
    void supportsById();
    void fixedAnswers();
    void printCheckCopyLeavesItsArgument_data();
    void printCheckCopyLeavesItsArgument();

    void traceMarks_data();
    void traceMarks();
    void traceMarksOfAStart();
    void traceOfCreationAndDestruction();
    void destructionLogsTheParentOfAControllerThatIsAnObject();
    void controllerGoesBetweenTheMarks();

    void metaObjectHasNothingOfItsOwn();
    void metaCast_data();
    void metaCast();

    void connectingTakesNull();

    void registerBecomesAChild();

private:
    std::unique_ptr<GuiTestGuard> m_guard;
};

void TestSelmarRivenholdHandler::identity()
{
    const SelmarRivenholdHandler handler;
    QCOMPARE(handler.pluginVersion(), QStringLiteral("0.8.25"));
    QCOMPARE(handler.pluginName(), QStringLiteral("selmarrivenhold"));
    QCOMPARE(handler.pluginCaption(), QStringLiteral("Селмар Ривенхолд"));
    QCOMPARE(handler.supportedProviders(), (QSet<qint64>{18722, 18723}));
    QCOMPARE(SelmarRivenholdHandler::SUPPORTED_PROVIDERS, (QSet<qint64>{18722, 18723}));
    QVERIFY(!handler.parent());
}

void TestSelmarRivenholdHandler::buildIsAMomentInIsoForm()
{
    const SelmarRivenholdHandler handler;
    QCOMPARE(handler.pluginBuild(), SelmarRivenholdHandler::SR_PLUGIN_BUILD);
    const QDateTime build =
        QDateTime::fromString(handler.pluginBuild(), QStringLiteral("yyyy-MM-ddThh:mm:ss"));
    QVERIFY2(build.isValid(), qPrintable(handler.pluginBuild()));
    QVERIFY(build.date().year() >= 2023);
}

void TestSelmarRivenholdHandler::descriptionKeepsItsUnfilledPercentOne()
{
    const SelmarRivenholdHandler handler;
    QCOMPARE(handler.pluginDescription(),
             QStringLiteral("<html><title>%1</title><head><meta http-equiv=\"Content-Type\" "
                            "content=\"text/html; charset=UTF-8\"></head><body>\n"
                            "<p align=\"center\"><b>Plugin for providers</b></p>\n"
                            "<div align=\"left\">[<b>18722</b>] [ГК Тавран ФЛ]</div>\n"
                            "<div align=\"left\">[<b>18723</b>] [ГК Тавран ЮЛ]</div>\n"
                            "</body></html>"));
}

void TestSelmarRivenholdHandler::textsPassThroughTheTranslationContext()
{
    const HostDatabase database(HostDatabase::Box);
    const MarkingTranslator translator(QStringLiteral("SelmarRivenholdHandler"));
    SelmarRivenholdHandler handler;
    QCOMPARE(handler.pluginCaption(), QStringLiteral("SelmarRivenholdHandler:Селмар Ривенхолд"));
    QVERIFY(handler.pluginDescription().contains(
        QStringLiteral("<b>SelmarRivenholdHandler:Plugin for providers</b>")));
    QVERIFY(handler.pluginDescription().contains(
        QStringLiteral("] SelmarRivenholdHandler:[ГК Тавран ФЛ]<")));
    QVERIFY(handler.pluginDescription().contains(
        QStringLiteral("] SelmarRivenholdHandler:[ГК Тавран ЮЛ]<")));
    QCOMPARE(handler.pluginName(), QStringLiteral("selmarrivenhold"));

    m_guard->answers.ok();
    QVERIFY(!handler.start(basix::FixNumber(), SampleProviders::individuals(), nullptr));
    QCOMPARE(m_guard->answers.seen().size(), 1);
    QCOMPARE(m_guard->answers.seen().first().title,
             QStringLiteral("SelmarRivenholdHandler:Selmar Rivenhold plugin starting error"));
    QCOMPARE(m_guard->answers.seen().first().text,
             QStringLiteral("SelmarRivenholdHandler:BoxInfo loading error"));
}

void TestSelmarRivenholdHandler::supportsById_data()
{
    QTest::addColumn<qint64>("id");
    QTest::addColumn<qint64>("workId");
    QTest::addColumn<bool>("supported");

    QTest::newRow("individuals") << qint64(18722) << qint64(18722) << true;
    QTest::newRow("legal entities") << qint64(18723) << qint64(18723) << true;
    QTest::newRow("zero") << qint64(0) << qint64(0) << false;
    QTest::newRow("neighbour below") << qint64(18721) << qint64(18721) << false;
    QTest::newRow("neighbour above") << qint64(18724) << qint64(18724) << false;
    QTest::newRow("negative") << qint64(-18722) << qint64(-18722) << false;
    QTest::newRow("beyond 32 bits") << qint64(18722) + (qint64(1) << 32) << qint64(18722) << false;
    QTest::newRow("only the working id is supported") << qint64(5) << qint64(18722) << false;
    QTest::newRow("only the id is supported") << qint64(18723) << qint64(5) << true;
}

void TestSelmarRivenholdHandler::supportsById()
{
    QFETCH(const qint64, id);
    QFETCH(const qint64, workId);
    QFETCH(const bool, supported);

    const SelmarRivenholdHandler handler;
    Provider provider;
    provider.setId(id);
    provider.setWorkProviderId(workId);
    QCOMPARE(handler.providerIsSupported(id), supported);
    QCOMPARE(handler.providerIsSupported(provider), supported);
}

void TestSelmarRivenholdHandler::fixedAnswers()
{
    SelmarRivenholdHandler handler;
    const Provider provider = SampleProviders::individuals();
    QVERIFY(handler.postProcessPayment(Payment(), nullptr));
    QVERIFY(!handler.hasSettingsPage());
    QVERIFY(!handler.settingsPage());
    QVERIFY(!handler.enablePayEditing(provider));
    QVERIFY(handler.disablePayTemplateSaving(provider));
    QVERIFY(!handler.pcWrapper());
}

void TestSelmarRivenholdHandler::printCheckCopyLeavesItsArgument_data()
{
    QTest::addColumn<bool>("value");
    QTest::newRow("true") << true;
    QTest::newRow("false") << false;
}

void TestSelmarRivenholdHandler::printCheckCopyLeavesItsArgument()
{
    QFETCH(const bool, value);
    SelmarRivenholdHandler handler;
    bool printed = value;
    handler.printCheckCopy(Payment(), printed, nullptr);
    QCOMPARE(printed, value);
}

void TestSelmarRivenholdHandler::traceMarks_data()
{
    QTest::addColumn<Operation>("operation");
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("marks");

    const auto row = [](const char *name, int marks, const Operation &operation) {
        QTest::newRow(name) << operation
                            << QString::fromLatin1(name).section(QLatin1Char(' '), 0, 0) << marks;
    };
    using H = SelmarRivenholdHandler;
    row("pluginVersion", 1, [](H &h) { h.pluginVersion(); });
    row("pluginBuild", 1, [](H &h) { h.pluginBuild(); });
    row("pluginName", 1, [](H &h) { h.pluginName(); });
    row("pluginCaption", 1, [](H &h) { h.pluginCaption(); });
    row("pluginDescription", 1, [](H &h) { h.pluginDescription(); });
    row("supportedProviders", 1, [](H &h) { h.supportedProviders(); });
    row("providerIsSupported by id", 1, [](H &h) { h.providerIsSupported(18722); });
    row("providerIsSupported by provider", 1, [](H &h) { h.providerIsSupported(Provider()); });
    row("setInputFont", 2, [](H &h) { h.setInputFont(QFont()); });
    row("setMessageReciever", 2, [](H &h) { h.setMessageReciever(nullptr, nullptr); });
    row("setMessageSender", 2, [](H &h) { h.setMessageSender(nullptr, nullptr); });
    row("setPayStatusReciever", 2, [](H &h) { h.setPayStatusReciever(nullptr, nullptr); });
    row("setPayChecStatusReciever", 2, [](H &h) { h.setPayChecStatusReciever(nullptr, nullptr); });
    row("setPaysControllerWrapper", 2, [](H &h) { h.setPaysControllerWrapper(nullptr); });
    row("setFrHandler", 2, [](H &h) { h.setFrHandler(new FakeRegister); });
    row("printCheckCopy", 1, [](H &h) {
        bool printed = false;
        h.printCheckCopy(Payment(), printed, nullptr);
    });
    row("postProcessPayment", 1, [](H &h) { h.postProcessPayment(Payment(), nullptr); });
    row("hasSettingsPage", 1, [](H &h) { h.hasSettingsPage(); });
    row("settingsPage", 1, [](H &h) { h.settingsPage(); });
    row("enablePayEditing", 1, [](H &h) { h.enablePayEditing(Provider()); });
    row("disablePayTemplateSaving", 1, [](H &h) { h.disablePayTemplateSaving(Provider()); });
    row("startWorkers", 1, [](H &h) { h.startWorkers(BoxInfo(), basix::Currency()); });
    row("stopWorkers", 1, [](H &h) { h.stopWorkers(); });
}

void TestSelmarRivenholdHandler::traceMarks()
{
    QFETCH(const Operation, operation);
    QFETCH(const QString, name);
    QFETCH(const int, marks);

    SelmarRivenholdHandler handler;
    m_guard->log.clear();
    operation(handler);

    const QVector<MessageLog::Message> lines = m_guard->log.messages();
    QCOMPARE(lines.size(), marks);
    for (const MessageLog::Message &line : lines) {
        QCOMPARE(line.text, QStringLiteral("#_#"));
        QCOMPARE(line.type, QtWarningMsg);
        QCOMPARE(line.category, QStringLiteral("default"));
        QVERIFY2(line.file.endsWith(QStringLiteral("selmarrivenholdhandler.cpp")),
                 qPrintable(line.file));
        QVERIFY(line.line > 0);
        // The full signature, with the class and the types of the arguments.
        QVERIFY2(line.function.contains(QStringLiteral("SelmarRivenholdHandler::%1(").arg(name)),
                 qPrintable(line.function));
    }
    if (marks == 2)
        QVERIFY2(lines.first().line < lines.last().line,
                 "one mark before and one after the change");
}

void TestSelmarRivenholdHandler::traceMarksOfAStart()
{
    SelmarRivenholdHandler handler;
    {
        const HostDatabase database;
        m_guard->log.clear();
        delete widgetOf(handler.start(basix::FixNumber(), SampleProviders::individuals(), nullptr));
        QCOMPARE(m_guard->log.count(QtWarningMsg, QStringLiteral("#_#")), 1);
    }
    const HostDatabase database(HostDatabase::CommissionProfile);
    m_guard->log.clear();
    m_guard->answers.ok();
    QVERIFY(!handler.start(basix::FixNumber(), SampleProviders::individuals(), nullptr));
    const QVector<MessageLog::Message> marks =
        m_guard->log.containing(QtWarningMsg, QStringLiteral("#_#"));
    // showErrorMessage() marks before and after the box.
    QCOMPARE(marks.size(), 3);
    QVERIFY(marks.at(0).function.contains(QStringLiteral("::start(")));
    QVERIFY(marks.at(1).function.contains(QStringLiteral("::showErrorMessage(")));
    QVERIFY(marks.at(2).function.contains(QStringLiteral("::showErrorMessage(")));
}

void TestSelmarRivenholdHandler::traceOfCreationAndDestruction()
{
    const auto record = QSharedPointer<FakePaysController::Record>::create();
    QStringList texts;
    {
        SelmarRivenholdHandler handler;
        QCOMPARE(m_guard->log.count(QtWarningMsg, QStringLiteral("CREATE")), 1);
        QVERIFY(m_guard->log.messages().first().function.contains(
            QStringLiteral("SelmarRivenholdHandler::SelmarRivenholdHandler(")));
        handler.setPaysControllerWrapper(new FakePaysController(record));
        m_guard->log.clear();
    }
    for (const MessageLog::Message &line : m_guard->log.messages()) {
        QCOMPARE(line.type, QtWarningMsg);
        QCOMPARE(line.category, QStringLiteral("default"));
        texts.append(line.text);
    }
    QCOMPARE(texts.size(), 2);
    QVERIFY2(texts.first().startsWith(QStringLiteral("DESTROY 1 ")), qPrintable(texts.first()));
    QVERIFY2(texts.first().contains(QStringLiteral("QSharedPointer(0x")),
             qPrintable(texts.first()));
    QCOMPARE(texts.last(), QStringLiteral("DESTROY 2"));
    QCOMPARE(record->alive, 0);
}

void TestSelmarRivenholdHandler::destructionLogsTheParentOfAControllerThatIsAnObject()
{
    m_guard->expectWarning(QStringLiteral("QObject("));
    const auto record = QSharedPointer<FakePaysController::Record>::create();
    QObject owner;
    owner.setObjectName(QStringLiteral("owner of the controller"));
    {
        SelmarRivenholdHandler handler;
        handler.setPaysControllerWrapper(new ObjectController(record, &owner));
        m_guard->log.clear();
    }
    const QVector<MessageLog::Message> lines = m_guard->log.messages();
    QCOMPARE(lines.size(), 3);
    QVERIFY(lines.at(0).text.startsWith(QStringLiteral("DESTROY 1 ")));
    QVERIFY2(lines.at(1).text.contains(QStringLiteral("owner of the controller")),
             qPrintable(lines.at(1).text));
    QCOMPARE(lines.at(2).text, QStringLiteral("DESTROY 2"));
    QCOMPARE(record->alive, 0);
    QVERIFY(owner.children().isEmpty());
}

/// A host whose controller hangs or crashes when it goes finds it between the two marks.
void TestSelmarRivenholdHandler::controllerGoesBetweenTheMarks()
{
    class LastWords final : public FakePaysController
    {
    public:
        using FakePaysController::FakePaysController;
        ~LastWords() override { qInfo("controller is gone"); }
    };
    const auto record = QSharedPointer<FakePaysController::Record>::create();
    {
        SelmarRivenholdHandler handler;
        auto *controller = new LastWords(record);
        handler.setPaysControllerWrapper(controller);
        QCOMPARE(handler.pcWrapper().data(), controller);
        m_guard->log.clear();
    }
    const QVector<MessageLog::Message> lines = m_guard->log.messages();
    QCOMPARE(lines.size(), 3);
    QCOMPARE(lines.at(1).text, QStringLiteral("controller is gone"));
    QCOMPARE(lines.at(2).text, QStringLiteral("DESTROY 2"));
}

void TestSelmarRivenholdHandler::metaObjectHasNothingOfItsOwn()
{
    const QMetaObject &meta = SelmarRivenholdHandler::staticMetaObject;
    QCOMPARE(QByteArray(meta.className()), QByteArray("SelmarRivenholdHandler"));
    QCOMPARE(meta.superClass(), &QObject::staticMetaObject);
    QCOMPARE(meta.methodCount(), meta.methodOffset());
    QCOMPARE(meta.propertyCount(), meta.propertyOffset());
    QCOMPARE(meta.enumeratorCount(), meta.enumeratorOffset());
    QCOMPARE(meta.classInfoCount(), meta.classInfoOffset());

    SelmarRivenholdHandler handler;
    QVERIFY2(static_cast<void *>(static_cast<QObject *>(&handler)) == static_cast<void *>(&handler),
             "QObject is the first base");
}

void TestSelmarRivenholdHandler::metaCast_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<bool>("known");
    QTest::newRow("class name") << QByteArray("SelmarRivenholdHandler") << true;
    QTest::newRow("interface name") << QByteArray("IPayByProviderPlugin") << true;
    QTest::newRow("interface identifier")
        << QByteArray("org.molva.plugins.paybyproviderplugin") << true;
    QTest::newRow("base class") << QByteArray("QObject") << true;
    QTest::newRow("foreign interface") << QByteArray("IPayDialog") << false;
    QTest::newRow("another spelling") << QByteArray("selmarrivenholdhandler") << false;
}

void TestSelmarRivenholdHandler::metaCast()
{
    QFETCH(const QByteArray, name);
    QFETCH(const bool, known);
    SelmarRivenholdHandler handler;
    QCOMPARE(handler.qt_metacast(name.constData()) != nullptr, known);
    if (name.startsWith("IPay") || name.startsWith("org."))
        QVERIFY(!known
                || handler.qt_metacast(name.constData())
                    == static_cast<IPayByProviderPlugin *>(&handler));
    QCOMPARE(qobject_cast<IPayByProviderPlugin *>(static_cast<QObject *>(&handler)),
             static_cast<IPayByProviderPlugin *>(&handler));
}

void TestSelmarRivenholdHandler::connectingTakesNull()
{
    SelmarRivenholdHandler handler;
    QVERIFY(handler.setMessageReciever(nullptr, nullptr));
    QVERIFY(handler.setMessageSender(nullptr, SLOT(sendMessage(QString, QVariant))));
    QVERIFY(handler.setPayStatusReciever(nullptr, ""));
}

void TestSelmarRivenholdHandler::registerBecomesAChild()
{
    QObject hostWindow;
    QPointer<FakeRegister> fiscalRegister = new FakeRegister(&hostWindow);
    {
        SelmarRivenholdHandler handler;
        handler.setFrHandler(fiscalRegister);
        QCOMPARE(fiscalRegister->parent(), &handler);
        QVERIFY(hostWindow.children().isEmpty());
    }
    QVERIFY(!fiscalRegister);
}

QTEST_MAIN(TestSelmarRivenholdHandler)
#include "tst_selmarrivenholdhandler.moc"
