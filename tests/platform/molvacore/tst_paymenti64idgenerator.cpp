#include <molvacore/paymenti64idgenerator.h>

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QTest>
#include <QThread>

#include <algorithm>
#include <memory>
#include <vector>

#ifdef Q_OS_UNIX
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace {

constexpr int idsPerProcess = 100000;

std::vector<qint64> makeIds(int count)
{
    std::vector<qint64> ids;
    ids.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        ids.push_back(PaymentI64IdGenerator::generate(17, QByteArrayLiteral("seed")));
    return ids;
}

bool allDifferentAndPositive(std::vector<qint64> ids)
{
    std::sort(ids.begin(), ids.end());
    return !ids.empty() && ids.front() > 0
        && std::adjacent_find(ids.begin(), ids.end()) == ids.end();
}

int printIds()
{
    QFile out;
    if (!out.open(stdout, QIODevice::WriteOnly))
        return 1;
    for (const qint64 id : makeIds(idsPerProcess))
        out.write(QByteArray::number(id) + '\n');
    return 0;
}

} // namespace

class tst_PaymentI64IdGenerator : public QObject
{
    Q_OBJECT

private slots:
    void acrossProcesses();
    void acrossThreads();
    void acrossAFork();
    void spreadOverTheWholeRange();
};

void tst_PaymentI64IdGenerator::acrossProcesses()
{
    QProcess first;
    QProcess second;
    for (QProcess *process : {&first, &second})
        process->start(QCoreApplication::applicationFilePath(), {QStringLiteral("--print")});
    std::vector<qint64> ids = makeIds(idsPerProcess);
    for (QProcess *process : {&first, &second}) {
        QVERIFY(process->waitForFinished(60000));
        QCOMPARE(process->exitCode(), 0);
        for (const QByteArray &line : process->readAllStandardOutput().split('\n')) {
            if (!line.isEmpty())
                ids.push_back(line.toLongLong());
        }
    }
    QCOMPARE(ids.size(), std::size_t(3 * idsPerProcess));
    QVERIFY(allDifferentAndPositive(ids));
}

void tst_PaymentI64IdGenerator::acrossThreads()
{
    std::vector<std::vector<qint64>> parts(4);
    std::vector<std::unique_ptr<QThread>> threads;
    for (std::vector<qint64> &part : parts) {
        threads.emplace_back(QThread::create([&part] { part = makeIds(20000); }));
        threads.back()->start();
    }
    std::vector<qint64> ids;
    for (std::size_t i = 0; i < threads.size(); ++i) {
        QVERIFY(threads[i]->wait(60000));
        ids.insert(ids.end(), parts[i].begin(), parts[i].end());
    }
    QCOMPARE(ids.size(), std::size_t(80000));
    QVERIFY(allDifferentAndPositive(ids));
}

void tst_PaymentI64IdGenerator::acrossAFork()
{
#ifdef Q_OS_UNIX
    makeIds(1);
    int ends[2];
    QCOMPARE(::pipe(ends), 0);
    const pid_t child = ::fork();
    QVERIFY(child >= 0);
    if (child == 0) {
        const std::vector<qint64> ids = makeIds(1000);
        const auto size = ids.size() * sizeof(qint64);
        ::_exit(::write(ends[1], ids.data(), size) == static_cast<ssize_t>(size) ? 0 : 1);
    }
    std::vector<qint64> ids = makeIds(1000);
    std::vector<qint64> theirs(1000);
    int status = -1;
    QCOMPARE(::waitpid(child, &status, 0), child);
    QCOMPARE(status, 0);
    QCOMPARE(::read(ends[0], theirs.data(), theirs.size() * sizeof(qint64)),
             ssize_t(theirs.size() * sizeof(qint64)));
    ::close(ends[0]);
    ::close(ends[1]);
    ids.insert(ids.end(), theirs.begin(), theirs.end());
    QVERIFY(allDifferentAndPositive(ids));
#else
    QSKIP("no fork here");
#endif
}

void tst_PaymentI64IdGenerator::spreadOverTheWholeRange()
{
    qint64 seen = 0;
    for (const qint64 id : makeIds(1000))
        seen |= id;
    QCOMPARE(seen, std::numeric_limits<qint64>::max());
}

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    if (QCoreApplication::arguments().contains(QLatin1String("--print")))
        return printIds();
    tst_PaymentI64IdGenerator test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_paymenti64idgenerator.moc"
