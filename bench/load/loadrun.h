#pragma once

#include "loadbox.h"

#include <bus/amqp/brokeraddress.h>

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

#include <memory>
#include <vector>

/// One measurement: so many boxes, so many workers, so long.
class LoadRun final
{
public:
    struct Settings
    {
        int boxes = 0;
        int workers = 0;
        int seconds = 0;
        QString workerProgram;
        QString workerBus;
        qint64 brokerPid = 0; ///< 0: not known
    };

    /// What was measured, over `seconds`; processor time in milliseconds.
    struct Result
    {
        LoadFigures figures;
        double seconds = 0;
        double boxesMs = 0;
        double workersMs = 0;
        double brokerMs = 0;
        double brokerMiB = 0;
    };

    LoadRun(const BrokerAddress &boxBus, const LoadBox::Host &host, const Settings &settings);

    /// False with a text when boxes or workers do not come to work. Workers and connections are
    /// gone afterwards.
    bool run(Result *result, QString *error);

private:
    bool startWorkers(QString *error);
    bool connectBoxes(QString *error);
    void measure(Result *result);
    /// Adds `sign` times what everybody has used so far.
    void addUse(Result *result, int sign) const;

    const BrokerAddress &m_boxBus;
    const LoadBox::Host &m_host;
    Settings m_settings;
    QTemporaryDir m_folder;
    LoadFigures m_figures;
    std::vector<std::unique_ptr<QProcess>> m_workers;
    std::vector<std::unique_ptr<LoadBox>> m_boxes;
};
