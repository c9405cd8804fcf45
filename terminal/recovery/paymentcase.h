#pragma once

#include <basixcore/fixnumber.h>

#include <QDateTime>
#include <QMetaType>
#include <QString>
#include <QtGlobal>

/// One payment as the card terminal, the fiscal register, the payments store and billing tell it
/// together.
struct PaymentCase
{
    enum class State {
        ChargedNotFiscalised,  ///< the card paid, no receipt says so
        FiscalisedNotSaved,    ///< a receipt is out, no pay pack has it
        SavedNotPosted,        ///< a pack that the bus has not taken
        PostedNotAcknowledged, ///< taken by the bus, not confirmed by billing
        Disagrees,             ///< the sources contradict each other: for a person to look into
        Refunded,              ///< the charge went back to the card
        Agreed
    };

    State state = State::Agreed;
    QDateTime time;
    QString account;
    basix::FixNumber sum;
    /// What the sources know it by; 0 where a source has nothing.
    qint64 chargeId = 0;
    qint64 fiscalDocument = 0;
    qint64 packId = 0;
    /// Russian: what happened, and what to do.
    QString story;
    QString wayOut;

    bool isOpen() const { return state != State::Agreed && state != State::Refunded; }
    bool canSaveByReceipt() const { return state == State::FiscalisedNotSaved; }
    bool canPost() const;
    bool canRefund() const { return state == State::ChargedNotFiscalised; }

    /// About the same charge, receipt or pack.
    bool isSameAs(const PaymentCase &other) const
    {
        return chargeId == other.chargeId && fiscalDocument == other.fiscalDocument
            && packId == other.packId;
    }

    static QString stateText(State state);
};

Q_DECLARE_METATYPE(PaymentCase)
