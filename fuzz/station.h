#pragma once

#include <basixcore/currency.h>
#include <molvacore/onlinekkminfo.h>
#include <molvacore/payment.h>
#include <molvacore/provider.h>

#include <QSharedPointer>
#include <QString>
#include <QVariantList>

/// The workstation that receipts and packs are made on. Its database is opened at the first use and
/// stays open, so that an execution costs microseconds.
namespace Station {

basix::Currency roubles();
QSharedPointer<Provider> provider();
/// Everything filled; `choice` picks the agent sign, a foreign one included.
OnlineKkmInfo profile(quint64 choice);
/// Those of a printed receipt, with the text of its QR code.
QVariantList fiscalProperties();
/// The value of the payment's first parameter of this name.
QString parameter(const Payment &payment, const QString &name);

} // namespace Station
