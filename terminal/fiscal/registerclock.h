#pragma once

#include <QDateTime>

#include <functional>

/// Where a register takes its time from; a test fixes it.
using RegisterClock = std::function<QDateTime()>;
