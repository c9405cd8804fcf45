#include "individual/sripaymentpage.h"

#include "testrecords.h"
#include "wizardbench.h"

#include <molvacore/cardchargelog.h>
#include <molvacore/poshandler.h>
#include <molvacore/postestamount.h>

#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QInputDialog>
#include <QKeyEvent>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <memory>

using TestRecords::service;

namespace {

QSharedPointer<SRAccount> owing(WizardBench::Kind kind, const QString &amount)
{
    const QList<SrService> services{service(QStringLiteral("Вода"), amount, amount, amount)};
    if (kind == WizardBench::Individual)
        return TestRecords::personalAccount(services);
    return TestRecords::legalAccount(
        {TestRecords::document(QStringLiteral("Д-1"), amount, amount, services)});
}

} // namespace

/// Taking the card's part on the payment page, against the emulated terminals.
class TestSrIPaymentPageCard : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void dialog();
    void dialogOffersNoMoreThanTheFieldHolds();
    void cancelledDialogChargesNothing();
    void terminalOfTheSettings_data();
    void terminalOfTheSettings();
    void terminalTypeThatIsNoneOfThree();
    void settingsAreReadAtEveryPress();
    void terminalThatCannotBeInitialized();
    void declined_data();
    void declined();
    void declinedAndTakenWithAnotherAmount();

    void chargedPart_data();
    void chargedPart();
    void chargedPartStaysWhateverIsTyped();
    void wholeAmountByCard();
    void escapeAndCancelDoNothingBehindACharge();
    void escapeCancelsAsLongAsNothingIsCharged();
    void onlyEscapeIsKeptFromTheWizard();
    void enterInTheAmountDialogDoesNotFinish();

    void secondPressIsNoSecondCharge();
    void pressWhileTheDialogIsOpen_data();
    void pressWhileTheDialogIsOpen();
    void wizardClosedWhileTheDialogIsOpen();
    void wizardDestroyedWhileTheDialogIsOpen();
    void wizardDestroyedWhileAFailureIsShown();
    void paymentFinishedWhileTheDialogIsOpen();
    void receiptPrintedButNotSavedWhileTheDialogIsOpen();

private:
    void open(const QString &amount, int type = 1, const QString &outcome = QString(),
              WizardBench::Kind kind = WizardBench::Individual);
    QDoubleSpinBox *cash() const { return m_bench->child<QDoubleSpinBox>("dsbCash"); }
    QDoubleSpinBox *card() const { return m_bench->child<QDoubleSpinBox>("dsbCard"); }
    QPushButton *pay() const { return m_bench->child<QPushButton>("pbCard"); }
    void press() const { QTest::mouseClick(pay(), Qt::LeftButton); }
    bool enabled(QWizard::WizardButton which) const { return m_bench->button(which)->isEnabled(); }
    QString charges() const;
    bool locked() const;
    bool untouched(double amount) const;

    std::unique_ptr<WizardBench> m_bench;
    QStringList m_expected;
};

void TestSrIPaymentPageCard::init()
{
    CardChargeLog::clear();
    m_expected.clear();
}

void TestSrIPaymentPageCard::cleanup()
{
    const QString leftovers = m_bench->leftovers(m_expected);
    m_bench.reset();
    QCOMPARE(leftovers, QString());
}

void TestSrIPaymentPageCard::open(const QString &amount, int type, const QString &outcome,
                                  WizardBench::Kind kind)
{
    m_bench = std::make_unique<WizardBench>(kind, HostDatabase::Parts(), type, outcome);
    m_bench->openPayment(owing(kind, amount));
}

/// "amount@terminal" of every charge.
QString TestSrIPaymentPageCard::charges() const
{
    QStringList list;
    for (const CardCharge &charge : CardChargeLog::charges())
        list << charge.amount.toString() + QLatin1Char('@') + charge.terminal;
    return list.join(QLatin1Char(' '));
}

/// The payment can only be finished.
bool TestSrIPaymentPageCard::locked() const
{
    return !enabled(QWizard::BackButton) && !enabled(QWizard::CancelButton) && !card()->isEnabled()
        && !pay()->isEnabled() && m_bench->wizard()->isVisible() && m_bench->wizard()->isEnabled();
}

