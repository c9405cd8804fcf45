#pragma once

#include <basixcore/fixnumber.h>

#include <QString>
#include <QVector>

#include <optional>

/// The text of a payment QR code (GOST R 56042-2014) as a scanner types it.
///
/// Only the blocks separated by "|" are read; the standard has no escaping. A value that cannot be
/// read gives no value, so that a damaged code never turns into another amount or period: the
/// caller then leaves its field alone.
class SrPaymentQr
{
public:
    struct Pair
    {
        QString name;
        QString value;
    };
    struct Period
    {
        int month = 0; ///< 1 to 12
        int year = 0;
    };

    /// What a payment code starts with, before the digit of its encoding.
    static const QString PREFIX;
    static const QString NAME_ACCOUNT;
    static const QString NAME_DOCUMENT;
    static const QString NAME_PERIOD;
    static const QString NAME_SUM;

    static bool isPaymentCode(const QString &text);
    /// The blocks in the order of the code, repeated names included. A block that does not split
    /// into exactly two pieces at
    /// "=", such as the header, is left out. Empty for a text that is no payment code.
    static QVector<Pair> pairs(const QString &text);
    /// The value of NAME_PERIOD, "03.2024" or "03/2024". The years from 2000 to `lastYear` are
    /// accepted; pass the last year that the field can hold, or the field would cut the year to it.
    static std::optional<Period> period(const QString &value, int lastYear = 9999);
    /// The value of NAME_SUM, kopecks in decimal digits, as money with two decimals; at most
    /// 99999999.99.
    static std::optional<basix::FixNumber> sum(const QString &value);
};
