#pragma once

#include "guitestguard.h"
#include "hostileanswers.h"
#include "startpageform.h"

#include <QSignalSpy>

/// What holds for the start pages of both wizards in their exchange with billing. Each function is
/// the body of a test.
///
/// `Page` names the wizard's type, its provider and an account as billing would send it.
template<class Page>
struct StartPageChecks
{
    using Form = StartPageForm<typename Page::Wizard>;

    static void answerIsShown()
    {
        Form form(Page::provider());
        form.open();
        QVERIFY(form.showsNothing());
        form.askFor(QStringLiteral("123"));
        QVERIFY(form.waits());
        QVERIFY(form.showsNothing());
        QCOMPARE(form.progressBar->value(), 0);
        QSignalSpy completeChanged(form.page, SIGNAL(completeChanged()));
        form.answer(BillingAnswers::data(form.host.lastUid(), Page::account()));
        QVERIFY(form.showsAccount());
        QVERIFY(!completeChanged.isEmpty());
        QVERIFY(form.tbSummary->toPlainText().contains(QStringLiteral("Иванов Пётр")));
    }

    /// The log is what is left when a payment is asked about later.
    static void answerIsLogged(GuiTestGuard &guard)
    {
        Form form(Page::provider());
        form.open();
        form.askFor(QStringLiteral("123"));
        guard.log.clear();
        form.answer(BillingAnswers::data(form.host.lastUid(), Page::account()));
        QCOMPARE(guard.log.containing(QtDebugMsg, QStringLiteral("payParamList")).size(), 1);
    }

    /// Nothing that a key could press has the focus while the answer is awaited.
    static void focusWhileAnAnswerIsAwaited_data()
    {
        QTest::addColumn<bool>("elsewhere");
        QTest::addColumn<bool>("leaves");
        QTest::newRow("cashier waits") << false << false;
        QTest::newRow("asked with the focus on the Cancel button") << true << false;
        QTest::newRow("cashier has gone to the Cancel button") << false << true;
    }

    static void focusWhileAnAnswerIsAwaited()
    {
        QFETCH(const bool, elsewhere);
        QFETCH(const bool, leaves);
        Form form(Page::provider());
        form.open();
        QWidget *cancel = form.wizard.button(QWizard::CancelButton);
        QWidget *before = elsewhere ? cancel : form.pbGetData;
        before->setFocus();
        QVERIFY(QMetaObject::invokeMethod(form.page, "getClientData"));
        QCOMPARE(form.wizard.focusWidget(), form.tbSummary);
        QWidget *focused = form.tbSummary;
        if (leaves) {
            focused = cancel;
            focused->setFocus();
        }
        form.answer(BillingAnswers::data(form.host.lastUid(), Page::account()));
        QCOMPARE(form.wizard.focusWidget(), focused);
    }

    static void failure_data()
    {
        QTest::addColumn<QVariantMap>("envelope");
        QTest::addColumn<QString>("text");

        const QString error = QStringLiteral("error");
        const QString result = QStringLiteral("result");
        const QString description = QStringLiteral("description");
        const QString resultDescription = QStringLiteral("resultDescription");
        const QString inner = BillingAnswers::text(
            {{QStringLiteral("isError"), true},
             {QStringLiteral("statusDescription"), QStringLiteral("Счёт закрыт")}});
        QTest::newRow("error flag")
            << QVariantMap{{error, true}, {description, QStringLiteral("Нет связи")}}
            << QStringLiteral("Нет связи");
        QTest::newRow("error flag as text")
            << QVariantMap{{error, QStringLiteral("true")},
                           {description, QStringLiteral("Нет связи")}}
            << QStringLiteral("Нет связи");
        QTest::newRow("result") << QVariantMap{{result, 5},
                                               {resultDescription,
                                                QStringLiteral("Счёт не найден")}}
                                << QStringLiteral("Счёт не найден");
        QTest::newRow("negative result")
            << QVariantMap{{result, -1}, {resultDescription, QStringLiteral("Сбой")}}
            << QStringLiteral("Сбой");
        QTest::newRow("result as text") << QVariantMap{{result, QStringLiteral("5")},
                                                       {resultDescription, QStringLiteral("Сбой")}}
                                        << QStringLiteral("Сбой");
        QTest::newRow("result beyond 32 bits")
            << QVariantMap{{result, qint64(1) << 32}, {resultDescription, QStringLiteral("Сбой")}}
            << QStringLiteral("Сбой");
        QTest::newRow("inner error")
            << QVariantMap{{error, false}, {result, 0}, {description, inner}}
            << QStringLiteral("Счёт закрыт");
        QTest::newRow("inner error flag as text")
            << QVariantMap{{description,
                            QStringLiteral(
                                "{\"isError\":\"yes\",\"statusDescription\":\"Счёт закрыт\"}")}}
            << QStringLiteral("Счёт закрыт");
        QTest::newRow("error before result")
            << QVariantMap{{error, true},
                           {description, QStringLiteral("Первый")},
                           {result, 5},
                           {resultDescription, QStringLiteral("Второй")}}
            << QStringLiteral("Первый");
        QTest::newRow("result before inner error")
            << QVariantMap{{error, false},
                           {result, 5},
                           {description, inner},
                           {resultDescription, QStringLiteral("Второй")}}
            << QStringLiteral("Второй");
        QTest::newRow("result without text") << QVariantMap{{result, 7}} << QString();
        QTest::newRow("markup stays text")
            << QVariantMap{{error, true},
                           {description, QStringLiteral("<b>A</b> & <img src=x> %1")}}
            << QStringLiteral("<b>A</b> & <img src=x> %1");
    }

