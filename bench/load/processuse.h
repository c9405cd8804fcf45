#pragma once

#include <QtGlobal>

/// What a running process has used so far; 0 for a process that is not there.
namespace ProcessUse {

/// Processor time of all its threads, milliseconds.
double processorMs(qint64 pid);
/// Memory that is in the machine now, MiB.
double residentMiB(qint64 pid);

} // namespace ProcessUse
