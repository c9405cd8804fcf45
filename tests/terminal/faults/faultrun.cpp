#include "faultrun.h"

#include <billing/sampleaccounts.h>
#include <bus/amqp/brokeraddress.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QUrl>

namespace {

/// Longer than the station's own.
constexpr int PATIENCE_MS = 300000;
constexpr qint64 DEBT_AT_FIRST = 150050;

/// Filled once for a test program and copied for every test: filling takes longer than a test.
QString masterFolder()
{
    static QTemporaryDir folder;
    static const bool filled = [] {
        QProcess station;
        station.start(FaultRun::stationProgram(),
                      {QStringLiteral("--data"), folder.path(), QStringLiteral("figures")});
        return station.waitForFinished(PATIENCE_MS) && station.exitCode() == 0;
    }();
    return filled ? folder.path() : QString();
}

qint64 number(const QJsonObject &figures, const char *key)
{
    return qint64(figures.value(QLatin1String(key)).toDouble());
}

QSet<QString> texts(const QJsonObject &figures, const char *key)
{
    QSet<QString> result;
    const QJsonArray list = figures.value(QLatin1String(key)).toArray();
    for (const QJsonValue &value : list)
        result.insert(value.toString());
    return result;
}

} // namespace

FaultRun::FaultRun() : m_folder(std::make_unique<QTemporaryDir>())
{
    const QString master = masterFolder();
    m_ready = m_folder->isValid() && !master.isEmpty();
    const QStringList files = QDir(master).entryList(QDir::Files);
    for (const QString &file : files)
        m_ready = m_ready && QFile::copy(QDir(master).filePath(file), m_folder->filePath(file));
}

QString FaultRun::stationProgram()
{
    return QStringLiteral(FAULT_STATION);
}

void FaultRun::setBroker(const QString &address, const QString &billingFile)
{
    QUrl url(address);
    m_environment.insert(QLatin1String(BrokerAddress::PASSWORD_VARIABLE),
                         url.password(QUrl::FullyDecoded));
    url.setPassword(QString());
    m_brokerArguments = QStringList{QStringLiteral("--bus"), url.toString(QUrl::FullyEncoded),
                                    QStringLiteral("--billing"), billingFile};
}

QStringList FaultRun::stationArguments(const QStringList &arguments) const
{
    return QStringList{QStringLiteral("--data"), folder()} + m_brokerArguments + arguments;
}

FaultRun::Ending FaultRun::run(const QStringList &arguments, const QString &faultPoint)
{
    return runProgram(stationProgram(), stationArguments(arguments), faultPoint);
}

FaultRun::Ending FaultRun::runProgram(const QString &program, const QStringList &arguments,
                                      const QString &faultPoint)
{
    QProcess process;
    QProcessEnvironment environment = m_environment;
    if (!faultPoint.isEmpty())
        environment.insert(QStringLiteral("SELMAR_FAULT_POINT"), faultPoint);
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    return finish(process, false);
}

std::unique_ptr<QProcess> FaultRun::start(const QStringList &arguments)
{
    auto process = std::make_unique<QProcess>();
    process->setProcessEnvironment(m_environment);
    process->start(stationProgram(), stationArguments(arguments));
    process->waitForStarted();
    return process;
}

FaultRun::Ending FaultRun::finish(QProcess &process, bool kill)
{
    if (kill)
        process.kill();
    Ending ending;
    if (process.waitForFinished(PATIENCE_MS)) {
        ending.killed = process.exitStatus() == QProcess::CrashExit;
        ending.code = process.exitCode();
    } else {
        process.kill();
        process.waitForFinished();
    }
    ending.output = process.readAllStandardOutput();
    remember(ending.output);
    // What it complained of is shown with what it said when a test fails.
    ending.output += process.readAllStandardError();
    return ending;
}

void FaultRun::remember(const QByteArray &output)
{
    // What follows the last line break was cut by the kill and promised nothing.
    const QList<QByteArray> lines = output.left(output.lastIndexOf('\n') + 1).split('\n');
    for (const QByteArray &line : lines) {
        const int blank = line.indexOf(' ');
        if (blank < 0)
            continue;
        const QString what = QString::fromLatin1(line.left(blank));
        if (what == QLatin1String("figures"))
            m_figures = QJsonDocument::fromJson(line.mid(blank + 1)).object();
        else
            m_promises[what].insert(QString::fromUtf8(line.mid(blank + 1)));
    }
}

QString FaultRun::disagreement() const
{
    const auto same = [](const char *what, qint64 a, qint64 b) {
        return a == b ? QString()
                      : QStringLiteral("%1: %2 and %3; ")
                            .arg(QLatin1String(what), QString::number(a), QString::number(b));
    };
    const QJsonObject &f = m_figures;
    const int receipts = f.value(QLatin1String("receipts")).toArray().size();
    const int packs = f.value(QLatin1String("packs")).toArray().size();
    QString result = f.isEmpty() ? QStringLiteral("no figures; ") : QString();
    result += same("card money taken and on receipts", number(f, "charged") - number(f, "refunded"),
                   number(f, "receiptCashless"));
    result += same("receipts and packs", receipts, packs);
    result += same("packs here and at billing", packs, number(f, "billedPacks"));
    result += same("receipts and packs, money", number(f, "receiptTotal"),
                   number(f, "packCash") + number(f, "packCard"));
    result +=
        same("card on receipts and in packs", number(f, "receiptCashless"), number(f, "packCard"));
    result += same("packs and billing, money", number(f, "packCash") + number(f, "packCard"),
                   number(f, "billed"));
    result +=
        same("billing and the account", number(f, "billed"), DEBT_AT_FIRST - number(f, "debt"));
    const auto kept = [&](const char *what, const char *where) {
        const QSet<QString> lost =
            QSet<QString>(m_promises.value(QLatin1String(what))).subtract(texts(f, where));
        return lost.isEmpty()
            ? QString()
            : QStringLiteral("%1 and lost: %2; ")
                  .arg(QLatin1String(what), QStringList(lost.values()).join(QLatin1Char(' ')));
    };
    result += kept("charged", "charges") + kept("printed", "receipts") + kept("saved", "packs");
    return result;
}
