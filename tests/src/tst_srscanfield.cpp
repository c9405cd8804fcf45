#include "srscanfield.h"

#include "guitestguard.h"
#include "keyboardscanner.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QLineEdit>
#include <QTest>

#include <memory>

class TestSrScanField : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void codeAmongOtherText_data();
    void codeAmongOtherText();
    void noCode_data();
    void noCode();
    void textSetByTheProgram();
    void scanIntoATextOfTheProgram();
    void scanIntoATextFromBeforeItWasWatched();
    void scanBeforeATextThatBeginsAlike();
    void pastedAmongOtherText_data();
    void pastedAmongOtherText();
    void pastedBehindTypedText();
    void pastedOverTheBeginning();
    void typedOverAPart_data();
    void typedOverAPart();
    void correctedByHandInTheMiddle();
    void numberTypedLaterIsNoPartOfTheCode();
    void takenOnce();
    void secondScanBehindTheFirst();
    void scanAfterTheFieldWasLeft_data();
    void scanAfterTheFieldWasLeft();
    void scanTwiceAtTheSamePlace();
    void scanBehindADeletion();
    void undoAfterTheScan();
    void fieldNobodyWatches();
    void diesWithItsField();

private:
    void put(const QString &text, int cursor);

    std::unique_ptr<GuiTestGuard> m_guard;
    std::unique_ptr<QLineEdit> m_field;
    SrScanField *m_scan = nullptr;
};

void TestSrScanField::init()
{
    m_guard = std::make_unique<GuiTestGuard>();
    m_field = std::make_unique<QLineEdit>();
    m_scan = new SrScanField(m_field.get());
    m_field->show();
    m_field->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_field.get()));
    m_field->setFocus();
}

void TestSrScanField::cleanup()
{
    m_field.reset();
    const QStringList problems = m_guard->problems();
    m_guard.reset();
    QCOMPARE(problems, QStringList());
}

void TestSrScanField::put(const QString &text, int cursor)
{
    KeyboardScanner::type(text);
    if (cursor < 0)
        m_field->selectAll();
    else
        m_field->setCursorPosition(cursor);
}

void TestSrScanField::codeAmongOtherText_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<int>("cursor");
    QTest::addColumn<QString>("left");

    const QString phone = QStringLiteral("89123456789");
    const QString formatted = QStringLiteral("+7 (912) 345-67-89");
    const QString mail = QStringLiteral("a.b@example.org");
    QTest::newRow("empty") << QString() << 0 << QString();
    QTest::newRow("before a number") << phone << 0 << phone;
    QTest::newRow("inside a number") << phone << 5 << phone;
    QTest::newRow("behind a number") << phone << 11 << phone;
    QTest::newRow("one digit before the end") << phone << 10 << phone;
    QTest::newRow("over everything") << phone << -1 << QString();
    QTest::newRow("behind a formatted number") << formatted << int(formatted.size()) << formatted;
    QTest::newRow("inside a formatted number") << formatted << 4 << formatted;
    QTest::newRow("behind an e-mail") << mail << int(mail.size()) << mail;
    QTest::newRow("inside an e-mail") << mail << 4 << mail;
    QTest::newRow("before an e-mail") << mail << 0 << mail;
}

void TestSrScanField::codeAmongOtherText()
{
    QFETCH(const QString, before);
    QFETCH(const int, cursor);
    QFETCH(const QString, left);

    // The code ends with digits: what follows them in the field is the trap.
    const QString code = QStringLiteral("ST00012|Name=ТОО 7 Вода|PersAcc=100200|Sum=150050");
    put(before, cursor);
    KeyboardScanner::type(code);
    QCOMPARE(m_scan->takeCode(), code);
    QCOMPARE(m_field->text(), left);
    QCOMPARE(m_scan->takeCode(), QString());
    QCOMPARE(m_field->text(), left);
}

void TestSrScanField::noCode_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("nothing") << QString();
    QTest::newRow("number") << QStringLiteral("100200300");
    QTest::newRow("phone") << QStringLiteral("+7 (912) 345-67-89");
    QTest::newRow("prefix without a bar") << QStringLiteral("ST00012");
    QTest::newRow("bar without the prefix") << QStringLiteral("1|2");
    QTest::newRow("bar before the prefix") << QStringLiteral("12|ST00012");
    QTest::newRow("lower case") << QStringLiteral("st00012|Sum=1");
    QTest::newRow("letters before the prefix") << QStringLiteral("abcST00012|Sum=1");
    QTest::newRow("link") << QStringLiteral("https://example.org/?x=ST00012|Sum=1");
}

void TestSrScanField::noCode()
{
    QFETCH(const QString, text);
    KeyboardScanner::type(text);
    QCOMPARE(m_scan->takeCode(), QString());
    QCOMPARE(m_field->text(), text);
}

