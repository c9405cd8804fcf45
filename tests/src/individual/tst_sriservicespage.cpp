#include "individual/sriservicespage.h"

#include "columnfit.h"
#include "individual/srcounteritemdelegate.h"
#include "individual/srcountersmodel.h"
#include "individual/srservicesmodel.h"
#include "individual/srsumitemdelegate.h"
#include "tabletext.h"
#include "testrecords.h"
#include "wizardbench.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QSet>
#include <QSpinBox>
#include <QTableView>
#include <QTest>
#include <QVBoxLayout>

#include <memory>

using TestRecords::counter;
using TestRecords::service;

namespace {

QList<SrService> services()
{
    return {service(QStringLiteral("Вода"), QStringLiteral("100.00"), QStringLiteral("150.00"),
                    QStringLiteral("0.00")),
            service(QStringLiteral("Стоки"), QStringLiteral("50.00"), QStringLiteral("49.50"),
                    QStringLiteral("0.00"))};
}

QSharedPointer<SrPersonalAccount> account(const QList<SrCounter> &counters = {
                                              counter(QStringLiteral("Кухня"), 100, 100)})
{
    return TestRecords::personalAccount(services(), counters);
}

} // namespace

class TestSrIServicesPage : public QObject
{
    Q_OBJECT

private slots:
    void init() { useBench(); }
    void cleanup();

    void metaObject();
    void form();
    void layouts();
    void delegates();
    void byChargeOnlyInTheIndividualsWizard();
    void byChargeIsHiddenInAnyOtherWizard();
    void tabOrder();

    void showsTheAccount();
    void accountOfAnotherKind();
    void metersAreShownOnlyWhenThereAreAny();
    void everyEntryLoadsTheAccountAnew();
    void buttonsByMouse();
    void buttonsByKeyboard_data();
    void buttonsByKeyboard();
    void overpaymentKeepsNextDisabled();
    void amountsCannotBeTyped();
    void readingByKeyboard_data();
    void readingByKeyboard();
    void readingThatIsReadOnly();
    void completenessIsLogged_data();
    void completenessIsLogged();
    void registerAndProfile_data();
    void registerAndProfile();
    void registerThatIsGone();
    void wizardDestroyedBehindTheMessage();
    void handsOnACopyWithTheChanges();
    void columnsFitWhatTheyShow();
    void longNamesLeaveTheAmountsInTheWindow();

private:
    void useBench(HostDatabase::Parts leftOut = HostDatabase::Parts());
    SrIServicesPage *page() const
    {
        return qobject_cast<SrIServicesPage *>(m_bench->wizard()->page(1));
    }
    QTableView *table(const char *name) const
    {
        return page()->findChild<QTableView *>(QLatin1String(name));
    }
    QPushButton *push(const char *name) const
    {
        return page()->findChild<QPushButton *>(QLatin1String(name));
    }
    bool canGoOn() const { return m_bench->button(QWizard::NextButton)->isEnabled(); }
    QString total() const { return TableText::shown(*table("tvServices")->model()).last(); }

    std::unique_ptr<WizardBench> m_bench;
};

void TestSrIServicesPage::useBench(HostDatabase::Parts leftOut)
{
    m_bench.reset();
    m_bench = std::make_unique<WizardBench>(WizardBench::Individual, leftOut);
}

void TestSrIServicesPage::cleanup()
{
    const QString leftovers = m_bench->leftovers();
    m_bench.reset();
    QCOMPARE(leftovers, QString());
}

void TestSrIServicesPage::metaObject()
{
    const QMetaObject &meta = SrIServicesPage::staticMetaObject;
    QCOMPARE(meta.className(), "SrIServicesPage");
    QCOMPARE(meta.superClass(), &QWizardPage::staticMetaObject);
    QCOMPARE(meta.methodCount(), meta.methodOffset());
    QCOMPARE(meta.propertyCount(), meta.propertyOffset());
    QVERIFY(dynamic_cast<ISrIWizardPage *>(m_bench->wizard()->page(1)));
    QCOMPARE(page()->preview(), QString());
}

