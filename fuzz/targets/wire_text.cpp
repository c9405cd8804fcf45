// A message from the bus: what can be read can be sent on, and arrives as it was.
#include "fuzztarget.h"

#include <bus/wiretext.h>

namespace {

/// Texts that UTF-8 cannot express; JSON's "\ud800" makes them.
bool isWritable(const QVariant &value)
{
    switch (value.userType()) {
    case QMetaType::QString:
        return value.toString().isValidUtf16();
    case QMetaType::QVariantList: {
        bool writable = true;
        for (const QVariant &element : value.toList())
            writable = writable && isWritable(element);
        return writable;
    }
    case QMetaType::QVariantMap: {
        bool writable = true;
        const QVariantMap map = value.toMap();
        for (auto it = map.cbegin(); it != map.cend(); ++it)
            writable = writable && it.key().isValidUtf16() && isWritable(it.value());
        return writable;
    }
    }
    return true;
}

/// Integers that a double would change travel as text.
QVariant asSent(const QVariant &value)
{
    constexpr qint64 exact = Q_INT64_C(1) << 53;
    switch (value.userType()) {
    case QMetaType::LongLong:
        return value.toLongLong() > exact || value.toLongLong() < -exact
            ? QVariant(value.toString())
            : value;
    case QMetaType::QVariantList: {
        QVariantList list;
        for (const QVariant &element : value.toList())
            list.append(asSent(element));
        return list;
    }
    case QMetaType::QVariantMap: {
        QVariantMap map = value.toMap();
        for (auto it = map.begin(); it != map.end(); ++it)
            it.value() = asSent(it.value());
        return map;
    }
    }
    return value;
}

} // namespace

FUZZ_TARGET(wire_text)
{
    QString error;
    const auto message = WireText::decode(input, &error);
    FUZZ_REQUIRE(message.has_value() == error.isEmpty(),
                 QStringLiteral("a message is refused without a reason, or taken with one"));
    if (!message)
        return;
    const auto body = WireText::encode(*message, &error);
    FUZZ_REQUIRE(body.has_value() == error.isEmpty(),
                 QStringLiteral("sending is refused without a reason, or done with one"));
    FUZZ_REQUIRE(body.has_value() == isWritable(*message),
                 QStringLiteral("sent although it cannot be written, or refused: %1").arg(error));
    if (!body)
        return;
    const auto arrived = WireText::decode(*body, &error);
    FUZZ_REQUIRE(arrived && *arrived == asSent(*message).toMap(),
                 QStringLiteral("a message arrives altered: %1").arg(QString::fromUtf8(*body)));
    FUZZ_REQUIRE(WireText::encode(*arrived, &error) == body,
                 QStringLiteral("a message changes each time it is sent on"));
}
