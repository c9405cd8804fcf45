#include "workplace.h"

#include <modalanswers.h>
#include <ui/recoverydialog.h>

#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTableView>
#include <QtTest>

class tst_RecoveryDialog : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void nothingIsOpen();
    void tellsWhatHappened();
    void buttonsFollowTheSelection();
    void savesByReceipt();
    void refusedQuestionMovesNothing();
    void refunds();
    void posts();
    void postpones();
    void actsOnAllSelected();
    void tellsWhyItFailed();
    void worksByKeyboard();

private:
    template<typename Widget>
    Widget *find(const char *name) const
    {
        return m_dialog->findChild<Widget *>(QLatin1String(name));
    }
    void load();
    void click(const char *name) { QTest::mouseClick(find<QPushButton>(name), Qt::LeftButton); }
    void clickAndAnswer(const char *name, QMessageBox::StandardButton answer);
    QString cell(int row, int column) const
    {
        const auto *model = find<QTableView>("tvRecovery")->model();
        return model->index(row, column).data().toString();
    }

    std::unique_ptr<Workplace> m_place;
    std::unique_ptr<RecoveryDialog> m_dialog;
};

void tst_RecoveryDialog::init()
{
    m_place = std::make_unique<Workplace>();
    QVERIFY(m_place->ready);
}

void tst_RecoveryDialog::cleanup()
{
    m_dialog.reset();
    m_place.reset();
    QVERIFY(QApplication::topLevelWidgets().isEmpty());
}

void tst_RecoveryDialog::load()
{
    m_dialog = std::make_unique<RecoveryDialog>(*m_place->reconciler, *m_place->controller);
    QVERIFY(m_dialog->load());
    m_dialog->show();
    QVERIFY(QTest::qWaitForWindowActive(m_dialog.get()));
}

void tst_RecoveryDialog::clickAndAnswer(const char *name, QMessageBox::StandardButton answer)
{
    QTimer::singleShot(0, m_dialog.get(), [answer] {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        QVERIFY(box);
        QTest::mouseClick(box->button(answer), Qt::LeftButton);
    });
    click(name);
}

void tst_RecoveryDialog::nothingIsOpen()
{
    load();
    QCOMPARE(m_dialog->openCount(), 0);
    QVERIFY(find<QLabel>("lRecoverySummary")->text().contains(QStringLiteral("сошлись")));
    for (const char *name : {"pbSaveByReceipt", "pbPost", "pbRefund", "pbPostpone"})
        QVERIFY2(!find<QPushButton>(name)->isEnabled(), name);
}

void tst_RecoveryDialog::tellsWhatHappened()
{
    m_place->print(5000, 0);
    load();
    QCOMPARE(m_dialog->openCount(), 1);
    QCOMPARE(cell(0, 0), QStringLiteral("21.11.2026 10:00:00"));
    QCOMPARE(cell(0, 1), SampleNumber::ORDINARY);
    QCOMPARE(cell(0, 2), QStringLiteral("50.00"));
    QCOMPARE(cell(0, 3), PaymentCase::stateText(PaymentCase::State::FiscalisedNotSaved));
    const QString details = find<QLabel>("lRecoveryDetails")->text();
    QVERIFY2(details.contains(QStringLiteral("Чек № ФД 2")), qPrintable(details));
    QVERIFY2(details.contains(QStringLiteral("«Сохранить по чеку»")), qPrintable(details));
}

void tst_RecoveryDialog::buttonsFollowTheSelection()
{
    m_place->print(5000, 0);
    m_place->now = m_place->now.addSecs(60);
    m_place->charge(1000);
    load();
    auto *table = find<QTableView>("tvRecovery");
    const auto enabled = [this] {
        return QStringLiteral("%1%2%3").arg(
            QString::number(find<QPushButton>("pbSaveByReceipt")->isEnabled()),
            QString::number(find<QPushButton>("pbPost")->isEnabled()),
            QString::number(find<QPushButton>("pbRefund")->isEnabled()));
    };
    QCOMPARE(enabled(), QStringLiteral("001")); // the newest is selected
    table->selectRow(1);
    QCOMPARE(enabled(), QStringLiteral("100"));
    table->selectAll();
    QCOMPARE(enabled(), QStringLiteral("101"));
    table->clearSelection();
    QCOMPARE(enabled(), QStringLiteral("000"));
}

