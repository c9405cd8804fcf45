#include "tracelog.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMutex>
#include <QMutexLocker>

#include <cstdio>

namespace {

QFile *logFile = nullptr;
QMutex logMutex;
QtMessageHandler previousHandler = nullptr;

const char *levelText(QtMsgType type)
{
    switch (type) {
    case QtDebugMsg:
        return "D";
    case QtInfoMsg:
        return "I";
    case QtWarningMsg:
        return "W";
    case QtCriticalMsg:
        return "E";
    case QtFatalMsg:
        return "F";
    }
    return "?";
}

void startAnew()
{
    const QString old = logFile->fileName() + QStringLiteral(".old");
    logFile->close();
    QFile::remove(old);
    QFile::rename(logFile->fileName(), old);
    logFile->open(QIODevice::WriteOnly | QIODevice::Append);
}

void handle(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (type == QtCriticalMsg || type == QtFatalMsg)
        std::fprintf(stderr, "%s\n", qPrintable(text));
    const QByteArray line = QDateTime::currentDateTime().toString(Qt::ISODateWithMs).toLatin1()
        + ' ' + levelText(type) + ' ' + (context.file ? context.file : "-") + ':'
        + QByteArray::number(context.line) + ' ' + (context.function ? context.function : "-")
        + ": " + text.toUtf8() + '\n';
    const QMutexLocker locker(&logMutex);
    if (!logFile)
        return;
    if (logFile->size() > TraceLog::largest)
        startAnew();
    logFile->write(line);
    logFile->flush();
}

} // namespace

TraceLog::TraceLog(const QString &file)
{
    QDir().mkpath(QFileInfo(file).path());
    auto *opened = new QFile(file);
    if (!opened->open(QIODevice::WriteOnly | QIODevice::Append)) {
        delete opened;
        return;
    }
    // The trace holds names and accounts: it is its owner's alone.
    opened->setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    logFile = opened;
    previousHandler = qInstallMessageHandler(handle);
}

TraceLog::~TraceLog()
{
    if (!logFile)
        return;
    qInstallMessageHandler(previousHandler);
    const QMutexLocker locker(&logMutex);
    delete logFile;
    logFile = nullptr;
}
