#include "individual/selmarindividualwizard.h"

#include "sampleproviders.h"
#include "scanchecks.h"

#include <QTest>

#include <memory>

namespace {

struct IndividualPage
{
    using Wizard = SelmarIndividualWizard;
    static Provider provider() { return SampleProviders::individuals(); }
    static QVariantList account() { return BillingAnswers::individual(); }
};

} // namespace

/// A keyboard scanner at the individual's start page.
class TestSrIStartPageScan : public QObject
{
    Q_OBJECT

    using Checks = ScanChecks<IndividualPage>;

private slots:
    void init() { m_guard = std::make_unique<GuiTestGuard>(); }
    void cleanup()
    {
        const QStringList problems = m_guard->problems();
        m_guard.reset();
        QCOMPARE(problems, QStringList());
    }

    void codeIntoAField_data() { Checks::codeIntoAField_data(); }
    void codeIntoAField() { Checks::codeIntoAField(); }
    void codeWithoutANumber_data() { Checks::codeWithoutANumber_data(); }
    void codeWithoutANumber() { Checks::codeWithoutANumber(); }
    void withoutSuffixTheCodeWaitsForTheFieldToBeLeft_data()
    {
        Checks::withoutSuffixTheCodeWaitsForTheFieldToBeLeft_data();
    }
    void withoutSuffixTheCodeWaitsForTheFieldToBeLeft()
    {
        Checks::withoutSuffixTheCodeWaitsForTheFieldToBeLeft();
    }
    void pastedCode() { Checks::pastedCode(); }
    void scanInTwoBursts() { Checks::scanInTwoBursts(); }
    void scanWhileAnAnswerIsAwaited() { Checks::scanWhileAnAnswerIsAwaited(); }
    void secondBillAfterTheFirst() { Checks::secondBillAfterTheFirst(); }
    void scanWithTheFocusOnAButton_data() { Checks::scanWithTheFocusOnAButton_data(); }
    void scanWithTheFocusOnAButton() { Checks::scanWithTheFocusOnAButton(); }
    void enterInAFieldNeverGoesOn_data() { Checks::enterInAFieldNeverGoesOn_data(); }
    void enterInAFieldNeverGoesOn() { Checks::enterInAFieldNeverGoesOn(); }
    void foreignCode_data() { Checks::foreignCode_data(); }
    void foreignCode() { Checks::foreignCode(); }

private:
    std::unique_ptr<GuiTestGuard> m_guard;
};

QTEST_MAIN(TestSrIStartPageScan)
#include "tst_sristartpagescan.moc"
