#include <storage/jsontext.h>

#include <QJsonDocument>
#include <QJsonObject>

QString JsonText::compact(const QVariantMap &map)
{
    return QString::fromUtf8(
        QJsonDocument(QJsonObject::fromVariantMap(map)).toJson(QJsonDocument::Compact));
}
