#include <billing/seededbilling.h>
#include <bus/amqp/brokeraddress.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace {

constexpr int LONG_MS = 120000;
const QByteArray SECRET = QByteArrayLiteral("geheim-7f3a-core");

/// Starts a program as somebody does who wants a core file: in a folder of its own, without a
/// limit. Qt's own class does not tell whether there was one.
pid_t startForACore(const QStringList &command, const QString &folder, const QString &output)
{
    std::vector<QByteArray> words;
    for (const QString &word : command)
        words.push_back(word.toLocal8Bit());
    std::vector<char *> arguments;
    for (QByteArray &word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    const QByteArray place = QFile::encodeName(folder);
    const QByteArray file = QFile::encodeName(output);
    const pid_t child = ::fork();
    if (child != 0)
        return child;
    const rlimit unlimited = {RLIM_INFINITY, RLIM_INFINITY};
    ::setrlimit(RLIMIT_CORE, &unlimited);
    ::setenv(BrokerAddress::PASSWORD_VARIABLE, SECRET.constData(), 1);
    if (::chdir(place.constData()) != 0 || !std::freopen(file.constData(), "w", stderr))
        std::_Exit(126);
    ::execv(arguments.front(), arguments.data());
    std::_Exit(127);
}

QByteArray contentOf(const QString &name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

/// A program that crashes while it knows a password leaves nothing of its memory behind.
class tst_CoreFiles : public QObject
{
    Q_OBJECT

private slots:
    void thisMachineWritesCores();
    void aCrashLeavesNoMemoryBehind_data();
    void aCrashLeavesNoMemoryBehind();
};

void tst_CoreFiles::thisMachineWritesCores()
{
    // Without this the other test would prove nothing.
    const QTemporaryDir folder;
    const pid_t child = startForACore({QStringLiteral("/bin/sleep"), QStringLiteral("600")},
                                      folder.path(), QStringLiteral("/dev/null"));
    QVERIFY(child > 0);
    const QString image = QStringLiteral("/proc/%1/comm").arg(child);
    QTRY_VERIFY(contentOf(image).startsWith("sleep"));
    QCOMPARE(::kill(child, SIGABRT), 0);
    int status = 0;
    QCOMPARE(::waitpid(child, &status, 0), child);
    if (!WCOREDUMP(status))
        QSKIP("core files are switched off here");
}

void tst_CoreFiles::aCrashLeavesNoMemoryBehind_data()
{
    QTest::addColumn<QStringList>("command");
    QTest::addColumn<QString>("log");
    const QString bus = QStringLiteral("--bus");
    // Nobody listens there: the program goes on trying, and keeps the password for that.
    const QString address = QStringLiteral("amqp://box1@127.0.0.1:1/selmar");
    QTest::newRow("terminal") << QStringList{QStringLiteral(SELMAR_TERMINAL),
                                             bus,
                                             address,
                                             QStringLiteral("--demo"),
                                             QStringLiteral("individual"),
                                             QStringLiteral("--data"),
                                             QStringLiteral("data")}
                              << QStringLiteral("data/trace.log");
    QTest::newRow("worker") << QStringList{QStringLiteral(SELMAR_WORKER), bus, address,
                                           QStringLiteral("--database"),
                                           QStringLiteral("billing.sqlite")}
                            << QStringLiteral("stderr");
}

void tst_CoreFiles::aCrashLeavesNoMemoryBehind()
{
    QFETCH(QStringList, command);
    QFETCH(QString, log);
    const QTemporaryDir folder;
    const QDir place(folder.path());
    QVERIFY(copySeededBilling(place.filePath(QStringLiteral("billing.sqlite"))));
    const pid_t child =
        startForACore(command, folder.path(), place.filePath(QStringLiteral("stderr")));
    QVERIFY(child > 0);
    QTRY_VERIFY_WITH_TIMEOUT(contentOf(place.filePath(log)).contains("next attempt"), LONG_MS);
    QVERIFY(!contentOf(QStringLiteral("/proc/%1/cmdline").arg(child)).contains(SECRET));

    QCOMPARE(::kill(child, SIGABRT), 0);
    int status = 0;
    QCOMPARE(::waitpid(child, &status, 0), child);
    QVERIFY(WIFSIGNALED(status) && WTERMSIG(status) == SIGABRT);
    QVERIFY(!WCOREDUMP(status));
    const QStringList cores = place.entryList({QStringLiteral("core*")}, QDir::Files);
    QVERIFY2(cores.isEmpty(), qPrintable(cores.join(QLatin1Char(' '))));
    QVERIFY(!contentOf(place.filePath(log)).contains(SECRET));
    QVERIFY(!contentOf(place.filePath(QStringLiteral("stderr"))).contains(SECRET));
}

QTEST_GUILESS_MAIN(tst_CoreFiles)
#include "tst_corefiles.moc"
