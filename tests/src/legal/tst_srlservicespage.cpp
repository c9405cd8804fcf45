#include "legal/srlservicespage.h"

#include "columnfit.h"
#include "countingproxy.h"
#include "legal/srdocumentsmodel.h"
#include "legal/srlsumitemdelegate.h"
#include "tabletext.h"
#include "testrecords.h"
#include "wizardbench.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QSet>
#include <QStyleOptionViewItem>
#include <QTableView>
#include <QTest>
#include <QVBoxLayout>

#include <memory>

using TestRecords::document;
using TestRecords::service;

namespace {

SrDocument due(const QString &number, const QString &amount, int services = 1)
{
    QList<SrService> list;
    for (int i = 0; i < services; ++i)
        list << service(QStringLiteral("Вода %1").arg(i), amount, amount, QStringLiteral("0.00"));
    return document(number, amount, amount, list);
}

QSharedPointer<SrLegalAccount> twoDocuments()
{
    return TestRecords::legalAccount({due(QStringLiteral("Д-1"), QStringLiteral("10.00"), 2),
                                      due(QStringLiteral("Д-2"), QStringLiteral("5.50"))});
}

/// Rows of twoDocuments().
enum Row { First, FirstOne, FirstTwo, Second, SecondOne, Total };

} // namespace

class TestSrLServicesPage : public QObject
{
    Q_OBJECT

private slots:
    void init() { useBench(); }
    void cleanup();

    void metaObject();
    void form();
    void delegates();
    void tabOrder();
    void showsTheAccount();
    void accountOfAnotherKind();
    void singleDocumentMayBeCompleteAtOnce();
    void tickByMouse();
    void tickByKeyboard();
    void clickBesideTheBoxTicksNothing();
    void tickIsPaintedAtOnce_data();
    void tickIsPaintedAtOnce();
    void byDebtByMouseAndKeyboard();
    void amountsCannotBeTyped();
    void everyEntryStartsUnticked();
    void completenessIsLogged_data();
    void completenessIsLogged();
    void registerAndProfile_data();
    void registerAndProfile();
    void wizardDestroyedBehindTheMessage();
    void handsOnTheTickedDocumentsOnly();
    void columnsFitWhatTheyShow();
    void thousandsOfDocuments();

private:
    void useBench(HostDatabase::Parts leftOut = HostDatabase::Parts());
    SrLServicesPage *page() const
    {
        return m_alone ? m_alone.get()
                       : qobject_cast<SrLServicesPage *>(m_bench->wizard()->page(1));
    }
    QTableView *table() const
    {
        return page()->findChild<QTableView *>(QStringLiteral("tvServices"));
    }
    QPushButton *byDebt() const
    {
        return page()->findChild<QPushButton *>(QStringLiteral("pbByDebt"));
    }
    bool canGoOn() const { return m_bench->button(QWizard::NextButton)->isEnabled(); }
    QString total() const { return TableText::shown(*table()->model()).last(); }
    QPoint box(int row) const;
    void clickBox(int row) const
    {
        QTest::mouseClick(table()->viewport(), Qt::LeftButton, {}, box(row));
    }
    QList<QImage> pictures() const;

    std::unique_ptr<WizardBench> m_bench;
    std::unique_ptr<SrLServicesPage>
        m_alone; ///< a page outside of any wizard, in the place of the bench's
};

void TestSrLServicesPage::useBench(HostDatabase::Parts leftOut)
{
    m_bench.reset();
    m_bench = std::make_unique<WizardBench>(WizardBench::Legal, leftOut);
}

void TestSrLServicesPage::cleanup()
{
    m_alone.reset();
    const QString leftovers = m_bench->leftovers({QStringLiteral("SRDocumentsModel::setData")});
    m_bench.reset();
    QCOMPARE(leftovers, QString());
}

