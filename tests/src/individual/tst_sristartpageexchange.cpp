#include "individual/selmarindividualwizard.h"

#include "sampleproviders.h"
#include "startpagechecks.h"

#include <QTest>

#include <memory>

namespace {

struct IndividualPage
{
    using Wizard = SelmarIndividualWizard;
    static Provider provider() { return SampleProviders::individuals(); }
    static QVariantList account() { return BillingAnswers::individual(); }
};

using Checks = StartPageChecks<IndividualPage>;

} // namespace

/// The exchange of the individual's start page with billing.
class TestSrIStartPageExchange : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_guard = std::make_unique<GuiTestGuard>(); }
    void cleanup()
    {
        const QStringList problems = m_guard->problems();
        m_guard.reset();
        QCOMPARE(problems, QStringList());
    }

    void answerIsShown() { Checks::answerIsShown(); }
    void answerIsLogged() { Checks::answerIsLogged(*m_guard); }
    void focusWhileAnAnswerIsAwaited_data() { Checks::focusWhileAnAnswerIsAwaited_data(); }
    void focusWhileAnAnswerIsAwaited() { Checks::focusWhileAnAnswerIsAwaited(); }
    void failure_data() { Checks::failure_data(); }
    void failure() { Checks::failure(*m_guard); }
    void ignored_data() { Checks::ignored_data(); }
    void ignored() { Checks::ignored(*m_guard); }
    void malformedDescription() { Checks::malformedDescription(*m_guard); }
    void answerWhileAnotherPageIsCurrent() { Checks::answerWhileAnotherPageIsCurrent(); }
    void answerWhileHidden() { Checks::answerWhileHidden(); }
    void olderAnswerIsMatchedByItsOwnUid() { Checks::olderAnswerIsMatchedByItsOwnUid(); }
    void laterAnswerKeepsNothingOfTheOlder() { Checks::laterAnswerKeepsNothingOfTheOlder(); }
    void answerCountsOnce() { Checks::answerCountsOnce(); }
    void editAfterAnAnswerClearsIt() { Checks::editAfterAnAnswerClearsIt(); }
    void nextIsUnavailableWhilePending() { Checks::nextIsUnavailableWhilePending(); }
    void emptyAccountIsNeverComplete() { Checks::emptyAccountIsNeverComplete(); }
    void waitNeverEnds() { Checks::waitNeverEnds(*m_guard); }
    void timerTicksThePage() { Checks::timerTicksThePage(); }
    void timeoutOnAWiderRange() { Checks::timeoutOnAWiderRange(*m_guard); }
    void hostile_data() { Checks::hostile_data(); }
    void hostile() { Checks::hostile(*m_guard); }

private:
    std::unique_ptr<GuiTestGuard> m_guard;
};

QTEST_MAIN(TestSrIStartPageExchange)
#include "tst_sristartpageexchange.moc"
