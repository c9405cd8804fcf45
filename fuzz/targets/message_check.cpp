// A message from the broker, looked at before anything else reads it.
#include "fuzztarget.h"

#include <bus/amqp/messagecheck.h>
#include <bus/wiretext.h>

FUZZ_TARGET(message_check)
{
    QString error;
    const auto message = MessageCheck::read(input, &error);
    FUZZ_REQUIRE(message.has_value() == error.isEmpty(),
                 QStringLiteral("a message is refused without a reason, or taken with one"));
    if (!message)
        return;
    // What passes is read the same by the plain reader, and can be written again.
    const auto plain = WireText::decode(input, &error);
    FUZZ_REQUIRE(plain && *plain == *message,
                 QStringLiteral("two readers of one message disagree: %1").arg(error));
    const auto again = WireText::encode(*message, &error);
    FUZZ_REQUIRE(
        !again || MessageCheck::read(*again, &error),
        QStringLiteral("a message that passed is refused when it is sent on: %1").arg(error));
}
