#include "srpagetransfer.h"

#include "accountpage.h"
#include "messagelog.h"
#include "testrecords.h"

#include <QTest>
#include <QWizard>

#include <memory>

class TestSrPageTransfer : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_log = std::make_unique<MessageLog>(); }
    void cleanup()
    {
        const QStringList unexpected = m_log->unexpectedWarnings({});
        m_log.reset();
        QCOMPARE(unexpected, QStringList());
    }

    void withoutAWizard() { QVERIFY(srAccountOfPreviousPage(nullptr).isNull()); }
    void wizardThatVisitedNoPage();
    void pageThatIsNoneOfOurs();
    void pageWithoutAnAccount();
    void lastVisitedPageCounts();

private:
    std::unique_ptr<MessageLog> m_log;
};

void TestSrPageTransfer::wizardThatVisitedNoPage()
{
    QWizard wizard;
    auto *page = new AccountPage;
    page->account = TestRecords::personalAccount({});
    wizard.setPage(0, page);
    QVERIFY(wizard.visitedIds().isEmpty());
    QVERIFY(srAccountOfPreviousPage(&wizard).isNull());
}

void TestSrPageTransfer::pageThatIsNoneOfOurs()
{
    QWizard wizard;
    wizard.setPage(0, new QWizardPage);
    wizard.restart();
    QVERIFY(srAccountOfPreviousPage(&wizard).isNull());
}

void TestSrPageTransfer::pageWithoutAnAccount()
{
    QWizard wizard;
    wizard.setPage(0, new AccountPage);
    wizard.restart();
    QVERIFY(srAccountOfPreviousPage(&wizard).isNull());
}

void TestSrPageTransfer::lastVisitedPageCounts()
{
    /// Asks the way the plugin's pages do: from initializePage().
    class AskingPage : public AccountPage
    {
    public:
        void initializePage() override { account = srAccountOfPreviousPage(wizard()); }
    };
    QWizard wizard;
    auto *first = new AccountPage;
    first->account = TestRecords::personalAccount({});
    auto *second = new AccountPage;
    second->account = TestRecords::personalAccount({});
    second->next = 5;
    auto *third = new AskingPage;
    third->next = -1;
    wizard.setPage(0, first);
    wizard.setPage(1, second);
    wizard.setPage(5, third);
    wizard.restart();
    QCOMPARE(srAccountOfPreviousPage(&wizard), first->outputData());
    wizard.next();
    QCOMPARE(srAccountOfPreviousPage(&wizard), second->outputData());
    wizard.next();
    QCOMPARE(wizard.currentId(), 5);
    QCOMPARE(third->account, second->account);
    wizard.back();
    wizard.back();
    QCOMPARE(srAccountOfPreviousPage(&wizard), first->outputData());
}

QTEST_MAIN(TestSrPageTransfer)
#include "tst_srpagetransfer.moc"