/// Where the check box of a row is, as the style draws it.
QPoint TestSrLServicesPage::box(int row) const
{
    const QModelIndex index = table()->model()->index(row, 0);
    QStyleOptionViewItem option;
    option.initFrom(table());
    option.rect = table()->visualRect(index);
    option.features = QStyleOptionViewItem::HasCheckIndicator | QStyleOptionViewItem::HasDisplay;
    option.text = index.data().toString();
    return table()
        ->style()
        ->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, table())
        .center();
}

/// Column 0 of the first document's row, then the last column of every row.
QList<QImage> TestSrLServicesPage::pictures() const
{
    const QImage whole = table()->viewport()->grab().toImage();
    const auto cell = [&](int row, int column) {
        return whole.copy(table()->visualRect(table()->model()->index(row, column)));
    };
    QList<QImage> list{cell(First, 0)};
    for (int row = 0; row <= Total; ++row)
        list << cell(row, SRDocumentsModel::DistributedColumn);
    return list;
}

void TestSrLServicesPage::metaObject()
{
    const QMetaObject &meta = SrLServicesPage::staticMetaObject;
    QCOMPARE(meta.className(), "SrLServicesPage");
    QCOMPARE(meta.superClass(), &QWizardPage::staticMetaObject);
    QCOMPARE(meta.methodCount(), meta.methodOffset());
    QCOMPARE(meta.propertyCount(), meta.propertyOffset());
    QVERIFY(dynamic_cast<ISrIWizardPage *>(m_bench->wizard()->page(1)));
    QCOMPARE(page()->preview(), QString());
}

void TestSrLServicesPage::form()
{
    QWizard wizard;
    QCOMPARE(SrLServicesPage(&wizard).size(), QSize(855, 532));
    QCOMPARE(page()->objectName(), QStringLiteral("SrLServicesPage"));
    QCOMPARE(page()->windowTitle(), QStringLiteral("WizardPage"));
    const auto *pageLayout = qobject_cast<QHBoxLayout *>(page()->layout());
    QVERIFY(pageLayout);
    QCOMPARE(pageLayout->objectName(), QStringLiteral("horizontalLayout_2"));
    QCOMPARE(pageLayout->contentsMargins(), QMargins(3, 3, 3, 3));
    auto *group = qobject_cast<QGroupBox *>(pageLayout->itemAt(0)->widget());
    QCOMPARE(group->objectName(), QStringLiteral("gbServices"));
    QCOMPARE(group->title(), QStringLiteral("Услуги"));
    const auto *inGroup = qobject_cast<QVBoxLayout *>(group->layout());
    QCOMPARE(inGroup->objectName(), QStringLiteral("verticalLayout"));
    const auto *buttons = qobject_cast<QHBoxLayout *>(inGroup->itemAt(0)->layout());
    QCOMPARE(buttons->objectName(), QStringLiteral("horizontalLayout"));
    QCOMPARE(buttons->itemAt(0)->spacerItem()->sizeHint(), QSize(40, 20));
    QVERIFY(buttons->itemAt(0)->spacerItem()->expandingDirections() & Qt::Horizontal);
    QCOMPARE(buttons->itemAt(1)->widget(), byDebt());
    QCOMPARE(byDebt()->text(), QStringLiteral("Распределить по сумме долга"));
    QCOMPARE(inGroup->itemAt(1)->widget(), table());
    QVERIFY(table()->horizontalHeader()->stretchLastSection());
    QVERIFY(qobject_cast<SRDocumentsModel *>(table()->model()));
    QCOMPARE(table()->model()->parent(), page());
    QCOMPARE(page()->findChildren<QPushButton *>().size(), 1);
}

