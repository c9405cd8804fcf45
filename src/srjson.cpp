#include "srjson.h"

#include <QJsonDocument>

QByteArray SrJson::compact(const QVariant &value)
{
    return QJsonDocument::fromVariant(value).toJson(QJsonDocument::Compact);
}
