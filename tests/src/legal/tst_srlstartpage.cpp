#include "legal/srlstartpage.h"

#include "guitestguard.h"
#include "legal/selmarlegalwizard.h"
#include "legal/srlegalaccount.h"
#include "sampleproviders.h"
#include "startpagefields.h"
#include "startpageform.h"

#include <QLabel>
#include <QTest>

#include <memory>

namespace {

class Form : public StartPageForm<SelmarLegalWizard>
{
public:
    Form()
        : StartPageForm(SampleProviders::legalEntities()),
          start(qobject_cast<SrLStartPage *>(page)),
          leContract(page->findChild<QLineEdit *>(QStringLiteral("leContract")))
    {
        open();
    }

    QString label(const char *name) const
    {
        return page->findChild<QLabel *>(QString::fromLatin1(name))->text();
    }
    bool offersAmount() const { return cbAmount->isVisible() && dsbAmount->isVisible(); }
    bool hidesAmount() const { return !cbAmount->isVisible() && !dsbAmount->isVisible(); }
    void typeDocument(const QString &number)
    {
        leContract->setFocus();
        leContract->selectAll();
        for (const QChar character : number)
            QTest::sendKeyEvent(QTest::Click, leContract, Qt::Key_unknown, QString(character),
                                Qt::NoModifier);
        if (number.isEmpty())
            QTest::keyClick(leContract, Qt::Key_Delete);
    }
    void answerData(const QVariantList &account)
    {
        answer(BillingAnswers::data(host.lastUid(), account));
    }
    QSharedPointer<SrLegalAccount> account() const
    {
        return start->outputData().dynamicCast<SrLegalAccount>();
    }

    SrLStartPage *start;
    QLineEdit *leContract;
};

} // namespace

class TestSrLStartPage : public QObject
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
    void wizardFields();

    void amountIsOfferedOnlyWithADocument();
    void clearingTheDocumentHidesTheAmount();
    void amountWithoutADocumentIsNotSent();
    void hiddenAmountIsSentAgainWithADocument();
    void amountThatIsNotTickedIsNotSent();
    void plannedAmountTakesEitherSign();
    void requestBody();
    void requestParameters_data();
    void requestParameters();

    void inputIsDisabledFromRequestToAnswer();
    void documentEditClearsTheAnswer();
    void singleDocumentIsNumberedAfterTheForm();
    void singleDocumentWithoutANumberIsIncomplete();
    void addressTypedAfterTheAnswerIsHandedOn();
    void codeIsNoAddress();
    void accountHoldsTheForm();
    void severalDocuments();
    void outputIsACopyAndPreviewEmpty();

    void code_data();
    void code();
    void codeWithADocumentShowsTheAmount();
    void anotherTextIsNoCode();

private:
    std::unique_ptr<GuiTestGuard> m_guard;
};

void TestSrLStartPage::metaObject()
{
    const QMetaObject &meta = SrLStartPage::staticMetaObject;
    QCOMPARE(meta.superClass(), &QWizardPage::staticMetaObject);
    QVERIFY(meta.indexOfSignal("sendMessage(QString,QVariant)") >= meta.methodOffset());
    for (const char *slot : {"incomingMessage(QVariantMap,QString)", "getClientData()",
                             "progress()", "cleanAnswer()", "accountChanged(QString)", "parseQr()"})
        QVERIFY2(meta.indexOfSlot(slot) >= meta.methodOffset(), slot);
    QCOMPARE(meta.indexOfSlot("onMonthChanged(int)"), -1);
    QCOMPARE(meta.indexOfSlot("onYearChanged(int)"), -1);
}

void TestSrLStartPage::formWidgets()
{
    const Form form;
    QCOMPARE(form.page->objectName(), QStringLiteral("SrLStartPage"));
    QCOMPARE(form.page->windowTitle(), QStringLiteral("WizardPage"));
    const QStringList widgets = StartPageFields::widgets(form.page);
    for (const char *expected :
         {"verticalLayout: QVBoxLayout", "gridLayout: QGridLayout", "dsbAmount: QDoubleSpinBox",
          "cbAmount: QCheckBox", "label: QLabel", "leAccount: QLineEdit", "pbGetData: QPushButton",
          "lAccount: QLabel", "lePhone: QLineEdit", "label_2: QLabel", "leContract: QLineEdit",
          "tbSummary: QTextBrowser", "progressBar: QProgressBar"})
        QVERIFY2(widgets.contains(QString::fromLatin1(expected)), expected);
    for (const char *absent : {"cbPeriod", "cbMonth", "sbYear"})
        QVERIFY2(!form.page->findChild<QWidget *>(QString::fromLatin1(absent)), absent);
}