void TestSrLServicesPage::delegates()
{
    QSet<QAbstractItemDelegate *> distinct;
    for (const int column : {2, 3, 4})
        distinct << qobject_cast<SrLSumItemDelegate *>(table()->itemDelegateForColumn(column));
    QVERIFY(!distinct.contains(nullptr));
    QCOMPARE(distinct.size(), 3);
    for (const QAbstractItemDelegate *delegate : qAsConst(distinct))
        QCOMPARE(delegate->parent(), table());
    QVERIFY(!table()->itemDelegateForColumn(0));
    QVERIFY(!table()->itemDelegateForColumn(1));
}

void TestSrLServicesPage::tabOrder()
{
    m_bench->openServices(twoDocuments());
    byDebt()->setFocus();
    QTest::keyClick(byDebt(), Qt::Key_Tab);
    QCOMPARE(m_bench->wizard()->focusWidget(), table());
}

void TestSrLServicesPage::showsTheAccount()
{
    m_bench->openServices(twoDocuments());
    QCOMPARE(page()->title(), QStringLiteral("ООО «Ручей»"));
    QCOMPARE(page()->subTitle(), QStringLiteral("пер. Мостовой, 2"));
    QCOMPARE(TableText::shown(*table()->model()).mid(1),
             QStringList({QStringLiteral("Д-1 | ПОДИТОГ | 10.00 | 10.00 | 0.00"),
                          QStringLiteral("Д-1 | Вода 0 | 10.00 | 10.00 | 0.00"),
                          QStringLiteral("Д-1 | Вода 1 | 10.00 | 10.00 | 0.00"),
                          QStringLiteral("Д-2 | ПОДИТОГ | 5.50 | 5.50 | 0.00"),
                          QStringLiteral("Д-2 | Вода 0 | 5.50 | 5.50 | 0.00"),
                          QStringLiteral(" | ИТОГО | 1500.00 | 2500.00 | 0.00")}));
    QVERIFY(!canGoOn());
}

void TestSrLServicesPage::accountOfAnotherKind()
{
    m_bench->openServices(twoDocuments());
    m_bench->wizard()->back();
    m_bench->openServices(TestRecords::personalAccount({}));
    QCOMPARE(total(), QStringLiteral(" | ИТОГО | 0.00 | 0.00 | 0.00"));
    QVERIFY(page()->outputData().isNull());
    QVERIFY(!canGoOn());
}

void TestSrLServicesPage::singleDocumentMayBeCompleteAtOnce()
{
    m_bench->openServices(TestRecords::legalAccount(
        {document(QStringLiteral("Д"), QStringLiteral("1"), QStringLiteral("1"),
                  {service(QStringLiteral("а"), QStringLiteral("1"), QStringLiteral("1"),
                           QStringLiteral("1"))})}));
    QVERIFY(canGoOn());
    m_bench->wizard()->back();
    m_bench->openServices(
        TestRecords::legalAccount({due(QStringLiteral("Д"), QStringLiteral("1.00"))}));
    QVERIFY(!canGoOn());
    byDebt()->click();
    QVERIFY(canGoOn());
    m_bench->wizard()->back();
    m_bench->openServices(TestRecords::legalAccount({}));
    QVERIFY(!canGoOn());
}

void TestSrLServicesPage::tickByMouse()
{
    m_bench->openServices(twoDocuments());
    clickBox(First);
    QCOMPARE(total(), QStringLiteral(" | ИТОГО | 1500.00 | 2500.00 | 20.00"));
    QVERIFY(canGoOn());
    clickBox(Second);
    QCOMPARE(total(), QStringLiteral(" | ИТОГО | 1500.00 | 2500.00 | 25.50"));
    clickBox(First);
    QCOMPARE(total(), QStringLiteral(" | ИТОГО | 1500.00 | 2500.00 | 5.50"));
    clickBox(Second);
    QCOMPARE(total(), QStringLiteral(" | ИТОГО | 1500.00 | 2500.00 | 0.00"));
    QVERIFY(!canGoOn());
}

