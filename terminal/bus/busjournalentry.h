#pragma once

#include <bus/busmessage.h>

#include <QString>
#include <QtGlobal>

/// One message in the bus journal and what it has to do with the others.
struct BusJournalEntry
{
    enum class Relation {
        Request,    ///< sent, with an id that an answer can carry
        Notice,     ///< sent without such an id: nothing can be its answer
        Answer,     ///< the first answer to `partner`
        Repeated,   ///< `partner` had been answered before
        Unmatched,  ///< carries no id, or one that no request of the journal has
        Unreadable, ///< not JSON: whatever it answers, nobody can tell
    };

    qint64 number = 0; ///< counted from one, never used again
    BusMessage message;
    Relation relation = Relation::Notice;
    /// Number of the answer to a request, of the request to an answer; 0 when there is none.
    qint64 partner = 0;
    /// Milliseconds from the request to its first answer, in both entries; -1 when there is none.
    qint64 roundTrip = -1;
    /// Bytes of memory that the journal reckons with for this message.
    qint64 weight = 0;
    /// The bus or the far side has taken responsibility for the sent message.
    bool accepted = false;
    /// Why nobody took the sent message, a Russian text.
    QString refusal;
};
