#pragma once

#include "srservice.h"

#include <basixcore/fixnumber.h>
#include <molvacore/checkoperation.h>
#include <molvacore/onlinekkminfo.h>
#include <molvacore/provider.h>

#include <QString>

/// Lines of a fiscal receipt (tag 1059), without agent and supplier data until
/// fillAgentAndSupplier().
namespace SrReceiptLine {

/// One piece of a service at the amount distributed to it; a penalty gets an item type of its own.
CheckOperation forService(const QString &itemName, const SrService &service,
                          const OnlineKkmInfo &kkm);
/// An amount that belongs to no service: an advance, without an item name.
CheckOperation forAmount(const basix::FixNumber &amount, const OnlineKkmInfo &kkm);
/// Adds what the line's own agent flag (tag 1222) calls for; a line without a flag of an agent
/// stays as it is. The flag itself is not set here.
void fillAgentAndSupplier(const Provider &provider, const OnlineKkmInfo &kkm, CheckOperation &line);

} // namespace SrReceiptLine