    static void failure(GuiTestGuard &guard)
    {
        QFETCH(QVariantMap, envelope);
        QFETCH(const QString, text);

        Form form(Page::provider());
        form.open();
        form.askFor(QStringLiteral("123"));
        envelope.insert(QStringLiteral("uid"), form.host.lastUid());
        bool idleBehindTheBox = false;
        Qt::TextFormat format = Qt::AutoText;
        guard.answers.run([&](QDialog *dialog) {
            idleBehindTheBox = form.isIdle();
            format = qobject_cast<QMessageBox *>(dialog)->textFormat();
            dialog->reject();
        });
        form.answer(BillingAnswers::text(envelope));

        QCOMPARE(guard.answers.seen().size(), 1);
        const ModalAnswers::Seen box = guard.answers.seen().first();
        QCOMPARE(box.title, QStringLiteral("Ошибка ") + Page::provider().checkName());
        QCOMPARE(box.icon, QMessageBox::Critical);
        QCOMPARE(box.text, text);
        QCOMPARE(box.buttons.size(), 1);
        QCOMPARE(format, Qt::PlainText);
        QVERIFY(idleBehindTheBox);
        QCOMPARE(form.wizard.focusWidget(), form.leAccount);
        QCOMPARE(form.leAccount->selectedText(), QStringLiteral("123")); // to be typed over
        QVERIFY(form.isIdle());
        QVERIFY(form.showsNothing());
        answersTheNextRequest(form);
    }

    static void ignored_data()
    {
        QTest::addColumn<QVariantMap>("headers");
        QTest::addColumn<QString>("uid");
        QTest::addColumn<QString>("logged");

        const QString msgType = QStringLiteral("msgType");
        const QVariantMap reply = BillingAnswers::headers();
        const QString asked = QStringLiteral("asked");
        QTest::newRow("no message type") << QVariantMap() << asked << QString();
        QTest::newRow("another message type")
            << QVariantMap{{msgType, QStringLiteral("payStatus")}} << asked << QString();
        QTest::newRow("message type in another case")
            << QVariantMap{{msgType, QStringLiteral("CheckPayStatus")}} << asked << QString();
        QTest::newRow("message type under another name")
            << QVariantMap{{QStringLiteral("msgtype"), QStringLiteral("checkPayStatus")}} << asked
            << QString();
        QTest::newRow("unknown uid") << reply << QStringLiteral("1") << QString();
        QTest::newRow("empty uid") << reply << QString() << QString();
        QTest::newRow("uid with a blank") << reply << QStringLiteral("asked ") << QString();
        QTest::newRow("no JSON") << reply << QStringLiteral("no JSON")
                                 << QStringLiteral("illegal value");
    }

    static void ignored(GuiTestGuard &guard)
    {
        QFETCH(const QVariantMap, headers);
        QFETCH(QString, uid);
        QFETCH(const QString, logged);

        Form form(Page::provider());
        form.open();
        form.askFor(QStringLiteral("123"));
        const QString asked = form.host.lastUid();
        QString text =
            BillingAnswers::data(uid.replace(QStringLiteral("asked"), asked), Page::account());
        if (!logged.isEmpty()) {
            text = QStringLiteral("no JSON");
            guard.expectWarning(logged);
        }
        guard.log.clear();
        emit form.host.incomingMessage(headers, text);
        QVERIFY2(form.waits(), "the page waits on");
        QVERIFY(form.showsNothing());
        QCOMPARE(guard.log.containing(QtWarningMsg, logged).isEmpty(), logged.isEmpty());

        form.answer(BillingAnswers::data(asked, Page::account()));
        QVERIFY(form.showsAccount());
    }