/// Nothing was charged, and the page is as if the button had not been pressed.
bool TestSrIPaymentPageCard::untouched(double amount) const
{
    return CardChargeLog::charges().isEmpty() && enabled(QWizard::BackButton)
        && enabled(QWizard::CancelButton) && enabled(QWizard::FinishButton) && card()->isEnabled()
        && cash()->isEnabled() && pay()->isEnabled() && card()->value() == 0.0
        && cash()->value() == amount && cash()->maximum() == 1000000.0;
}

void TestSrIPaymentPageCard::dialog()
{
    open(QStringLiteral("150.55"));
    m_bench->answers.run([](QDialog *shown) {
        auto *input = qobject_cast<QInputDialog *>(shown);
        QVERIFY(input);
        QCOMPARE(input->windowTitle(), QStringLiteral("Payment by card"));
        QCOMPARE(input->labelText(), QStringLiteral("Introduction"));
        QCOMPARE(input->inputMode(), QInputDialog::DoubleInput);
        QCOMPARE(input->doubleValue(), 150.55);
        QCOMPARE(input->doubleMinimum(), 0.0);
        QCOMPARE(input->doubleMaximum(), 150.55);
        QCOMPARE(input->doubleDecimals(), 2);
        input->reject();
    });
    press();
    QCOMPARE(m_bench->answers.seen().size(), 1);
}

void TestSrIPaymentPageCard::dialogOffersNoMoreThanTheFieldHolds()
{
    open(QStringLiteral("1500000.00"));
    m_bench->answers.enter(QStringLiteral("1000000.00"));
    press();
    QCOMPARE(charges(), QStringLiteral("1000000.00@00000001"));
    QCOMPARE(card()->value(), 1000000.0);
    QCOMPARE(cash()->value(), 500000.0);
    QVERIFY(enabled(QWizard::FinishButton));
}

void TestSrIPaymentPageCard::cancelledDialogChargesNothing()
{
    open(QStringLiteral("100.00"));
    m_bench->answers.escape();
    press();
    QVERIFY(untouched(100.0));
    QVERIFY(m_bench->wizard()->isVisible());
}

void TestSrIPaymentPageCard::terminalOfTheSettings_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("charged");
    for (const int kind : {WizardBench::Individual, WizardBench::Legal}) {
        const QByteArray wizard = kind == WizardBench::Individual ? "individual" : "legal";
        QTest::newRow(("1, " + wizard).constData())
            << 1 << kind << QStringLiteral("100.00@00000001");
        QTest::newRow(("2, " + wizard).constData())
            << 2 << kind << QStringLiteral("100.00@00000002");
        QTest::newRow(("3, " + wizard).constData())
            << 3 << kind << QStringLiteral("100.00@00000003");
    }
}

void TestSrIPaymentPageCard::terminalOfTheSettings()
{
    QFETCH(int, type);
    QFETCH(int, kind);
    QFETCH(QString, charged);
    open(QStringLiteral("100.00"), type, QString(), WizardBench::Kind(kind));
    m_bench->answers.enter(QStringLiteral("100.00"));
    press();
    QCOMPARE(charges(), charged);
    QVERIFY(locked());
    QVERIFY(m_bench->paymentPage()->findChildren<PosHandler *>().isEmpty());
    QVERIFY(m_bench->paymentPage()->findChildren<QInputDialog *>().isEmpty());
}

void TestSrIPaymentPageCard::terminalTypeThatIsNoneOfThree()
{
    open(QStringLiteral("100.00"), 4);
    m_bench->answers.enter(QStringLiteral("40.00")).ok();
    press();
    QVERIFY(untouched(100.0));
    const ModalAnswers::Seen box = m_bench->answers.seen().last();
    QCOMPARE(box.title, QStringLiteral("Payment by card"));
    QCOMPARE(box.text, QStringLiteral("Pos terminal initialization error"));
    QCOMPARE(box.icon, QMessageBox::Critical);
    QCOMPARE(box.buttons.size(), 1);
}

void TestSrIPaymentPageCard::settingsAreReadAtEveryPress()
{
    open(QStringLiteral("100.00"), 1);
    m_bench->database.setCardTerminal(0);
    // The terminal was taken away since the page was made: the button follows, the payment ends in
    // the message.
    m_bench->answers.run([this](QDialog *dialog) {
        QVERIFY(!pay()->isEnabled());
        dialog->reject();
    });
    press();
    QVERIFY(!pay()->isEnabled());
    QVERIFY(CardChargeLog::charges().isEmpty());
    m_bench->database.setCardTerminal(3);
    m_bench->answers.enter(QStringLiteral("100.00"));
    m_bench->paymentPage()->payByCard();
    QCOMPARE(charges(), QStringLiteral("100.00@00000003"));
}

