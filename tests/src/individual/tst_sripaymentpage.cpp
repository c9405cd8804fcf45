#include "individual/sripaymentpage.h"

#include "testrecords.h"
#include "wizardbench.h"

#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTest>
#include <QTextBrowser>

#include <memory>

using TestRecords::service;

namespace {

/// An account with `amount` to pay.
QSharedPointer<SrPersonalAccount> owing(const QString &amount)
{
    return TestRecords::personalAccount({service(QStringLiteral("Вода"), amount, amount, amount)});
}

} // namespace

/// The page itself: its form, the amounts and how they follow each other.
class TestSrIPaymentPage : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void metaObject();
    void form();
    void tabOrder();
    void titles();
    void cardButtonFollowsTheSettings_data();
    void cardButtonFollowsTheSettings();

    void showsTheAccount_data();
    void showsTheAccount();
    void withoutAnAccount();
    void handsOnTheAccountItHolds();
    void everyEntryStartsWithCash();

    void complete_data();
    void complete();
    void cashChangesNothingElse();
    void typedAmount_data();
    void typedAmount();
    void cardTakesFromCash_data();
    void cardTakesFromCash();
    void cashNeverFallsBelowZero();
    void everyCardPartOfAnAmountIsComplete();
    void amountBeyondTheFields();
    void sumChangedByNobodyFollowsTheCard();
    void everyChangeIsAnnounced();

    void messages_data();
    void messages();

private:
    void useBench(WizardBench::Kind kind);
    QDoubleSpinBox *cash() const { return m_bench->child<QDoubleSpinBox>("dsbCash"); }
    QDoubleSpinBox *card() const { return m_bench->child<QDoubleSpinBox>("dsbCard"); }
    bool canFinish() const { return m_bench->button(QWizard::FinishButton)->isEnabled(); }

    std::unique_ptr<WizardBench> m_bench;
};

void TestSrIPaymentPage::useBench(WizardBench::Kind kind)
{
    m_bench.reset();
    m_bench = std::make_unique<WizardBench>(kind);
}

void TestSrIPaymentPage::init()
{
    useBench(WizardBench::Individual);
}

void TestSrIPaymentPage::cleanup()
{
    const QString leftovers = m_bench->leftovers();
    m_bench.reset();
    QCOMPARE(leftovers, QString());
}

void TestSrIPaymentPage::metaObject()
{
    const QMetaObject &meta = SrIPaymentPage::staticMetaObject;
    QCOMPARE(meta.className(), "SrIPaymentPage");
    QCOMPARE(meta.superClass(), &QWizardPage::staticMetaObject);
    QCOMPARE(meta.propertyCount(), meta.propertyOffset());
    QStringList methods;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        const QMetaMethod method = meta.method(i);
        methods << (method.methodType() == QMetaMethod::Signal ? QStringLiteral("signal ")
                                                               : QStringLiteral("slot "))
                + QString::fromLatin1(method.methodSignature());
    }
    QCOMPARE(
        methods,
        QStringList({QStringLiteral("signal sendMessage(QString,QVariant)"),
                     QStringLiteral("slot sumChanged()"), QStringLiteral("slot payByCard()")}));
    QVERIFY(dynamic_cast<ISrIWizardPage *>(m_bench->wizard()->page(2)));
}