    static void malformedDescription(GuiTestGuard &guard)
    {
        guard.expectWarning(QStringLiteral("unterminated object"));
        Form form(Page::provider());
        form.open();
        form.askFor(QStringLiteral("123"));
        form.answer(BillingAnswers::withDescription(form.host.lastUid(),
                                                    QStringLiteral("{\"payParamList\":")));
        QVERIFY2(form.isIdle(), "the answer was matched before its description was read");
        QVERIFY(form.showsNothing());
        answersTheNextRequest(form);
    }

    static void answerWhileAnotherPageIsCurrent()
    {
        Form form(Page::provider());
        form.open();
        form.askFor(QStringLiteral("123"));
        form.answer(BillingAnswers::data(form.host.lastUid(), Page::account()));
        QVERIFY(
            QMetaObject::invokeMethod(form.page, "getClientData")); // a second request, unanswered
        const QString pending = form.host.lastUid();
        form.answer(BillingAnswers::data(pending, Page::account()));
        form.wizard.next();
        QCOMPARE(form.wizard.currentId(), 1);

        form.answer(BillingAnswers::outerError(pending, QStringLiteral("Поздно")));
        form.answer(QStringLiteral("not read at all"));
        QCOMPARE(form.wizard.currentId(), 1);
        form.wizard.back();
        QVERIFY(form.page->isComplete());
    }

    static void answerWhileHidden()
    {
        // Not shown yet: the wizard has no current page.
        Form form(Page::provider());
        QVERIFY(QMetaObject::invokeMethod(form.page, "getClientData"));
        form.answer(BillingAnswers::data(form.host.lastUid(), Page::account()));
        QVERIFY(!form.page->isComplete());
    }

    static void olderAnswerIsMatchedByItsOwnUid()
    {
        Form form(Page::provider());
        form.open();
        form.askFor(QStringLiteral("123"));
        const QString older = form.host.lastUid();
        QVERIFY(QMetaObject::invokeMethod(form.page, "getClientData"));
        const QString newer = form.host.lastUid();
        QVERIFY(older != newer);
        form.answer(BillingAnswers::data(older, Page::account()));
        QVERIFY(form.showsAccount());
        form.answer(BillingAnswers::data(newer, Page::account()));
        QVERIFY(form.showsAccount());
    }

    static void laterAnswerKeepsNothingOfTheOlder()
    {
        Form form(Page::provider());
        form.open();
        form.askFor(QStringLiteral("123"));
        const QString older = form.host.lastUid();
        QVERIFY(QMetaObject::invokeMethod(form.page, "getClientData"));
        form.answer(BillingAnswers::data(older, Page::account()));
        QVERIFY(form.showsAccount());
        form.answer(BillingAnswers::data(form.host.lastUid(), {}));
        QVERIFY(!form.page->isComplete());
        QVERIFY(!form.tbSummary->toPlainText().contains(QStringLiteral("Иванов Пётр")));
    }

    static void answerCountsOnce()
    {
        Form form(Page::provider());
        form.open();
        form.askFor(QStringLiteral("123"));
        const QString text = BillingAnswers::data(form.host.lastUid(), Page::account());
        form.answer(text);
        QVERIFY(form.showsAccount());
        QTest::keyClick(form.leAccount, Qt::Key_4);
        QVERIFY(form.showsNothing());
        form.answer(text);
        QVERIFY2(form.showsNothing(), "a repeated answer is for what stood in the form before");
    }

    static void editAfterAnAnswerClearsIt()
    {
        Form form(Page::provider());
        form.open();
        const auto fill = [&form] {
            form.askFor(QStringLiteral("123"));
            form.answer(BillingAnswers::data(form.host.lastUid(), Page::account()));
            return form.showsAccount();
        };
        QVERIFY(fill());
        QTest::keyClick(form.leAccount, Qt::Key_Backspace);
        QVERIFY(form.showsNothing());
        QVERIFY(fill());
        form.cbAmount->toggle();
        QVERIFY(form.showsNothing());
        QVERIFY(fill());
        form.cbAmount->toggle();
        QVERIFY(form.showsNothing());
        QVERIFY(fill());
        QVERIFY(QMetaObject::invokeMethod(form.page, "cleanAnswer"));
        QVERIFY(form.showsNothing());
    }

