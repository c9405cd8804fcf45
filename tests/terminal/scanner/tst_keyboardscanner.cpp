#include <scanner/keyboardscanner.h>

#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>

#include <memory>

using Suffix = KeyboardScanner::Suffix;
using Outcome = KeyboardScanner::Outcome;
Q_DECLARE_METATYPE(KeyboardLayout::Mishap)

namespace {

const QString code =
    QStringLiteral("ST00012|Name=АО «Ёж» № 5|PersAcc=7001000101|Sum=150050|Purpose=щука Щ 😀 a=b;c");

/// Two fields and a default button, as in a payment's dialog.
class Form : public QDialog
{
public:
    Form() : first(new QLineEdit(this)), second(new QLineEdit(this)), button(new QPushButton(this))
    {
        auto *layout = new QVBoxLayout(this);
        layout->addWidget(first);
        layout->addWidget(second);
        layout->addWidget(button);
        button->setDefault(true);
        first->setFocus();
    }

    QLineEdit *first;
    QLineEdit *second;
    QPushButton *button;
};

} // namespace

class TestKeyboardScanner : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<Form> m_form;
    std::unique_ptr<KeyboardScanner> m_scanner;
    std::unique_ptr<QSignalSpy> m_finished;

    Outcome outcome() const
    {
        return m_finished->count() == 1 ? m_finished->constFirst().constFirst().value<Outcome>()
                                        : Outcome(-1);
    }

    static KeyboardScanner::Options quick(Suffix suffix = Suffix::None)
    {
        KeyboardScanner::Options options;
        options.suffix = suffix;
        options.keyPause = 0;
        return options;
    }

