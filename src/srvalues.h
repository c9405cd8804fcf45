#pragma once

#include <basixcore/fixnumber.h>

#include <QString>
#include <QVariant>

/// Values of billing's descriptors, read without changing them on the way.
///
/// Billing sends texts, but a JSON number is taken as well. Qt's own conversion writes a double of
/// a million as "1e+06", which reads back as zero; here a double becomes its shortest decimal
/// notation without an exponent.
namespace SrValues {

/// Money with two decimals; 0.00 for a missing value and for what is no number.
basix::FixNumber money(const QVariant &value);
/// money() as FixNumber::toString() writes it. Billing nearly always sends just this text, which is
/// then given back as it is, shared.
QString moneyText(const QVariant &value);
/// 0 for a missing value, for what is no number, for a double with a fraction or beyond 64 bits.
qint64 integer(const QVariant &value);
QString text(const QVariant &value);

} // namespace SrValues
