#include "legal/selmarlegalwizard.h"

#include "sampleproviders.h"
#include "scanchecks.h"

#include <QTest>

#include <memory>

namespace {

struct LegalPage
{
    using Wizard = SelmarLegalWizard;
    static Provider provider() { return SampleProviders::legalEntities(); }
    static QVariantList account() { return BillingAnswers::legal(); }
};

} // namespace

/// A keyboard scanner at the legal entity's start page.
class TestSrLStartPageScan : public QObject
{
    Q_OBJECT

    using Checks = ScanChecks<LegalPage>;

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
    void codeWithoutADocument();
    void contractAndDocument_data();
    void contractAndDocument();

private:
    std::unique_ptr<GuiTestGuard> m_guard;
};

void TestSrLStartPageScan::contractAndDocument_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("before");
    QTest::newRow("into the contract") << "leAccount"
                                       << "";
    QTest::newRow("into the document") << "leContract"
                                       << "";
    QTest::newRow("behind an old document") << "leContract"
                                            << "ВК-1";
    QTest::newRow("into the phone") << "lePhone"
                                    << "";
}

void TestSrLStartPageScan::contractAndDocument()
{
    QFETCH(const QString, field);
    QFETCH(const QString, before);
    StartPageForm<SelmarLegalWizard> form(LegalPage::provider());
    form.open();
    auto *edit = form.page->findChild<QLineEdit *>(field);
    Checks::place(edit, before, before.size());
    // The cashier was elsewhere meanwhile, so what was typed before is no beginning of the code.
    form.pbGetData->setFocus();
    edit->setFocus();
    KeyboardScanner::scan(QStringLiteral("ST00012|PersAcc=100200300|BarCode=ВК-77|Sum=150050"),
                          {Qt::Key_Return, Qt::Key_Return});
    QCOMPARE(form.host.sent().size(), 1);
    QCOMPARE(form.lastParameters().value(QStringLiteral("account")), QStringLiteral("100200300"));
    QCOMPARE(form.lastParameters().value(QStringLiteral("numdoc")), QStringLiteral("ВК-77"));
    QCOMPARE(form.host.lastBody().value(QStringLiteral("summ")).toDouble(), 1500.50);
    QCOMPARE(form.lePhone->text(), QString());
    QVERIFY(form.cbAmount->isVisible());
    QVERIFY(form.dsbAmount->isVisible());
}

void TestSrLStartPageScan::codeWithoutADocument()
{
    StartPageForm<SelmarLegalWizard> form(LegalPage::provider());
    form.open();
    auto *document = form.page->findChild<QLineEdit *>(QStringLiteral("leContract"));
    Checks::place(document, QStringLiteral("77"), 2);
    KeyboardScanner::scan(QStringLiteral("ST00012|PersAcc=100200300|Sum=150050"));
    QCOMPARE(form.host.sent().size(), 1);
    QCOMPARE(document->text(), QString());
    QVERIFY(!form.lastParameters().contains(QStringLiteral("numdoc")));
}

QTEST_MAIN(TestSrLStartPageScan)
#include "tst_srlstartpagescan.moc"
