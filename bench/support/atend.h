#pragma once

#include <functional>

/// What rows keep from one measurement to the next and must be gone before the application is:
/// windows and their models.
namespace AtEnd {

/// Remembers to call `release`.
void call(std::function<void()> release);
/// Calls everything that was remembered, the last first.
void run();

} // namespace AtEnd