void TestSrLStartPage::formTextsAndStates()
{
    const Form form;
    QCOMPARE(form.label("lAccount"), QStringLiteral("Номер договора"));
    QCOMPARE(form.label("label_2"), QStringLiteral("Документ №"));
    QCOMPARE(form.label("label"), QStringLiteral("Телефон или e-mail абонента"));
    QCOMPARE(form.pbGetData->text(), QStringLiteral("Запросить данные абонента"));
    QCOMPARE(form.cbAmount->text(), QStringLiteral("Планируемая сумма"));
    QVERIFY(!form.cbAmount->isChecked());
    QCOMPARE(form.dsbAmount->maximum(), 99999999.99);
    QCOMPARE(form.dsbAmount->suffix(), QStringLiteral(" р."));
    QVERIFY(!form.dsbAmount->isEnabled());
    QVERIFY(form.hidesAmount());
    QVERIFY(form.isIdle());
    QVERIFY(form.showsNothing());
    QCOMPARE(form.progressBar->value(), 0);
    QCOMPARE(form.progressBar->maximum(), 100);
    QCOMPARE(form.timer->interval(), 500);
}

void TestSrLStartPage::tabOrderFollowsTheReadingOrder()
{
    Form form;
    form.typeDocument(QStringLiteral("1"));
    form.cbAmount->setChecked(true);
    QCOMPARE(StartPageFields::tabOrder(form.page, form.leAccount).join(QLatin1Char(' ')),
             QStringLiteral("leAccount pbGetData leContract cbAmount dsbAmount lePhone tbSummary"));
}

void TestSrLStartPage::wizardFields()
{
    // leAccount holds the contract's number and leContract the document's: the names are kept as
    // they are.
    Form form;
    form.leAccount->setText(QStringLiteral("Д-5"));
    form.leContract->setText(QStringLiteral("ВК-1"));
    QCOMPARE(form.wizard.field(QStringLiteral("account")).toString(), QStringLiteral("Д-5"));
    QCOMPARE(form.wizard.field(QStringLiteral("contract")).toString(), QStringLiteral("ВК-1"));
    form.leContract->clear();
    form.ask();
    form.answerData(BillingAnswers::legal());
    QVERIFY2(form.showsAccount(), "the document's number is not mandatory");
    form.leAccount->clear();
    QVERIFY2(!form.page->isComplete(), "the contract's number is");
}

void TestSrLStartPage::amountIsOfferedOnlyWithADocument()
{
    Form form;
    QVERIFY(form.hidesAmount());
    form.typeDocument(QStringLiteral("В"));
    QVERIFY(form.offersAmount());
    form.leAccount->setFocus();
    QTest::keyClick(form.leAccount, Qt::Key_1);
    QVERIFY(form.offersAmount());
    form.typeDocument(QStringLiteral(" "));
    QVERIFY2(form.offersAmount(), "a blank is text");
}

void TestSrLStartPage::clearingTheDocumentHidesTheAmount()
{
    Form form;
    form.typeDocument(QStringLiteral("ВК-1"));
    QVERIFY(form.offersAmount());
    form.typeDocument(QString());
    QCOMPARE(form.leContract->text(), QString());
    QVERIFY(form.hidesAmount());
}

void TestSrLStartPage::amountWithoutADocumentIsNotSent()
{
    Form form;
    form.cbAmount->setChecked(true);
    form.dsbAmount->setValue(100.0);
    form.askFor(QStringLiteral("Д-5"));
    QVERIFY(!form.host.lastBody().contains(QStringLiteral("summ")));
    form.answerData(BillingAnswers::legal());
    form.leContract->setText(QStringLiteral("   "));
    form.ask();
    QVERIFY2(!form.host.lastBody().contains(QStringLiteral("summ")), "blanks are no number");
}

void TestSrLStartPage::hiddenAmountIsSentAgainWithADocument()
{
    Form form;
    form.cbAmount->setChecked(true);
    form.dsbAmount->setValue(100.0);
    form.typeDocument(QStringLiteral("ВК-1"));
    form.askFor(QStringLiteral("Д-5"));
    QCOMPARE(form.host.lastBody().value(QStringLiteral("summ")), QVariant(100.0));
}