void TestSrIPaymentPageCard::terminalThatCannotBeInitialized()
{
    open(QStringLiteral("100.00"), 2, QStringLiteral("init-failed"));
    m_bench->answers.enter(QStringLiteral("40.00")).ok();
    press();
    QVERIFY(untouched(100.0));
    QCOMPARE(m_bench->answers.seen().last().title, QStringLiteral("Payment by card"));
    QCOMPARE(m_bench->answers.seen().last().text,
             QStringLiteral("Pos terminal initialization error"));
    QCOMPARE(m_bench->answers.seen().last().icon, QMessageBox::Critical);
}

void TestSrIPaymentPageCard::declined_data()
{
    QTest::addColumn<QString>("amount");
    QTest::addColumn<QString>("text");
    for (const PosTestAmount &row : PosTestAmount::table()) {
        if (row.outcome == PosTestAmount::Outcome::LostAfterCharge
            || row.outcome == PosTestAmount::Outcome::ApproveSlowly)
            continue;
        QTest::newRow(qPrintable(QString::number(row.digits)))
            << QStringLiteral("100.%1").arg(row.digits, 2, 10, QLatin1Char('0')) << row.text;
    }
}

void TestSrIPaymentPageCard::declined()
{
    QFETCH(QString, amount);
    QFETCH(QString, text);
    open(amount);
    m_bench->answers.enter(amount).ok();
    press();
    QVERIFY(untouched(amount.toDouble()));
    QCOMPARE(m_bench->answers.seen().last().title, QStringLiteral("Payment by card"));
    QVERIFY(m_bench->answers.seen().last().text.startsWith(text));
    QCOMPARE(m_bench->answers.seen().last().icon, QMessageBox::Critical);
}

void TestSrIPaymentPageCard::declinedAndTakenWithAnotherAmount()
{
    open(QStringLiteral("100.51"));
    m_bench->answers.enter(QStringLiteral("100.51")).ok().enter(QStringLiteral("70.00"));
    press();
    press();
    QCOMPARE(charges(), QStringLiteral("70.00@00000001"));
    QCOMPARE(cash()->value(), 30.51);
    QVERIFY(locked());
    QVERIFY(enabled(QWizard::FinishButton));
}

void TestSrIPaymentPageCard::chargedPart_data()
{
    QTest::addColumn<QString>("amount");
    QTest::addColumn<QString>("entered");
    QTest::addColumn<double>("card");
    QTest::addColumn<double>("cash");
    QTest::addColumn<int>("kind");
    const int individual = WizardBench::Individual;
    QTest::newRow("part") << QStringLiteral("100.00") << QStringLiteral("40.00") << 40.0 << 60.0
                          << individual;
    // Its box "by proxy" stands between the button and the cash.
    QTest::newRow("part, legal entity") << QStringLiteral("100.00") << QStringLiteral("40.00")
                                        << 40.0 << 60.0 << int(WizardBench::Legal);
    QTest::newRow("one hundredth")
        << QStringLiteral("100.00") << QStringLiteral("0.01") << 0.01 << 99.99 << individual;
    QTest::newRow("all but one hundredth")
        << QStringLiteral("100.00") << QStringLiteral("99.99") << 99.99 << 0.01 << individual;
    QTest::newRow("sums that no double holds")
        << QStringLiteral("0.30") << QStringLiteral("0.10") << 0.1 << 0.2 << individual;
    QTest::newRow("typed with a comma")
        << QStringLiteral("100.00") << QStringLiteral("40,50") << 40.5 << 59.5 << individual;
}

void TestSrIPaymentPageCard::chargedPart()
{
    QFETCH(QString, amount);
    QFETCH(QString, entered);
    QFETCH(double, card);
    QFETCH(double, cash);
    QFETCH(int, kind);
    open(amount, 1, QString(), WizardBench::Kind(kind));
    m_bench->answers.enter(entered);
    press();
    QCOMPARE(charges(), QString::number(card, 'f', 2) + QStringLiteral("@00000001"));
    QCOMPARE(this->card()->value(), card);
    QCOMPARE(this->cash()->value(), cash);
    QCOMPARE(this->cash()->maximum(), cash);
    QVERIFY(this->cash()->isEnabled());
    QCOMPARE(m_bench->wizard()->focusWidget(), this->cash());
    QVERIFY(locked());
    QVERIFY(enabled(QWizard::FinishButton));
}

