#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

/// What the load program was started with.
struct LoadOptions
{
    QString boxBus;       ///< the broker as a terminal logs in
    QString workerBus;    ///< the same as billing's side does
    QVector<int> boxes;   ///< runs with so many boxes
    QVector<int> workers; ///< and so many workers, each with each
    int seconds = 0;      ///< measured in every run
    QString workerProgram;
    qint64 brokerPid = 0; ///< 0: its processor time and memory are not shown
    bool raw = true;      ///< also measure the broker alone

    /// Ends the program for --help, and with a message for what it does not understand.
    static LoadOptions parse(const QStringList &arguments);
};
