#pragma once

#include <bills/codeencoding.h>
#include <devices/devicestates.h>

#include <QPair>
#include <QString>
#include <QStringList>
#include <QVector>

/// What the terminal was started with.
struct CommandLine
{
    enum class Demo { None, Individual, Legal };

    QString dataFolder; ///< empty: not given
    QString pluginFile; ///< empty: not given
    QString busAddress; ///< empty: the bus inside the program
    /// Keys of the states that devices begin in; those that were not given are missing.
    QVector<QPair<Device, QString>> deviceStates;
    Demo demo = Demo::None;
    QString scenarioFile; ///< empty: not given; never together with a demo
    QString outFolder;    ///< empty: the demo or scenario leaves no files
    bool visible = false;
    bool checkStart = false; ///< end as soon as the window can be used
    int pause = 0;           ///< milliseconds between the demo's steps

    QString billAccount;  ///< account or contract to write a sample bill of; empty: not given
    QString billDocument; ///< of the contract; empty: the first unpaid one
    CodeEncoding billEncoding = CodeEncoding::Utf8;
    QString billFile;
    QString codePicture; ///< picture to read a code from; empty: not given

    /// Ends the program for --help and --version, and with a message for what it does not
    /// understand.
    static CommandLine parse(const QStringList &arguments);
};
