// A message that the bus window shows and saves: whatever came, it stays readable and bounded, and
// keeps what it must not show.
#include "fuzztarget.h"

#include <bus/messagetext.h>

#include <QJsonDocument>
#include <QJsonObject>

namespace {

BusJournalEntry arrived(const QByteArray &body)
{
    BusJournalEntry entry;
    entry.number = 1;
    entry.message.direction = BusMessage::Direction::Incoming;
    entry.message.body = body;
    entry.relation = BusJournalEntry::Relation::Unmatched;
    return entry;
}

bool isSafe(const QString &text, const QString &secret)
{
    return !text.contains(secret);
}

} // namespace

FUZZ_TARGET(bus_message)
{
    const BusJournalEntry entry = arrived(input);
    const QByteArray line = MessageText::jsonLine(entry);
    FUZZ_REQUIRE(!line.contains('\n') && !line.contains('\r'),
                 QStringLiteral("a saved message has more than one line"));
    QJsonParseError error;
    const QJsonDocument saved = QJsonDocument::fromJson(line, &error);
    FUZZ_REQUIRE(saved.isObject() || error.error == QJsonParseError::DeepNesting,
                 QStringLiteral("a saved message cannot be read: %1").arg(error.errorString()));
    const QString shown = MessageText::shown(entry);
    FUZZ_REQUIRE(shown.size() < MessageText::LONGEST_SHOWN + 2 * MessageText::LONGEST_LINE,
                 QStringLiteral("a message fills the window"));

    // The same text in the place of a secret, as JSON, inside JSON and cut.
    const QString secret = QStringLiteral("Qz7") + QString::fromLatin1(input.toHex().left(40));
    const QByteArray pair =
        "{\"password\":\"" + secret.toUtf8() + "\",\"a\":[" + input.toHex() + "]}";
    const QByteArray inner =
        QJsonDocument(QJsonObject{{QStringLiteral("description"), QString::fromUtf8(pair)}})
            .toJson(QJsonDocument::Compact);
    for (const QByteArray &body :
         {pair, inner, pair.left(pair.size() - 2), inner.left(inner.size() - 3)}) {
        const BusJournalEntry other = arrived(body);
        FUZZ_REQUIRE(isSafe(MessageText::shown(other), secret)
                         && isSafe(MessageText::whole(other), secret)
                         && isSafe(QString::fromUtf8(MessageText::jsonLine(other)), secret),
                     QStringLiteral("a credential is shown: %1").arg(QString::fromUtf8(body)));
    }
}
