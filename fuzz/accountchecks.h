#pragma once

#include "sraccount.h"
#include "srdocument.h"
#include "srservice.h"

#include <basixcore/fixnumber.h>
#include <molvacore/check.h>
#include <molvacore/paypack.h>

#include <QList>
#include <QString>
#include <QVariantList>

#include <optional>

/// What holds for the accounts of both kinds of payer, whatever billing answered.
namespace AccountChecks {

/// How many records the last descriptor named `field` lists; no value without such a descriptor.
std::optional<int> listed(const QVariantList &descriptors, const QString &field);

void header(const SRAccount &account);
void services(const QList<SrService> &services);
/// Nothing is negative, and something is distributed if any service has an amount due.
void readiness(const QList<SrService> &services, bool ready);

/// The same descriptors with "_" in the place of what means something in HTML.
QVariantList withoutMarkup(const QVariantList &descriptors);
/// `html` shows billing's texts as texts: it has as many tags as `plain`, the document of the same
/// account without markup in its texts, and no half entity.
void escaping(const QString &html, const QString &plain);

/// `json` is [{ "name", "paramList": [{ "paramList": [{ "name", "value" }] }] }]; the records of
/// the group `name` give the values of `records` back.
void travels(const QString &json, const QString &name, const QList<SrService> &records);

/// The money of a payment: what is to be paid, and how it was taken.
struct Taken
{
    basix::FixNumber card;
    basix::FixNumber cash;
};
/// Splits the amount of a payment by the bits of `choice`; nothing is taken for a negative amount.
Taken split(const basix::FixNumber &amount, quint64 choice);

/// Lines, payments and the register's document of a receipt for `services` and the remainder.
void receipt(const Check &receipt, const QList<SrService> &services, const SRAccount &account,
             const Taken &taken);
/// A part of one hundredth is left out, everything else is in the pack; the pack comes back from
/// the form in which it is kept and from the one in which it is sent.
void pack(const PayPack &pack, const basix::FixNumber &sum, const Taken &taken);

} // namespace AccountChecks
