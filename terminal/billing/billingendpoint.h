#pragma once

class BillingService;
class InProcessBus;

namespace BillingEndpoint {

/// Lets `service` serve account requests and pay packs on `bus`. The service must outlive the bus.
/// A pay pack that billing could not take is refused on the bus, so the sender keeps it.
void attach(InProcessBus &bus, BillingService &service);

} // namespace BillingEndpoint
