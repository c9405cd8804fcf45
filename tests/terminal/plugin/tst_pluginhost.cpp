#include <plugin/frhandlerlink.h>
#include <plugin/pluginhost.h>

#include <bus/inprocessbus.h>

#include <basixcore/currency.h>
#include <basixcore/fixnumber.h>
#include <molvacore/boxinfo.h>
#include <molvacore/ipaybyproviderplugin.h>
#include <molvacore/ipayscontrollerwrapper.h>
#include <molvacore/paypack.h>
#include <molvacore/provider.h>

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QWidget>

namespace {

/// Says when it is destroyed.
class CountedWrapper final : public IPaysControllerWrapper
{
public:
    explicit CountedWrapper(int &alive) : m_alive(alive) { ++m_alive; }
    ~CountedWrapper() override { --m_alive; }
    bool savePack(const PayPack &, bool) override { return true; }
    bool handOnAtOnce() const override { return false; }
    bool handOn(qint64, QVariantMap &, QString &) override { return false; }

private:
    int &m_alive;
};

class CountingRegister final : public FrHandler
{
public:
    bool getFiscalStatus(QSharedPointer<FsStatus> &status) override
    {
        status = QSharedPointer<FsStatus>::create();
        return true;
    }
    bool doReceipt(const QVariantMap &, const QString &documentNumber, QVariantMap &,
                   QString &) override
    {
        numbers.append(documentNumber);
        return true;
    }

    QStringList numbers;
};

QString module(const char *name)
{
    return QStringLiteral(TEST_MODULES "/") + QLatin1String(name) + QStringLiteral(".so");
}

Provider provider(qint64 id)
{
    Provider result;
    result.setId(id);
    return result;
}

BoxInfo box()
{
    BoxInfo result;
    result.setBoxId(11);
    result.setCurrency(basix::Currency(643, QStringLiteral("RUB"), QStringLiteral("Рубль")));
    return result;
}

} // namespace

