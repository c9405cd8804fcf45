#include "fakehost.h"
#include "fakepayscontroller.h"
#include "fakeregister.h"
#include "guitestguard.h"
#include "hostdatabase.h"
#include "sampleproviders.h"

#include <molvacore/ipaybyproviderplugin.h>
#include <molvacore/ipaydialog.h>

#include <QFileInfo>
#include <QJsonObject>
#include <QLibrary>
#include <QPluginLoader>
#include <QProcess>
#include <QSet>
#include <QTest>
#include <QWidget>

#include <memory>

namespace {

const QString pluginFile = QStringLiteral(SELMAR_PLUGIN_FILE);

QStringList output(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished() || process.exitCode() != 0)
        return {};
    return QString::fromLocal8Bit(process.readAllStandardOutput())
        .split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

/// Libraries that the module itself asks for.
QStringList neededLibraries()
{
    QStringList needed;
    const QStringList lines =
        output(QStringLiteral(SELMAR_READELF), {QStringLiteral("-dW"), pluginFile});
    for (const QString &line : lines) {
        if (line.contains(QStringLiteral("(NEEDED)")))
            needed.append(line.section(QLatin1Char('['), 1).section(QLatin1Char(']'), 0, 0));
    }
    return needed;
}

/// Where the dynamic loader finds each library: name -> file.
QMap<QString, QString> libraryFiles()
{
    QMap<QString, QString> files;
    const QStringList lines = output(QStringLiteral("ldd"), {pluginFile});
    for (const QString &line : lines) {
        const QStringList words = line.simplified().split(QLatin1Char(' '));
        if (words.size() >= 3 && words.at(1) == QLatin1String("=>"))
            files.insert(words.at(0), words.at(2));
        else if (words.first().startsWith(QLatin1Char('/')))
            files.insert(QFileInfo(words.first()).fileName(), words.first());
    }
    return files;
}

struct Symbol
{
    QString name; ///< without its version
    QChar kind;   ///< as nm tells it
};

QVector<Symbol> symbols(const QString &file, const QString &which)
{
    QVector<Symbol> found;
    const QStringList lines =
        output(QStringLiteral(SELMAR_NM), {QStringLiteral("-D"), which, file});
    for (const QString &line : lines) {
        const QStringList words = line.simplified().split(QLatin1Char(' '));
        if (words.size() >= 2)
            found.append(
                {words.last().section(QLatin1Char('@'), 0, 0), words.at(words.size() - 2).at(0)});
    }
    return found;
}

} // namespace

/// The built module as a host gets it: this program links none of the plugin's objects.
class TestModule : public QObject
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

    void fileName();
    void metaDataBeforeLoading();
    void instanceIsMadeOnce();
    void instanceIsMadeAnewAfterUnloading();
    void casts();
    void opensAWizardAndUnloads();
    void needsOnlyTheKnownLibraries();
    void everySymbolIsResolvedByTheNeededLibraries();
    void exportsOnlyThePluginsEntryPoints();

private:
    std::unique_ptr<GuiTestGuard> m_guard;
};

void TestModule::fileName()
{
    QVERIFY(QLibrary::isLibrary(pluginFile));
    QCOMPARE(QFileInfo(pluginFile).completeBaseName(), QStringLiteral("selmarrivenhold"));
}

void TestModule::metaDataBeforeLoading()
{
    const QPluginLoader loader(pluginFile);
    const QJsonObject metaData = loader.metaData();
    QVERIFY(!loader.isLoaded());
    QCOMPARE(metaData.value(QStringLiteral("IID")).toString(),
             QStringLiteral("org.molva.plugins.paybyproviderplugin"));
    QCOMPARE(metaData.value(QStringLiteral("className")).toString(),
             QStringLiteral("SelmarRivenholdHandler"));
    QVERIFY2(metaData.value(QStringLiteral("MetaData")).isUndefined(), "no document is attached");
}

void TestModule::instanceIsMadeOnce()
{
    QPluginLoader loader(pluginFile);
    QObject *first = loader.instance();
    QVERIFY2(first, qPrintable(loader.errorString()));
    QVERIFY(!first->parent());
    QPluginLoader second(pluginFile);
    QCOMPARE(loader.instance(), first);
    QCOMPARE(second.instance(), first);
    QCOMPARE(m_guard->log.count(QtWarningMsg, QStringLiteral("CREATE")), 1);
    second.unload();
    QVERIFY(loader.unload());
}

void TestModule::instanceIsMadeAnewAfterUnloading()
{
    for (int round = 0; round < 3; ++round) {
        m_guard->log.clear();
        QPluginLoader loader(pluginFile);
        QPointer<QObject> instance = loader.instance();
        QVERIFY(instance);
        QVERIFY2(loader.unload(), qPrintable(loader.errorString()));
        QVERIFY(!loader.isLoaded());
        QVERIFY(!instance);
        QCOMPARE(m_guard->log.count(QtWarningMsg, QStringLiteral("CREATE")), 1);
        QCOMPARE(m_guard->log.count(QtWarningMsg, QStringLiteral("DESTROY 2")), 1);
    }
}