void TestSrScanField::textSetByTheProgram()
{
    m_field->setText(QStringLiteral("ST00012|Sum=1"));
    QCOMPARE(m_scan->takeCode(), QStringLiteral("ST00012|Sum=1"));
    QCOMPARE(m_field->text(), QString());
    m_field->setText(QStringLiteral("123"));
    QCOMPARE(m_scan->takeCode(), QString());
    QCOMPARE(m_field->text(), QStringLiteral("123"));
}

void TestSrScanField::pastedAmongOtherText_data()
{
    QTest::addColumn<QString>("before");
    QTest::newRow("phone") << QStringLiteral("89123456789");
    QTest::newRow("number of a document") << QStringLiteral("ВК-1/а");
}

void TestSrScanField::pastedAmongOtherText()
{
    QFETCH(const QString, before);
    put(before, 3);
    QGuiApplication::clipboard()->setText(QStringLiteral("ST00012|Sum=1"));
    m_field->paste();
    QCOMPARE(m_scan->takeCode(), QStringLiteral("ST00012|Sum=1"));
    QCOMPARE(m_field->text(), before);
}

void TestSrScanField::scanIntoATextOfTheProgram()
{
    KeyboardScanner::type(QStringLiteral("8912"));
    m_field->setText(QStringLiteral("ВК-1/а"));
    m_field->setCursorPosition(3);
    KeyboardScanner::type(QStringLiteral("ST00012|Sum=1"));
    QCOMPARE(m_scan->takeCode(), QStringLiteral("ST00012|Sum=1"));
    QCOMPARE(m_field->text(), QStringLiteral("ВК-1/а"));
}

void TestSrScanField::scanIntoATextFromBeforeItWasWatched()
{
    delete m_scan;
    m_field->setText(QStringLiteral("ВК-1/а"));
    m_scan = new SrScanField(m_field.get());
    m_field->setCursorPosition(3);
    KeyboardScanner::type(QStringLiteral("ST00012|Sum=1"));
    QCOMPARE(m_scan->takeCode(), QStringLiteral("ST00012|Sum=1"));
    QCOMPARE(m_field->text(), QStringLiteral("ВК-1/а"));
}

void TestSrScanField::scanBeforeATextThatBeginsAlike()
{
    put(QStringLiteral("S-7"), 0);
    KeyboardScanner::type(QStringLiteral("ST00012|Sum=1"));
    QCOMPARE(m_scan->takeCode(), QStringLiteral("ST00012|Sum=1"));
    QCOMPARE(m_field->text(), QStringLiteral("S-7"));
}

void TestSrScanField::pastedBehindTypedText()
{
    // What was pasted came in one piece, whatever stands before it.
    KeyboardScanner::type(QStringLiteral("ВК-1/а"));
    QGuiApplication::clipboard()->setText(QStringLiteral("ST00012|Sum=1"));
    m_field->paste();
    QCOMPARE(m_scan->takeCode(), QStringLiteral("ST00012|Sum=1"));
    QCOMPARE(m_field->text(), QStringLiteral("ВК-1/а"));
}

void TestSrScanField::pastedOverTheBeginning()
{
    KeyboardScanner::type(QStringLiteral("5558912"));
    m_field->setSelection(0, 3);
    QGuiApplication::clipboard()->setText(QStringLiteral("ST00012|Sum=1"));
    m_field->paste();
    QCOMPARE(m_scan->takeCode(), QStringLiteral("ST00012|Sum=1"));
    QCOMPARE(m_field->text(), QStringLiteral("8912"));
}

void TestSrScanField::typedOverAPart_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("length");
    QTest::addColumn<QString>("left");
    QTest::newRow("the beginning") << 0 << 2 << QStringLiteral("-1/а");
    QTest::newRow("one character") << 3 << 1 << QStringLiteral("ВК-/а");
    QTest::newRow("the middle") << 2 << 3 << QStringLiteral("ВКа");
    QTest::newRow("the end") << 4 << 2 << QStringLiteral("ВК-1");
}

void TestSrScanField::typedOverAPart()
{
    QFETCH(const int, from);
    QFETCH(const int, length);
    QFETCH(const QString, left);
    KeyboardScanner::type(QStringLiteral("ВК-1/а"));
    m_field->setSelection(from, length);
    KeyboardScanner::type(QStringLiteral("ST00012|Sum=1"));
    QCOMPARE(m_scan->takeCode(), QStringLiteral("ST00012|Sum=1"));
    QCOMPARE(m_field->text(), left);
}

void TestSrScanField::correctedByHandInTheMiddle()
{
    KeyboardScanner::type(QStringLiteral("ST00012|PersAcc=10x|Sum=1"));
    m_field->setCursorPosition(19);
    QTest::keyClick(m_field.get(), Qt::Key_Backspace);
    QTest::keyClick(m_field.get(), Qt::Key_5);
    QCOMPARE(m_scan->takeCode(), QStringLiteral("ST00012|PersAcc=105|Sum=1"));
    QCOMPARE(m_field->text(), QString());
}

