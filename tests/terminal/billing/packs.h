#pragma once

#include <QByteArray>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPair>
#include <QString>
#include <QVariantMap>
#include <QVector>

/// Pay packs as they arrive at billing.
namespace Packs {

inline QVariantMap named(const QString &name, const QVariant &value)
{
    return {{QStringLiteral("name"), name}, {QStringLiteral("value"), value}};
}

inline QVariantMap record(const QString &kind, const QVariantList &values)
{
    return {{QStringLiteral("name"), kind}, {QStringLiteral("paramList"), values}};
}

/// Services as id and distributed amount, meters as id and reading.
inline QString payData(const QVector<QPair<qint64, QString>> &services,
                       const QVector<QPair<qint64, qint64>> &meters = {})
{
    QVariantList lines;
    for (const auto &service : services) {
        lines.append(record(QStringLiteral("service"),
                            {named(QStringLiteral("distributed"), service.second),
                             named(QStringLiteral("id"), QString::number(service.first))}));
    }
    QVariantList readings;
    for (const auto &meter : meters) {
        readings.append(record(QStringLiteral("counter"),
                               {named(QStringLiteral("currvalue"), QString::number(meter.second)),
                                named(QStringLiteral("id"), QString::number(meter.first))}));
    }
    const QVariantList groups{record(QStringLiteral("services"), lines),
                              record(QStringLiteral("counters"), readings)};
    return QString::fromUtf8(
        QJsonDocument(QJsonArray::fromVariantList(groups)).toJson(QJsonDocument::Compact));
}

inline QVariantMap payment(qint64 provider, const QString &account, qint64 kopecks,
                           const QString &payData = QString(), const QString &document = QString())
{
    QVariantList parameters{named(QStringLiteral("account"), account),
                            named(QStringLiteral("paydata"), payData)};
    if (!document.isEmpty())
        parameters.append(named(QStringLiteral("numdoc"), document));
    return {{QStringLiteral("workProviderId"), QString::number(provider)},
            {QStringLiteral("account"), account},
            {QStringLiteral("summ"), kopecks},
            {QStringLiteral("parameters"), parameters}};
}

inline QVariantMap pack(qint64 id, const QVariantList &payments)
{
    return {{QStringLiteral("id"), QString::number(id)}, {QStringLiteral("payments"), payments}};
}

} // namespace Packs
