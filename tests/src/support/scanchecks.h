#pragma once

#include "guitestguard.h"
#include "keyboardscanner.h"
#include "startpageform.h"

/// What holds for the start pages of both wizards when a keyboard scanner types a code into them.
template<class Page>
struct ScanChecks
{
    using Form = StartPageForm<typename Page::Wizard>;

    static QString code()
    {
        return QStringLiteral("ST00012|Name=АО Водоканал Ривенхолд|PersAcc=100200300|Sum=150050");
    }

    /// Where the code goes, what stands there, where the cursor is, how the scanner ends.
    static void codeIntoAField_data()
    {
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("before");
        QTest::addColumn<int>("cursor");
        QTest::addColumn<QVector<int>>("suffix");

        const struct
        {
            const char *name;
            QVector<int> keys;
        } suffixes[] = {
            {"Enter", {Qt::Key_Return}},
            {"Enter of the number block", {Qt::Key_Enter}},
            {"Tab", {Qt::Key_Tab}},
            {"two Enters", {Qt::Key_Return, Qt::Key_Return}},
            {"Tab and Enter", {Qt::Key_Tab, Qt::Key_Return}},
        };
        const struct
        {
            const char *name;
            const char *field;
            const char *before;
            int cursor;
        } places[] = {
            {"empty account", "leAccount", "", 0},
            {"empty phone", "lePhone", "", 0},
            {"before a phone", "lePhone", "89123456789", 0},
            {"inside a phone", "lePhone", "89123456789", 5},
            {"behind a phone", "lePhone", "89123456789", 11},
            {"over a selected phone", "lePhone", "89123456789", -1},
            {"behind an e-mail", "lePhone", "ivanov@example.org", 18},
            {"inside an e-mail", "lePhone", "ivanov@example.org", 6},
            {"before an old account", "leAccount", "555", 0},
            {"inside an old account", "leAccount", "555", 2},
            {"behind an old account", "leAccount", "555", 3},
            {"over a selected account", "leAccount", "555", -1},
        };
        for (const auto &place : places) {
            for (const auto &suffix : suffixes) {
                QTest::addRow("%s, %s", place.name, suffix.name)
                    << QString::fromLatin1(place.field) << QString::fromLatin1(place.before)
                    << place.cursor << suffix.keys;
            }
        }
    }

    static void codeIntoAField()
    {
        QFETCH(const QString, field);
        QFETCH(const QString, before);
        QFETCH(const int, cursor);
        QFETCH(const QVector<int>, suffix);

        Form form(Page::provider());
        form.open();
        auto *edit = form.page->template findChild<QLineEdit *>(field);
        place(edit, before, cursor);
        KeyboardScanner::type(code());
        QVERIFY(form.host.sent().isEmpty());
        for (const int key : suffix)
            KeyboardScanner::press(static_cast<Qt::Key>(key));

        QCOMPARE(form.host.sent().size(), 1);
        QCOMPARE(form.lastParameters().value(QStringLiteral("account")),
                 QStringLiteral("100200300"));
        QCOMPARE(form.leAccount->text(), QStringLiteral("100200300"));
        QCOMPARE(form.dsbAmount->value(), 1500.50);
        QVERIFY(form.cbAmount->isChecked());
        const bool phone = field == QLatin1String("lePhone");
        // What was selected is typed over, like by any other key.
        QCOMPARE(form.lePhone->text(), phone && cursor >= 0 ? before : QString());
        QVERIFY(form.waits());
        QVERIFY(form.wizard.isVisible());

        form.answer(BillingAnswers::data(form.host.lastUid(), Page::account()));
        QVERIFY(form.showsAccount());
        QCOMPARE(form.wizard.currentId(), 0);
    }

    static void codeWithoutANumber_data()
    {
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("asked");
        // A number from before the scan is not asked for with the sum of the new bill.
        QTest::newRow("behind an old account") << QStringLiteral("leAccount") << QString();
        QTest::newRow("into the phone") << QStringLiteral("lePhone") << QStringLiteral("555");
    }

    static void codeWithoutANumber()
    {
        QFETCH(const QString, field);
        QFETCH(const QString, asked);
        Form form(Page::provider());
        form.open();
        place(form.leAccount, QStringLiteral("555"), 3);
        form.page->template findChild<QLineEdit *>(field)->setFocus();
        KeyboardScanner::scan(QStringLiteral("ST00012|Name=A|Sum=150050"));
        QCOMPARE(form.host.sent().size(), 1);
        QCOMPARE(form.leAccount->text(), asked);
        QCOMPARE(form.lastParameters().value(QStringLiteral("account")), asked);
    }