void TestSrLStartPage::amountThatIsNotTickedIsNotSent()
{
    Form form;
    form.typeDocument(QStringLiteral("ВК-1"));
    form.cbAmount->setChecked(true);
    form.dsbAmount->setValue(100.0);
    form.cbAmount->setChecked(false);
    form.askFor(QStringLiteral("Д-5"));
    QVERIFY(!form.host.lastBody().contains(QStringLiteral("summ")));
}

void TestSrLStartPage::plannedAmountTakesEitherSign()
{
    Form form;
    form.typeDocument(QStringLiteral("ВК-1"));
    form.cbAmount->setChecked(true);
    for (const QString &text : {QStringLiteral("12.34"), QStringLiteral("12,34")}) {
        form.dsbAmount->setValue(0.0);
        form.dsbAmount->setFocus();
        form.dsbAmount->selectAll();
        QTest::keyClicks(form.dsbAmount, text);
        QCOMPARE(form.dsbAmount->value(), 12.34);
    }
}

void TestSrLStartPage::requestBody()
{
    Form form;
    form.typeDocument(QStringLiteral(" ВК-1 "));
    form.cbAmount->setChecked(true);
    form.dsbAmount->setValue(0.01);
    form.lePhone->setText(QStringLiteral("not sent"));
    form.askFor(QStringLiteral(" Д-5 "));
    QCOMPARE(form.host.sent().first().destination, QStringLiteral("/app/box_plugin_check_pay"));
    const QVariantMap body = form.host.lastBody();
    QCOMPARE(StartPageFields::types(body).join(QStringLiteral(", ")),
             QStringLiteral(
                 "checkdata: QByteArray, code: QString, currencyId: int, params: QVariantMap, "
                 "providerId: qlonglong, summ: double, uid: QString"));
    QCOMPARE(body.value(QStringLiteral("providerId")).toLongLong(), qint64(18723));
    QCOMPARE(body.value(QStringLiteral("currencyId")).toInt(), 643);
    QCOMPARE(body.value(QStringLiteral("summ")).toDouble(), 0.01);
    QCOMPARE(QString::fromUtf8(body.value(QStringLiteral("checkdata")).toByteArray()),
             QStringLiteral("{\"payParamList\":[{\"name\":\"account\",\"value\":\"Д-5\"},"
                            "{\"name\":\"numdoc\",\"value\":\"ВК-1\"}]}"));
}

void TestSrLStartPage::requestParameters_data()
{
    QTest::addColumn<QString>("account");
    QTest::addColumn<QString>("document");
    QTest::addColumn<QString>("expected");
    QTest::newRow("nothing") << ""
                             << ""
                             << "";
    QTest::newRow("contract only") << "5"
                                   << ""
                                   << "account=5";
    QTest::newRow("document only") << ""
                                   << "7"
                                   << "numdoc=7";
    QTest::newRow("both") << "5"
                          << "7"
                          << "account=5 numdoc=7";
    QTest::newRow("blanks around both") << " 5 "
                                        << "\t7 "
                                        << "account=5 numdoc=7";
    QTest::newRow("blank contract") << "  "
                                    << "7"
                                    << "account= numdoc=7";
    QTest::newRow("blank document") << "5"
                                    << "  "
                                    << "account=5";
}

void TestSrLStartPage::requestParameters()
{
    QFETCH(const QString, account);
    QFETCH(const QString, document);
    QFETCH(const QString, expected);
    Form form;
    form.leContract->setText(document);
    form.askFor(account);
    QStringList found;
    const QMap<QString, QString> parameters = form.lastParameters();
    for (auto parameter = parameters.cbegin(); parameter != parameters.cend(); ++parameter)
        found.append(parameter.key() + QLatin1Char('=') + parameter.value());
    QCOMPARE(found.join(QLatin1Char(' ')), expected);
}

