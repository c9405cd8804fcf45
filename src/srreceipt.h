#pragma once

#include <basixcore/currency.h>
#include <basixcore/fixnumber.h>
#include <molvacore/check.h>
#include <molvacore/onlinekkminfo.h>
#include <molvacore/paypack.h>

#include <QString>
#include <QVariantList>

/// What the receipts and pay packs of both kinds of account share.
namespace SrReceipt {

/// A receipt without lines, with what the register's profile says about every receipt: additional
/// attribute, tax system.
Check start(const OnlineKkmInfo &kkm);
/// Fills what does not depend on the payer: types, cashier (left out when the session's user is
/// unknown), owner and number of the register, read from the host's database on each call.
void fillRegisterData(Check &receipt);
/// A part of exactly one hundredth is left out, in the receipt and in the pack alike.
void addPayments(Check &receipt, const basix::FixNumber &card, const basix::FixNumber &cash);
void addOperations(PayPack &pack, const basix::Currency &currency, const basix::FixNumber &card,
                   const basix::FixNumber &cash);
/// The text of the receipt's QR code (tag 1196) in the fiscal properties of a printed receipt;
/// empty when there is none.
QString qrText(const QVariantList &fiscalProperties);

} // namespace SrReceipt
