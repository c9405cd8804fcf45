#include "individual/sristartpage.h"

#include "guitestguard.h"
#include "individual/srpersonalaccount.h"
#include "individualstartform.h"
#include "startpagefields.h"

#include <QLayout>
#include <QMetaMethod>
#include <QTest>

#include <memory>

using Form = IndividualStartForm;

class TestSrIStartPage : public QObject
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

    void metaObject();
    void formWidgets();
    void formTextsAndStates();
    void tabOrderFollowsTheReadingOrder();
    void accountIsTheMandatoryField();
    void everythingFitsIntoTheWizard();

    void inputIsDisabledFromRequestToAnswer();
    void monthAndYearAreEnabledAfterAnAnswer();
    void amountIsEnabledAfterAnAnswerOnlyWhenTicked();
    void futureMonthSnapsBack_data();
    void futureMonthSnapsBack();
    void yearOfThePresentTakesAFutureMonthBack();
    void pastMonthStaysInAnyYear();
    void plannedAmountTakesEitherSign();
    void futureYearCannotBeChosen();
    void editsOfThePeriodClearTheAnswer();
    void phoneEditKeepsTheAnswer();

    void addressTypedAfterTheAnswerIsHandedOn();
    void codeIsNoAddress();
    void accountHoldsTheForm();
    void outputIsACopy();
    void previewIsEmpty();
    void messages_data();
    void messages();
    void accountWithoutServicesIsIncomplete();

private:
    std::unique_ptr<GuiTestGuard> m_guard;
};

void TestSrIStartPage::metaObject()
{
    const QMetaObject &meta = SrIStartPage::staticMetaObject;
    QCOMPARE(meta.superClass(), &QWizardPage::staticMetaObject);
    const int signal = meta.indexOfSignal("sendMessage(QString,QVariant)");
    QVERIFY(signal >= meta.methodOffset());
    QCOMPARE(meta.propertyCount(), meta.propertyOffset());
    for (const char *slot :
         {"incomingMessage(QVariantMap,QString)", "getClientData()", "progress()", "cleanAnswer()",
          "onMonthChanged(int)", "onYearChanged(int)", "parseQr()"})
        QVERIFY2(meta.indexOfSlot(slot) >= meta.methodOffset(), slot);
}

void TestSrIStartPage::formWidgets()
{
    const Form form;
    QCOMPARE(form.page->objectName(), QStringLiteral("SrIStartPage"));
    QCOMPARE(form.page->windowTitle(), QStringLiteral("WizardPage"));
    const QStringList widgets = StartPageFields::widgets(form.page);
    for (const char *expected :
         {"verticalLayout: QVBoxLayout", "gridLayout: QGridLayout", "leAccount: QLineEdit",
          "pbGetData: QPushButton", "lAccount: QLabel", "cbPeriod: QCheckBox",
          "cbAmount: QCheckBox", "cbMonth: QComboBox", "sbYear: QSpinBox",
          "dsbAmount: QDoubleSpinBox", "label: QLabel", "lePhone: QLineEdit",
          "tbSummary: QTextBrowser", "progressBar: QProgressBar"})
        QVERIFY2(widgets.contains(QString::fromLatin1(expected)), expected);
    QCOMPARE(form.page->layout()->objectName(), QStringLiteral("verticalLayout"));
}

