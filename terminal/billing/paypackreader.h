#pragma once

#include <QString>
#include <QVariantMap>
#include <QVector>
#include <QtGlobal>

#include <optional>

/// What billing needs of a pay pack: the pack as it was posted, read strictly. Money is kopecks.
struct ReceivedPack
{
    struct Line
    {
        qint64 serviceId = 0;
        qint64 distributed = 0;
    };
    struct Reading
    {
        qint64 meterId = 0;
        qint64 value = 0;
    };
    struct Payment
    {
        qint64 providerId = 0;
        QString account;
        QString document;
        qint64 sum = 0;
        QVector<Line> lines;
        QVector<Reading> readings;
    };

    QString id;
    QVector<Payment> payments;

    /// Nothing, with a Russian text, for a pack without an id, without payments or with a payment
    /// whose provider, account or sum cannot be read: it could not be accounted for.
    static std::optional<ReceivedPack> read(const QVariantMap &pack, QString *error);
};