    static void nextIsUnavailableWhilePending()
    {
        Form form(Page::provider());
        form.open();
        form.askFor(QStringLiteral("123"));
        QVERIFY(!form.next()->isEnabled());
        form.answer(BillingAnswers::data(form.host.lastUid(), Page::account()));
        QVERIFY(form.next()->isEnabled());
        // Asked again with the earlier answer still on screen.
        form.ask();
        QVERIFY(form.waits());
        QVERIFY(form.showsNothing());
        QTest::mouseClick(form.next(), Qt::LeftButton);
        QCOMPARE(form.wizard.currentId(), 0);
        form.answer(BillingAnswers::data(form.host.lastUid(), Page::account()));
        QVERIFY(form.next()->isEnabled());
    }

    static void emptyAccountIsNeverComplete()
    {
        Form form(Page::provider());
        form.open();
        form.ask();
        QCOMPARE(form.host.sent().size(), 1);
        QVERIFY(form.lastParameters().isEmpty());
        form.answer(BillingAnswers::data(form.host.lastUid(), Page::account()));
        QVERIFY(form.isIdle());
        QVERIFY2(!form.page->isComplete(), "the mandatory field is empty");
        QVERIFY(!form.next()->isEnabled());
    }

    static void waitNeverEnds(GuiTestGuard &guard)
    {
        Form form(Page::provider());
        form.open();
        QCOMPARE(form.timer->interval(), 500);
        QCOMPARE(form.progressBar->minimum(), 0);
        QCOMPARE(form.progressBar->maximum(), 100);
        form.askFor(QStringLiteral("123"));
        for (int tick = 0; tick < 500; ++tick)
            QVERIFY(QMetaObject::invokeMethod(form.page, "progress"));
        QVERIFY(form.waits());
        QCOMPARE(form.progressBar->value(), 0);
        QVERIFY(guard.answers.seen().isEmpty());
        form.answer(BillingAnswers::data(form.host.lastUid(), Page::account()));
        QVERIFY(form.showsAccount());
        QCOMPARE(form.progressBar->value(), 0);
    }

    static void timerTicksThePage()
    {
        Form form(Page::provider());
        form.open();
        form.progressBar->setMaximum(100000); // the step of 500 fits into this range
        form.askFor(QStringLiteral("123"));
        form.timer->setInterval(1);
        QTRY_VERIFY(form.progressBar->value() >= 500);
        QCOMPARE(form.progressBar->value() % 500, 0);
    }

    static void timeoutOnAWiderRange(GuiTestGuard &guard)
    {
        Form form(Page::provider());
        form.open();
        form.progressBar->setMaximum(1000);
        form.askFor(QStringLiteral("123"));
        const QString uid = form.host.lastUid();
        QVERIFY(QMetaObject::invokeMethod(form.page, "progress"));
        QVERIFY(guard.answers.seen().isEmpty());
        guard.answers.ok();
        QVERIFY(QMetaObject::invokeMethod(form.page, "progress"));
        QCOMPARE(guard.answers.seen().size(), 1);
        QCOMPARE(guard.answers.seen().first().text, QStringLiteral("Connection timeout"));
        QCOMPARE(guard.answers.seen().first().title,
                 QStringLiteral("Ошибка ") + Page::provider().checkName());
        QVERIFY(!form.timer->isActive());
        QVERIFY(form.progressBar->isHidden());
        form.answer(BillingAnswers::data(uid, Page::account()));
        QVERIFY2(form.showsNothing(), "nothing is pending any more");
    }

    static void hostile_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("matched");
        for (const HostileAnswers::Row &row : HostileAnswers::all())
            QTest::newRow(row.name) << row.text << row.matched;
    }

    /// No box of the test's is planned: an answer without a failure's flag is never shown as one.
    static void hostile(GuiTestGuard &guard)
    {
        QFETCH(QString, text);
        QFETCH(const bool, matched);
        guard.expectWarning(QString()); // unreadable JSON is logged
        Form form(Page::provider());
        form.open();
        form.askFor(QStringLiteral("123"));
        const QString uid = form.host.lastUid();
        form.answer(text.replace(QStringLiteral("UID"), uid));
        QCOMPARE(form.isIdle(), matched);
        QCOMPARE(form.waits(), !matched);
        if (!matched) {
            form.answer(BillingAnswers::data(uid, Page::account()));
            QVERIFY(form.showsAccount());
        }
        answersTheNextRequest(form);
    }

    /// The page works: a request is sent and its answer shown.
    static void answersTheNextRequest(Form &form)
    {
        const int sent = form.host.sent().size();
        form.askFor(QStringLiteral("123"));
        QCOMPARE(form.host.sent().size(), sent + 1);
        form.answer(BillingAnswers::data(form.host.lastUid(), Page::account()));
        QVERIFY(form.showsAccount());
    }
};
