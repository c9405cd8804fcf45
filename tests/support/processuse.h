#pragma once

#include <QString>

/// What this process holds of the system at one moment (Linux).
struct ProcessUse
{
    qint64 heapBytes = 0;     ///< allocated and not freed; 0 where a sanitizer owns the heap
    qint64 residentBytes = 0; ///< memory of the process that is in RAM
    int files = 0;            ///< open file descriptors: files, sockets, pipes
    int threads = 0;
    int databases = 0; ///< connections that Qt knows

    static ProcessUse now();
    /// One line for a report.
    QString text() const;
};
