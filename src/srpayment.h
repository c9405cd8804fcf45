#pragma once

#include <basixcore/currency.h>
#include <basixcore/fixnumber.h>
#include <molvacore/payment.h>
#include <molvacore/provider.h>

#include <QMap>
#include <QString>

/// The payments of a pay pack.
namespace SrPayment {

/// Gives the provider's parameters their values by exact name; parameters that `values` does not
/// name keep theirs. Hand in a provider of your own: its parameters are changed in place.
void fillParameters(Provider &provider, const QMap<QString, QString> &values);
/// A payment made now, with the provider's parameters as they stand.
Payment create(const Provider &provider, const QString &account, const basix::Currency &currency,
               const basix::FixNumber &sum);

} // namespace SrPayment
