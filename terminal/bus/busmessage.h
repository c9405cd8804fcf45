#pragma once

#include <bus/messagebody.h>

#include <QDateTime>
#include <QMetaType>
#include <QString>
#include <QVariantMap>

/// One message as it crossed the bus, for a log or a window that shows the traffic.
struct BusMessage
{
    enum class Direction { Outgoing, Incoming };

    Direction direction = Direction::Outgoing;
    QDateTime time;
    /// Destination of an outgoing message, "msgType" of an incoming one.
    QString address;
    QVariantMap headers;
    MessageBody body;
    /// Did not come from the far side: an earlier message delivered once more by hand.
    bool replayed = false;
};

Q_DECLARE_METATYPE(BusMessage)