void TestModule::casts()
{
    QPluginLoader loader(pluginFile);
    QObject *instance = loader.instance();
    QVERIFY(instance);
    QCOMPARE(QByteArray(instance->metaObject()->className()), QByteArray("SelmarRivenholdHandler"));
    auto *plugin = qobject_cast<IPayByProviderPlugin *>(instance);
    QVERIFY(plugin);
    QVERIFY(instance->qt_metacast("IPayByProviderPlugin"));
    QVERIFY(instance->qt_metacast("org.molva.plugins.paybyproviderplugin"));
    QCOMPARE(plugin->pluginName(), QStringLiteral("selmarrivenhold"));
    QCOMPARE(plugin->pluginVersion(), QStringLiteral("0.8.25"));
    QCOMPARE(plugin->supportedProviders(), (QSet<qint64>{18722, 18723}));
    QVERIFY(loader.unload());
}

void TestModule::opensAWizardAndUnloads()
{
    const HostDatabase database;
    const auto record = QSharedPointer<FakePaysController::Record>::create();
    QPointer<FakeRegister> fiscalRegister = new FakeRegister;
    FakeHost host;
    QPluginLoader loader(pluginFile);
    auto *plugin = qobject_cast<IPayByProviderPlugin *>(loader.instance());
    QVERIFY(plugin);
    plugin->setMessageReciever(&host, SIGNAL(incomingMessage(QVariantMap, QString)));
    plugin->setMessageSender(&host, SLOT(sendMessage(QString, QVariant)));
    plugin->setPayStatusReciever(&host, SIGNAL(paymentStatus(QVariant)));
    plugin->setPaysControllerWrapper(new FakePaysController(record));
    plugin->setFrHandler(fiscalRegister);
    for (const Provider &provider :
         {SampleProviders::individuals(), SampleProviders::legalEntities()}) {
        IPayDialog *dialog = plugin->start(basix::FixNumber(), provider, nullptr);
        QVERIFY(dialog);
        QCOMPARE(dialog->providerId(), provider.id());
        const std::unique_ptr<QWidget> widget(dynamic_cast<QWidget *>(dialog));
        QVERIFY2(widget, "the interface's type is one and the same in host and plugin");
        widget->show();
        QVERIFY(QTest::qWaitForWindowExposed(widget.get()));
    }
    QVERIFY(loader.unload());
    QVERIFY(!fiscalRegister);
    QCOMPARE(record->alive, 0);
}

void TestModule::needsOnlyTheKnownLibraries()
{
    if (qstrlen(SELMAR_BUILT_WITH_SANITIZERS) > 0)
        QSKIP("the sanitizers' libraries come on top");
    const QStringList known = {
        QStringLiteral("libQt5Core.so.5"),    QStringLiteral("libQt5Gui.so.5"),
        QStringLiteral("libQt5Widgets.so.5"), QStringLiteral("libbasixcore.so.1"),
        QStringLiteral("libmolvacore.so.1"),  QStringLiteral("libstdc++.so.6"),
        QStringLiteral("libm.so.6"),          QStringLiteral("libgcc_s.so.1"),
        QStringLiteral("libc.so.6")};
    const QStringList needed = neededLibraries();
    QVERIFY(needed.contains(QStringLiteral("libQt5Widgets.so.5")));
    QVERIFY(needed.contains(QStringLiteral("libmolvacore.so.1")));
    for (const QString &library : needed)
        QVERIFY2(known.contains(library), qPrintable(library));
}

void TestModule::everySymbolIsResolvedByTheNeededLibraries()
{
    if (qstrlen(SELMAR_BUILT_WITH_SANITIZERS) > 0)
        QSKIP("the sanitizers' symbols come from the program");
    const QMap<QString, QString> files = libraryFiles();
    QSet<QString> defined;
    for (const QString &library : neededLibraries()) {
        QVERIFY2(files.contains(library), qPrintable(library));
        for (const Symbol &symbol : symbols(files.value(library), QStringLiteral("--defined-only")))
            defined.insert(symbol.name);
    }
    QVERIFY(defined.size() > 10000);
    QStringList missing;
    const QVector<Symbol> undefined = symbols(pluginFile, QStringLiteral("--undefined-only"));
    QVERIFY(undefined.size() > 100);
    for (const Symbol &symbol : undefined) {
        const bool weak = symbol.kind == QLatin1Char('w') || symbol.kind == QLatin1Char('v');
        if (!weak && !defined.contains(symbol.name))
            missing.append(symbol.name);
    }
    QCOMPARE(missing, QStringList());
}

void TestModule::exportsOnlyThePluginsEntryPoints()
{
    if (qstrlen(SELMAR_BUILT_WITH_SANITIZERS) > 0)
        QSKIP("the sanitizers export symbols of their own");
    QStringList strong;
    for (const Symbol &symbol : symbols(pluginFile, QStringLiteral("--defined-only"))) {
        // The linker's own marks are the ends of the sections.
        const bool mark = symbol.name == QLatin1String("__bss_start")
            || symbol.name == QLatin1String("_edata") || symbol.name == QLatin1String("_end");
        if (QStringLiteral("TDBR").contains(symbol.kind) && !mark)
            strong.append(symbol.name);
    }
    strong.sort();
    QCOMPARE(strong,
             (QStringList{QStringLiteral("qt_plugin_instance"),
                          QStringLiteral("qt_plugin_query_metadata")}));
}

QTEST_MAIN(TestModule)
#include "tst_module.moc"
