#pragma once

#include "longwork.h"

#include <QString>
#include <QStringList>

#include <functional>

/// Brings the files of the stores into the machine's memory before they are opened.
///
/// Opening a store looks for damage in the order of its tables, which on a disk is no order at all:
/// several seconds for a year's payments, and no window yet to say so. Read from end to end the
/// same file takes a tenth of that, behind a window that shows how far it is.
class StoreReading final
{
public:
    /// Reads the files and asks `step` after each part; false as soon as that does.
    using Reader = std::function<bool(const QStringList &files, const LongWork::Step &step)>;

    /// False when the person stopped it; `error` then says in Russian what that means.
    static bool run(const QStringList &files, QString *error, const Reader &reader = &read);

    /// Passes over what opening does not look through either: files that are missing, cannot be
    /// read or are too large. That is no failure; opening tells the rest.
    static bool read(const QStringList &files, const LongWork::Step &step);
};
