#pragma once

class TerminalContext;

/// What a cashier and time do for the payments that an earlier run left open.
namespace StationRecovery {

/// Lets the bus, the outbox and billing work until every pack is confirmed. False when that takes
/// longer than `patienceMs`.
bool waitUntilConfirmed(TerminalContext &context, int patienceMs);

/// Does what the recovery dialog offers for every payment that is open, and waits for billing.
/// False when something is open after that.
bool recover(TerminalContext &context, int patienceMs);

} // namespace StationRecovery
