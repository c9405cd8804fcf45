#include <scenario/cashierhands.h>

#include <QApplication>
#include <QCheckBox>
#include <QInputDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QStandardItemModel>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>
#include <QWizard>

#include <memory>

class TestCashierHands : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QWidget> m_window;
    QLineEdit *m_field = nullptr;
    QPushButton *m_button = nullptr;
    QTableView *m_table = nullptr;
    QStandardItemModel m_model;
    CashierHands m_hands;

private slots:
    void init()
    {
        m_hands = CashierHands();
        m_window = std::make_unique<QWidget>();
        auto *layout = new QVBoxLayout(m_window.get());
        m_field = new QLineEdit(m_window.get());
        m_field->setObjectName(QStringLiteral("leField"));
        m_button = new QPushButton(QStringLiteral("Дальше"), m_window.get());
        m_button->setObjectName(QStringLiteral("pbButton"));
        m_table = new QTableView(m_window.get());
        m_table->setObjectName(QStringLiteral("tvTable"));
        m_model.clear();
        m_model.setRowCount(3);
        m_model.setColumnCount(2);
        auto *box = new QStandardItem(QStringLiteral("документ"));
        box->setCheckable(true);
        box->setEditable(false);
        m_model.setItem(1, 0, box);
        m_table->setModel(&m_model);
        layout->addWidget(m_field);
        layout->addWidget(m_button);
        layout->addWidget(m_table);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        m_field->setFocus();
    }

    void cleanup()
    {
        m_window.reset();
        QVERIFY(QApplication::topLevelWidgets().isEmpty());
    }

    void typing_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("Latin") << QStringLiteral("ST00012|Name=x");
        QTest::newRow("Cyrillic") << QStringLiteral("Ёлка, №5 «щ»");
        QTest::newRow("digits") << QStringLiteral("0012345");
        QTest::newRow("astral") << QString::fromUtf8("a\xf0\x9f\x98\x80z");
    }

    void typing()
    {
        QFETCH(QString, text);
        QVERIFY(m_hands.type(text));
        QCOMPARE(m_field->text(), text);
    }

    void scanEndsWithEnter()
    {
        QSignalSpy entered(m_field, &QLineEdit::returnPressed);
        QVERIFY(m_hands.scan(QStringLiteral("ST00012|PersAcc=1")));
        QCOMPARE(m_field->text(), QStringLiteral("ST00012|PersAcc=1"));
        QCOMPARE(entered.count(), 1);
    }

    void fillTypesOverWhatStands()
    {
        m_field->setText(QStringLiteral("старое"));
        m_button->setFocus();
        QVERIFY(m_hands.fill(QStringLiteral("leField"), QStringLiteral("новое")));
        QCOMPARE(m_field->text(), QStringLiteral("новое"));
    }

    void clickReachesTheButton()
    {
        QSignalSpy clicked(m_button, &QPushButton::clicked);
        QVERIFY(m_hands.click(QStringLiteral("pbButton")));
        QCOMPARE(clicked.count(), 1);
    }

    void unreachableWidgetsAreNotClicked_data()
    {
        QTest::addColumn<QString>("obstacle");
        QTest::newRow("disabled") << QStringLiteral("недоступен");
        QTest::newRow("hidden") << QStringLiteral("нет");
        QTest::newRow("behind a dialog") << QStringLiteral("заслонён");
        QTest::newRow("unknown name") << QStringLiteral("нет");
    }

    void unreachableWidgetsAreNotClicked()
    {
        QFETCH(QString, obstacle);
        const QByteArray row = QTest::currentDataTag();
        QSignalSpy clicked(m_button, &QPushButton::clicked);
        bool done = true;
        if (row == "disabled") {
            m_button->setEnabled(false);
            done = m_hands.click(QStringLiteral("pbButton"));
        } else if (row == "hidden") {
            m_button->hide();
            done = m_hands.click(QStringLiteral("pbButton"));
        } else if (row == "unknown name") {
            done = m_hands.click(QStringLiteral("pbAbsent"));
        } else {
            QDialog dialog;
            QTimer::singleShot(0, &dialog, [&] {
                done = m_hands.click(m_button);
                dialog.reject();
            });
            dialog.exec();
        }
        QVERIFY(!done);
        QCOMPARE(clicked.count(), 0);
        QVERIFY2(m_hands.error().contains(obstacle), qPrintable(m_hands.error()));
    }

    void cellIsEditedByDoubleClick()
    {
        QVERIFY2(m_hands.enterCell(*m_table, m_model.index(0, 1), QStringLiteral("125")),
                 qPrintable(m_hands.error()));
        // Qt commits an editor from the event loop.
        QTRY_COMPARE(m_model.index(0, 1).data().toString(), QStringLiteral("125"));
    }

    void readOnlyCellIsRefused()
    {
        m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
        QVERIFY(!m_hands.enterCell(*m_table, m_model.index(0, 1), QStringLiteral("125")));
        QVERIFY(m_hands.error().contains(QStringLiteral("не редактируется")));
    }

    void cellIsTickedWithMouseAndSpace()
    {
        const QModelIndex cell = m_model.index(1, 0);
        QVERIFY(m_hands.tickCell(*m_table, cell));
        QCOMPARE(cell.data(Qt::CheckStateRole).toInt(), int(Qt::Checked));
        QVERIFY(m_hands.toggleCell(*m_table, cell));
        QCOMPARE(cell.data(Qt::CheckStateRole).toInt(), int(Qt::Unchecked));
    }

    void messageIsConfirmed()
    {
        bool done = false;
        QTimer::singleShot(0, this, [&] { done = m_hands.confirmMessage(); });
        const auto answer =
            QMessageBox::information(m_window.get(), QStringLiteral("Т"), QStringLiteral("текст"));
        QVERIFY(done);
        QCOMPARE(answer, QMessageBox::Ok);
    }

    void amountDialogTakesTheTypedNumber()
    {
        bool done = false;
        bool ok = false;
        QTimer::singleShot(0, this,
                           [&] { done = m_hands.enterAmount(QLocale().toString(12.5, 'f', 2)); });
        const double amount =
            QInputDialog::getDouble(m_window.get(), QString(), QString(), 700, 0, 1000, 2, &ok);
        QVERIFY(done);
        QVERIFY(ok);
        QCOMPARE(amount, 12.5);
    }

    void withoutADialogThereIsNothingToAnswer()
    {
        QVERIFY(!m_hands.confirmMessage());
        QVERIFY(!m_hands.enterAmount(QStringLiteral("1")));
        QVERIFY(!m_hands.clickWizard(QWizard::NextButton));
    }

    void wizardButtonIsClicked()
    {
        QWizard wizard;
        wizard.addPage(new QWizardPage);
        wizard.addPage(new QWizardPage);
        QTimer::singleShot(0, &wizard, [&] {
            const bool next = m_hands.clickWizard(QWizard::NextButton);
            const bool second = wizard.currentId() == wizard.pageIds().value(1);
            if (!next || !second || !m_hands.clickWizard(QWizard::FinishButton))
                wizard.reject();
        });
        QCOMPARE(wizard.exec(), int(QDialog::Accepted));
    }
};

QTEST_MAIN(TestCashierHands)
#include "tst_cashierhands.moc"
