#include "faultrun.h"

#include <QDir>
#include <QFile>
#include <QHostAddress>
#include <QJsonArray>
#include <QSet>
#include <QTcpServer>
#include <QtTest>

#include <unistd.h>

#include <array>
#include <csignal>

namespace {

QList<QByteArray> linesOf(const QString &name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll().split('\n') : QList<QByteArray>();
}

/// The kernel's numbers of all sockets on this machine that wait for somebody to connect.
QSet<QByteArray> listeningSockets()
{
    QSet<QByteArray> inodes;
    for (const char *table : {"/proc/net/tcp", "/proc/net/tcp6"}) {
        constexpr int STATE = 3;
        constexpr int INODE = 9;
        for (const QByteArray &line : linesOf(QLatin1String(table))) {
            const QList<QByteArray> fields = line.simplified().split(' ');
            if (fields.size() > INODE && fields.at(STATE) == "0A")
                inodes.insert(fields.at(INODE));
        }
    }
    for (const QByteArray &line : linesOf(QStringLiteral("/proc/net/unix"))) {
        constexpr int FLAGS = 3;
        constexpr int INODE = 6;
        const QList<QByteArray> fields = line.simplified().split(' ');
        if (fields.size() > INODE && fields.at(FLAGS) == "00010000")
            inodes.insert(fields.at(INODE));
    }
    return inodes;
}

QSet<QByteArray> socketsOf(qint64 pid)
{
    QSet<QByteArray> inodes;
    const QDir folder(QStringLiteral("/proc/%1/fd").arg(pid));
    const QStringList names =
        folder.entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
    for (const QString &name : names) {
        std::array<char, 64> target{};
        const QByteArray path = QFile::encodeName(folder.filePath(name));
        const auto size = ::readlink(path.constData(), target.data(), target.size() - 1);
        const QByteArray link(target.data(), int(qMax<ssize_t>(0, size)));
        if (link.startsWith("socket:["))
            inodes.insert(link.mid(8, link.size() - 9));
    }
    return inodes;
}

} // namespace

/// The program itself with the plugin in it, killed in the middle of a payment made through the
/// plugin's windows.
class tst_DemoKills : public QObject
{
    Q_OBJECT

private slots:
    void recoversWhatThePluginBegan_data();
    void recoversWhatThePluginBegan();
    void keepsItsMemoryAndFilesToItself();
};

void tst_DemoKills::recoversWhatThePluginBegan_data()
{
    QTest::addColumn<QString>("demo");
    QTest::addColumn<QString>("faultPoint");
    QTest::addColumn<int>("receipts");
    QTest::addColumn<int>("rebuilt");
    QTest::addColumn<int>("returned");
    const auto row = [](const char *demo, const char *place, int receipts, int rebuilt,
                        int returned) {
        QTest::addRow("%s %s", demo, place)
            << QString::fromLatin1(demo) << QString::fromLatin1(place) << receipts << rebuilt
            << returned;
    };
    row("individual", "charge.after-commit", 0, 0, 1);
    row("individual", "receipt.before-commit", 0, 0, 1);
    row("individual", "receipt.after-commit", 1, 1, 0);
    row("individual", "pack.before-commit", 1, 1, 0);
    row("individual", "pack.after-commit", 1, 0, 0);
    row("individual", "billing.after-taking", 1, 0, 0);
    row("legal", "receipt.after-commit", 1, 1, 0);
    row("legal", "handon.after-commit", 1, 0, 0);
}

void tst_DemoKills::recoversWhatThePluginBegan()
{
    QFETCH(QString, demo);
    QFETCH(QString, faultPoint);
    QFETCH(int, receipts);
    QFETCH(int, rebuilt);
    QFETCH(int, returned);
    FaultRun run;
    QVERIFY(run.isReady());
    const auto hit = run.runProgram(
        QStringLiteral(SELMAR_TERMINAL),
        {QStringLiteral("--demo"), demo, QStringLiteral("--data"), run.folder()}, faultPoint);
    QVERIFY2(hit.killed, hit.output.constData());
    const auto recovered = run.run({QStringLiteral("recover")});
    QVERIFY2(recovered.code == 0, recovered.output.constData());
    QCOMPARE(run.figures().value(QLatin1String("receipts")).toArray().size(), receipts);
    QCOMPARE(run.promised(QStringLiteral("rebuilt")), rebuilt);
    QCOMPARE(run.promised(QStringLiteral("returned")), returned);
    const QJsonObject figures = run.figures();
    QCOMPARE(figures.value(QLatin1String("billedPacks")).toInt(), receipts);
    QCOMPARE(figures.value(QLatin1String("billed")), figures.value(QLatin1String("receiptTotal")));
    QCOMPARE(figures.value(QLatin1String("packCard")),
             figures.value(QLatin1String("receiptCashless")));
    QCOMPARE(run.run({QStringLiteral("recover")}).code, 0);
    QCOMPARE(run.figures(), figures);
}

void tst_DemoKills::keepsItsMemoryAndFilesToItself()
{
    FaultRun run;
    QVERIFY(run.isReady());
    QProcess terminal;
    terminal.start(QStringLiteral(SELMAR_TERMINAL),
                   {QStringLiteral("--demo"), QStringLiteral("individual"),
                    QStringLiteral("--data"), run.folder(), QStringLiteral("--slow"),
                    QStringLiteral("2000")});
    QVERIFY(terminal.waitForReadyRead(120000));
    const QString proc = QStringLiteral("/proc/%1/").arg(terminal.processId());
    QFile status(proc + QStringLiteral("status"));
    QFile limits(proc + QStringLiteral("limits"));
    QVERIFY(status.open(QIODevice::ReadOnly) && limits.open(QIODevice::ReadOnly));
    QVERIFY(status.readAll().contains("Umask:\t0077"));
    const QRegularExpression noCore(QStringLiteral("Max core file size +0 +0 "));
    QVERIFY(noCore.match(QString::fromLatin1(limits.readAll())).hasMatch());
    // Nobody can connect to it; this program, for comparison, can be found listening.
    QTcpServer own;
    QVERIFY(own.listen(QHostAddress::LocalHost));
    QVERIFY(listeningSockets().intersects(socketsOf(QCoreApplication::applicationPid())));
    QVERIFY(!listeningSockets().intersects(socketsOf(terminal.processId())));
    terminal.kill();
    QVERIFY(terminal.waitForFinished());
}

QTEST_GUILESS_MAIN(tst_DemoKills)
#include "tst_demokills.moc"