void TestSrLServicesPage::tickByKeyboard()
{
    m_bench->openServices(twoDocuments());
    table()->setFocus();
    table()->setCurrentIndex(table()->model()->index(First, 0));
    QTest::keyClick(table(), Qt::Key_Space);
    QCOMPARE(total(), QStringLiteral(" | ИТОГО | 1500.00 | 2500.00 | 20.00"));
    QVERIFY(canGoOn());
    for (int i = 0; i < 3; ++i)
        QTest::keyClick(table(), Qt::Key_Down);
    QCOMPARE(table()->currentIndex().row(), int(Second));
    QTest::keyClick(table(), Qt::Key_Space);
    QCOMPARE(total(), QStringLiteral(" | ИТОГО | 1500.00 | 2500.00 | 25.50"));
    QTest::keyClick(table(), Qt::Key_Space);
    QCOMPARE(total(), QStringLiteral(" | ИТОГО | 1500.00 | 2500.00 | 20.00"));
}

void TestSrLServicesPage::clickBesideTheBoxTicksNothing()
{
    m_bench->openServices(twoDocuments());
    for (const int row : {FirstOne, SecondOne, Total})
        clickBox(row);
    for (int column = 1; column < 5; ++column) {
        const QRect cell = table()->visualRect(table()->model()->index(First, column));
        QTest::mouseClick(table()->viewport(), Qt::LeftButton, {}, cell.center());
    }
    QCOMPARE(total(), QStringLiteral(" | ИТОГО | 1500.00 | 2500.00 | 0.00"));
}

void TestSrLServicesPage::tickIsPaintedAtOnce_data()
{
    QTest::addColumn<bool>("alone");
    QTest::newRow("in the wizard") << false;
    // A wizard paints its whole page anew at every completeChanged(); the page does not rely on
    // that.
    QTest::newRow("page alone") << true;
}

void TestSrLServicesPage::tickIsPaintedAtOnce()
{
    QFETCH(bool, alone);
    m_bench->openServices(twoDocuments());
    if (alone) {
        m_bench->wizard()->back();
        m_alone = std::make_unique<SrLServicesPage>(m_bench->wizard());
        m_alone->initializePage();
        m_alone->setParent(nullptr);
        m_alone->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_alone.get()));
    }
    table()->setFocus();
    table()->setCurrentIndex(table()->model()->index(Total, 0));
    QCoreApplication::processEvents();
    const QList<QImage> before = pictures();

    // What reaches the screen is what the view paints of its own accord: record which parts it
    // updates.
    class PaintSpy : public QObject
    {
    public:
        bool eventFilter(QObject *, QEvent *event) override
        {
            if (event->type() == QEvent::Paint)
                painted += static_cast<QPaintEvent *>(event)->region();
            return false;
        }
        QRegion painted;
    } spy;
    table()->viewport()->installEventFilter(&spy);
    clickBox(First);
    const auto visible = [this](int row, int column) {
        return table()->visualRect(table()->model()->index(row, column));
    };
    QTRY_VERIFY(spy.painted.contains(visible(First, 0)));
    for (const int row : {First, FirstOne, FirstTwo, Total})
        QTRY_VERIFY2(spy.painted.contains(visible(row, SRDocumentsModel::DistributedColumn)),
                     qPrintable(QString::number(row)));
    table()->viewport()->removeEventFilter(&spy);

    table()->setCurrentIndex(table()->model()->index(Total, 0));
    const QList<QImage> after = pictures();
    QVERIFY2(after.first() != before.first(), "box");
    for (int row = 0; row <= Total; ++row) {
        const bool changes = row == First || row == FirstOne || row == FirstTwo || row == Total;
        QVERIFY2((after.at(row + 1) != before.at(row + 1)) == changes,
                 qPrintable(QString::number(row)));
    }
}