void TestSrIServicesPage::form()
{
    QCOMPARE(page()->objectName(), QStringLiteral("SrIServicesPage"));
    QCOMPARE(page()->windowTitle(), QStringLiteral("WizardPage"));
    QWizard wizard;
    QCOMPARE(SrIServicesPage(&wizard).size(), QSize(820, 548));
    QCOMPARE(page()->findChild<QGroupBox *>(QStringLiteral("gbServices"))->title(),
             QStringLiteral("Услуги"));
    QCOMPARE(page()->findChild<QGroupBox *>(QStringLiteral("gbCounters"))->title(),
             QStringLiteral("Счетчики"));
    QCOMPARE(push("pbByCharge")->text(), QStringLiteral("Распределить по сумме начисления"));
    QCOMPARE(push("pbByDebt")->text(), QStringLiteral("Распределить по сумме долга"));
    for (const char *name : {"tvServices", "tvCounters"})
        QVERIFY(table(name)->horizontalHeader()->stretchLastSection());
    QVERIFY(qobject_cast<SRServicesModel *>(table("tvServices")->model()));
    QVERIFY(qobject_cast<SrCountersModel *>(table("tvCounters")->model()));
    QCOMPARE(table("tvServices")->model()->parent(), page());
    QCOMPARE(table("tvCounters")->model()->parent(), page());
}

void TestSrIServicesPage::layouts()
{
    const auto *pageLayout = qobject_cast<QVBoxLayout *>(page()->layout());
    QVERIFY(pageLayout);
    QCOMPARE(pageLayout->objectName(), QStringLiteral("verticalLayout_3"));
    QCOMPARE(pageLayout->itemAt(0)->widget()->objectName(), QStringLiteral("gbServices"));
    QCOMPARE(pageLayout->itemAt(1)->widget()->objectName(), QStringLiteral("gbCounters"));
    const auto *buttons = page()->findChild<QHBoxLayout *>(QStringLiteral("horizontalLayout"));
    QCOMPARE(buttons->itemAt(0)->widget(), push("pbByCharge"));
    QVERIFY(buttons->itemAt(1)->spacerItem());
    QCOMPARE(buttons->itemAt(1)->spacerItem()->sizeHint(), QSize(40, 20));
    QVERIFY(buttons->itemAt(1)->spacerItem()->expandingDirections() & Qt::Horizontal);
    QCOMPARE(buttons->itemAt(2)->widget(), push("pbByDebt"));
    const auto *inServices = page()->findChild<QVBoxLayout *>(QStringLiteral("verticalLayout"));
    QCOMPARE(inServices->itemAt(0)->layout(), buttons);
    QCOMPARE(inServices->itemAt(1)->widget(), table("tvServices"));
    const auto *meters = page()->findChild<QVBoxLayout *>(QStringLiteral("verticalLayout_2"));
    QCOMPARE(meters->spacing(), 1);
    QCOMPARE(meters->contentsMargins(), QMargins(1, 1, 1, 1));
    QCOMPARE(meters->itemAt(0)->widget(), table("tvCounters"));
}

void TestSrIServicesPage::delegates()
{
    QSet<QAbstractItemDelegate *> distinct;
    for (const int column : {1, 2, 3})
        distinct << qobject_cast<SrSumItemDelegate *>(
            table("tvServices")->itemDelegateForColumn(column));
    for (const int column : {1, 2})
        distinct << qobject_cast<SrCounterItemDelegate *>(
            table("tvCounters")->itemDelegateForColumn(column));
    QVERIFY(!distinct.contains(nullptr));
    QCOMPARE(distinct.size(), 5);
    for (const QAbstractItemDelegate *delegate : qAsConst(distinct))
        QCOMPARE(delegate->parent(), table("tvServices"));
    QVERIFY(!table("tvServices")->itemDelegateForColumn(0));
    QVERIFY(!table("tvCounters")->itemDelegateForColumn(0));
}

void TestSrIServicesPage::byChargeOnlyInTheIndividualsWizard()
{
    m_bench->openServices(account());
    QVERIFY(push("pbByCharge")->isVisible());
    QVERIFY(push("pbByDebt")->isVisible());
}

void TestSrIServicesPage::byChargeIsHiddenInAnyOtherWizard()
{
    QWizard wizard;
    const SrIServicesPage other(&wizard);
    QVERIFY(other.findChild<QPushButton *>(QStringLiteral("pbByCharge"))->isHidden());
    QVERIFY(!other.findChild<QPushButton *>(QStringLiteral("pbByDebt"))->isHidden());
}