void TestSrIPaymentPage::form()
{
    const SrIPaymentPage *page = m_bench->paymentPage();
    QCOMPARE(page->objectName(), QStringLiteral("SrIPaymentPage"));
    QCOMPARE(page->windowTitle(), QStringLiteral("WizardPage"));
    const QStringList names{QStringLiteral("verticalLayout_2"),
                            QStringLiteral("groupBox"),
                            QStringLiteral("verticalLayout"),
                            QStringLiteral("tbSummary"),
                            QStringLiteral("groupBox_2"),
                            QStringLiteral("horizontalLayout_4"),
                            QStringLiteral("horizontalLayout"),
                            QStringLiteral("pbCard"),
                            QStringLiteral("dsbCard"),
                            QStringLiteral("cbAttornayDoc"),
                            QStringLiteral("horizontalLayout_2"),
                            QStringLiteral("label"),
                            QStringLiteral("dsbCash"),
                            QStringLiteral("horizontalLayout_3")};
    for (const QString &name : names)
        QVERIFY2(page->findChild<QObject *>(name), qPrintable(name));
    QCOMPARE(page->findChild<QGroupBox *>(QStringLiteral("groupBox"))->title(),
             QStringLiteral("Суммарная информация"));
    QCOMPARE(page->findChild<QGroupBox *>(QStringLiteral("groupBox_2"))->title(),
             QStringLiteral("Оплаты"));
    QVERIFY(page->findChild<QTextBrowser *>(QStringLiteral("tbSummary")));
    QCOMPARE(page->findChild<QPushButton *>(QStringLiteral("pbCard"))->text(),
             QStringLiteral("Оплата картой"));
    const auto *attorney = page->findChild<QCheckBox *>(QStringLiteral("cbAttornayDoc"));
    QCOMPARE(attorney->text(), QStringLiteral("По доверенности"));
    QVERIFY(!attorney->isChecked());
    QCOMPARE(page->findChild<QLabel *>(QStringLiteral("label"))->text(),
             QStringLiteral("Наличными"));
    for (const char *name : {"dsbCard", "dsbCash"}) {
        const auto *field = page->findChild<QDoubleSpinBox *>(QLatin1String(name));
        QCOMPARE(field->minimum(), 0.0);
        QCOMPARE(field->maximum(), 1000000.0);
        QCOMPARE(field->decimals(), 2);
        QCOMPARE(field->suffix(), QStringLiteral(", р."));
        QCOMPARE(field->value(), 0.0);
        QVERIFY(field->isEnabled());
    }
}

void TestSrIPaymentPage::tabOrder()
{
    useBench(WizardBench::Legal);
    m_bench->openPayment(TestRecords::legalAccount(
        {TestRecords::document(QStringLiteral("1"), QStringLiteral("1"), QStringLiteral("1"),
                               {service(QStringLiteral("а"), QStringLiteral("1"),
                                        QStringLiteral("1"), QStringLiteral("1"))})}));
    m_bench->child<QPushButton>("pbCard")->setEnabled(true);
    m_bench->child<QPushButton>("pbCard")->setFocus();
    for (const char *name : {"pbCard", "dsbCard", "cbAttornayDoc", "dsbCash", "tbSummary"}) {
        QVERIFY(m_bench->wizard()->focusWidget());
        QCOMPARE(m_bench->wizard()->focusWidget()->objectName(), QLatin1String(name));
        QTest::keyClick(m_bench->wizard()->focusWidget(), Qt::Key_Tab);
    }
}

void TestSrIPaymentPage::titles()
{
    QCOMPARE(m_bench->paymentPage()->title(), QStringLiteral("Вода ФЛ"));
    QCOMPARE(m_bench->paymentPage()->subTitle(), QStringLiteral("Оплата услуг"));
}

void TestSrIPaymentPage::cardButtonFollowsTheSettings_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("enabled");
    QTest::newRow("no terminal") << 0 << false;
    QTest::newRow("1") << 1 << true;
    QTest::newRow("2") << 2 << true;
    QTest::newRow("3") << 3 << true;
    QTest::newRow("unknown type is still a terminal") << 9 << true;
}

void TestSrIPaymentPage::cardButtonFollowsTheSettings()
{
    QFETCH(int, type);
    QFETCH(bool, enabled);
    m_bench->database.setCardTerminal(type);
    const SrIPaymentPage page(m_bench->wizard());
    QCOMPARE(page.findChild<QPushButton *>(QStringLiteral("pbCard"))->isEnabled(), enabled);
}