void TestSrIStartPage::formTextsAndStates()
{
    const Form form;
    const QDate today = QDate::currentDate();
    QCOMPARE(form.label("lAccount"), QStringLiteral("Номер счета"));
    QCOMPARE(form.label("label"), QStringLiteral("Телефон или e-mail абонента"));
    QCOMPARE(form.pbGetData->text(), QStringLiteral("Запросить данные абонента"));
    QCOMPARE(form.cbPeriod->text(), QStringLiteral("Период"));
    QCOMPARE(form.cbAmount->text(), QStringLiteral("Планируемая сумма"));
    QVERIFY(!form.cbPeriod->isChecked() && !form.cbAmount->isChecked());

    QStringList months;
    for (int index = 0; index < form.cbMonth->count(); ++index)
        months.append(form.cbMonth->itemText(index));
    QCOMPARE(
        months.join(QLatin1Char(' ')),
        QStringLiteral(
            "Январь Февраль Март Апрель Май Июнь Июль Август Сентябрь Октябрь Ноябрь Декабрь"));
    QCOMPARE(form.cbMonth->currentIndex(), today.month() - 1);
    QVERIFY(!form.cbMonth->isEnabled());

    QCOMPARE(form.sbYear->minimum(), 2000);
    QCOMPARE(form.sbYear->maximum(), today.year());
    QCOMPARE(form.sbYear->value(), today.year());
    QCOMPARE(form.sbYear->suffix(), QStringLiteral(" г."));
    QVERIFY(!form.sbYear->isEnabled());

    QCOMPARE(form.dsbAmount->maximum(), 99999999.99);
    QCOMPARE(form.dsbAmount->minimum(), 0.0);
    QCOMPARE(form.dsbAmount->decimals(), 2);
    QCOMPARE(form.dsbAmount->value(), 0.0);
    QCOMPARE(form.dsbAmount->suffix(), QStringLiteral(" р."));
    QVERIFY(!form.dsbAmount->isEnabled());

    QVERIFY(form.isIdle());
    QVERIFY(form.showsNothing());
    QCOMPARE(form.progressBar->value(), 0);
    QCOMPARE(form.timer->interval(), 500);
    QVERIFY(form.host.sent().isEmpty());
}

void TestSrIStartPage::tabOrderFollowsTheReadingOrder()
{
    Form form;
    form.cbPeriod->setChecked(true);
    form.cbAmount->setChecked(true);
    QCOMPARE(
        StartPageFields::tabOrder(form.page, form.leAccount).join(QLatin1Char(' ')),
        QStringLiteral(
            "leAccount pbGetData cbPeriod cbMonth sbYear cbAmount dsbAmount lePhone tbSummary"));
}

void TestSrIStartPage::accountIsTheMandatoryField()
{
    Form form;
    form.leAccount->setText(QStringLiteral("42"));
    QCOMPARE(form.wizard.field(QStringLiteral("account")).toString(), QStringLiteral("42"));
    form.askFor(QStringLiteral("42"));
    form.answerData();
    QVERIFY(form.showsAccount());
    form.leAccount->clear();
    QVERIFY(!form.page->isComplete());
}

void TestSrIStartPage::everythingFitsIntoTheWizard()
{
    Form form;
    QCOMPARE(form.wizard.size(), QSize(800, 600));
    form.askFor(QStringLiteral("123"));
    for (const QWidget *widget :
         form.page->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly)) {
        if (widget->isVisible())
            QVERIFY2(form.page->rect().contains(widget->geometry()),
                     qPrintable(widget->objectName()));
    }
}

void TestSrIStartPage::inputIsDisabledFromRequestToAnswer()
{
    Form form;
    form.cbPeriod->setChecked(true);
    form.cbAmount->setChecked(true);
    const QList<QWidget *> inputs = {form.leAccount, form.lePhone, form.cbAmount,  form.cbMonth,
                                     form.cbPeriod,  form.sbYear,  form.pbGetData, form.dsbAmount};
    form.askFor(QStringLiteral("123"));
    for (const QWidget *input : inputs)
        QVERIFY2(!input->isEnabled(), qPrintable(input->objectName()));
    QVERIFY(form.wizard.button(QWizard::CancelButton)->isEnabled());
    form.answerData();
    for (const QWidget *input : inputs)
        QVERIFY2(input->isEnabled(), qPrintable(input->objectName()));
}

void TestSrIStartPage::monthAndYearAreEnabledAfterAnAnswer()
{
    Form form;
    QVERIFY(!form.cbMonth->isEnabled() && !form.sbYear->isEnabled());
    form.askFor(QStringLiteral("123"));
    form.answerData();
    QVERIFY(!form.cbPeriod->isChecked());
    QVERIFY2(form.cbMonth->isEnabled() && form.sbYear->isEnabled(),
             "enabled although the period is off");
}

