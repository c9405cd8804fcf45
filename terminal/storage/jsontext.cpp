#include <storage/jsontext.h>

#include <QJsonDocument>
#include <QJsonObject>

QString JsonText::compact(const QVariantMap &map)
{
    return QString::fromUtf8(compactUtf8(map));
}

QByteArray JsonText::compactUtf8(const QVariantMap &map)
{
    return QJsonDocument(QJsonObject::fromVariantMap(map)).toJson(QJsonDocument::Compact);
}
