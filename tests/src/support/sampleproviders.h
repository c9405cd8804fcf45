#pragma once

#include <molvacore/provider.h>

/// Records of the host's catalogue as a host passes them to the plugin.
namespace SampleProviders {

/// 18722: personal accounts, receipt name "Вода ФЛ". With the parameters account, paydata, qrcode,
/// numdoc and period.
Provider individuals();
/// 18723: contracts, receipt name "Вода ЮЛ". With the same parameters.
Provider legalEntities();

} // namespace SampleProviders
