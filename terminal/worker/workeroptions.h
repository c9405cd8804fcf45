#pragma once

#include <QString>
#include <QStringList>

/// What the worker was started with.
struct WorkerOptions
{
    QString bus;
    QString database;
    int prefetch = 0;

    /// Ends the program for --help and --version, and with a message for what it does not
    /// understand.
    static WorkerOptions parse(const QStringList &arguments);
};