void TestSrIServicesPage::tabOrder()
{
    m_bench->openServices(account());
    push("pbByCharge")->setFocus();
    for (const char *name : {"pbByCharge", "pbByDebt", "tvServices", "tvCounters"}) {
        QCOMPARE(m_bench->wizard()->focusWidget()->objectName(), QLatin1String(name));
        QTest::keyClick(m_bench->wizard()->focusWidget(), Qt::Key_Tab);
    }
}

void TestSrIServicesPage::showsTheAccount()
{
    m_bench->openServices(account());
    QCOMPARE(page()->title(), QStringLiteral("Иванов Иван Иванович"));
    QCOMPARE(page()->subTitle(), QStringLiteral("ул. Речная, 1"));
    QCOMPARE(TableText::shown(*table("tvServices")->model()).mid(1),
             QStringList({QStringLiteral("Вода | 100.00 | 150.00 | 0.00"),
                          QStringLiteral("Стоки | 50.00 | 49.50 | 0.00"),
                          QStringLiteral("ИТОГО | 500.00 | 900.00 | 0.00")}));
    QCOMPARE(TableText::shown(*table("tvCounters")->model()).mid(1),
             QStringList{QStringLiteral("Кухня | 100 | 100")});
    QVERIFY(!canGoOn());
}

void TestSrIServicesPage::accountOfAnotherKind()
{
    m_bench->openServices(account());
    m_bench->wizard()->back();
    for (const QSharedPointer<SRAccount> &other :
         {QSharedPointer<SRAccount>(), QSharedPointer<SRAccount>(TestRecords::legalAccount({}))}) {
        auto *first = dynamic_cast<AccountPage *>(m_bench->wizard()->page(0));
        first->account = other;
        m_bench->wizard()->next();
        QCOMPARE(total(), QStringLiteral("ИТОГО | 0.00 | 0.00 | 0.00"));
        QVERIFY(page()->outputData().isNull());
        QCOMPARE(page()->title(), QString());
        m_bench->wizard()->back();
    }
}

void TestSrIServicesPage::metersAreShownOnlyWhenThereAreAny()
{
    auto *group = page()->findChild<QGroupBox *>(QStringLiteral("gbCounters"));
    m_bench->openServices(account({}));
    QVERIFY(!group->isVisible());
    m_bench->wizard()->back();
    m_bench->openServices(account());
    QVERIFY(group->isVisible());
    m_bench->wizard()->back();
    m_bench->openServices(account({}));
    QVERIFY(!group->isVisible());
}

void TestSrIServicesPage::everyEntryLoadsTheAccountAnew()
{
    const auto given = account();
    m_bench->openServices(given);
    push("pbByDebt")->click();
    QVERIFY(table("tvCounters")->model()->setData(table("tvCounters")->model()->index(0, 2), 170));
    m_bench->wizard()->back();
    m_bench->openServices(given);
    QCOMPARE(total(), QStringLiteral("ИТОГО | 500.00 | 900.00 | 0.00"));
    QCOMPARE(TableText::shown(*table("tvCounters")->model()).last(),
             QStringLiteral("Кухня | 100 | 100"));
}

void TestSrIServicesPage::buttonsByMouse()
{
    m_bench->openServices(account());
    QTest::mouseClick(push("pbByCharge"), Qt::LeftButton);
    QCOMPARE(total(), QStringLiteral("ИТОГО | 500.00 | 900.00 | 150.00"));
    QVERIFY(canGoOn());
    QTest::mouseClick(push("pbByDebt"), Qt::LeftButton);
    QCOMPARE(total(), QStringLiteral("ИТОГО | 500.00 | 900.00 | 199.50"));
    QVERIFY(canGoOn());
}

void TestSrIServicesPage::buttonsByKeyboard_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("distributed");
    const QString charge = QStringLiteral("pbByCharge");
    const QString debt = QStringLiteral("pbByDebt");
    QTest::newRow("charge, space") << charge << int(Qt::Key_Space) << QStringLiteral("150.00");
    QTest::newRow("debt, space") << debt << int(Qt::Key_Space) << QStringLiteral("199.50");
    QTest::newRow("charge, Enter") << charge << int(Qt::Key_Return) << QStringLiteral("150.00");
    QTest::newRow("debt, Enter of the number block")
        << debt << int(Qt::Key_Enter) << QStringLiteral("199.50");
}

