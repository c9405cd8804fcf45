#pragma once

#include <molvacore/molvacore_global.h>
#include <molvacore/postestamount.h>

#include <QString>
#include <QVector>

#include <optional>

/// What an emulated card terminal can be told to do whatever the amount, under the name that
/// CardReaderSettings::outcome() holds.
///
/// | Name | Like the amount that ends in |
/// |---|---|
/// | approve | 00 |
/// | slow | 30 |
/// | decline | 05 |
/// | decline-23, decline-51, ... | 23, 51, ...: every other decline of PosTestAmount |
/// | timeout | 22 |
/// | connection-lost | 20 |
/// | connection-lost-after | 21 |
/// | init-failed | none: init() already fails |
struct MOLVACORE_EXPORT PosTestOutcome
{
    QString name;
    PosTestAmount amount;
    bool initialises = true;

    static QVector<PosTestOutcome> table();
    /// Nothing for a name that the table has not; the empty name leaves the outcome to the amount
    /// and is none of the table.
    static std::optional<PosTestOutcome> named(const QString &name);
};
