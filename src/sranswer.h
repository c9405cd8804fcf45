#pragma once

#include <QString>
#include <QVariantList>
#include <QVariantMap>

/// What a message from the bus turned out to be for one start page.
struct SrAnswer
{
    enum class Outcome {
        NotForUs, ///< another kind of message, or an answer to nothing that is pending: nothing may
                  ///< change on screen
        Malformed, ///< not readable as JSON; it is in the log, the message is dropped
        Failure,   ///< billing refused; failureText is to be shown
        Data,      ///< the account's data
    };

    Outcome outcome = Outcome::NotForUs;
    /// A pending request was answered and is no longer pending: the wait is over whatever the
    /// outcome.
    bool matched = false;
    QString failureText;
    /// The description of the account as billing sent it, with "payParamList" and the rest.
    QVariantMap data;
    /// The descriptors for SRAccount::parseCheckList(); empty when billing sent no list.
    QVariantList payParamList;
};