private slots:
    void init()
    {
        m_form = std::make_unique<Form>();
        m_form->show();
        QVERIFY(QTest::qWaitForWindowActive(m_form.get()));
        m_scanner = std::make_unique<KeyboardScanner>();
        m_finished = std::make_unique<QSignalSpy>(m_scanner.get(), &KeyboardScanner::finished);
    }

    void cleanup()
    {
        m_finished.reset();
        m_scanner.reset();
        m_form.reset();
        QVERIFY(QApplication::topLevelWidgets().isEmpty());
    }

    void everySuffixAtEverySpeed_data()
    {
        QTest::addColumn<Suffix>("suffix");
        QTest::addColumn<int>("pause");
        QTest::addColumn<int>("burst");
        QTest::addColumn<int>("pressed");  // times the default button was pressed
        QTest::addColumn<int>("finished"); // times the field said that its editing is finished
        for (const int pause : {0, 3}) {
            for (const int burst : {0, 60}) {
                const auto row = [pause, burst](const char *title, Suffix suffix, int pressed,
                                                int finished) {
                    QTest::newRow(qPrintable(QStringLiteral("%1, %2 ms, burst pause %3")
                                                 .arg(QLatin1String(title))
                                                 .arg(pause)
                                                 .arg(burst)))
                        << suffix << pause << burst << pressed << finished;
                };
                row("no suffix", Suffix::None, 0, 0);
                row("Enter", Suffix::Enter, 1, 1);
                row("Tab", Suffix::Tab, 0, 1);
                row("Enter twice", Suffix::EnterTwice, 2, 2);
            }
        }
    }

    void everySuffixAtEverySpeed()
    {
        QFETCH(Suffix, suffix);
        QFETCH(int, pause);
        QFETCH(int, burst);
        QSignalSpy pressed(m_form->button, &QPushButton::clicked);
        QSignalSpy edited(m_form->first, &QLineEdit::textEdited);
        QSignalSpy finished(m_form->first, &QLineEdit::editingFinished);
        KeyboardScanner::Options options = quick(suffix);
        options.keyPause = pause;
        options.burstPause = burst;
        const QString text = QStringLiteral("ST00012|Name=АО «Ёж» 😀");
        m_scanner->type(text, options);
        QVERIFY(m_scanner->isTyping());
        QCOMPARE(m_form->first->text(), QString());
        QTRY_VERIFY(!m_scanner->isTyping());
        QCOMPARE(outcome(), Outcome::Done);
        QCOMPARE(m_form->first->text(), text);
        QCOMPARE(edited.count(), text.size() - 1); // the surrogate pair is one key
        QTEST(pressed.count(), "pressed");
        QTEST(finished.count(), "finished");
        QCOMPARE(m_form->second->hasFocus(), suffix == Suffix::Tab);
        QCOMPARE(m_form->second->text(), QString());
    }

    void layoutMishaps_data()
    {
        QTest::addColumn<KeyboardLayout::Mishap>("mishap");
        QTest::newRow("right") << KeyboardLayout::Mishap::None;
        QTest::newRow("Russian") << KeyboardLayout::Mishap::RussianLayout;
        QTest::newRow("dropped") << KeyboardLayout::Mishap::DroppedCyrillic;
    }

    void layoutMishaps()
    {
        QFETCH(KeyboardLayout::Mishap, mishap);
        KeyboardScanner::Options options = quick();
        options.mishap = mishap;
        m_scanner->type(code, options);
        QTRY_COMPARE(outcome(), Outcome::Done);
        QCOMPARE(m_form->first->text(), KeyboardLayout::typed(code, mishap));
    }

    void pauseIsKept()
    {
        KeyboardScanner::Options options = quick();
        options.keyPause = 20;
        QElapsedTimer time;
        time.start();
        m_scanner->type(QStringLiteral("1234567890"), options);
        QTRY_COMPARE(outcome(), Outcome::Done);
        QVERIFY2(time.elapsed() >= 10 * 20, qPrintable(QString::number(time.elapsed())));
    }

    void burstIsSplitInTheMiddle()
    {
        KeyboardScanner::Options options = quick();
        options.burstPause = 300;
        QVector<qint64> times;
        QElapsedTimer time;
        time.start();
        connect(m_form->first, &QLineEdit::textEdited, this, [&] { times.append(time.elapsed()); });
        m_scanner->type(QStringLiteral("12345678"), options);
        QTRY_COMPARE(outcome(), Outcome::Done);
        QCOMPARE(times.size(), 8);
        QVERIFY2(times.at(4) - times.at(3) >= 250,
                 qPrintable(QString::number(times.at(4) - times.at(3))));
    }

    void keysGoWhereTheFocusIs()
    {
        m_scanner->type(QStringLiteral("123\t456"), quick());
        QTRY_COMPARE(outcome(), Outcome::Done);
        QCOMPARE(m_form->first->text(), QStringLiteral("123"));
        QCOMPARE(m_form->second->text(), QStringLiteral("456"));
    }

    void lineEndIsOneEnter_data()
    {
        QTest::addColumn<QString>("end");
        QTest::newRow("CR LF") << QStringLiteral("\r\n");
        QTest::newRow("CR") << QStringLiteral("\r");
        QTest::newRow("LF") << QStringLiteral("\n");
    }

    void lineEndIsOneEnter()
    {
        QFETCH(QString, end);
        QSignalSpy pressed(m_form->button, &QPushButton::clicked);
        m_scanner->type(QStringLiteral("1") + end, quick());
        QTRY_COMPARE(outcome(), Outcome::Done);
        QCOMPARE(pressed.count(), 1);
        QCOMPARE(m_form->first->text(), QStringLiteral("1"));
    }

    void controlCharactersLeaveNoTrace()
    {
        m_scanner->type(QStringLiteral("01\u001d02"), quick());
        QTRY_COMPARE(outcome(), Outcome::Done);
        QCOMPARE(m_form->first->text(), QStringLiteral("0102"));
    }

    void progressCountsEveryKey()
    {
        QSignalSpy progress(m_scanner.get(), &KeyboardScanner::progress);
        m_scanner->type(QStringLiteral("abc"), quick(Suffix::Enter));
        QTRY_COMPARE(outcome(), Outcome::Done);
        QCOMPARE(progress.count(), 4);
        QCOMPARE(progress.constLast(), QList<QVariant>({4, 4}));
    }

    void emptyTextIsFinishedAtOnce()
    {
        m_scanner->type(QString(), quick());
        QTRY_COMPARE(outcome(), Outcome::Done);
        QCOMPARE(m_form->first->text(), QString());
    }

    void cancelStopsInTheMiddle()
    {
        connect(m_scanner.get(), &KeyboardScanner::progress, this, [this](int typed) {
            if (typed == 5)
                m_scanner->cancel();
        });
        m_scanner->type(code, quick(Suffix::Enter));
        QTRY_COMPARE(outcome(), Outcome::Cancelled);
        QVERIFY(!m_scanner->isTyping());
        QTRY_COMPARE(m_form->first->text(), code.left(5));
        m_scanner->cancel();
        QCOMPARE(m_finished->count(), 1);
    }

    void anotherScanReplacesTheFirst()
    {
        m_scanner->type(code, quick());
        m_scanner->type(QStringLiteral("22"), quick());
        QTRY_COMPARE(m_finished->count(), 2);
        QCOMPARE(m_finished->constFirst().constFirst().value<Outcome>(), Outcome::Cancelled);
        QCOMPARE(m_form->first->text(), QStringLiteral("22"));
    }

    void typingStopsWhenTheWindowIsGone_data()
    {
        QTest::addColumn<bool>("destroyed");
        QTest::newRow("closed") << false;
        QTest::newRow("destroyed") << true;
    }

    void typingStopsWhenTheWindowIsGone()
    {
        QFETCH(bool, destroyed);
        QWidget behind;
        auto *field = new QLineEdit(&behind);
        behind.show();
        QVERIFY(QTest::qWaitForWindowExposed(&behind));
        m_form->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_form.get()));
        connect(m_form->first, &QLineEdit::textEdited, this, [&](const QString &text) {
            if (text.size() == 5) {
                m_form->close();
                behind.activateWindow();
                field->setFocus();
                if (destroyed)
                    m_form.release()->deleteLater();
            }
        });
        m_scanner->type(code, quick());
        QTRY_COMPARE(outcome(), Outcome::TargetGone);
        QCOMPARE(field->text(), QString());
    }

    void secondEnterDoesNotReachTheWindowBehind()
    {
        QDialog behind;
        auto *layout = new QVBoxLayout(&behind);
        auto *button = new QPushButton(&behind);
        layout->addWidget(button);
        button->setDefault(true);
        QSignalSpy pressed(button, &QPushButton::clicked);
        behind.show();
        QVERIFY(QTest::qWaitForWindowExposed(&behind));
        m_form->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_form.get()));
        connect(m_form->button, &QPushButton::clicked, m_form.get(), &QDialog::accept);
        m_scanner->type(QStringLiteral("1"), quick(Suffix::EnterTwice));
        QTRY_COMPARE(outcome(), Outcome::TargetGone);
        QCOMPARE(m_form->result(), int(QDialog::Accepted));
        QCOMPARE(pressed.count(), 0);
    }

    void dialogAboveTheTargetGetsTheKeys()
    {
        QString typed;
        connect(m_form->first, &QLineEdit::textEdited, this, [&](const QString &text) {
            if (text.size() != 2)
                return;
            QDialog dialog(m_form.get());
            auto *field = new QLineEdit(&dialog);
            connect(m_scanner.get(), &KeyboardScanner::finished, &dialog, &QDialog::reject);
            dialog.exec();
            typed = field->text();
        });
        m_scanner->type(QStringLiteral("12345"), quick());
        QTRY_COMPARE(outcome(), Outcome::Done);
        QTRY_COMPARE(typed.size(), 3);
        QCOMPARE(m_form->first->text() + typed, QStringLiteral("12345"));
    }

    void withoutAFocusedWindowNothingIsTyped()
    {
        m_form->hide();
        m_scanner->type(code, quick());
        QTRY_COMPARE(outcome(), Outcome::NoFocus);
        QCOMPARE(m_form->first->text(), QString());
    }

    void outcomesAreExplained()
    {
        QStringList texts;
        for (const Outcome each :
             {Outcome::Done, Outcome::Cancelled, Outcome::NoFocus, Outcome::TargetGone})
            texts.append(KeyboardScanner::outcomeText(each));
        QCOMPARE(texts.removeDuplicates(), 0);
        QVERIFY(!texts.contains(QString()));
    }
};

QTEST_MAIN(TestKeyboardScanner)
#include "tst_keyboardscanner.moc"