void TestSrIStartPage::amountIsEnabledAfterAnAnswerOnlyWhenTicked()
{
    Form form;
    form.askFor(QStringLiteral("123"));
    form.answerData();
    QVERIFY(form.cbAmount->isEnabled());
    QVERIFY(!form.dsbAmount->isEnabled());
    form.cbAmount->setChecked(true);
    QVERIFY(form.dsbAmount->isEnabled());
    form.ask();
    form.answerData();
    QVERIFY(form.dsbAmount->isEnabled());
}

void TestSrIStartPage::futureMonthSnapsBack_data()
{
    QTest::addColumn<int>("index");
    for (int index = 0; index < 12; ++index)
        QTest::newRow(qPrintable(QStringLiteral("month %1").arg(index + 1))) << index;
}

void TestSrIStartPage::futureMonthSnapsBack()
{
    QFETCH(const int, index);
    Form form;
    form.cbPeriod->setChecked(true);
    form.cbMonth->setCurrentIndex(index);
    const int present = QDate::currentDate().month() - 1;
    QCOMPARE(form.cbMonth->currentIndex(), qMin(index, present));
    // A past year takes any month.
    form.sbYear->setValue(form.sbYear->maximum() - 1);
    form.cbMonth->setCurrentIndex(index);
    QCOMPARE(form.cbMonth->currentIndex(), index);
}

void TestSrIStartPage::yearOfThePresentTakesAFutureMonthBack()
{
    Form form;
    form.cbPeriod->setChecked(true);
    form.sbYear->setValue(form.sbYear->maximum() - 1);
    form.cbMonth->setCurrentIndex(11);
    form.sbYear->setValue(form.sbYear->maximum());
    QCOMPARE(form.cbMonth->currentIndex(), QDate::currentDate().month() - 1);
}

void TestSrIStartPage::pastMonthStaysInAnyYear()
{
    Form form;
    form.cbPeriod->setChecked(true);
    form.sbYear->setValue(form.sbYear->maximum() - 1);
    form.cbMonth->setCurrentIndex(11);
    form.sbYear->setValue(form.sbYear->maximum() - 2);
    QCOMPARE(form.cbMonth->currentIndex(), 11);
    form.cbMonth->setCurrentIndex(0);
    form.sbYear->setValue(form.sbYear->maximum());
    QCOMPARE(form.cbMonth->currentIndex(), 0);
}

void TestSrIStartPage::plannedAmountTakesEitherSign()
{
    Form form;
    form.cbAmount->setChecked(true);
    for (const QString &text : {QStringLiteral("12.34"), QStringLiteral("12,34")}) {
        form.dsbAmount->setValue(0.0);
        form.dsbAmount->setFocus();
        form.dsbAmount->selectAll();
        QTest::keyClicks(form.dsbAmount, text);
        QCOMPARE(form.dsbAmount->value(), 12.34);
    }
}

void TestSrIStartPage::futureYearCannotBeChosen()
{
    Form form;
    form.sbYear->setValue(2031);
    QCOMPARE(form.sbYear->value(), QDate::currentDate().year());
}

void TestSrIStartPage::editsOfThePeriodClearTheAnswer()
{
    Form form;
    const auto fill = [&form] {
        form.askFor(QStringLiteral("123"));
        form.answerData();
        return form.showsAccount();
    };
    QVERIFY(fill());
    form.cbPeriod->toggle();
    QVERIFY(form.showsNothing());
    QVERIFY(fill());
    form.sbYear->stepDown();
    QVERIFY(form.showsNothing());
    QVERIFY(fill());
    form.cbMonth->setCurrentIndex((form.cbMonth->currentIndex() + 1) % 12);
    QVERIFY(form.showsNothing());
}

void TestSrIStartPage::phoneEditKeepsTheAnswer()
{
    Form form;
    form.askFor(QStringLiteral("123"));
    form.answerData();
    form.lePhone->setFocus();
    QTest::keyClicks(form.lePhone, QStringLiteral("8912"));
    QVERIFY(form.showsAccount());
}

void TestSrIStartPage::addressTypedAfterTheAnswerIsHandedOn()
{
    Form form;
    form.askFor(QStringLiteral("123"));
    form.answerData();
    form.lePhone->setFocus();
    QTest::keyClicks(form.lePhone, QStringLiteral("8 912 345"));
    const auto account = form.start->outputData().dynamicCast<SrPersonalAccount>();
    QVERIFY(account);
    QCOMPARE(account->clientPhoneOrEmail(), QStringLiteral("8912345"));
}

