#pragma once

#include <scenario/scenariocommand.h>

#include <QString>

class TerminalContext;

/// What a scenario may have wrong with a workstation: its register, card terminal, bus, settings
/// and store. What it changes stays changed in the data folder, so a scenario gets a folder of its
/// own.
class ScenarioConditions final
{
public:
    /// `context` must outlive the object.
    explicit ScenarioConditions(TerminalContext &context);

    /// True for the commands that apply() carries out.
    static bool isCondition(ScenarioCommand::Verb verb);
    bool apply(const ScenarioCommand &command);
    QString error() const { return m_error; }

private:
    bool setState(const QStringList &arguments);
    bool repeatAnswer();
    bool takeAway(const QString &what);
    bool removeRegister();
    bool run(const char *file, const QString &sql);

    TerminalContext &m_context;
    QString m_error;
};
