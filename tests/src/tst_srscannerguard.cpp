#include "srscannerguard.h"

#include "guitestguard.h"
#include "keyboardscanner.h"

#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTextBrowser>
#include <QVBoxLayout>
#include <QWizard>
#include <QWizardPage>

#include <memory>

class TestSrScannerGuard : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void enterInAFieldReachesNoButton_data();
    void enterInAFieldReachesNoButton();
    void fieldStillFinishesItsEditingByEnter();
    void burstOnAButtonPressesNothing_data();
    void burstOnAButtonPressesNothing();
    void personPressesAButton_data();
    void personPressesAButton();
    void personPressesAfterALetter();
    void everyBlankOfALongScanIsHeldBack();
    void keysWithoutACharacter();
    void tabBehindAScanGoesOn();
    void mouseIsNotGuarded();
    void escapeAndTabPassThrough();
    void everyPageIsGuarded();

private:
    std::unique_ptr<GuiTestGuard> m_guard;
    std::unique_ptr<QWizard> m_wizard;
    QLineEdit *m_edit = nullptr;
    QPushButton *m_button = nullptr;
    QCheckBox *m_check = nullptr;
};

void TestSrScannerGuard::init()
{
    m_guard = std::make_unique<GuiTestGuard>();
    m_wizard = std::make_unique<QWizard>();
    for (int id = 0; id < 2; ++id) {
        auto *page = new QWizardPage;
        auto *layout = new QVBoxLayout(page);
        auto *edit = new QLineEdit;
        edit->setObjectName(QStringLiteral("edit"));
        auto *button = new QPushButton(QStringLiteral("Ask"));
        button->setObjectName(QStringLiteral("button"));
        auto *check = new QCheckBox(QStringLiteral("Amount"));
        check->setObjectName(QStringLiteral("check"));
        auto *amount = new QDoubleSpinBox;
        amount->setObjectName(QStringLiteral("amount"));
        auto *text = new QTextBrowser;
        text->setObjectName(QStringLiteral("text"));
        for (QWidget *widget : {static_cast<QWidget *>(edit), static_cast<QWidget *>(button),
                                static_cast<QWidget *>(check), static_cast<QWidget *>(amount),
                                static_cast<QWidget *>(text)})
            layout->addWidget(widget);
        m_wizard->setPage(id, page);
    }
    new SrScannerGuard(m_wizard.get());
    m_edit = m_wizard->page(0)->findChild<QLineEdit *>(QStringLiteral("edit"));
    m_button = m_wizard->page(0)->findChild<QPushButton *>(QStringLiteral("button"));
    m_check = m_wizard->page(0)->findChild<QCheckBox *>(QStringLiteral("check"));
    m_wizard->show();
    QVERIFY(QTest::qWaitForWindowActive(m_wizard.get()));
}

void TestSrScannerGuard::cleanup()
{
    m_wizard.reset();
    const QStringList problems = m_guard->problems();
    m_guard.reset();
    QCOMPARE(problems, QStringList());
}

void TestSrScannerGuard::enterInAFieldReachesNoButton_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<int>("key");
    for (const char *field : {"edit", "amount", "text"}) {
        QTest::addRow("%s, Enter", field) << QString::fromLatin1(field) << int(Qt::Key_Return);
        QTest::addRow("%s, Enter of the number block", field)
            << QString::fromLatin1(field) << int(Qt::Key_Enter);
    }
}

void TestSrScannerGuard::enterInAFieldReachesNoButton()
{
    QFETCH(const QString, field);
    QFETCH(const int, key);
    QSignalSpy pressed(m_button, &QPushButton::clicked);
    auto *widget = m_wizard->page(0)->findChild<QWidget *>(field);
    widget->setFocus();
    for (int count = 0; count < 3; ++count)
        KeyboardScanner::press(static_cast<Qt::Key>(key));
    QCOMPARE(m_wizard->currentId(), 0);
    QVERIFY(m_wizard->isVisible());
    QVERIFY(pressed.isEmpty());
}