void TestSrIPaymentPage::showsTheAccount_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<bool>("attorney");
    QTest::newRow("individual") << int(WizardBench::Individual) << false;
    QTest::newRow("legal entity") << int(WizardBench::Legal) << true;
}

void TestSrIPaymentPage::showsTheAccount()
{
    QFETCH(int, kind);
    QFETCH(bool, attorney);
    useBench(WizardBench::Kind(kind));
    QSharedPointer<SRAccount> account = owing(QStringLiteral("150.50"));
    if (kind == WizardBench::Legal)
        account = TestRecords::legalAccount(
            {TestRecords::document(QStringLiteral("Д-7"), QStringLiteral("1"), QStringLiteral("1"),
                                   {service(QStringLiteral("Стоки"), QStringLiteral("1"),
                                            QStringLiteral("1"), QStringLiteral("150.50"))})});
    m_bench->openPayment(account);
    QTextBrowser expected;
    expected.setHtml(account->toSummaryHtml());
    QCOMPARE(m_bench->child<QTextBrowser>("tbSummary")->toPlainText(), expected.toPlainText());
    QVERIFY(expected.toPlainText().contains(QStringLiteral("150.50")));
    QCOMPARE(cash()->value(), 150.5);
    QCOMPARE(card()->value(), 0.0);
    QCOMPARE(m_bench->child<QCheckBox>("cbAttornayDoc")->isVisible(), attorney);
    QVERIFY(canFinish());
}

void TestSrIPaymentPage::withoutAnAccount()
{
    m_bench->openPayment({});
    QVERIFY(!m_bench->paymentPage()->isComplete());
    QVERIFY(!canFinish());
    QVERIFY(m_bench->paymentPage()->outputData().isNull());
    cash()->setValue(5.0);
    card()->setValue(3.0);
    QCOMPARE(cash()->value(), 5.0);
    QVERIFY(!m_bench->paymentPage()->isComplete());
    m_bench->paymentPage()->payByCard();
    QVERIFY(m_bench->answers.seen().isEmpty());
}

void TestSrIPaymentPage::handsOnTheAccountItHolds()
{
    const auto account = owing(QStringLiteral("10.00"));
    QVERIFY(m_bench->paymentPage()->outputData().isNull());
    m_bench->openPayment(account);
    QCOMPARE(m_bench->paymentPage()->outputData(), account.staticCast<SRAccount>());
    QCOMPARE(m_bench->paymentPage()->preview(), QString());
}

void TestSrIPaymentPage::everyEntryStartsWithCash()
{
    m_bench->openPayment(owing(QStringLiteral("100.00")));
    card()->setValue(30.0);
    QCOMPARE(cash()->value(), 70.0);
    m_bench->wizard()->back();
    m_bench->openPayment(owing(QStringLiteral("55.00")));
    QCOMPARE(card()->value(), 0.0);
    QCOMPARE(cash()->value(), 55.0);
    QVERIFY(canFinish());
}

void TestSrIPaymentPage::complete_data()
{
    QTest::addColumn<QString>("amount");
    QTest::addColumn<double>("card");
    QTest::addColumn<double>("cash");
    QTest::addColumn<bool>("complete");
    QTest::newRow("all in cash") << QStringLiteral("100.00") << 0.0 << 100.0 << true;
    QTest::newRow("a hundredth short") << QStringLiteral("100.00") << 0.0 << 99.99 << false;
    QTest::newRow("a hundredth too much") << QStringLiteral("100.00") << 0.0 << 100.01 << false;
    QTest::newRow("nothing taken") << QStringLiteral("100.00") << 0.0 << 0.0 << false;
    QTest::newRow("cash and card") << QStringLiteral("100.00") << 60.0 << 40.0 << true;
    QTest::newRow("cash and card, short") << QStringLiteral("100.00") << 60.0 << 39.99 << false;
    QTest::newRow("all by card") << QStringLiteral("100.00") << 100.0 << 0.0 << true;
    QTest::newRow("more than all by card") << QStringLiteral("100.00") << 100.01 << 0.0 << false;
    QTest::newRow("one hundredth by card") << QStringLiteral("100.00") << 0.01 << 99.99 << true;
    QTest::newRow("sum that no double holds") << QStringLiteral("0.30") << 0.1 << 0.2 << true;
    QTest::newRow("large sum") << QStringLiteral("999999.99") << 333333.33 << 666666.66 << true;
    QTest::newRow("nothing to pay") << QStringLiteral("0.00") << 0.0 << 0.0 << true;
    QTest::newRow("overpaid") << QStringLiteral("-5.00") << 0.0 << 0.0 << false;
}

