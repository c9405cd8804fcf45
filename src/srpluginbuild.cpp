#include "srpluginbuild.h"

#include <QDateTime>
#include <QLocale>

QString srBuildMoment(const QString &date, const QString &time)
{
    // The compiler pads a one-digit day with a blank, which the format below would not take.
    const QString moment = QStringLiteral("%1 %2").arg(date, time).simplified();
    return QLocale(QStringLiteral("en"))
        .toDateTime(moment, QStringLiteral("MMM d yyyy hh:mm:ss"))
        .toString(Qt::ISODate);
}

QString srPluginBuild()
{
    return srBuildMoment(QStringLiteral(__DATE__), QStringLiteral(__TIME__));
}