void tst_RecoveryDialog::savesByReceipt()
{
    m_place->print(5000, 0);
    load();
    clickAndAnswer("pbSaveByReceipt", QMessageBox::Yes);
    QCOMPARE(m_place->payments.count({}), 1);
    QCOMPARE(cell(0, 3), PaymentCase::stateText(PaymentCase::State::SavedNotPosted));
    m_place->controller->drain(m_place->bus);
    QTRY_COMPARE(m_dialog->openCount(), 0);
}

void tst_RecoveryDialog::refusedQuestionMovesNothing()
{
    m_place->print(5000, 0);
    m_place->charge(1000);
    load();
    find<QTableView>("tvRecovery")->selectAll();
    clickAndAnswer("pbSaveByReceipt", QMessageBox::No);
    clickAndAnswer("pbRefund", QMessageBox::No);
    QCOMPARE(m_place->payments.count({}), 0);
    QCOMPARE(m_place->charges.refundedTotal(), Q_INT64_C(0));
    QCOMPARE(m_dialog->openCount(), 2);
}

void tst_RecoveryDialog::refunds()
{
    m_place->charge(1000);
    load();
    clickAndAnswer("pbRefund", QMessageBox::Yes);
    QCOMPARE(m_place->charges.refundedTotal(), Q_INT64_C(1000));
    QCOMPARE(m_dialog->openCount(), 0);
}

void tst_RecoveryDialog::posts()
{
    m_place->print(5000, 0);
    m_place->save(5000, 0);
    m_place->bus.setConnected(false);
    m_place->controller->outbox().start(m_place->bus);
    load();
    m_place->bus.setConnected(true);
    click("pbPost");
    QTRY_COMPARE(m_dialog->openCount(), 0);
    QCOMPARE(m_place->billing.packCount(), 1);
}

void tst_RecoveryDialog::postpones()
{
    m_place->charge(1000);
    load();
    click("pbPostpone");
    QVERIFY(!m_dialog->isVisible());
    QCOMPARE(m_place->open().size(), 1);
}

void tst_RecoveryDialog::actsOnAllSelected()
{
    for (int i = 0; i < 20; ++i)
        m_place->charge(1000 + i * 100);
    load();
    find<QTableView>("tvRecovery")->selectAll();
    clickAndAnswer("pbRefund", QMessageBox::Yes);
    QCOMPARE(m_dialog->openCount(), 0);
    QCOMPARE(m_place->charges.refundedTotal(), m_place->charges.chargedTotal());
}

void tst_RecoveryDialog::tellsWhyItFailed()
{
    QVariantMap document = Receipts::good();
    document.insert(QStringLiteral("printable"), QStringList());
    QVERIFY(m_place->print(document, SampleNumber::ORDINARY) > 0);
    load();
    ModalAnswers answers;
    answers.run([](QDialog *dialog) {
        auto *box = qobject_cast<QMessageBox *>(dialog);
        QTest::mouseClick(box->button(QMessageBox::Yes), Qt::LeftButton);
    });
    answers.ok();
    click("pbSaveByReceipt");
    QVERIFY2(answers.problems().isEmpty(), qPrintable(answers.problems().join(QLatin1Char(' '))));
    QCOMPARE(answers.pending(), 0);
    QVERIFY(answers.seen().constLast().text.contains(QStringLiteral("не понять")));
    QCOMPARE(m_dialog->openCount(), 1);
    QCOMPARE(m_place->payments.count({}), 0);
}

void tst_RecoveryDialog::worksByKeyboard()
{
    m_place->charge(1000);
    m_place->print(5000, 0);
    load();
    auto *table = find<QTableView>("tvRecovery");
    QVERIFY(table->hasFocus());
    QTest::keyClick(table, Qt::Key_Down);
    QCOMPARE(table->currentIndex().row(), 1);
    QStringList names;
    for (int i = 0; i < 8; ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        names.append(QApplication::focusWidget()->objectName());
    }
    QVERIFY2(names.contains(QStringLiteral("pbPostpone")),
             qPrintable(names.join(QLatin1Char(' '))));
    table->setFocus();
    // Enter closes and moves no money.
    QTest::keyClick(table, Qt::Key_Return);
    QTRY_VERIFY(!m_dialog->isVisible());
    QCOMPARE(m_place->charges.refundedTotal(), Q_INT64_C(0));
    QCOMPARE(m_place->payments.count({}), 0);
}

QTEST_MAIN(tst_RecoveryDialog)
#include "tst_recoverydialog.moc"