void TestSrIServicesPage::buttonsByKeyboard()
{
    QFETCH(QString, button);
    QFETCH(int, key);
    QFETCH(QString, distributed);
    m_bench->openServices(account());
    QPushButton *pressed = push(qPrintable(button));
    pressed->setFocus();
    QTest::keyClick(pressed, Qt::Key(key));
    QCOMPARE(total(), QStringLiteral("ИТОГО | 500.00 | 900.00 | ") + distributed);
    QVERIFY(canGoOn());
    QCOMPARE(m_bench->wizard()->currentId(), 1);
}

void TestSrIServicesPage::overpaymentKeepsNextDisabled()
{
    m_bench->openServices(
        TestRecords::personalAccount({service(QStringLiteral("Вода"), QStringLiteral("10.00"),
                                              QStringLiteral("30.00"), QStringLiteral("0")),
                                      service(QStringLiteral("Стоки"), QStringLiteral("5.00"),
                                              QStringLiteral("-1.00"), QStringLiteral("0"))}));
    push("pbByDebt")->click();
    QVERIFY(!canGoOn());
    push("pbByCharge")->click();
    QVERIFY(canGoOn());
    QVERIFY(m_bench->answers.seen().isEmpty());
}

void TestSrIServicesPage::amountsCannotBeTyped()
{
    m_bench->openServices(account());
    QTableView *view = table("tvServices");
    view->setFocus();
    for (int column = 0; column < 4; ++column) {
        view->setCurrentIndex(view->model()->index(0, column));
        QTest::keyClick(view, Qt::Key_F2);
        QTest::keyClicks(view, QStringLiteral("77"));
        QTest::mouseDClick(view->viewport(), Qt::LeftButton, {},
                           view->visualRect(view->currentIndex()).center());
        QVERIFY(view->viewport()->findChildren<QWidget *>().isEmpty());
    }
    QCOMPARE(total(), QStringLiteral("ИТОГО | 500.00 | 900.00 | 0.00"));
}

void TestSrIServicesPage::readingByKeyboard_data()
{
    QTest::addColumn<qint64>("last");
    QTest::addColumn<qint64>("current");
    QTest::addColumn<bool>("startedByF2");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("row");
    QTest::addColumn<bool>("ready");
    QTest::newRow("F2") << qint64(100) << qint64(0) << true << QStringLiteral("150")
                        << QStringLiteral("Кухня | 100 | 150") << true;
    QTest::newRow("typing starts the editor")
        << qint64(100) << qint64(0) << false << QStringLiteral("150")
        << QStringLiteral("Кухня | 100 | 150") << true;
    QTest::newRow("equal to the last one")
        << qint64(100) << qint64(0) << true << QStringLiteral("100")
        << QStringLiteral("Кухня | 100 | 100") << true;
    QTest::newRow("below the last one is refused")
        << qint64(100) << qint64(120) << true << QStringLiteral("99")
        << QStringLiteral("Кухня | 100 | 120") << true;
    QTest::newRow("below the last one, nothing entered before")
        << qint64(100) << qint64(0) << true << QStringLiteral("7")
        << QStringLiteral("Кухня | 100 | 100") << true;
    QTest::newRow("letters are refused")
        << qint64(100) << qint64(120) << true << QStringLiteral("abc")
        << QStringLiteral("Кухня | 100 | 120") << true;
    QTest::newRow("the largest reading")
        << qint64(100) << qint64(0) << true << QStringLiteral("2147483647")
        << QStringLiteral("Кухня | 100 | 2147483647") << true;
    QTest::newRow("last reading beyond the editor stays incomplete")
        << qint64(5000000000) << qint64(0) << true << QString()
        << QStringLiteral("Кухня | 5000000000 | 2147483647") << false;
}