    static void withoutSuffixTheCodeWaitsForTheFieldToBeLeft_data()
    {
        QTest::addColumn<QString>("field");
        QTest::addColumn<bool>("byMouse");
        QTest::newRow("account, Tab by hand") << QStringLiteral("leAccount") << false;
        QTest::newRow("account, click on the button") << QStringLiteral("leAccount") << true;
        QTest::newRow("phone, Tab by hand") << QStringLiteral("lePhone") << false;
        QTest::newRow("phone, click on the button") << QStringLiteral("lePhone") << true;
    }

    static void withoutSuffixTheCodeWaitsForTheFieldToBeLeft()
    {
        QFETCH(const QString, field);
        QFETCH(const bool, byMouse);
        Form form(Page::provider());
        form.open();
        place(form.page->template findChild<QLineEdit *>(field), QString(), 0);
        KeyboardScanner::scan(code(), {});
        QVERIFY(form.host.sent().isEmpty());
        if (byMouse) {
            // A real click moves the focus before it presses.
            form.pbGetData->setFocus(Qt::MouseFocusReason);
            QTest::mouseClick(form.pbGetData, Qt::LeftButton);
        } else {
            KeyboardScanner::press(Qt::Key_Tab);
        }
        QCOMPARE(form.host.sent().size(), 1);
        QCOMPARE(form.leAccount->text(), QStringLiteral("100200300"));
        QCOMPARE(form.lePhone->text(), QString());
    }

    static void pastedCode()
    {
        Form form(Page::provider());
        form.open();
        place(form.leAccount, QString(), 0);
        form.leAccount->insert(code());
        KeyboardScanner::press(Qt::Key_Return);
        QCOMPARE(form.host.sent().size(), 1);
        QCOMPARE(form.leAccount->text(), QStringLiteral("100200300"));
    }

    static void scanInTwoBursts()
    {
        Form form(Page::provider());
        form.open();
        place(form.lePhone, QStringLiteral("8912"), 4);
        KeyboardScanner::type(code().left(20));
        QTest::qWait(120); // a slow device's pause, longer than any between two keys
        KeyboardScanner::scan(code().mid(20));
        QCOMPARE(form.host.sent().size(), 1);
        QCOMPARE(form.leAccount->text(), QStringLiteral("100200300"));
        QCOMPARE(form.lePhone->text(), QStringLiteral("8912"));
    }

    static void scanWhileAnAnswerIsAwaited()
    {
        Form form(Page::provider());
        form.open();
        form.askFor(QStringLiteral("123"));
        const QString uid = form.host.lastUid();
        KeyboardScanner::scan(code(), {Qt::Key_Return, Qt::Key_Return});
        QCOMPARE(form.host.sent().size(), 1);
        QVERIFY(form.wizard.isVisible());
        QVERIFY(form.waits());
        form.answer(BillingAnswers::data(uid, Page::account()));
        QVERIFY(form.showsAccount());
        QCOMPARE(form.leAccount->text(), QStringLiteral("123"));
        QCOMPARE(form.wizard.currentId(), 0);
    }

    static void secondBillAfterTheFirst()
    {
        Form form(Page::provider());
        form.open();
        place(form.leAccount, QString(), 0);
        KeyboardScanner::scan(code());
        form.answer(BillingAnswers::data(form.host.lastUid(), Page::account()));
        QVERIFY(form.showsAccount());
        form.leAccount->setFocus();
        KeyboardScanner::scan(QStringLiteral("ST00012|PersAcc=777|Sum=100"));
        QCOMPARE(form.host.sent().size(), 2);
        QCOMPARE(form.lastParameters().value(QStringLiteral("account")), QStringLiteral("777"));
        QCOMPARE(form.dsbAmount->value(), 1.00);
        QVERIFY(form.waits());
        QVERIFY(form.showsNothing());
    }

    static void scanWithTheFocusOnAButton_data()
    {
        QTest::addColumn<int>("button");
        QTest::newRow("ask") << -1;
        QTest::newRow("next") << int(QWizard::NextButton);
        QTest::newRow("cancel") << int(QWizard::CancelButton);
        QTest::newRow("tick box of the amount") << -2;
    }

