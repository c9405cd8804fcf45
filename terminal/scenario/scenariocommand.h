#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

/// One line of a scenario, understood.
struct ScenarioCommand
{
    enum class Verb {
        Title,
        State,        ///< [option of the device, key of the state, "once" or ""]
        CardTerminal, ///< [type]
        BusLink,      ///< ["1" or "0"]
        BusDelay,     ///< [milliseconds]
        Without,      ///< [what the workstation lacks]
        StoreRefuses, ///< ["1" or "0"]
        Provider,     ///< [id]: opens the payment
        Fill,         ///< [text, field]
        Scan,         ///< [text, field]
        Press,        ///< [widget]
        PressKey,     ///< [name of a key, as Qt writes it]
        AwaitAccount,
        AwaitMessage, ///< any message of the bus
        RepeatAnswer, ///< delivers the bus's newest message once more
        WizardButton, ///< [button]
        CloseWindow,
        Reading,     ///< [meter, counted from one; value]
        Tick,        ///< [document]
        CardAmount,  ///< [roubles]
        Message,     ///< [part of the text]
        CheckCount,  ///< [what, count]
        CheckSum,    ///< [what, roubles]
        CheckButton, ///< [button, "1" or "0"]
        CheckWidget, ///< ["enabled", "disabled", "shown" or "hidden"; widget]
        CheckText,   ///< [widget, part of its text]
        CheckWizard, ///< ["1" or "0"]: open
        ExpectSums   ///< [screen, register, store, bus, billing] in roubles
    };

    int line = 0;
    QString text; ///< as written
    Verb verb = Verb::Title;
    QStringList arguments;
};

using ScenarioCommands = QVector<ScenarioCommand>;