void TestSrIPaymentPage::complete()
{
    QFETCH(QString, amount);
    QFETCH(double, card);
    QFETCH(double, cash);
    QFETCH(bool, complete);
    m_bench->openPayment(owing(amount));
    this->card()->setValue(card);
    this->cash()->setValue(cash);
    QCOMPARE(this->card()->value(), card);
    QCOMPARE(this->cash()->value(), cash);
    QCOMPARE(m_bench->paymentPage()->isComplete(), complete);
    QCOMPARE(canFinish(), complete);
}

void TestSrIPaymentPage::cashChangesNothingElse()
{
    m_bench->openPayment(owing(QStringLiteral("100.00")));
    card()->setValue(30.0);
    cash()->setFocus();
    cash()->selectAll();
    QTest::keyClicks(cash(), QStringLiteral("12.34"));
    QCOMPARE(cash()->value(), 12.34);
    QCOMPARE(card()->value(), 30.0);
    QVERIFY(!canFinish());
}

void TestSrIPaymentPage::typedAmount_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("expected");
    for (const char *field : {"dsbCash", "dsbCard"}) {
        QTest::addRow("%s, point", field)
            << QString::fromLatin1(field) << QStringLiteral("12.34") << 12.34;
        QTest::addRow("%s, comma", field)
            << QString::fromLatin1(field) << QStringLiteral("12,34") << 12.34;
        QTest::addRow("%s, less than a ruble", field)
            << QString::fromLatin1(field) << QStringLiteral("0.55") << 0.55;
    }
}

void TestSrIPaymentPage::typedAmount()
{
    QFETCH(const QString, field);
    QFETCH(const QString, text);
    QFETCH(const double, expected);
    m_bench->openPayment(owing(QStringLiteral("100.00")));
    auto *amount = m_bench->paymentPage()->findChild<QDoubleSpinBox *>(field);
    amount->setFocus();
    amount->selectAll();
    QTest::keyClicks(amount, text);
    QCOMPARE(amount->value(), expected);
}

void TestSrIPaymentPage::cardTakesFromCash_data()
{
    QTest::addColumn<double>("card");
    QTest::addColumn<double>("cash");
    QTest::newRow("nothing") << 0.0 << 100.0;
    QTest::newRow("part") << 30.55 << 69.45;
    QTest::newRow("one hundredth") << 0.01 << 99.99;
    QTest::newRow("all but one hundredth") << 99.99 << 0.01;
    QTest::newRow("all") << 100.0 << 0.0;
    QTest::newRow("more than all") << 250.0 << 0.0;
    QTest::newRow("the most the field holds") << 1000000.0 << 0.0;
}

void TestSrIPaymentPage::cardTakesFromCash()
{
    QFETCH(double, card);
    QFETCH(double, cash);
    m_bench->openPayment(owing(QStringLiteral("100.00")));
    this->card()->setFocus();
    this->card()->selectAll();
    QTest::keyClicks(this->card(), QString::number(card, 'f', 2));
    QCOMPARE(this->card()->value(), card);
    QCOMPARE(this->cash()->value(), cash);
    QCOMPARE(canFinish(), card <= 100.0);
}