void TestSrIServicesPage::readingByKeyboard()
{
    QFETCH(qint64, last);
    QFETCH(qint64, current);
    QFETCH(bool, startedByF2);
    QFETCH(QString, typed);
    QFETCH(QString, row);
    QFETCH(bool, ready);
    m_bench->openServices(account({counter(QStringLiteral("Кухня"), last, current)}));
    push("pbByDebt")->click();
    QTableView *view = table("tvCounters");
    view->setFocus();
    view->setCurrentIndex(view->model()->index(0, 0));
    QTest::keyClick(view, Qt::Key_Right);
    QTest::keyClick(view, Qt::Key_Right);
    QCOMPARE(view->currentIndex().column(), 2);
    QString rest = typed;
    if (startedByF2) {
        QTest::keyClick(view, Qt::Key_F2);
    } else {
        QTest::keyClicks(view, typed.left(1));
        rest.remove(0, 1);
    }
    auto *editor = view->viewport()->findChild<QSpinBox *>();
    QVERIFY(editor);
    QCOMPARE(m_bench->wizard()->focusWidget(), editor);
    if (startedByF2 && !typed.isEmpty())
        editor->selectAll();
    QTest::keyClicks(editor, rest);
    QTest::keyClick(editor, Qt::Key_Return);
    QTRY_VERIFY(view->viewport()->findChildren<QSpinBox *>().isEmpty());
    QCOMPARE(TableText::shown(*view->model()).last(), row);
    QCOMPARE(canGoOn(), ready);
    QCOMPARE(m_bench->wizard()->currentId(), 1);
}

void TestSrIServicesPage::readingThatIsReadOnly()
{
    m_bench->openServices(
        account({counter(QStringLiteral("Кухня"), 100, 50, {SrCounter::FIELD_CUR_VALUE})}));
    push("pbByDebt")->click();
    QTableView *view = table("tvCounters");
    view->setFocus();
    view->setCurrentIndex(view->model()->index(0, 2));
    QTest::keyClick(view, Qt::Key_F2);
    QVERIFY(view->viewport()->findChildren<QSpinBox *>().isEmpty());
    QVERIFY(!canGoOn());
}

void TestSrIServicesPage::completenessIsLogged_data()
{
    QTest::addColumn<bool>("distributed");
    QTest::addColumn<qint64>("reading");
    QTest::addColumn<QString>("words");
    QTest::newRow("all well") << true << qint64(100) << QStringLiteral("true true true");
    QTest::newRow("nothing distributed")
        << false << qint64(100) << QStringLiteral("true false true");
    QTest::newRow("reading below the last")
        << true << qint64(99) << QStringLiteral("true true false");
    QTest::newRow("neither") << false << qint64(0) << QStringLiteral("true false false");
}

void TestSrIServicesPage::completenessIsLogged()
{
    QFETCH(bool, distributed);
    QFETCH(qint64, reading);
    QFETCH(QString, words);
    m_bench->openServices(account({counter(QStringLiteral("Кухня"), 100, reading)}));
    if (distributed)
        push("pbByCharge")->click();
    m_bench->log.clear();
    const bool complete = page()->isComplete();
    QCOMPARE(complete, words == QLatin1String("true true true"));
    QCOMPARE(m_bench->log.messages().size(), 1);
    const MessageLog::Message line = m_bench->log.messages().first();
    QCOMPARE(line.type, QtWarningMsg);
    QCOMPARE(line.category, QStringLiteral("default"));
    QVERIFY2(line.text.contains(QStringLiteral("SrIServicesPage::isComplete")),
             qPrintable(line.text));
    QVERIFY2(line.text.endsWith(QLatin1Char(' ') + words), qPrintable(line.text));
}

void TestSrIServicesPage::registerAndProfile_data()
{
    QTest::addColumn<bool>("answers");
    QTest::addColumn<bool>("ready");
    QTest::addColumn<bool>("profile");
    QTest::addColumn<QString>("text");
    const QString noRegister = QStringLiteral("ККТ не доступна");
    QTest::newRow("all well") << true << true << true << QString();
    QTest::newRow("register does not answer") << false << true << true << noRegister;
    QTest::newRow("register not ready") << true << false << true << noRegister;
    QTest::newRow("no profile") << true << true << false
                                << QStringLiteral(
                                       "Не настроен профиль онлайн касс на agent.molva.example");
    QTest::newRow("register before profile") << true << false << false << noRegister;
}

