#include "brokerprocess.h"
#include "workerprocess.h"

#include <billing/billingdatabase.h>
#include <billing/seededbilling.h>
#include <bus/amqp/brokeraddress.h>

#include <QDir>
#include <QDirIterator>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>
#include <QUrl>
#include <QtTest>

namespace {

constexpr int LONG_MS = 180000;

QString withoutPassword(const QString &address)
{
    QUrl url(address);
    url.setPassword(QString());
    return url.toString(QUrl::FullyEncoded);
}

} // namespace

/// Whole payments through the plugin's windows, with billing on the other side of a broker.
class tst_BrokerDemo : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void paysThroughTheBroker_data();
    void paysThroughTheBroker();
    void withoutABrokerTheDemoSaysWhy();

private:
    /// What the program wrote; its exit code goes to `code`.
    QString runTerminal(const QStringList &arguments, int *code) const;

    std::unique_ptr<BrokerProcess> m_broker;
    QTemporaryDir m_folder;
};

void tst_BrokerDemo::initTestCase()
{
    m_broker = BrokerProcess::shared(QStringLiteral("demo"));
    const QString problem = m_broker->start();
    QVERIFY2(problem.isEmpty(), qPrintable(problem));
}

QString tst_BrokerDemo::runTerminal(const QStringList &arguments, int *code) const
{
    QProcess terminal;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QLatin1String(BrokerAddress::PASSWORD_VARIABLE), BrokerProcess::PASSWORD);
    terminal.setProcessEnvironment(environment);
    terminal.setProcessChannelMode(QProcess::MergedChannels);
    terminal.start(QStringLiteral(SELMAR_TERMINAL), arguments);
    const bool ended = terminal.waitForFinished(LONG_MS);
    *code = ended && terminal.exitStatus() == QProcess::NormalExit ? terminal.exitCode() : -1;
    return QString::fromUtf8(terminal.readAll());
}

void tst_BrokerDemo::paysThroughTheBroker_data()
{
    QTest::addColumn<QString>("demo");
    QTest::newRow("individual") << QStringLiteral("individual");
    QTest::newRow("legal") << QStringLiteral("legal");
}

void tst_BrokerDemo::paysThroughTheBroker()
{
    QFETCH(QString, demo);
    const QString file = m_folder.filePath(demo + QStringLiteral(".sqlite"));
    QVERIFY(copySeededBilling(file));
    const QString address = m_broker->address(QStringLiteral("worker"));
    WorkerProcess first(address, file);
    WorkerProcess second(address, file);
    QVERIFY2(first.waitUntilReady(), qPrintable(first.output()));
    QVERIFY2(second.waitUntilReady(), qPrintable(second.output()));

    const QString bus = withoutPassword(
        m_broker->encryptedAddress(QStringLiteral("box1"), m_broker->authorityFile()));
    const QDir out(m_folder.filePath(demo));
    int code = -1;
    const QString said = runTerminal({QStringLiteral("--bus"), bus, QStringLiteral("--demo"), demo,
                                      QStringLiteral("--out"), out.path()},
                                     &code);
    QVERIFY2(code == 0, qPrintable(said));

    QFile pack(out.filePath(QStringLiteral("pack.json")));
    QFile summary(out.filePath(QStringLiteral("summary.json")));
    QVERIFY(pack.open(QIODevice::ReadOnly) && summary.open(QIODevice::ReadOnly));
    const QString id =
        QJsonDocument::fromJson(pack.readAll()).object().value(QLatin1String("id")).toString();
    const qint64 amount = QJsonDocument::fromJson(summary.readAll())
                              .object()
                              .value(QLatin1String("amount"))
                              .toVariant()
                              .toLongLong();
    BillingDatabase billing;
    QVERIFY2(billing.open(file), qPrintable(billing.lastError()));
    QCOMPARE(billing.packCount(), 1);
    qint64 taken = 0;
    const QVector<TakenPayment> payments = billing.takenPayments(id);
    for (const TakenPayment &payment : payments)
        taken += payment.sum;
    QVERIFY(amount > 0);
    QCOMPARE(taken, amount);

    // The password is in nothing that either side wrote.
    for (const QString &text : {said, first.output(), second.output()})
        QVERIFY2(!text.contains(BrokerProcess::PASSWORD), qPrintable(text));
    int files = 0;
    for (QDirIterator each(out.path(), QDir::Files); each.hasNext(); ++files) {
        QFile written(each.next());
        QVERIFY(written.open(QIODevice::ReadOnly));
        QVERIFY2(!written.readAll().contains(BrokerProcess::PASSWORD.toUtf8()),
                 qPrintable(written.fileName()));
    }
    QVERIFY(files > 5);
}

void tst_BrokerDemo::withoutABrokerTheDemoSaysWhy()
{
    int code = -1;
    // Nobody is known to this broker under that name, which no amount of waiting changes.
    const QString said = runTerminal({QStringLiteral("--bus"),
                                      withoutPassword(m_broker->address(QStringLiteral("nobody"))),
                                      QStringLiteral("--demo"), QStringLiteral("individual")},
                                     &code);
    QCOMPARE(code, 1);
    QVERIFY2(said.contains(QStringLiteral("имя или пароль")), qPrintable(said));
    QVERIFY2(!said.contains(BrokerProcess::PASSWORD), qPrintable(said));
}

QTEST_GUILESS_MAIN(tst_BrokerDemo)
#include "tst_brokerdemo.moc"