void TestSrLServicesPage::byDebtByMouseAndKeyboard()
{
    m_bench->openServices(twoDocuments());
    QTest::mouseClick(byDebt(), Qt::LeftButton);
    QCOMPARE(total(), QStringLiteral(" | ИТОГО | 1500.00 | 2500.00 | 0.00"));
    QVERIFY(!canGoOn());
    clickBox(First);
    QVERIFY(table()->model()->setData(table()->model()->index(FirstOne, 4), 1.0));
    QCOMPARE(total(), QStringLiteral(" | ИТОГО | 1500.00 | 2500.00 | 11.00"));
    byDebt()->setFocus();
    QTest::keyClick(byDebt(), Qt::Key_Space);
    QCOMPARE(total(), QStringLiteral(" | ИТОГО | 1500.00 | 2500.00 | 20.00"));
    QVERIFY(canGoOn());
}

void TestSrLServicesPage::amountsCannotBeTyped()
{
    m_bench->openServices(twoDocuments());
    table()->setFocus();
    for (int column = 0; column < 5; ++column) {
        table()->setCurrentIndex(table()->model()->index(FirstOne, column));
        QTest::keyClick(table(), Qt::Key_F2);
        QTest::keyClicks(table(), QStringLiteral("77"));
        QTest::mouseDClick(table()->viewport(), Qt::LeftButton, {},
                           table()->visualRect(table()->currentIndex()).center());
        QVERIFY(table()->viewport()->findChildren<QWidget *>().isEmpty());
    }
    QCOMPARE(total(), QStringLiteral(" | ИТОГО | 1500.00 | 2500.00 | 0.00"));
}

void TestSrLServicesPage::everyEntryStartsUnticked()
{
    const auto given = twoDocuments();
    m_bench->openServices(given);
    clickBox(First);
    m_bench->wizard()->back();
    m_bench->openServices(given);
    QCOMPARE(total(), QStringLiteral(" | ИТОГО | 1500.00 | 2500.00 | 0.00"));
    QVERIFY(!canGoOn());
}

void TestSrLServicesPage::completenessIsLogged_data()
{
    QTest::addColumn<bool>("ticked");
    QTest::addColumn<QString>("words");
    QTest::newRow("nothing ticked") << false << QStringLiteral("true false");
    QTest::newRow("ticked") << true << QStringLiteral("true true");
}

void TestSrLServicesPage::completenessIsLogged()
{
    QFETCH(bool, ticked);
    QFETCH(QString, words);
    m_bench->openServices(twoDocuments());
    if (ticked)
        clickBox(Second);
    m_bench->log.clear();
    QCOMPARE(page()->isComplete(), ticked);
    QCOMPARE(m_bench->log.messages().size(), 1);
    const MessageLog::Message line = m_bench->log.messages().first();
    QCOMPARE(line.type, QtWarningMsg);
    QVERIFY2(line.text.contains(QStringLiteral("SrLServicesPage::isComplete")),
             qPrintable(line.text));
    QVERIFY2(line.text.endsWith(QLatin1Char(' ') + words), qPrintable(line.text));
}

void TestSrLServicesPage::registerAndProfile_data()
{
    QTest::addColumn<bool>("answers");
    QTest::addColumn<bool>("ready");
    QTest::addColumn<bool>("alive");
    QTest::addColumn<bool>("profile");
    QTest::addColumn<QString>("text");
    const QString noRegister = QStringLiteral("ККТ не доступна");
    QTest::newRow("all well") << true << true << true << true << QString();
    QTest::newRow("register does not answer") << false << true << true << true << noRegister;
    QTest::newRow("register not ready") << true << false << true << true << noRegister;
    QTest::newRow("register gone") << true << true << false << true << noRegister;
    QTest::newRow("no profile") << true << true << true << false
                                << QStringLiteral(
                                       "Не настроен профиль онлайн касс на agent.molva.example");
}

