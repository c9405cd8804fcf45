#pragma once

#include <bus/busjournalentry.h>
#include <payments/paymentrecord.h>
#include <scenario/democount.h>
#include <scenario/scenariocommand.h>

#include <QString>
#include <QStringList>
#include <QVector>
#include <QWizard>

#include <functional>

class BusPacks;
class TerminalContext;

/// What a scenario demands of the screen and of the traces that it has left since begin().
class ScenarioChecks final
{
public:
    struct Found
    {
        bool holds = false;
        QString text; ///< what was there instead
    };
    using Check = std::function<Found()>;

    /// `context` must outlive the object and every check that it made.
    explicit ScenarioChecks(TerminalContext &context);

    /// Counts from here on.
    void begin();

    /// The check that a command asks for; it may be tried as often as needed.
    Check checkOf(const ScenarioCommand &command);
    /// Compares the sums on the screen, in the register, the store, on the bus and at billing, each
    /// pack of the store with the same one on the bus, and what cards were charged with the packs
    /// unless the scenario has checked that itself: one text for each that is wrong. `screen` is in
    /// kopecks; `expected` holds five sums in roubles in that order, or none when all must be as on
    /// the screen.
    QStringList disagreements(qint64 screen, const QStringList &expected, bool chargesChecked);
    /// Compares what the journal of payments shows about each new pack, row and summary, with the
    /// store. `window` is the one that holds the journal, open at the newest payment.
    QStringList journalDisagreements(QWidget &window);

    /// The wizard in front, or null.
    static QWizard *frontWizard();
    static bool buttonEnabled(QWizard::WizardButton which);

private:
    Found count(const QString &what, int expected);
    Found sum(const QString &what, qint64 expected);
    int messages(BusJournalEntry::Relation relation) const;
    qint64 packSum(bool cash, bool card);
    qint64 billingSum();
    QVector<PaymentRecord> newPacks();
    QStringList busDisagreements(const BusPacks &bus);

    TerminalContext &m_context;
    DemoCount m_before;
    qint64 m_busMoment = 0; ///< at begin(), see BusPacks
};
