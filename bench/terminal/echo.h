#pragma once

#include <QObject>
#include <QString>
#include <QVariant>

/// One of two objects that send each other what the bus carries, by one signal each way.
class Echo final : public QObject
{
    Q_OBJECT

signals:
    void asked(const QString &destination, const QVariant &data);
    void answered(const QVariantMap &headers, const QString &message);
};
