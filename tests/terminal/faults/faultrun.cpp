#include "faultrun.h"

#include <bus/amqp/brokeraddress.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QUrl>

namespace {

/// Longer than the station's own.
constexpr int PATIENCE_MS = 300000;

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
        if (line.startsWith("figures "))
            m_agreement.setFigures(QJsonDocument::fromJson(line.mid(blank + 1)).object());
        else
            m_agreement.promise(line);
    }
}
