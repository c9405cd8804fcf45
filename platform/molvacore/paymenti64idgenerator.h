#pragma once

#include <molvacore/molvacore_global.h>

#include <QByteArray>

/// Makes ids of payments and packs.
class MOLVACORE_EXPORT PaymentI64IdGenerator
{
public:
    /// A fresh id in 1 .. 2^63-1: never the same twice in a process, a thread or a forked child,
    /// whatever the arguments.
    ///
    /// The id is a SHA-256 over the arguments, 256 random bits of the process, its number, a
    /// counter and the clock, cut to 63 bits. Among n ids of any number of boxes two coincide with
    /// a probability of about n*n / 2^64: one in 18 million for a million ids, one in 18 for a
    /// thousand million.
    static qint64 generate(unsigned int box, const QByteArray &seed);
};
