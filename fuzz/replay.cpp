// Without the fuzzing engine: runs the committed seeds of a target and inputs near them.
#include "fuzztarget.h"
#include "mutator.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <optional>

#include <fcntl.h>
#include <unistd.h>

namespace {

QByteArray runningInput;
QByteArray keptFile;

void keepInput()
{
    const int file = ::open(keptFile.constData(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    if (file < 0)
        return;
    const ssize_t written =
        ::write(file, runningInput.constData(), static_cast<size_t>(runningInput.size()));
    ::close(file);
    if (written == runningInput.size())
        std::fprintf(stderr, "the input is in %s\n", keptFile.constData());
}

/// The program is ending anyway: what a handler may not do after a crash cannot make it worse.
void onCrash(int number)
{
    std::signal(number, SIG_DFL);
    keepInput();
    std::raise(number);
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    if (file.open(QIODevice::ReadOnly))
        return file.readAll();
    std::fprintf(stderr, "%s cannot be read: %s\n", qUtf8Printable(path),
                 qUtf8Printable(file.errorString()));
    std::exit(2);
}

QVector<QByteArray> contentsOf(const QStringList &paths)
{
    QVector<QByteArray> contents;
    for (const QString &path : paths)
        contents.append(contentOf(path));
    return contents;
}

QStringList seedFiles(const QString &target)
{
    const QDir folder(QStringLiteral(SELMAR_FUZZ_DIR "/seeds/") + target);
    QStringList files;
    const QStringList names = folder.entryList(QDir::Files, QDir::Name);
    for (const QString &name : names)
        files.append(folder.filePath(name));
    return files;
}

std::optional<QVector<QByteArray>> dictionary(const QString &target)
{
    const QString path = QStringLiteral(SELMAR_FUZZ_DIR "/dictionaries/%1.dict").arg(target);
    return QFile::exists(path) ? Mutator::tokens(contentOf(path)) : QVector<QByteArray>();
}

void run(const FuzzTarget &target, const QByteArray &input)
{
    runningInput = input;
    target.run(input);
}

} // namespace

int main(int argc, char *argv[])
{
    FuzzTargets::prepare(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Runs the properties of a target on its seeds "
                                                    "and on inputs near them, or on given files."));
    parser.addHelpOption();
    const QCommandLineOption list(QStringLiteral("list"), QStringLiteral("Names of the targets."));
    const QCommandLineOption mutations(QStringLiteral("mutations"),
                                       QStringLiteral("How many inputs near the seeds are run."),
                                       QStringLiteral("count"), QStringLiteral("0"));
    const QCommandLineOption number(QStringLiteral("number"),
                                    QStringLiteral("Another number, other inputs near the seeds."),
                                    QStringLiteral("number"), QStringLiteral("1"));
    parser.addOptions({list, mutations, number});
    parser.addPositionalArgument(QStringLiteral("target"), QStringLiteral("One of --list."));
    parser.addPositionalArgument(QStringLiteral("files"),
                                 QStringLiteral("Inputs instead of the seeds."),
                                 QStringLiteral("[files]"));
    parser.process(*QCoreApplication::instance());

    if (parser.isSet(list)) {
        for (const FuzzTarget &target : FuzzTargets::all())
            std::printf("%s\n", target.name);
        return 0;
    }
    QStringList arguments = parser.positionalArguments();
    const QString name = arguments.isEmpty() ? QString() : arguments.takeFirst();
    const FuzzTarget target = FuzzTargets::find(name.toUtf8());
    if (!target.run) {
        std::fprintf(stderr, "No target \"%s\"; see --list.\n", qUtf8Printable(name));
        return 2;
    }
    const QStringList files = arguments.isEmpty() ? seedFiles(name) : arguments;
    if (files.isEmpty()) {
        std::fprintf(stderr, "No seeds in seeds/%s: a target without seeds proves nothing.\n",
                     qUtf8Printable(name));
        return 1;
    }

    keptFile = QDir::current().filePath(QStringLiteral("crash-") + name).toLocal8Bit();
    for (const int crash : {SIGABRT, SIGSEGV, SIGFPE, SIGILL, SIGBUS})
        std::signal(crash, &onCrash);

    QElapsedTimer timer;
    timer.start();
    const QVector<QByteArray> seeds = contentsOf(files);
    for (const QByteArray &seed : seeds)
        run(target, seed);
    const int count = parser.value(mutations).toInt();
    const auto tokens = dictionary(name);
    if (!tokens) {
        std::fprintf(stderr,
                     "dictionaries/%s.dict: the engine takes bytes beyond ASCII as \\xD0 only.\n",
                     qUtf8Printable(name));
        return 1;
    }
    Mutator mutator(parser.value(number).toUInt(), seeds, *tokens);
    for (int i = 0; i < count; ++i)
        run(target, mutator.next());
    std::printf("%s: %d seeds, %d inputs near them (number %s), %lld ms\n", target.name,
                seeds.size(), count, qUtf8Printable(parser.value(number)), timer.elapsed());
    return 0;
}