void TestSrIStartPage::codeIsNoAddress()
{
    Form form;
    form.lePhone->setText(QStringLiteral("8 912"));
    form.askFor(QStringLiteral("123"));
    form.answerData();
    form.lePhone->setText(QStringLiteral("ST00012|Sum=1"));
    const auto account = form.start->outputData().dynamicCast<SrPersonalAccount>();
    QVERIFY(account);
    QCOMPARE(account->clientPhoneOrEmail(), QStringLiteral("8912"));
}

void TestSrIStartPage::accountHoldsTheForm()
{
    Form form;
    form.lePhone->setText(QStringLiteral("+7 (912) 345-67-89"));
    form.dsbAmount->setValue(12.34); // set before, then switched off
    form.askFor(QStringLiteral(" 123 "));
    form.answerData();
    const auto account = form.start->outputData().dynamicCast<SrPersonalAccount>();
    QVERIFY(account);
    QCOMPARE(account->accountNumber(), QStringLiteral("123"));
    // Period and amount go along although both are switched off.
    QCOMPARE(account->period(), monthAndYear(QDate::currentDate()));
    QVERIFY(account->startAmount() == basix::FixNumber(100, 1234));
    QCOMPARE(account->clientPhoneOrEmail(), QStringLiteral("79123456789"));
    QCOMPARE(account->services().size(), 2);
    QCOMPARE(account->counters().size(), 2);
    QCOMPARE(account->fio(), QStringLiteral("Иванов Пётр"));
}

void TestSrIStartPage::outputIsACopy()
{
    Form form;
    form.askFor(QStringLiteral("123"));
    form.answerData();
    const auto first = form.start->outputData().dynamicCast<SrPersonalAccount>();
    first->setServices({});
    first->setAccountNumber(QStringLiteral("changed"));
    const auto second = form.start->outputData().dynamicCast<SrPersonalAccount>();
    QVERIFY(first != second);
    QCOMPARE(second->services().size(), 2);
    QCOMPARE(second->accountNumber(), QStringLiteral("123"));
}

void TestSrIStartPage::previewIsEmpty()
{
    const Form form;
    QCOMPARE(form.start->preview(), QString());
    const auto *page = dynamic_cast<const ISrIWizardPage *>(form.page);
    QVERIFY(page);
    QVERIFY(page->outputData());
    QVERIFY(!page->outputData()->isValid());
}

void TestSrIStartPage::messages_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("title");
    QTest::addColumn<int>("icon");
    QTest::newRow("error") << 0 << QStringLiteral("Ошибка Вода ФЛ") << int(QMessageBox::Critical);
    QTest::newRow("warning") << 1 << QStringLiteral("Вода ФЛ") << int(QMessageBox::Warning);
    QTest::newRow("other") << 9 << QStringLiteral("Вода ФЛ") << int(QMessageBox::Information);
}

void TestSrIStartPage::messages()
{
    QFETCH(const int, type);
    QFETCH(const QString, title);
    QFETCH(const int, icon);
    Form form;
    m_guard->answers.ok();
    form.start->showMsg(static_cast<ISrIWizardPage::MsgType>(type), QStringLiteral("Текст"));
    QCOMPARE(m_guard->answers.seen().first().title, title);
    QCOMPARE(int(m_guard->answers.seen().first().icon), icon);
}

void TestSrIStartPage::accountWithoutServicesIsIncomplete()
{
    Form form;
    form.askFor(QStringLiteral("123"));
    form.answer(BillingAnswers::data(
        form.host.lastUid(),
        BillingAnswers::individual({}, {BillingAnswers::counter(1, QStringLiteral("ХВС"), 5)})));
    QVERIFY(form.isIdle());
    QVERIFY(!form.page->isComplete());
    QVERIFY2(!form.tbSummary->toPlainText().isEmpty(), "what billing said is shown all the same");
}

QTEST_MAIN(TestSrIStartPage)
#include "tst_sristartpage.moc"
