#pragma once

#include <functional>

/// How long to wait before connecting again: twice as long after each failure up to a limit, and
/// never the same at two workstations, so that they do not all come back at one moment.
class ReconnectDelay final
{
public:
    static constexpr int FIRST_MS = 500;
    static constexpr int LONGEST_MS = 30000;

    /// `random` answers with a number from 0 up to, not including, 1; without it a random
    /// generator.
    explicit ReconnectDelay(std::function<double()> random = {});

    /// Milliseconds: from half of the current step to the whole of it.
    int next();
    /// The connection proved good.
    void reset() { m_step = FIRST_MS; }

private:
    std::function<double()> m_random;
    int m_step = FIRST_MS;
};