void TestSrIPaymentPage::cashNeverFallsBelowZero()
{
    m_bench->openPayment(owing(QStringLiteral("100.00")));
    // Even without the field's own lower end.
    cash()->setMinimum(-1000.0);
    card()->setValue(150.0);
    QCOMPARE(cash()->value(), 0.0);
    cash()->setValue(-3.0);
    QCOMPARE(cash()->value(), 0.0);
    QVERIFY(!canFinish());
}

void TestSrIPaymentPage::everyCardPartOfAnAmountIsComplete()
{
    QRandomGenerator random(643);
    for (int round = 0; round < 20; ++round) {
        const basix::FixNumber amount(100, random.bounded(round % 2 ? 100000000 : 1000));
        m_bench->openPayment(owing(amount.toString()));
        for (int i = 0; i < 5; ++i) {
            const basix::FixNumber part(100, random.bounded(static_cast<int>(amount.value()) + 1));
            card()->setValue(part.toDouble());
            QVERIFY2(canFinish(),
                     qPrintable(amount.toString() + QLatin1Char(' ') + part.toString()));
            QCOMPARE(basix::FixNumber(100, cash()->value()) + part, amount);
        }
        m_bench->wizard()->back();
    }
}

void TestSrIPaymentPage::amountBeyondTheFields()
{
    m_bench->openPayment(owing(QStringLiteral("1500000.00")));
    QCOMPARE(cash()->value(), 1000000.0);
    QVERIFY(!canFinish());
    card()->setValue(500000.0);
    QVERIFY(canFinish());
}

void TestSrIPaymentPage::sumChangedByNobodyFollowsTheCard()
{
    m_bench->openPayment(owing(QStringLiteral("100.00")));
    cash()->setValue(1.0);
    m_bench->paymentPage()->sumChanged();
    QCOMPARE(cash()->value(), 100.0);
}

void TestSrIPaymentPage::everyChangeIsAnnounced()
{
    m_bench->openPayment(owing(QStringLiteral("100.00")));
    QSignalSpy completeChanged(m_bench->paymentPage(), &QWizardPage::completeChanged);
    cash()->setValue(1.0);
    QCOMPARE(completeChanged.count(), 1);
    card()->setValue(5.0);
    QVERIFY(completeChanged.count() > 1);
}

void TestSrIPaymentPage::messages_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("title");
    QTest::addColumn<int>("icon");
    const int individual = WizardBench::Individual;
    const int legal = WizardBench::Legal;
    QTest::newRow("error, individual")
        << individual << 0 << QStringLiteral("Ошибка Вода ФЛ") << int(QMessageBox::Critical);
    QTest::newRow("error, legal") << legal << 0 << QStringLiteral("Ошибка Вода ЮЛ")
                                  << int(QMessageBox::Critical);
    QTest::newRow("warning") << individual << 1 << QStringLiteral("Вода ФЛ")
                             << int(QMessageBox::Warning);
    QTest::newRow("information") << legal << 2 << QStringLiteral("Вода ЮЛ")
                                 << int(QMessageBox::Information);
    QTest::newRow("any other type")
        << individual << 7 << QStringLiteral("Вода ФЛ") << int(QMessageBox::Information);
}

void TestSrIPaymentPage::messages()
{
    QFETCH(int, kind);
    QFETCH(int, type);
    QFETCH(QString, title);
    QFETCH(int, icon);
    useBench(WizardBench::Kind(kind));
    m_bench->answers.ok();
    m_bench->paymentPage()->showMsg(static_cast<ISrIWizardPage::MsgType>(type),
                                    QStringLiteral("<b>1 < 2</b>"));
    QCOMPARE(m_bench->answers.seen().size(), 1);
    const ModalAnswers::Seen box = m_bench->answers.seen().first();
    QCOMPARE(box.title, title);
    QCOMPARE(box.text, QStringLiteral("<b>1 < 2</b>"));
    QCOMPARE(int(box.icon), icon);
    QCOMPARE(box.buttons.size(), 1);
}

QTEST_MAIN(TestSrIPaymentPage)
#include "tst_sripaymentpage.moc"