void TestSrIServicesPage::registerAndProfile()
{
    QFETCH(bool, answers);
    QFETCH(bool, ready);
    QFETCH(bool, profile);
    QFETCH(QString, text);
    useBench(profile ? HostDatabase::Parts() : HostDatabase::RegisterProfile);
    m_bench->fiscalRegister->answers = answers;
    m_bench->fiscalRegister->ready = ready;
    m_bench->openServices(account());
    push("pbByDebt")->click();
    if (!text.isEmpty())
        m_bench->answers.ok();
    QTest::mouseClick(m_bench->button(QWizard::NextButton), Qt::LeftButton);
    QCOMPARE(m_bench->wizard()->currentId(), text.isEmpty() ? 2 : 1);
    if (!text.isEmpty()) {
        QCOMPARE(m_bench->answers.seen().size(), 1);
        QCOMPARE(m_bench->answers.seen().first().title, QStringLiteral("Ошибка Вода ФЛ"));
        QCOMPARE(m_bench->answers.seen().first().text, text);
        QCOMPARE(m_bench->answers.seen().first().icon, QMessageBox::Critical);
        // Nothing of what was done is lost.
        QCOMPARE(total(), QStringLiteral("ИТОГО | 500.00 | 900.00 | 199.50"));
    }
}

void TestSrIServicesPage::registerThatIsGone()
{
    m_bench->openServices(account());
    push("pbByDebt")->click();
    m_bench->fiscalRegister.reset();
    m_bench->answers.ok().ok();
    QVERIFY(!page()->validatePage());
    m_bench->setRegister(nullptr);
    QVERIFY(!page()->validatePage());
    QCOMPARE(m_bench->answers.seen().last().text, QStringLiteral("ККТ не доступна"));
}

void TestSrIServicesPage::wizardDestroyedBehindTheMessage()
{
    m_bench->openServices(account());
    push("pbByDebt")->click();
    m_bench->fiscalRegister->ready = false;
    m_bench->answers.run([this](QDialog *) { m_bench->destroyWizard(); });
    m_bench->wizard()->next();
    QVERIFY(!m_bench->wizard());
}

void TestSrIServicesPage::handsOnACopyWithTheChanges()
{
    const auto given = account();
    m_bench->openServices(given);
    push("pbByDebt")->click();
    QVERIFY(table("tvCounters")->model()->setData(table("tvCounters")->model()->index(0, 2), 170));
    const auto handedOn = page()->outputData().dynamicCast<SrPersonalAccount>();
    QVERIFY(handedOn);
    QVERIFY(handedOn != given);
    QCOMPARE(handedOn->amount().toString(), QStringLiteral("199.50"));
    QCOMPARE(handedOn->counters().first().curValue(), qint64(170));
    QCOMPARE(handedOn->accountNumber(), QStringLiteral("4455"));
    QCOMPARE(given->amount().toString(), QStringLiteral("0.00"));
    QCOMPARE(given->counters().first().curValue(), qint64(100));
    // Each call makes a copy of its own.
    handedOn->setServices({});
    QCOMPARE(page()->outputData().dynamicCast<SrPersonalAccount>()->services().size(), 2);
}

void TestSrIServicesPage::columnsFitWhatTheyShow()
{
    m_bench->openServices(account());
    for (const char *name : {"tvServices", "tvCounters"})
        QCOMPARE(ColumnFit::widths(*table(name)), ColumnFit::needed(*table(name)));
}

void TestSrIServicesPage::longNamesLeaveTheAmountsInTheWindow()
{
    const QString longName = QString(400, QChar(u'Ш'));
    m_bench->openServices(TestRecords::personalAccount(
        {service(longName, QStringLiteral("123456.78"), QStringLiteral("123456.78"),
                 QStringLiteral("123456.78"))},
        {counter(longName, 123456, 123456)}));
    for (const char *name : {"tvServices", "tvCounters"}) {
        const QTableView *view = table(name);
        const int last = view->model()->columnCount() - 1;
        const QRect cell = view->visualRect(view->model()->index(0, last));
        QVERIFY2(cell.left() >= 0 && cell.left() + 80 < view->viewport()->width(), name);
        QVERIFY(view->horizontalHeader()->length() <= view->viewport()->width());
    }
    QVERIFY2(m_bench->wizard()->width() <= 830,
             qPrintable(QString::number(m_bench->wizard()->width())));
}

QTEST_MAIN(TestSrIServicesPage)
#include "tst_sriservicespage.moc"
