#pragma once

#include <QString>

/// Fills the host database with what a workstation of the sample network has: cash box, profiles,
/// cashier, register, card reader and the two providers of the utility.
class HostDataSeeder final
{
public:
    static const qint64 BOX_ID;
    static const qint64 PROVIDER_INDIVIDUAL;
    static const qint64 PROVIDER_LEGAL;
    static const qint64 CASHIER_ID;

    /// Adds what is missing and leaves what is there as it is; false with a Russian text when
    /// something could not be stored. The current session becomes the sample cashier's when there
    /// is none.
    bool seed(QString *error);
};