void TestSrIPaymentPageCard::chargedPartStaysWhateverIsTyped()
{
    open(QStringLiteral("100.00"));
    m_bench->answers.enter(QStringLiteral("40.00"));
    press();
    QVERIFY(locked());
    for (const char *typed : {"1", "60.00", "59.99", "0", "33.33", "60.00"}) {
        cash()->setFocus();
        cash()->selectAll();
        for (const char key : QByteArray(typed)) {
            QTest::keyClick(cash(), key);
            QVERIFY2(locked(), typed);
        }
        QCOMPARE(cash()->value(), QByteArray(typed).toDouble());
        QCOMPARE(enabled(QWizard::FinishButton), qstrcmp(typed, "60.00") == 0);
        QTest::keyClick(cash(), Qt::Key_Tab);
        QVERIFY2(locked(), typed);
    }
    emit m_bench->paymentPage()->completeChanged();
    QVERIFY(locked());
    QCOMPARE(card()->value(), 40.0);
}

void TestSrIPaymentPageCard::wholeAmountByCard()
{
    open(QStringLiteral("100.00"));
    // What is offered is taken as it stands.
    m_bench->answers.run([](QDialog *dialog) { QTest::keyClick(dialog, Qt::Key_Return); });
    press();
    QCOMPARE(charges(), QStringLiteral("100.00@00000001"));
    QCOMPARE(cash()->value(), 0.0);
    QVERIFY(!cash()->isEnabled());
    QVERIFY(locked());
    QVERIFY(enabled(QWizard::FinishButton));
    QCOMPARE(m_bench->wizard()->focusWidget(), m_bench->button(QWizard::FinishButton));
}

void TestSrIPaymentPageCard::escapeAndCancelDoNothingBehindACharge()
{
    open(QStringLiteral("100.00"));
    m_bench->answers.enter(QStringLiteral("40.00"));
    press();
    for (QWidget *target :
         {static_cast<QWidget *>(cash()), static_cast<QWidget *>(m_bench->wizard()),
          static_cast<QWidget *>(m_bench->button(QWizard::FinishButton))}) {
        QTest::keyClick(target, Qt::Key_Escape);
        QVERIFY(locked());
    }
    QTest::mouseClick(m_bench->button(QWizard::CancelButton), Qt::LeftButton);
    QTest::mouseClick(m_bench->button(QWizard::BackButton), Qt::LeftButton);
    QTest::keyClick(m_bench->wizard(), Qt::Key_Left, Qt::AltModifier);
    QTest::keyClick(m_bench->wizard(), Qt::Key_Backspace);
    QVERIFY(locked());
    QCOMPARE(m_bench->wizard()->currentPage(), m_bench->paymentPage());
}

void TestSrIPaymentPageCard::escapeCancelsAsLongAsNothingIsCharged()
{
    open(QStringLiteral("100.00"));
    QTest::keyClick(cash(), Qt::Key_Escape);
    QVERIFY(!m_bench->wizard()->isVisible());
}

void TestSrIPaymentPageCard::onlyEscapeIsKeptFromTheWizard()
{
    open(QStringLiteral("100.00"));
    const auto kept = [this](QEvent &&event) {
        return m_bench->paymentPage()->eventFilter(m_bench->wizard(), &event);
    };
    QVERIFY(kept(QKeyEvent(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier)));
    QVERIFY(!kept(QKeyEvent(QEvent::KeyRelease, Qt::Key_Escape, Qt::NoModifier)));
    QVERIFY(!kept(QKeyEvent(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier)));
    QVERIFY(!kept(QEvent(QEvent::Show)));
}

void TestSrIPaymentPageCard::enterInTheAmountDialogDoesNotFinish()
{
    open(QStringLiteral("100.00"));
    m_bench->answers.enter(QStringLiteral("100.00"));
    pay()->setFocus();
    QTest::keyClick(pay(), Qt::Key_Space);
    QCoreApplication::processEvents();
    QCOMPARE(charges(), QStringLiteral("100.00@00000001"));
    QVERIFY(m_bench->fiscalRegister->receipts.isEmpty());
    QVERIFY(m_bench->wizard()->isVisible());
}