void TestSrScannerGuard::fieldStillFinishesItsEditingByEnter()
{
    QSignalSpy finished(m_edit, &QLineEdit::editingFinished);
    QSignalSpy returned(m_edit, &QLineEdit::returnPressed);
    m_edit->setFocus();
    KeyboardScanner::scan(QStringLiteral("abc"));
    QCOMPARE(m_edit->text(), QStringLiteral("abc"));
    QCOMPARE(finished.size(), 1);
    QCOMPARE(returned.size(), 1);
}

void TestSrScannerGuard::burstOnAButtonPressesNothing_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QVector<int>>("suffix");
    const QVector<int> enter = {Qt::Key_Return};
    const QVector<int> twoEnters = {Qt::Key_Return, Qt::Key_Return};
    const QVector<int> none;
    const QString words = QStringLiteral("ST00012|Name=A B C|Sum=1");
    QTest::newRow("push button, Enter") << "button" << words << enter;
    QTest::newRow("push button, two Enters") << "button" << words << twoEnters;
    QTest::newRow("push button, no suffix") << "button" << words << none;
    QTest::newRow("push button, two characters and a blank")
        << "button" << QStringLiteral("ab ") << none;
    QTest::newRow("push button, blanks in a row") << "button" << QStringLiteral("a     b") << enter;
    QTest::newRow("push button, Cyrillic") << "button" << QStringLiteral("Имя И О") << enter;
    QTest::newRow("push button, EAN") << "button" << QStringLiteral("4600000000001") << twoEnters;
    QTest::newRow("tick box, Enter") << "check" << words << twoEnters;
    QTest::newRow("next, Enter") << "next" << words << enter;
    QTest::newRow("next, two Enters") << "next" << words << twoEnters;
    QTest::newRow("cancel, two Enters") << "cancel" << words << twoEnters;
}

void TestSrScannerGuard::burstOnAButtonPressesNothing()
{
    QFETCH(const QString, button);
    QFETCH(const QString, text);
    QFETCH(const QVector<int>, suffix);
    QAbstractButton *focused = m_wizard->page(0)->findChild<QAbstractButton *>(button);
    if (button == QLatin1String("next"))
        focused = m_wizard->button(QWizard::NextButton);
    else if (button == QLatin1String("cancel"))
        focused = m_wizard->button(QWizard::CancelButton);
    focused->setFocus();
    QSignalSpy pressed(focused, &QAbstractButton::clicked);
    KeyboardScanner::type(text);
    for (const int key : suffix)
        KeyboardScanner::press(static_cast<Qt::Key>(key));
    QVERIFY(pressed.isEmpty());
    QVERIFY(!m_check->isChecked());
    QVERIFY(!focused->isDown());
    QCOMPARE(m_wizard->currentId(), 0);
    QVERIFY(m_wizard->isVisible());
}

void TestSrScannerGuard::personPressesAButton_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<int>("key");
    for (const char *button : {"button", "next", "cancel"}) {
        QTest::addRow("%s, Space", button) << QString::fromLatin1(button) << int(Qt::Key_Space);
        QTest::addRow("%s, Enter", button) << QString::fromLatin1(button) << int(Qt::Key_Return);
        QTest::addRow("%s, Enter of the number block", button)
            << QString::fromLatin1(button) << int(Qt::Key_Enter);
    }
    QTest::newRow("tick box, Space") << "check" << int(Qt::Key_Space);
}

void TestSrScannerGuard::personPressesAButton()
{
    QFETCH(const QString, button);
    QFETCH(const int, key);
    QAbstractButton *focused = m_wizard->page(0)->findChild<QAbstractButton *>(button);
    if (button == QLatin1String("next"))
        focused = m_wizard->button(QWizard::NextButton);
    else if (button == QLatin1String("cancel"))
        focused = m_wizard->button(QWizard::CancelButton);
    focused->setFocus();
    QSignalSpy pressed(focused, &QAbstractButton::clicked);
    KeyboardScanner::press(static_cast<Qt::Key>(key));
    QCOMPARE(pressed.size(), 1);
}

