#pragma once

/// Takes the log while it lives and prints nothing of it but errors.
///
/// The lines are made as for any host that listens to warnings: what a program spends on its trace
/// is part of what it costs.
class QuietLog final
{
public:
    QuietLog();
    ~QuietLog();
    QuietLog(const QuietLog &) = delete;
    QuietLog &operator=(const QuietLog &) = delete;
};
