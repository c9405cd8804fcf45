#pragma once

#include <bus/busjournalentry.h>

#include <QByteArray>
#include <QString>

/// Messages of the bus as text for people and files.
///
/// Values under keys that name credentials (a password, a token, a card's secret) are replaced by
/// asterisks at every depth, JSON inside a JSON text included; in a text that is not JSON, what
/// follows such a key.
namespace MessageText {

/// Longest body that shown() formats; a larger one is shown as it came, its beginning only.
constexpr int MOST_FORMATTED = 2 * 1024 * 1024;
/// Longest line and longest whole that shown() returns, in characters, notes about what was left
/// out aside. A text widget stays quick with these.
constexpr int LONGEST_LINE = 1000;
constexpr int LONGEST_SHOWN = 256 * 1024;

/// Headers as "key: value" lines and the body indented; a text inside it that holds JSON of its own
/// follows indented too. What is too long is cut, and the text says so.
QString shown(const BusJournalEntry &entry);
/// The whole message, nothing cut.
QString whole(const BusJournalEntry &entry);
/// The whole message as one line of JSON, without a line end. A body that is not JSON becomes text,
/// its bytes that are not UTF-8 replacement characters.
QByteArray jsonLine(const BusJournalEntry &entry);

/// What the entry has to do with others, a short Russian text.
QString relation(const BusJournalEntry &entry);

} // namespace MessageText
