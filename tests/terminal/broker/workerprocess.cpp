#include "workerprocess.h"

#include <bus/amqp/brokeraddress.h>

#include <QElapsedTimer>
#include <QProcessEnvironment>
#include <QUrl>

namespace {

constexpr int READY_MS = 120000;
constexpr int END_MS = 60000;

} // namespace

QString WorkerProcess::program()
{
    return QStringLiteral(SELMAR_WORKER_PROGRAM);
}

WorkerProcess::WorkerProcess(const QString &address, const QString &database, int prefetch)
{
    QUrl url(address);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QLatin1String(BrokerAddress::PASSWORD_VARIABLE),
                       url.password(QUrl::FullyDecoded));
    url.setPassword(QString());
    m_process.setProcessEnvironment(environment);
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    m_process.start(program(),
                    {QStringLiteral("--bus"), url.toString(QUrl::FullyEncoded),
                     QStringLiteral("--database"), database, QStringLiteral("--prefetch"),
                     QString::number(prefetch)});
}

WorkerProcess::~WorkerProcess()
{
    kill9();
}

bool WorkerProcess::waitUntilReady()
{
    QElapsedTimer waiting;
    waiting.start();
    while (!output().contains(QStringLiteral("работает")) && !waiting.hasExpired(READY_MS)
           && m_process.state() != QProcess::NotRunning)
        m_process.waitForReadyRead(100);
    return output().contains(QStringLiteral("работает"));
}

void WorkerProcess::kill9()
{
    if (m_process.state() == QProcess::NotRunning)
        return;
    m_process.kill();
    m_process.waitForFinished(END_MS);
}

int WorkerProcess::terminate()
{
    m_process.terminate();
    if (m_process.waitForFinished(END_MS) && m_process.exitStatus() == QProcess::NormalExit)
        return m_process.exitCode();
    kill9();
    return -1;
}

QString WorkerProcess::output()
{
    m_output += m_process.readAll();
    return QString::fromUtf8(m_output);
}