    static void scanWithTheFocusOnAButton()
    {
        QFETCH(const int, button);
        Form form(Page::provider());
        form.open();
        form.askFor(QStringLiteral("123"));
        form.answer(BillingAnswers::data(form.host.lastUid(), Page::account()));
        QVERIFY(form.showsAccount());
        QAbstractButton *focused = form.pbGetData;
        if (button == -2)
            focused = form.cbAmount;
        else if (button >= 0)
            focused = form.wizard.button(static_cast<QWizard::WizardButton>(button));
        focused->setFocus();
        const bool checked = form.cbAmount->isChecked();
        KeyboardScanner::scan(code(), {Qt::Key_Return, Qt::Key_Return});
        QVERIFY(form.wizard.isVisible());
        QCOMPARE(form.wizard.currentId(), 0);
        QCOMPARE(form.host.sent().size(), 1);
        QCOMPARE(form.cbAmount->isChecked(), checked);
        QVERIFY(form.showsAccount());
    }

    static void enterInAFieldNeverGoesOn_data()
    {
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("code");
        QTest::newRow("account, only Enter") << QStringLiteral("leAccount") << QString();
        QTest::newRow("phone, only Enter") << QStringLiteral("lePhone") << QString();
        QTest::newRow("phone, foreign code")
            << QStringLiteral("lePhone") << QStringLiteral("4600000000001");
        QTest::newRow("summary, foreign code")
            << QStringLiteral("tbSummary") << QStringLiteral("4600000000001");
        QTest::newRow("summary, payment code") << QStringLiteral("tbSummary") << code();
    }

    /// With the account on screen the wizard's default button is one that goes on.
    static void enterInAFieldNeverGoesOn()
    {
        QFETCH(const QString, field);
        QFETCH(const QString, code);
        Form form(Page::provider());
        form.open();
        form.askFor(QStringLiteral("123"));
        form.answer(BillingAnswers::data(form.host.lastUid(), Page::account()));
        QVERIFY(form.showsAccount());
        form.page->template findChild<QWidget *>(field)->setFocus();
        KeyboardScanner::scan(code, {Qt::Key_Return, Qt::Key_Enter});
        QCOMPARE(form.wizard.currentId(), 0);
        QVERIFY(form.wizard.isVisible());
        QCOMPARE(form.host.sent().size(), 1);
        QVERIFY(form.showsAccount());
    }

    static void foreignCode_data()
    {
        QTest::addColumn<QString>("code");
        QTest::newRow("receipt") << QStringLiteral(
            "t=20261121T1000&s=150.50&fn=9999078900001234&i=7&fp=123&n=1");
        QTest::newRow("link") << QStringLiteral("https://example.org/pay?PersAcc=5&Sum=100");
        QTest::newRow("link with a bar")
            << QStringLiteral("https://example.org/|PersAcc=5|Sum=100");
        QTest::newRow("EAN") << QStringLiteral("4600000000001");
        QTest::newRow("prefix without a bar") << QStringLiteral("ST00012;PersAcc=5;Sum=100");
        QTest::newRow("prefix only") << QStringLiteral("ST00012");
        QTest::newRow("lower case") << QStringLiteral("st00012|PersAcc=5|Sum=100");
        QTest::newRow("older version") << QStringLiteral("ST00022|PersAcc=5|Sum=100");
        QTest::newRow("in the Russian layout") << QStringLiteral("ЫЕ00012/ЗукыФсс=5/Ыгь=100");
        QTest::newRow("text before the prefix") << QStringLiteral("xST00012|PersAcc=5|Sum=100");
        QTest::newRow("blank") << QStringLiteral(" ");
        QTest::newRow("nothing") << QString();
    }

    static void foreignCode()
    {
        QFETCH(const QString, code);
        Form form(Page::provider());
        form.open();
        form.leAccount->setText(QStringLiteral("123"));
        place(form.lePhone, QString(), 0);
        KeyboardScanner::scan(code, {Qt::Key_Return, Qt::Key_Return});
        QVERIFY(form.host.sent().isEmpty());
        QCOMPARE(form.leAccount->text(), QStringLiteral("123"));
        QCOMPARE(form.lePhone->text(), code);
        QVERIFY(!form.cbAmount->isChecked());
        QCOMPARE(form.dsbAmount->value(), 0.0);
        QVERIFY(form.isIdle());
        QVERIFY(form.wizard.isVisible());
    }

    /// The cashier types `text` into the field and puts the cursor behind so many characters of it;
    /// -1 selects all.
    static void place(QLineEdit *edit, const QString &text, int cursor)
    {
        edit->setFocus();
        edit->selectAll();
        KeyboardScanner::type(text);
        if (cursor < 0)
            edit->selectAll();
        else
            edit->setCursorPosition(cursor);
    }
};
