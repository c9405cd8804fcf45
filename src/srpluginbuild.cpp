#include "srpluginbuild.h"

#include <QDate>
#include <QLatin1String>
#include <QTime>

namespace {

const QLatin1String months("JanFebMarAprMayJunJulAugSepOctNovDec");
constexpr int monthLength = 3;
constexpr int dateLength = 11;
constexpr int dayAt = 4;
constexpr int yearAt = 7;

QDate dateOf(const QString &text)
{
    const int month = months.indexOf(QStringView(text).left(monthLength));
    if (text.size() != dateLength || month % monthLength != 0) // nor is -1 a multiple of 3
        return QDate();
    return QDate(text.midRef(yearAt).toInt(), month / monthLength + 1,
                 text.midRef(dayAt, yearAt - dayAt).trimmed().toInt());
}

} // namespace

// Runs whenever a host loads the plugin: neither a locale nor a time zone is opened for it.
QString srBuildMoment(const QString &date, const QString &time)
{
    const QDate day = dateOf(date);
    const QTime moment = QTime::fromString(time, Qt::ISODate);
    if (!day.isValid() || !moment.isValid())
        return QString();
    return day.toString(Qt::ISODate) + QLatin1Char('T') + moment.toString(Qt::ISODate);
}

QString srPluginBuild()
{
    return srBuildMoment(QStringLiteral(__DATE__), QStringLiteral(__TIME__));
}