void TestSrLServicesPage::registerAndProfile()
{
    QFETCH(bool, answers);
    QFETCH(bool, ready);
    QFETCH(bool, alive);
    QFETCH(bool, profile);
    QFETCH(QString, text);
    useBench(profile ? HostDatabase::Parts() : HostDatabase::RegisterProfile);
    m_bench->fiscalRegister->answers = answers;
    m_bench->fiscalRegister->ready = ready;
    m_bench->openServices(twoDocuments());
    clickBox(First);
    if (!alive)
        m_bench->fiscalRegister.reset();
    if (!text.isEmpty())
        m_bench->answers.ok();
    QTest::mouseClick(m_bench->button(QWizard::NextButton), Qt::LeftButton);
    QCOMPARE(m_bench->wizard()->currentId(), text.isEmpty() ? 2 : 1);
    if (!text.isEmpty()) {
        QCOMPARE(m_bench->answers.seen().size(), 1);
        QCOMPARE(m_bench->answers.seen().first().title, QStringLiteral("Ошибка Вода ЮЛ"));
        QCOMPARE(m_bench->answers.seen().first().text, text);
        QCOMPARE(m_bench->answers.seen().first().icon, QMessageBox::Critical);
    }
}

void TestSrLServicesPage::wizardDestroyedBehindTheMessage()
{
    m_bench->openServices(twoDocuments());
    clickBox(First);
    m_bench->fiscalRegister->ready = false;
    m_bench->answers.run([this](QDialog *) { m_bench->destroyWizard(); });
    m_bench->wizard()->next();
    QVERIFY(!m_bench->wizard());
}

void TestSrLServicesPage::handsOnTheTickedDocumentsOnly()
{
    const auto given = twoDocuments();
    m_bench->openServices(given);
    QVERIFY(page()->outputData().dynamicCast<SrLegalAccount>()->documents().isEmpty());
    clickBox(Second);
    const auto handedOn = page()->outputData().dynamicCast<SrLegalAccount>();
    QVERIFY(handedOn && handedOn != given);
    QCOMPARE(handedOn->documents().size(), 1);
    QCOMPARE(handedOn->documents().first().docNumber(), QStringLiteral("Д-2"));
    QCOMPARE(handedOn->amount().toString(), QStringLiteral("5.50"));
    QCOMPARE(handedOn->accountNumber(), QStringLiteral("77/1"));
    QCOMPARE(given->documents().size(), 2);
    QCOMPARE(given->amount().toString(), QStringLiteral("0.00"));
}

void TestSrLServicesPage::columnsFitWhatTheyShow()
{
    m_bench->openServices(twoDocuments());
    QCOMPARE(ColumnFit::widths(*table()), ColumnFit::needed(*table()));
}

void TestSrLServicesPage::thousandsOfDocuments()
{
    QList<SrDocument> documents;
    for (int i = 0; i < 2000; ++i)
        documents << due(QString::number(i), QStringLiteral("1.00"), 5);
    const auto account = TestRecords::legalAccount(documents);
    m_bench->openServices(account);
    QCOMPARE(table()->model()->rowCount(), 12001);
    m_bench->wizard()->back();

    // Only what is on screen and some rows behind it is measured and painted.
    CountingProxy counting;
    counting.setSourceModel(table()->model());
    table()->setModel(&counting);
    m_bench->openServices(account);
    QCoreApplication::processEvents();
    QVERIFY2(counting.highestRow < 300, qPrintable(QString::number(counting.highestRow)));
    counting.forget();
    clickBox(First);
    QCoreApplication::processEvents();
    QVERIFY2(counting.highestRow < 300, qPrintable(QString::number(counting.highestRow)));
    QVERIFY2(counting.calls < 5000, qPrintable(QString::number(counting.calls)));
    QCOMPARE(total(), QStringLiteral(" | ИТОГО | 1500.00 | 2500.00 | 5.00"));
    QVERIFY(canGoOn());
    table()->setModel(counting.sourceModel());
}

QTEST_MAIN(TestSrLServicesPage)
#include "tst_srlservicespage.moc"
