#pragma once

#include <scenario/cashierhands.h>
#include <scenario/scenariochecks.h>
#include <scenario/scenariocommand.h>
#include <scenario/scenarioconditions.h>
#include <scenario/steprunner.h>

#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>

class MainWindow;
class TerminalContext;

/// Carries out a scenario through the plugin's own dialogs, told step by step on the console.
///
/// After the last step the amounts on the screen at Finish, in the register, the store, on the bus,
/// at billing and in the journal's rows, and the card's charges against the packs, are compared to
/// the kopeck, whatever the scenario itself checked.
class ScenarioRun final : public QObject
{
    Q_OBJECT

public:
    struct Options
    {
        QString outFolder; ///< empty: no pictures
        int pause = 0;     ///< milliseconds between two steps
    };

    /// `context` and `window` must outlive the run.
    ScenarioRun(TerminalContext &context, MainWindow &window, const Options &options);

    /// True when every step could be done and every check holds.
    bool run(const ScenarioCommands &commands);
    /// Why run() was false.
    QStringList failures() const { return m_failures; }

private:
    void plan(const ScenarioCommand &command);
    void planCheck(const ScenarioCommand &command);
    void step(const ScenarioCommand &command, const std::function<bool()> &ready,
              const std::function<bool()> &act);
    void compare();
    void answerMessage(const ScenarioCommand &command);
    /// A step has waited for a message of the bus.
    bool takeMessage();
    void startPayment(qint64 providerId);
    bool fill(const QString &text, const QString &name);
    bool pressKey(const QString &name);
    bool enterReading(int meter, const QString &value);
    bool tick(const QString &document);
    bool clickWizard(QWizard::WizardButton button);
    bool no(const QString &error);

    bool savePicture();
    void say(const QString &text);

    TerminalContext &m_context;
    MainWindow &m_window;
    Options m_options;
    StepRunner m_runner;
    CashierHands m_hands;
    ScenarioConditions m_conditions;
    ScenarioChecks m_checks;
    QStringList m_failures;
    QStringList m_expectedSums;
    QString m_error;
    qint64 m_screen = 0; ///< kopecks on the payment page at the last Finish
    int m_incoming = 0;  ///< bus messages that no step has waited for yet
    int m_pictures = 0;
    bool m_accepted = false;
    bool m_takingCard = false; ///< the press of the card button has not returned yet
    bool m_chargesChecked = false;
};