class TestPluginHost : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { QVERIFY(QApplication::topLevelWidgets().isEmpty()); }

    void goodModuleIsLoadedAndTellsItsIdentity()
    {
        PluginHost host;
        QVERIFY2(host.load(module("good")), qPrintable(host.error()));
        QVERIFY(host.isLoaded());
        QCOMPARE(host.refusal(), PluginHost::Refusal::None);
        QCOMPARE(host.identity().name, QStringLiteral("good"));
        QCOMPARE(host.identity().caption, QStringLiteral("Образцовый"));
        QCOMPARE(host.identity().version, QStringLiteral("1.2.3"));
        QCOMPARE(host.identity().build, QStringLiteral("2026-01-02T03:04:05"));
        QCOMPARE(host.identity().description, QStringLiteral("<b>Образцовый</b>"));
        QCOMPARE(host.identity().providers, QSet<qint64>{7});
    }

    void refusedModule_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<PluginHost::Refusal>("refusal");
        QTest::addColumn<QString>("words");
        QTest::addColumn<QString>("details");

        const QString none;
        QTest::newRow("no name") << none << PluginHost::Refusal::NoFile << QStringLiteral("нет")
                                 << none;
        QTest::newRow("missing file") << module("absent") << PluginHost::Refusal::NoFile
                                      << QStringLiteral("absent.so") << none;
        QTest::newRow("folder") << QStringLiteral(TEST_MODULES) << PluginHost::Refusal::NoFile
                                << QStringLiteral("нет") << none;
        QTest::newRow("source text")
            << QFINDTESTDATA("tst_pluginhost.cpp") << PluginHost::Refusal::NotALibrary
            << QStringLiteral("не библиотека") << none;
        QTest::newRow("no metadata")
            << module("nometadata") << PluginHost::Refusal::NoMetadata
            << QStringLiteral("нет описания модуля") << QStringLiteral("meta data");
        QTest::newRow("foreign interface")
            << module("foreigninterface") << PluginHost::Refusal::ForeignInterface
            << QStringLiteral("org.example.pictures.filter") << none;
        QTest::newRow("missing symbol")
            << module("missingsymbol") << PluginHost::Refusal::CannotLoad
            << QStringLiteral("не загрузился") << QStringLiteral("functionOfAnOlderLibrary");
        QTest::newRow("object is no plugin")
            << module("brokenpromise") << PluginHost::Refusal::NoInstance
            << QStringLiteral("платежей не принимает") << none;
    }

    void refusedModule()
    {
        QFETCH(QString, file);
        QFETCH(PluginHost::Refusal, refusal);
        QFETCH(QString, words);
        QFETCH(QString, details);

        PluginHost host;
        QVERIFY(!host.load(file));
        QVERIFY(!host.isLoaded());
        QVERIFY(!host.plugin());
        QCOMPARE(host.refusal(), refusal);
        QVERIFY2(host.error().contains(words), qPrintable(host.error()));
        QVERIFY2(host.details().contains(details), qPrintable(host.details()));
        QVERIFY(!host.start(basix::FixNumber(), provider(7), nullptr).started);
    }

    void cutModuleIsRefused()
    {
        QTemporaryDir folder;
        QFile whole(module("good"));
        QVERIFY(whole.open(QIODevice::ReadOnly));
        QFile cut(folder.filePath(QStringLiteral("cut.so")));
        QVERIFY(cut.open(QIODevice::WriteOnly));
        cut.write(whole.read(whole.size() / 3));
        cut.close();

        PluginHost host;
        QVERIFY(!host.load(cut.fileName()));
        QVERIFY(!host.error().isEmpty());
    }

    void afterARefusalAGoodModuleLoads()
    {
        PluginHost host;
        QVERIFY(!host.load(module("foreigninterface")));
        QVERIFY(host.load(module("good")));
        QVERIFY(host.error().isEmpty());
    }

    void secondModuleIsRefusedWhileOneIsLoaded()
    {
        PluginHost host;
        QVERIFY(host.load(module("good")));
        QVERIFY(!host.load(module("foreigninterface")));
        QCOMPARE(host.refusal(), PluginHost::Refusal::AlreadyLoaded);
        QVERIFY(host.isLoaded());
        QCOMPARE(host.identity().name, QStringLiteral("good"));
    }

    void wiringHandsOverEverything()
    {
        InProcessBus bus;
        CountingRegister fiscalRegister;
        int wrappers = 0;
        PluginHost host;
        QVERIFY(host.load(module("good")));
        QFont font;
        font.setPixelSize(19);
        host.wire(font, box(), bus, std::make_unique<FrHandlerLink>(fiscalRegister),
                  std::make_unique<CountedWrapper>(wrappers));
        const auto *object = dynamic_cast<QObject *>(host.plugin());
        QCOMPARE(object->property("calls").toStringList(),
                 QStringList({QStringLiteral("font 19"),
                              QStringLiteral("receiver incomingMessage(QVariantMap,QString)"),
                              QStringLiteral("sender sendMessage(QString,QVariant)"),
                              QStringLiteral("status paymentStatus(QVariant)"),
                              QStringLiteral("wrapper"), QStringLiteral("register"),
                              QStringLiteral("startWorkers 11 643")}));
        QCOMPARE(wrappers, 1);
    }

    void unloadDestroysWhatWasHandedOverAndLeavesTheRegister()
    {
        InProcessBus bus;
        CountingRegister fiscalRegister;
        int wrappers = 0;
        PluginHost host;
        QVERIFY(host.load(module("good")));
        auto link = std::make_unique<FrHandlerLink>(fiscalRegister);
        const QPointer<FrHandler> handedOver(link.get());
        host.wire(QFont(), box(), bus, std::move(link), std::make_unique<CountedWrapper>(wrappers));
        QCOMPARE(handedOver->parent(), dynamic_cast<QObject *>(host.plugin()));

        QVERIFY(host.unload());
        QVERIFY(!host.isLoaded());
        QVERIFY(handedOver.isNull());
        QCOMPARE(wrappers, 0);
        QVariantMap result;
        QString error;
        QVERIFY(fiscalRegister.doReceipt(QVariantMap(), QStringLiteral("1"), result, error));
        // What the module said about itself is still there, although the module is gone.
        QCOMPARE(host.identity().caption, QStringLiteral("Образцовый"));
        QVERIFY(host.load(module("good")));
    }

    void dialogTalksOverTheBusAndIsGoneAfterwards()
    {
        InProcessBus bus;
        QVariantMap asked;
        bus.serve(QStringLiteral("/test/question"), [&asked](const QVariantMap &message) {
            asked = message;
            InProcessBus::Answer answer;
            answer.headers = {{QStringLiteral("msgType"), QStringLiteral("test")}};
            answer.body = QByteArrayLiteral("{}");
            return InProcessBus::Outcome{QString(), answer, {}};
        });
        CountingRegister fiscalRegister;
        int wrappers = 0;
        PluginHost host;
        QVERIFY(host.load(module("good")));
        host.wire(QFont(), box(), bus, std::make_unique<FrHandlerLink>(fiscalRegister),
                  std::make_unique<CountedWrapper>(wrappers));

        QWidget parent;
        const PluginHost::Outcome outcome = host.start(basix::FixNumber(), provider(7), &parent);
        QVERIFY(outcome.started);
        QVERIFY(outcome.accepted);
        QVERIFY(outcome.sent);
        QCOMPARE(outcome.providerId, Q_INT64_C(7));
        QCOMPARE(asked.value(QStringLiteral("провайдер")).toLongLong(), Q_INT64_C(7));
        QVERIFY(parent.findChildren<QDialog *>().isEmpty());
    }

    void refusedPaymentOpensNothing()
    {
        PluginHost host;
        QVERIFY(host.load(module("good")));
        QVERIFY(!host.start(basix::FixNumber(), provider(8), nullptr).started);
        QVERIFY(!host.isDialogOpen());
    }

    void whileADialogIsOpenNothingIsUnloadedAndNoSecondOpens()
    {
        PluginHost host;
        QVERIFY(host.load(module("good")));
        bool unloaded = true;
        bool second = true;
        QTimer::singleShot(0, &host, [&] {
            unloaded = host.unload();
            second = host.start(basix::FixNumber(), provider(7), nullptr).started;
            QApplication::activeModalWidget()->close();
        });
        const PluginHost::Outcome outcome = host.start(basix::FixNumber(), provider(7), nullptr);
        QVERIFY(!unloaded);
        QVERIFY(!second);
        QVERIFY(outcome.started);
        QVERIFY(!outcome.accepted);
        QVERIFY(host.unload());
    }

    void parentThatDiesDuringTheDialogTakesItAlong()
    {
        PluginHost host;
        QVERIFY(host.load(module("good")));
        auto *parent = new QWidget;
        QTimer::singleShot(0, &host, [parent] { delete parent; });
        const PluginHost::Outcome outcome = host.start(basix::FixNumber(), provider(7), parent);
        QVERIFY(outcome.started);
        QVERIFY(!outcome.accepted);
        QVERIFY(!host.isDialogOpen());
    }

    void linkAnswersNotConnectedOnceTheRegisterIsGone()
    {
        auto fiscalRegister = std::make_unique<CountingRegister>();
        FrHandlerLink link(*fiscalRegister);
        QSharedPointer<FsStatus> status;
        QVariantMap result;
        QString error;
        QVERIFY(link.getFiscalStatus(status));
        QVERIFY(status);
        QVERIFY(link.doReceipt(QVariantMap(), QStringLiteral("17"), result, error));
        QCOMPARE(fiscalRegister->numbers, QStringList(QStringLiteral("17")));

        fiscalRegister.reset();
        QVERIFY(!link.getFiscalStatus(status));
        QVERIFY(!link.doReceipt(QVariantMap(), QStringLiteral("18"), result, error));
        QVERIFY(error.contains(QStringLiteral("отключена")));
    }
};

QTEST_MAIN(TestPluginHost)
#include "tst_pluginhost.moc"