void TestSrScannerGuard::personPressesAfterALetter()
{
    QSignalSpy pressed(m_button, &QPushButton::clicked);
    m_button->setFocus();
    QTest::keyClick(m_button, Qt::Key_X);
    QTest::qWait(100); // the pause that a hand makes between two keys
    QTest::keyClick(m_button, Qt::Key_Space);
    QCOMPARE(pressed.size(), 1);
    QTest::keyClick(m_button, Qt::Key_Space);
    QCOMPARE(pressed.size(), 2);
}

/// The pause is counted from the character before, be it a blank that was held back.
void TestSrScannerGuard::everyBlankOfALongScanIsHeldBack()
{
    QSignalSpy pressed(m_button, &QPushButton::clicked);
    m_button->setFocus();
    constexpr qint64 shorterThanAHandsPause = 50;
    constexpr qint64 longerThanAHandsPause = 100;
    for (int attempt = 0; attempt < 20; ++attempt) {
        QElapsedTimer sinceBegin;
        sinceBegin.start();
        QTest::keyClick(m_button, Qt::Key_X);
        qint64 last = 0;
        qint64 longestPause = 0;
        while (last < longerThanAHandsPause) {
            QTest::qWait(15); // as a slow scanner types
            QTest::keyClick(m_button, Qt::Key_Space);
            longestPause = qMax(longestPause, sinceBegin.elapsed() - last);
            last = sinceBegin.elapsed();
        }
        if (longestPause < shorterThanAHandsPause) {
            QCOMPARE(pressed.size(), 0);
            return;
        }
        pressed.clear();
    }
    QSKIP("This machine is too busy to type as fast as a scanner.");
}

void TestSrScannerGuard::keysWithoutACharacter()
{
    QSignalSpy pressed(m_button, &QPushButton::clicked);
    m_button->setFocus();
    for (const int key : {Qt::Key_Shift, Qt::Key_Control, Qt::Key_F5})
        QTest::keyClick(m_button, static_cast<Qt::Key>(key));
    QTest::keyClick(m_button, Qt::Key_Space);
    QCOMPARE(pressed.size(), 1);
}

void TestSrScannerGuard::tabBehindAScanGoesOn()
{
    m_button->setFocus();
    KeyboardScanner::scan(QStringLiteral("ab"), {Qt::Key_Tab});
    QVERIFY(!m_button->hasFocus());
    QVERIFY(m_check->hasFocus());
}

void TestSrScannerGuard::mouseIsNotGuarded()
{
    QSignalSpy pressed(m_button, &QPushButton::clicked);
    m_button->setFocus();
    QTest::keyClick(m_button, Qt::Key_X);
    QTest::mouseClick(m_button, Qt::LeftButton);
    QCOMPARE(pressed.size(), 1);
    QTest::mouseClick(m_wizard->button(QWizard::NextButton), Qt::LeftButton);
    QCOMPARE(m_wizard->currentId(), 1);
}

void TestSrScannerGuard::escapeAndTabPassThrough()
{
    m_edit->setFocus();
    KeyboardScanner::press(Qt::Key_Tab);
    QVERIFY(m_button->hasFocus());
    KeyboardScanner::press(Qt::Key_Escape);
    QVERIFY(!m_wizard->isVisible());
}

void TestSrScannerGuard::everyPageIsGuarded()
{
    m_wizard->next();
    QCOMPARE(m_wizard->currentId(), 1);
    auto *edit = m_wizard->page(1)->findChild<QLineEdit *>(QStringLiteral("edit"));
    edit->setFocus();
    KeyboardScanner::scan(QStringLiteral("abc"), {Qt::Key_Return, Qt::Key_Return});
    QVERIFY(m_wizard->isVisible());
    auto *button = m_wizard->page(1)->findChild<QPushButton *>(QStringLiteral("button"));
    QSignalSpy pressed(button, &QPushButton::clicked);
    button->setFocus();
    KeyboardScanner::scan(QStringLiteral("a b"), {Qt::Key_Return});
    QVERIFY(pressed.isEmpty());
    m_wizard->button(QWizard::FinishButton)->setFocus();
    KeyboardScanner::scan(QStringLiteral("a b"), {Qt::Key_Return});
    QVERIFY2(m_wizard->isVisible(), "a scan must not finish the payment");
}

QTEST_MAIN(TestSrScannerGuard)
#include "tst_srscannerguard.moc"