void TestSrLStartPage::inputIsDisabledFromRequestToAnswer()
{
    Form form;
    form.typeDocument(QStringLiteral("ВК-1"));
    form.cbAmount->setChecked(true);
    const QList<QWidget *> inputs = {form.leAccount, form.leContract, form.lePhone,
                                     form.cbAmount,  form.pbGetData,  form.dsbAmount};
    form.askFor(QStringLiteral("5"));
    for (const QWidget *input : inputs)
        QVERIFY2(!input->isEnabled(), qPrintable(input->objectName()));
    form.answerData(BillingAnswers::legal());
    for (const QWidget *input : inputs)
        QVERIFY2(input->isEnabled(), qPrintable(input->objectName()));
    form.cbAmount->setChecked(false);
    form.ask();
    form.answerData(BillingAnswers::legal());
    QVERIFY(!form.dsbAmount->isEnabled());
}

void TestSrLStartPage::documentEditClearsTheAnswer()
{
    Form form;
    form.askFor(QStringLiteral("5"));
    form.answerData(BillingAnswers::legal());
    QVERIFY(form.showsAccount());
    form.typeDocument(QStringLiteral("1"));
    QVERIFY(form.showsNothing());
}

void TestSrLStartPage::singleDocumentIsNumberedAfterTheForm()
{
    Form form;
    form.typeDocument(QStringLiteral(" ВК-1 "));
    form.askFor(QStringLiteral("5"));
    form.answerData(BillingAnswers::legalSingle());
    QVERIFY(form.showsAccount());
    QCOMPARE(form.account()->documents().size(), 1);
    QCOMPARE(form.account()->documents().first().docNumber(), QStringLiteral("ВК-1"));
    QCOMPARE(form.account()->contract(), QStringLiteral("ВК-1"));
}

void TestSrLStartPage::singleDocumentWithoutANumberIsIncomplete()
{
    Form form;
    form.askFor(QStringLiteral("5"));
    form.answerData(BillingAnswers::legalSingle());
    QVERIFY(form.isIdle());
    QVERIFY(!form.page->isComplete());
    QVERIFY(!form.next()->isEnabled());
}

void TestSrLStartPage::addressTypedAfterTheAnswerIsHandedOn()
{
    Form form;
    form.askFor(QStringLiteral("Д-5"));
    form.answerData(BillingAnswers::legal());
    form.lePhone->setFocus();
    QTest::keyClicks(form.lePhone, QStringLiteral("8 912 345"));
    const auto account = form.start->outputData().dynamicCast<SrLegalAccount>();
    QVERIFY(account);
    QCOMPARE(account->clientPhoneOrEmail(), QStringLiteral("8912345"));
}

void TestSrLStartPage::codeIsNoAddress()
{
    Form form;
    form.lePhone->setText(QStringLiteral("8 912"));
    form.askFor(QStringLiteral("123"));
    form.answerData(BillingAnswers::legal());
    form.lePhone->setText(QStringLiteral("ST00012|Sum=1"));
    const auto account = form.start->outputData().dynamicCast<SrLegalAccount>();
    QVERIFY(account);
    QCOMPARE(account->clientPhoneOrEmail(), QStringLiteral("8912"));
}

void TestSrLStartPage::accountHoldsTheForm()
{
    Form form;
    form.lePhone->setText(QStringLiteral(" +7 (912) 345-67-89"));
    form.typeDocument(QStringLiteral("ВК-1"));
    form.dsbAmount->setValue(12.34); // switched off; handed on all the same
    form.askFor(QStringLiteral(" 5 "));
    form.answerData(BillingAnswers::legalSingle());
    const auto account = form.account();
    QVERIFY(account);
    QVERIFY(account->isLegal());
    QCOMPARE(account->accountNumber(), QStringLiteral("5"));
    QVERIFY(account->startAmount() == basix::FixNumber(100, 1234));
    QCOMPARE(account->clientPhoneOrEmail(), QStringLiteral("79123456789"));
}

void TestSrLStartPage::severalDocuments()
{
    Form form;
    form.askFor(QStringLiteral("5"));
    form.answerData(BillingAnswers::legal());
    QVERIFY(form.showsAccount());
    QStringList numbers;
    for (const SrDocument &document : form.account()->documents())
        numbers.append(document.docNumber());
    QCOMPARE(numbers, (QStringList{QStringLiteral("ВК-1"), QStringLiteral("ВК-2")}));
    QVERIFY(form.tbSummary->toPlainText().contains(QStringLiteral("ВК-2")));
}

