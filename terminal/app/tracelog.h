#pragma once

#include <QString>
#include <QtGlobal>

/// Writes the trace of the workstation and of the plugin to a file: time, level, source position,
/// function, text.
///
/// From construction to destruction it is the process's message handler; one at a time. Errors go
/// to the console as well. A file that has grown large is kept as "<file>.old" and begun anew, so
/// the trace never fills the disk.
class TraceLog final
{
public:
    static constexpr qint64 largest = 8 * 1024 * 1024;

    /// Creates the file's folder. The trace goes to the console alone when the file cannot be
    /// opened.
    explicit TraceLog(const QString &file);
    ~TraceLog();
    TraceLog(const TraceLog &) = delete;
    TraceLog &operator=(const TraceLog &) = delete;
};
