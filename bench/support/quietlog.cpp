#include "quietlog.h"

#include <QString>
#include <QtGlobal>

#include <cstdio>

namespace {

void handle(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    if (type == QtCriticalMsg || type == QtFatalMsg)
        std::fprintf(stderr, "%s\n", qPrintable(text));
}

} // namespace

QuietLog::QuietLog()
{
    qInstallMessageHandler(handle);
}

QuietLog::~QuietLog()
{
    qInstallMessageHandler(nullptr);
}