void TestSrLStartPage::outputIsACopyAndPreviewEmpty()
{
    Form form;
    form.askFor(QStringLiteral("5"));
    form.answerData(BillingAnswers::legal());
    form.account()->setDocuments({});
    QCOMPARE(form.account()->documents().size(), 2);
    QCOMPARE(form.start->preview(), QString());
}

void TestSrLStartPage::code_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("account");
    QTest::addColumn<QString>("document");
    QTest::addColumn<QString>("amount"); // empty: left alone
    const QString old = QStringLiteral("old");
    const QString none;
    const auto row = [](const char *name, const QString &code, const QString &account,
                        const QString &document, const QString &amount) {
        QTest::newRow(name) << code << account << document << amount;
    };
    row("account and document", QStringLiteral("ST00012|PersAcc=5|BarCode=7"), QStringLiteral("5"),
        QStringLiteral("7"), none);
    row("everything", QStringLiteral("ST00012|PersAcc=5|BarCode=7|Sum=150050"), QStringLiteral("5"),
        QStringLiteral("7"), QStringLiteral("1500.50"));
    row("period is ignored", QStringLiteral("ST00012|PaymPeriod=03.2024|PersAcc=5"),
        QStringLiteral("5"), old, none);
    row("document only", QStringLiteral("ST00012|BarCode=7"), old, QStringLiteral("7"), none);
    row("document twice: the later", QStringLiteral("ST00012|BarCode=7|BarCode=8"), old,
        QStringLiteral("8"), none);
    row("name in another case", QStringLiteral("ST00012|Barcode=7|persAcc=5"), old, old, none);
    row("sum as a word", QStringLiteral("ST00012|Sum=abc"), old, old, none);
    row("negative sum", QStringLiteral("ST00012|Sum=-5"), old, old, none);
    row("sum beyond the field", QStringLiteral("ST00012|Sum=10000000000"), old, old, none);
    row("two equals signs", QStringLiteral("ST00012|BarCode=7=8|PersAcc=5"), QStringLiteral("5"),
        old, none);
    row("empty document", QStringLiteral("ST00012|BarCode=|PersAcc=5"), QStringLiteral("5"),
        QString(), none);
}

void TestSrLStartPage::code()
{
    QFETCH(const QString, code);
    QFETCH(const QString, account);
    QFETCH(const QString, document);
    QFETCH(const QString, amount);
    Form form;
    form.leAccount->setText(QStringLiteral("old"));
    form.leContract->setText(QStringLiteral("old"));
    form.start->parseQr(code);
    QCOMPARE(form.leAccount->text(), account);
    QCOMPARE(form.leContract->text(), document);
    QCOMPARE(form.cbAmount->isChecked(), !amount.isEmpty());
    QCOMPARE(QString::number(form.dsbAmount->value(), 'f', 2),
             amount.isEmpty() ? QStringLiteral("0.00") : amount);
    QCOMPARE(form.host.sent().size(), 1);
    QCOMPARE(form.lastParameters().value(QStringLiteral("account")), account);
    QCOMPARE(form.lastParameters().value(QStringLiteral("numdoc")), document);
    QCOMPARE(form.host.lastBody().contains(QStringLiteral("summ")), !amount.isEmpty());
}

void TestSrLStartPage::codeWithADocumentShowsTheAmount()
{
    Form form;
    QVERIFY(form.hidesAmount());
    form.start->parseQr(QStringLiteral("ST00012|PersAcc=5|Sum=100"));
    QVERIFY(form.hidesAmount());
    QVERIFY(!form.host.lastBody().contains(QStringLiteral("summ")));
    form.start->parseQr(QStringLiteral("ST00012|PersAcc=5|BarCode=7|Sum=100"));
    QVERIFY(form.offersAmount());
    QCOMPARE(form.host.lastBody().value(QStringLiteral("summ")), QVariant(1.0));
}

void TestSrLStartPage::anotherTextIsNoCode()
{
    Form form;
    form.leAccount->setText(QStringLiteral("old"));
    for (const QString &text :
         {QString(), QStringLiteral("100200300"), QStringLiteral("ST0002|PersAcc=5|BarCode=7")})
        form.start->parseQr(text);
    QCOMPARE(form.host.sent().size(), 0);
    QCOMPARE(form.leAccount->text(), QStringLiteral("old"));
    QVERIFY(form.leContract->text().isEmpty());
}

QTEST_MAIN(TestSrLStartPage)
#include "tst_srlstartpage.moc"