void TestSrScanField::numberTypedLaterIsNoPartOfTheCode()
{
    // Scanned without a suffix, then typed on at the start of the field.
    KeyboardScanner::type(QStringLiteral("ST00012|Sum=1"));
    QCOMPARE(m_scan->takeCode(), QStringLiteral("ST00012|Sum=1"));
    KeyboardScanner::type(QStringLiteral("8912"));
    QCOMPARE(m_scan->takeCode(), QString());
    QCOMPARE(m_field->text(), QStringLiteral("8912"));
}

void TestSrScanField::takenOnce()
{
    KeyboardScanner::type(QStringLiteral("ST00012|Sum=1"));
    QVERIFY(!m_scan->takeCode().isEmpty());
    QVERIFY(m_scan->takeCode().isEmpty());
}

void TestSrScanField::secondScanBehindTheFirst()
{
    put(QStringLiteral("8912"), 2);
    KeyboardScanner::type(QStringLiteral("ST00012|Sum=1"));
    QCOMPARE(m_scan->takeCode(), QStringLiteral("ST00012|Sum=1"));
    KeyboardScanner::type(QStringLiteral("ST00012|Sum=2"));
    QCOMPARE(m_scan->takeCode(), QStringLiteral("ST00012|Sum=2"));
    QCOMPARE(m_field->text(), QStringLiteral("8912"));
}

void TestSrScanField::scanAfterTheFieldWasLeft_data()
{
    QTest::addColumn<int>("cursor");
    for (int cursor = 0; cursor <= 6; ++cursor)
        QTest::addRow("%d", cursor) << cursor;
}

void TestSrScanField::scanAfterTheFieldWasLeft()
{
    QFETCH(const int, cursor);
    // A document's number is no number of a phone; having left the field tells it from the code's
    // beginning.
    KeyboardScanner::type(QStringLiteral("ВК-1/а"));
    QCOMPARE(m_scan->takeCode(), QString());
    m_field->setCursorPosition(cursor);
    KeyboardScanner::type(QStringLiteral("ST00012|Sum=1"));
    QCOMPARE(m_scan->takeCode(), QStringLiteral("ST00012|Sum=1"));
    QCOMPARE(m_field->text(), QStringLiteral("ВК-1/а"));
}

void TestSrScanField::scanTwiceAtTheSamePlace()
{
    KeyboardScanner::type(QStringLiteral("ВК-1/а"));
    for (const QString &code : {QStringLiteral("ST00012|Sum=1"), QStringLiteral("ST00012|Sum=2")}) {
        m_field->setCursorPosition(2);
        KeyboardScanner::type(code);
        QCOMPARE(m_scan->takeCode(), code);
        QCOMPARE(m_field->text(), QStringLiteral("ВК-1/а"));
    }
}

void TestSrScanField::scanBehindADeletion()
{
    // The digit that is deleted leaves a number typed by hand, at whose end the scan goes on.
    put(QStringLiteral("89123"), 5);
    QTest::keyClick(m_field.get(), Qt::Key_Backspace);
    KeyboardScanner::type(QStringLiteral("ST00012|Sum=1"));
    QCOMPARE(m_scan->takeCode(), QStringLiteral("ST00012|Sum=1"));
    QCOMPARE(m_field->text(), QStringLiteral("8912"));
    m_field->setCursorPosition(0);
    QTest::keyClick(m_field.get(), Qt::Key_Delete);
    KeyboardScanner::type(QStringLiteral("ST00012|Sum=1"));
    QCOMPARE(m_scan->takeCode(), QStringLiteral("ST00012|Sum=1"));
    QCOMPARE(m_field->text(), QStringLiteral("912"));
}

void TestSrScanField::undoAfterTheScan()
{
    put(QStringLiteral("8912"), 4);
    KeyboardScanner::type(QStringLiteral("ST00012|Sum=1"));
    QVERIFY(!m_scan->takeCode().isEmpty());
    m_field->undo();
    m_field->redo();
    QVERIFY(m_scan->takeCode().isEmpty());
    QCOMPARE(m_field->text(), QStringLiteral("8912"));
}

void TestSrScanField::fieldNobodyWatches()
{
    QLineEdit other;
    other.setText(QStringLiteral("ST00012|Sum=1"));
    QCOMPARE(SrScanField::takeCodeFrom(&other), QString());
    QCOMPARE(SrScanField::takeCodeFrom(nullptr), QString());
    QCOMPARE(other.text(), QStringLiteral("ST00012|Sum=1"));
    KeyboardScanner::type(QStringLiteral("ST00012|Sum=1"));
    QCOMPARE(SrScanField::takeCodeFrom(m_field.get()), QStringLiteral("ST00012|Sum=1"));
}

void TestSrScanField::diesWithItsField()
{
    const QPointer<SrScanField> scan = m_scan;
    QCOMPARE(scan->parent(), m_field.get());
    m_field.reset();
    QVERIFY(!scan);
}

QTEST_MAIN(TestSrScanField)
#include "tst_srscanfield.moc"
