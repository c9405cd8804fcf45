#include "roubles.h"

#include <QLocale>

qint64 Roubles::kopecks(const QString &written)
{
    QString digits = written;
    digits.replace(QLatin1Char('.'), QLatin1Char(','));
    const int comma = digits.indexOf(QLatin1Char(','));
    const QString whole = comma < 0 ? digits : digits.left(comma);
    const QString part = comma < 0 ? QString() : digits.mid(comma + 1);
    return whole.toLongLong() * 100 + part.leftJustified(2, QLatin1Char('0')).toLongLong();
}

QString Roubles::typed(QString written)
{
    const QChar point = QLocale().decimalPoint();
    return written.replace(QLatin1Char('.'), point).replace(QLatin1Char(','), point);
}

QString Roubles::text(qint64 kopecks)
{
    return QStringLiteral("%1,%2").arg(
        QString::number(kopecks / 100),
        QString::number(qAbs(kopecks % 100)).rightJustified(2, QLatin1Char('0')));
}
