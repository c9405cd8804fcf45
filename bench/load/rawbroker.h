#pragma once

#include "latencies.h"

#include <QString>

class BrokerAddress;

/// What the broker does with messages that mean nothing: the same protocol library in blocking
/// loops, the same sizes and durability, no event loop, no JSON, no database. The bound that the
/// system is measured against.
class RawBroker final
{
public:
    struct Sizes
    {
        int request = 0;
        int answer = 0;
        int pack = 0;
    };
    struct Figures
    {
        Latencies roundTrip;          ///< request to answer through a queue and a direct reply
        Latencies confirm;            ///< durable publish to its confirm, one at a time
        double confirmsPerSecond = 0; ///< with WINDOW on the way
    };

    static constexpr int WINDOW = 256;
    static constexpr int ROUND_TRIPS = 2000;
    static constexpr int PUBLISHES = 4000;

    /// `address` must be allowed to declare queues of billing's.
    explicit RawBroker(const BrokerAddress &address) : m_address(address) {}

    /// False with a text in `error` when the broker does not play along.
    bool measure(const Sizes &sizes, Figures *figures, QString *error);

private:
    const BrokerAddress &m_address;
};
