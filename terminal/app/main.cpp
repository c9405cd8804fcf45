#include "applicationsetup.h"
#include "codecommands.h"
#include "commandline.h"
#include "terminalcontext.h"
#include "tracelog.h"

#include <bus/brokermodule.h>
#include <payments/paymentrows.h>
#include <recovery/privatedata.h>
#include <scenario/individualdemo.h>
#include <scenario/legaldemo.h>
#include <scenario/scenarioparser.h>
#include <scenario/scenariorun.h>
#include <ui/mainwindow.h>
#include <ui/recoverydialog.h>
#include <ui/storereading.h>
#include <ui/storeupgrade.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTimer>
#include <QVector>

#include <cstdio>
#include <memory>
#include <utility>

namespace {

enum ExitCode { Ok = 0, PaymentDisagrees = 1, NotDone = 1, WrongScenario = 2, CannotStart = 3 };

bool hasScreen()
{
    return QApplication::platformName() != QLatin1String("offscreen");
}

/// Asked before QApplication exists: a demo that nobody watches and the help run on machines
/// without a screen.
bool needsNoScreen(int argc, char *argv[])
{
    bool demo = false;
    for (int i = 1; i < argc; ++i) {
        const QByteArray argument(argv[i]);
        if (argument == "--visible")
            return false;
        demo = demo || argument.startsWith("--demo") || argument.startsWith("--scenario")
            || argument.startsWith("--bill") || argument.startsWith("--read-code")
            || argument == "--check-start" || argument.startsWith("--help")
            || argument == "--version" || argument == "-h" || argument == "-v";
    }
    return demo;
}

int cannotStart(const QString &error)
{
    std::fprintf(stderr, "%s\n", qUtf8Printable(error));
    if (hasScreen()) {
        QMessageBox box(QMessageBox::Critical, QStringLiteral("Рабочее место не открылось"), error);
        // The name of a folder is no markup.
        box.setTextFormat(Qt::PlainText);
        box.exec();
    }
    return CannotStart;
}

int withoutPlugin(const PluginHost &host)
{
    const QStringList reasons{host.error(), host.details()};
    return cannotStart(reasons.join(QLatin1Char('\n')).trimmed());
}

bool bringUpToDate(const QString &dataFolder, QString *error)
{
    return StoreReading::run(TerminalContext::storeFiles(dataFolder), error)
        && StoreUpgrade::run(TerminalContext::paymentsFile(dataFolder), PaymentRows::schema(),
                             error);
}

int runDemo(const CommandLine &commandLine, TerminalContext &context, MainWindow &window)
{
    if (!context.pluginHost().isLoaded())
        return withoutPlugin(context.pluginHost());
    const DemoRun::Options options{commandLine.outFolder, commandLine.pause};
    if (commandLine.demo == CommandLine::Demo::Individual) {
        IndividualDemo demo(context, window, options);
        return demo.run() ? Ok : PaymentDisagrees;
    }
    LegalDemo demo(context, window, options);
    return demo.run() ? Ok : PaymentDisagrees;
}

int runScenario(const CommandLine &commandLine, const ScenarioCommands &commands,
                TerminalContext &context, MainWindow &window)
{
    if (!context.pluginHost().isLoaded())
        return withoutPlugin(context.pluginHost());
    ScenarioRun scenario(context, window, {commandLine.outFolder, commandLine.pause});
    const bool ok = scenario.run(commands);
    for (const QString &failure : scenario.failures())
        std::fprintf(stderr, "%s\n", qUtf8Printable(failure));
    std::fprintf(stdout, "%s\n",
                 ok ? "Сценарий выполнен, суммы сошлись." : "Сценарий не выполнен.");
    return ok ? Ok : PaymentDisagrees;
}

/// `window` is shown, but nothing of it has been painted.
int checkStart(QApplication &application, TerminalContext &context)
{
    if (!context.pluginHost().isLoaded())
        return withoutPlugin(context.pluginHost());
    // Comes when there is nothing left to lay out or to paint and the next key would be heard.
    QTimer::singleShot(0, &application, &QApplication::quit);
    QApplication::exec();
    std::fprintf(stdout, "Рабочее место открылось.\n");
    std::fflush(stdout);
    return Ok;
}

int run(QApplication &application, const QStringList &ownArguments)
{
    const ApplicationSetup setup(application);
    const CommandLine commandLine = CommandLine::parse(QApplication::arguments() + ownArguments);
    if (!setup.warning().isEmpty())
        std::fprintf(stderr, "%s\n", qUtf8Printable(setup.warning()));

    if (CodeCommands::wanted(commandLine))
        return CodeCommands::run(commandLine) ? Ok : NotDone;

    ScenarioParser parser;
    const bool scenario = !commandLine.scenarioFile.isEmpty();
    if (scenario && !parser.parseFile(commandLine.scenarioFile)) {
        const QString place = parser.line() > 0 ? QStringLiteral(":%1:%2").arg(
                                  QString::number(parser.line()), QString::number(parser.column()))
                                                : QString();
        std::fprintf(stderr, "%s%s: %s\n", qUtf8Printable(commandLine.scenarioFile),
                     qUtf8Printable(place), qUtf8Printable(parser.error()));
        return WrongScenario;
    }
    const bool demo = scenario || commandLine.demo != CommandLine::Demo::None;
    std::unique_ptr<QTemporaryDir> temporary;
    QString dataFolder = commandLine.dataFolder;
    if (dataFolder.isEmpty() && demo) {
        temporary = std::make_unique<QTemporaryDir>();
        if (!temporary->isValid())
            return cannotStart(QStringLiteral("Временную папку создать не удалось: %1")
                                   .arg(temporary->errorString()));
        dataFolder = temporary->path();
    } else if (dataFolder.isEmpty()) {
        dataFolder = ApplicationSetup::defaultDataFolder();
    }

    // The trace outlives everything that writes to it, the plugin's farewell included.
    const QString traceFolder =
        demo && !commandLine.outFolder.isEmpty() ? commandLine.outFolder : dataFolder;
    const TraceLog trace(QDir(traceFolder).filePath(QStringLiteral("trace.log")));
    QString error;
    std::unique_ptr<MessageBus> bus;
    if (!commandLine.busAddress.isEmpty()) {
        bus = BrokerModule::open(ApplicationSetup::brokerModuleFile(), commandLine.busAddress,
                                 &error);
        if (!bus)
            return cannotStart(error);
    }
    const std::unique_ptr<TerminalContext> context =
        TerminalContext::open(dataFolder, &error, std::move(bus), bringUpToDate);
    if (!context)
        return cannotStart(error);
    for (const auto &state : commandLine.deviceStates) {
        if (!context->devices().setState(state.first, state.second))
            return cannotStart(context->devices().error());
    }
    const QString plugin = commandLine.pluginFile.isEmpty() ? ApplicationSetup::defaultPluginFile()
                                                            : commandLine.pluginFile;
    // The terminal opens without the plugin too: the journal is there, and the page about it says
    // what is wrong.
    context->loadPlugin(plugin, setup.inputFont());

    MainWindow window(*context);
    window.show();
    if (commandLine.checkStart)
        return checkStart(application, *context);
    if (scenario)
        return runScenario(commandLine, parser.commands(), *context, window);
    if (demo)
        return runDemo(commandLine, *context, window);
    RecoveryDialog::offerAtStart(*context, &window);
    return QApplication::exec();
}

} // namespace

int main(int argc, char *argv[])
{
    PrivateData::hardenProcess();
    if (needsNoScreen(argc, argv) && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    // Qt has an option of the same name for plugins of its own and would swallow ours.
    QStringList ownArguments;
    QVector<char *> qtArguments;
    for (int i = 0; i < argc; ++i) {
        const QByteArray argument(argv[i]);
        const bool own = argument == "--plugin" || argument.startsWith("--plugin=");
        const int last = argument == "--plugin" && i + 1 < argc ? i + 1 : i;
        for (; i <= last; ++i) {
            if (own)
                ownArguments.append(QFile::decodeName(argv[i]));
            else
                qtArguments.append(argv[i]);
        }
        --i;
    }
    int qtCount = qtArguments.size();
    qtArguments.append(nullptr);
    QApplication application(qtCount, qtArguments.data());
    return run(application, ownArguments);
}