void TestSrIPaymentPageCard::secondPressIsNoSecondCharge()
{
    open(QStringLiteral("100.00"));
    m_bench->answers.enter(QStringLiteral("40.00"));
    press();
    press();
    QTest::keyClick(pay(), Qt::Key_Space);
    pay()->click();
    QCOMPARE(charges(), QStringLiteral("40.00@00000001"));
    QCOMPARE(m_bench->answers.seen().size(), 1);
}

void TestSrIPaymentPageCard::pressWhileTheDialogIsOpen_data()
{
    QTest::addColumn<bool>("queuedBehindTheDialog");
    QTest::newRow("while the dialog runs") << false;
    QTest::newRow("in the events that are processed behind it") << true;
}

void TestSrIPaymentPageCard::pressWhileTheDialogIsOpen()
{
    QFETCH(bool, queuedBehindTheDialog);
    open(QStringLiteral("100.00"));
    m_bench->answers.run([this, queuedBehindTheDialog](QDialog *dialog) {
        auto *input = qobject_cast<QInputDialog *>(dialog);
        input->setDoubleValue(40.0);
        if (queuedBehindTheDialog)
            input->accept();
        QTimer::singleShot(0, pay(), [this] { emit pay()->released(); });
        QMetaObject::invokeMethod(m_bench->paymentPage(), "payByCard", Qt::QueuedConnection);
        if (!queuedBehindTheDialog) {
            m_bench->paymentPage()->payByCard();
            input->accept();
        }
    });
    press();
    QCOMPARE(charges(), QStringLiteral("40.00@00000001"));
    QCOMPARE(m_bench->answers.seen().size(), 1);
    QVERIFY(locked());
}

void TestSrIPaymentPageCard::wizardClosedWhileTheDialogIsOpen()
{
    open(QStringLiteral("100.00"));
    m_bench->answers.run([this](QDialog *dialog) {
        m_bench->wizard()->reject();
        dialog->accept();
    });
    press();
    QVERIFY(CardChargeLog::charges().isEmpty());
    QVERIFY(!m_bench->wizard()->isVisible());
}

void TestSrIPaymentPageCard::wizardDestroyedWhileTheDialogIsOpen()
{
    open(QStringLiteral("100.00"));
    m_bench->answers.run([this](QDialog *) { m_bench->destroyWizard(); });
    m_bench->paymentPage()->payByCard();
    QVERIFY(CardChargeLog::charges().isEmpty());
}

void TestSrIPaymentPageCard::wizardDestroyedWhileAFailureIsShown()
{
    open(QStringLiteral("100.05"));
    m_bench->answers.enter(QStringLiteral("100.05")).run([this](QDialog *) {
        m_bench->destroyWizard();
    });
    m_bench->paymentPage()->payByCard();
    QVERIFY(CardChargeLog::charges().isEmpty());
}

void TestSrIPaymentPageCard::paymentFinishedWhileTheDialogIsOpen()
{
    m_expected << QStringLiteral("SrIPaymentPage::print");
    open(QStringLiteral("100.00"));
    m_bench->answers
        .run([this](QDialog *dialog) {
            // Finish was pressed in the moment before the dialog closed.
            QTimer::singleShot(0, m_bench->wizard(), [this] { m_bench->wizard()->accept(); });
            dialog->accept();
        })
        .ok();
    press();
    QCOMPARE(m_bench->fiscalRegister->receipts.size(), 1);
    QCOMPARE(m_bench->pays->packs.size(), 1);
    QVERIFY(CardChargeLog::charges().isEmpty());
}

void TestSrIPaymentPageCard::receiptPrintedButNotSavedWhileTheDialogIsOpen()
{
    m_expected << QStringLiteral("SrIPaymentPage::print");
    open(QStringLiteral("100.00"));
    m_bench->pays->saves = false;
    m_bench->answers
        .run([this](QDialog *dialog) {
            QTimer::singleShot(0, m_bench->wizard(), [this] { m_bench->wizard()->accept(); });
            dialog->accept();
        })
        .ok();
    press();
    // The receipt says cash: a card charged now would be money that no receipt knows of.
    QCOMPARE(m_bench->fiscalRegister->receipts.size(), 1);
    QVERIFY(CardChargeLog::charges().isEmpty());
}

QTEST_MAIN(TestSrIPaymentPageCard)
#include "tst_sripaymentpagecard.moc"
