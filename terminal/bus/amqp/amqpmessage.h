#pragma once

#include <QByteArray>
#include <QMetaType>
#include <QString>
#include <QVariantMap>
#include <QtGlobal>

/// A message on its way to the broker.
struct AmqpMessage
{
    QString exchange;
    QString routingKey;
    QString correlationId;
    QString replyTo;
    /// Milliseconds after which a queue drops the message; 0: never.
    int expiration = 0;
    bool persistent = false;
    /// A message that no queue takes comes back instead of vanishing.
    bool mandatory = false;
    /// Texts, numbers and flags.
    QVariantMap headers;
    QByteArray body;
};

/// A message from the broker.
struct AmqpDelivery
{
    /// For acknowledge() and reject(); valid on the connection it came from.
    quint64 tag = 0;
    QString consumer;
    bool redelivered = false;
    /// Larger than this side takes; the body is empty.
    bool oversized = false;
    QString routingKey;
    QString correlationId;
    QString replyTo;
    /// Entries of other types than text, number and flag are left out.
    QVariantMap headers;
    QByteArray body;
};

Q_DECLARE_METATYPE(AmqpMessage)
Q_DECLARE_METATYPE(AmqpDelivery)
