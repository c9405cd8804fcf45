#pragma once

#include <basixcore/fixnumber.h>

#include <QDateTime>
#include <QMetaType>
#include <QString>
#include <QVariantMap>
#include <QtGlobal>

/// How far a stored pay pack has come. The order is the order of time; a pack never goes back.
enum class PackState {
    Saved = 0,       ///< durable here, nobody else knows of it
    HandedOn = 1,    ///< given out for posting; the bus has not taken it yet
    Posted = 2,      ///< the bus took responsibility
    Acknowledged = 3 ///< billing confirmed that it has it
};

QString packStateText(PackState state);

/// A pay pack as the journal lists it. Its times are in UTC when it was read from the store: a page
/// of the journal has hundreds of them, and few are shown.
struct PaymentRecord
{
    /// Counts up as packs are saved; 0 for one that is not.
    qint64 sequence = 0;
    qint64 packId = 0;
    PackState state = PackState::Saved;
    QDateTime created;
    qint64 providerId = 0;
    QString providerName;
    /// Accounts of the pack's payments, joined with ", " when they differ.
    QString account;
    basix::FixNumber sum;
    basix::FixNumber cash;
    basix::FixNumber card;
    /// Of the receipt: fiscal storage, document, sign. Empty when the pack came without them.
    QString fiscalStorage;
    QString fiscalDocument;
    QString fiscalSign;
    /// Made anew from the receipt after the pack of the payment itself was lost.
    bool recovered = false;
    QDateTime handedOn;
    QDateTime posted;
    QDateTime acknowledged;
    /// Why the bus or billing refused it the last time; empty when nothing failed.
    QString lastError;
};

Q_DECLARE_METATYPE(PackState)

/// What the journal is asked for; an empty member asks for everything.
struct PaymentFilter
{
    QDateTime from;
    /// Payments at this moment are not meant any more.
    QDateTime until;
    /// What the account begins with.
    QString account;
    /// A PackState, or -1.
    int state = -1;

    bool lets(const PaymentRecord &record) const;
};

/// By what the journal is sorted, and which way.
struct PaymentOrder
{
    enum class Key { Time, Provider, Account, Sum, Cash, Card, State };

    Key key = Key::Time;
    bool descending = true;

    static const PaymentOrder NewestFirst;
    static const PaymentOrder OldestFirst;

    bool operator==(const PaymentOrder &other) const
    {
        return key == other.key && descending == other.descending;
    }
    bool operator!=(const PaymentOrder &other) const { return !(*this == other); }
};

inline constexpr PaymentOrder PaymentOrder::NewestFirst{Key::Time, true};
inline constexpr PaymentOrder PaymentOrder::OldestFirst{Key::Time, false};

/// Whether `first` stands above `second` in the journal. Of payments of the same millisecond the
/// account and then the order of saving decide; of those that are equal in anything else, the order
/// of saving.
bool standsAbove(const PaymentRecord &first, const PaymentRecord &second,
                 const PaymentOrder &order);
