#include "qrdecoder.h"

#include <modalanswers.h>

#include <bus/busmessage.h>
#include <hostdata/hostdataseeder.h>
#include <scenario/cashierhands.h>
#include <scenario/roubles.h>
#include <scenario/steprunner.h>
#include <temporaryterminal.h>
#include <ui/mainwindow.h>
#include <ui/receiptview.h>
#include <ui/scannerpage.h>
#include <windows.h>

#include <molvacore/fiscaltag.h>

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDateEdit>
#include <QDoubleSpinBox>
#include <QFile>
#include <QInputDialog>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTableView>
#include <QTableWidget>
#include <QTest>
#include <QTextBrowser>
#include <QUrlQuery>

/// Whole payments through the window with the plugin that was built, by keys and clicks.
class TestWindowPayment : public QObject
{
    Q_OBJECT

private:
    /// Kopecks of one payment as one of those who know of it has them.
    struct Sums
    {
        qint64 total = 0;
        qint64 cash = 0;
        qint64 card = 0;
    };

    TemporaryTerminal m_context;
    std::unique_ptr<MainWindow> m_window;
    std::unique_ptr<StepRunner> m_runner;
    CashierHands m_hands;
    Sums m_screen; ///< on the payment page when Finish was pressed
    QVector<QJsonObject> m_posted;

    template<class Type>
    Type *child(const char *name) const
    {
        return m_window->findChild<Type *>(QLatin1String(name));
    }

    static bool enabled(const char *name)
    {
        const QWidget *widget = CashierHands::find(QLatin1String(name));
        return widget && widget->isEnabled();
    }

    static bool wizardButtonEnabled(QWizard::WizardButton which)
    {
        const auto *wizard = qobject_cast<QWizard *>(CashierHands::front());
        return wizard && wizard->button(which)->isEnabled();
    }

    static bool accountShown()
    {
        const auto *summary =
            qobject_cast<QTextBrowser *>(CashierHands::find(QStringLiteral("tbSummary")));
        return summary && !CashierHands::find(QStringLiteral("progressBar"))
            && !summary->toPlainText().isEmpty() && wizardButtonEnabled(QWizard::NextButton);
    }

    static qint64 shownIn(const char *spinBox)
    {
        const auto *box =
            qobject_cast<QDoubleSpinBox *>(CashierHands::find(QLatin1String(spinBox)));
        return box ? basix::FixNumber(100, box->value()).value() : -1;
    }

    void step(const QString &title, const std::function<bool()> &ready,
              const std::function<bool()> &act)
    {
        StepRunner::Step planned;
        planned.title = title;
        planned.ready = ready;
        planned.act = [this, title, act] {
            if (!act())
                m_runner->fail(title + QStringLiteral(": ") + m_hands.error());
        };
        m_runner->add(planned);
    }

    void next()
    {
        step(
            QStringLiteral("next"), [] { return wizardButtonEnabled(QWizard::NextButton); },
            [this] { return m_hands.clickWizard(QWizard::NextButton); });
    }

    void payCard(const QString &amount)
    {
        step(
            QStringLiteral("card"), [] { return enabled("pbCard"); },
            [this] { return m_hands.click(QStringLiteral("pbCard")); });
        step(
            QStringLiteral("card amount"),
            [] { return qobject_cast<QInputDialog *>(CashierHands::front()) != nullptr; },
            [this, amount] { return m_hands.enterAmount(Roubles::typed(amount)); });
        step(
            QStringLiteral("charged"),
            [] { return CashierHands::find(QStringLiteral("dsbCard")) && !enabled("dsbCard"); },
            [] { return true; });
    }

    /// What a cashier sees on the start page once the code of a bill was typed there.
    void finishScanned()
    {
        step(QStringLiteral("answer"), accountShown, [] { return true; });
        next();
        step(
            QStringLiteral("by debt"), [] { return enabled("pbByDebt"); },
            [this] { return m_hands.click(QStringLiteral("pbByDebt")); });
        next();
        finish();
    }

    static ScannerPage *scannerWindow()
    {
        return qobject_cast<ScannerPage *>(Windows::window("scannerWindow"));
    }

    /// Types over the name in Qt's file dialog and confirms it.
    static void answerFileDialog(ModalAnswers &answers, const QString &file)
    {
        answers.run([file](QDialog *dialog) {
            auto *name = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
            name->setText(file);
            QTest::keyClick(name, Qt::Key_Return);
        });
    }

    static QByteArray contentOf(const QString &file)
    {
        QFile opened(file);
        return opened.open(QIODevice::ReadOnly) ? opened.readAll() : QByteArray();
    }

    /// Takes a payment of the ordinary account in cash; the receipt goes to `address`.
    void payOrdinary(const QString &address)
    {
        step(
            QStringLiteral("account"), [] { return enabled("leAccount"); },
            [this, address] {
                return m_hands.fill(QStringLiteral("leAccount"), SampleNumber::ORDINARY)
                    && (address.isEmpty() || m_hands.fill(QStringLiteral("lePhone"), address))
                    && m_hands.click(QStringLiteral("pbGetData"));
            });
        finishScanned();
        pay();
    }

    void finish()
    {
        step(
            QStringLiteral("finish"), [] { return wizardButtonEnabled(QWizard::FinishButton); },
            [this] {
                m_screen.cash = shownIn("dsbCash");
                m_screen.card = shownIn("dsbCard");
                m_screen.total = m_screen.cash + m_screen.card;
                return m_hands.clickWizard(QWizard::FinishButton);
            });
        StepRunner::Step sent;
        sent.title = QStringLiteral("sent");
        sent.expectsMessage = true;
        sent.ready = [] { return qobject_cast<QMessageBox *>(CashierHands::front()) != nullptr; };
        sent.act = [this] {
            const auto *box = qobject_cast<QMessageBox *>(CashierHands::front());
            if (box->icon() == QMessageBox::Critical || !m_hands.confirmMessage())
                m_runner->fail(box->text());
        };
        m_runner->add(sent);
    }

    /// Starts the payment with F2 and lets the planned steps go through its dialog.
    void pay()
    {
        m_runner->start();
        QTest::keyClick(m_window.get(), Qt::Key_F2);
        QTRY_VERIFY2_WITH_TIMEOUT(m_runner->isFinished(), "the steps did not end", 20000);
        QVERIFY2(!m_runner->failed(), qPrintable(m_runner->failure()));
    }

    Sums shownInJournal() const
    {
        m_window->showJournal();
        const QAbstractItemModel *model = child<QTableView>("tvJournal")->model();
        const auto cell = [model](const QString &title) {
            for (int column = 0; column < model->columnCount(); ++column) {
                if (model->headerData(column, Qt::Horizontal).toString() == title)
                    return basix::FixNumber(100, model->index(0, column).data().toString()).value();
            }
            return Q_INT64_C(-1);
        };
        return {cell(QStringLiteral("Сумма")), cell(QStringLiteral("Наличными")),
                cell(QStringLiteral("Картой"))};
    }

    /// Through a connection of its own: what is in the file.
    Sums storedInDatabase() const
    {
        Sums sums{-1, -1, -1};
        {
            QSqlDatabase db =
                QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("check"));
            db.setDatabaseName(m_context.file(QStringLiteral("payments.sqlite")));
            db.open();
            QSqlQuery query(db);
            if (query.exec(QStringLiteral(
                    "SELECT sum, cash, card FROM packs ORDER BY sequence DESC LIMIT 1"))
                && query.next())
                sums = {query.value(0).toLongLong(), query.value(1).toLongLong(),
                        query.value(2).toLongLong()};
        }
        QSqlDatabase::removeDatabase(QStringLiteral("check"));
        return sums;
    }

    Sums inFiscalJournal() const
    {
        const auto receipt = m_context->fiscalJournal().receipts(0, 1).value(0);
        return {receipt.total,
                receipt.document.value(FiscalTag::key(FiscalTag::CashSum)).toLongLong(),
                receipt.document.value(FiscalTag::key(FiscalTag::CashlessSum)).toLongLong()};
    }

    Sums onTheBus() const
    {
        Sums sums;
        if (m_posted.size() != 1)
            return {-1, -1, -1};
        const QJsonObject pack = m_posted.constFirst();
        for (const QJsonValue &payment : pack.value(QStringLiteral("payments")).toArray())
            sums.total += kopecks(payment.toObject().value(QStringLiteral("summ")));
        for (const QJsonValue &operation : pack.value(QStringLiteral("operations")).toArray()) {
            const QJsonObject each = operation.toObject();
            qint64 &part =
                each.value(QStringLiteral("moneyType")).toInt() == 2 ? sums.card : sums.cash;
            part += kopecks(each.value(QStringLiteral("sum")));
        }
        return sums;
    }

    static qint64 kopecks(const QJsonValue &value)
    {
        if (value.isString())
            return basix::FixNumber(100, value.toString()).value();
        return qint64(value.toDouble());
    }

    static QString text(const Sums &sums)
    {
        return QStringLiteral("%1 = %2 + %3")
            .arg(QString::number(sums.total), QString::number(sums.cash),
                 QString::number(sums.card));
    }

    void compareTheFour()
    {
        QTRY_COMPARE(m_context->payments().records({}, 0, 1).value(0).state,
                     PackState::Acknowledged);
        QVERIFY(m_screen.total > 0);
        QCOMPARE(text(shownInJournal()), text(m_screen));
        QCOMPARE(text(storedInDatabase()), text(m_screen));
        QCOMPARE(text(inFiscalJournal()), text(m_screen));
        QCOMPARE(text(onTheBus()), text(m_screen));
        const PaymentRecord pack = m_context->payments().records({}, 0, 1).value(0);
        qint64 taken = 0;
        for (const TakenPayment &payment :
             m_context->billing().takenPayments(QString::number(pack.packId)))
            taken += payment.sum;
        QCOMPARE(taken, m_screen.total);
    }

    /// The code on the picture that the journal shows, against what the register signed.
    void compareReceiptOnScreen()
    {
        QTest::keyClick(m_window.get(), Qt::Key_2, Qt::ControlModifier);
        m_window->showJournal();
        const auto *view = m_window->findChild<ReceiptView *>();
        QVERIFY(!view->receipt().isNull());
        const QByteArray code = decodeQr(view->receipt());
        QVERIFY2(!code.isEmpty(), "the code on the receipt cannot be read");
        const QUrlQuery fields(QString::fromLatin1(code));
        const auto receipt = m_context->fiscalJournal().receipts(0, 1).value(0);
        QCOMPARE(fields.queryItemValue(QStringLiteral("fn")), receipt.storage);
        QCOMPARE(fields.queryItemValue(QStringLiteral("i")), QString::number(receipt.number));
        // The sign is ten digits with leading zeros on paper and a number in the code.
        QCOMPARE(fields.queryItemValue(QStringLiteral("fp")).toLongLong(),
                 receipt.sign.toLongLong());
        QCOMPARE(fields.queryItemValue(QStringLiteral("t")),
                 receipt.time.toString(QStringLiteral("yyyyMMddTHHmm")));
        QCOMPARE(basix::FixNumber(100, fields.queryItemValue(QStringLiteral("s"))).value(),
                 m_screen.total);
        QCOMPARE(fields.queryItemValue(QStringLiteral("n")), QStringLiteral("1"));
        const QString printed = child<QPlainTextEdit>("pteReceiptText")->toPlainText();
        const QString total = basix::FixNumber(100, m_screen.total).toString();
        QVERIFY2(printed.contains(QRegularExpression(QStringLiteral("ИТОГ +=%1\n").arg(total))),
                 qPrintable(printed));
    }

private slots:
    void init()
    {
        Windows::useFontOfTheTerminal();
        QVERIFY2(m_context.open(), qPrintable(m_context.error()));
        QVERIFY2(m_context->loadPlugin(QStringLiteral(SELMAR_PLUGIN_FILE), QApplication::font()),
                 qPrintable(m_context->pluginHost().error()));
        m_window = std::make_unique<MainWindow>(*m_context);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        m_runner = std::make_unique<StepRunner>(0);
        m_screen = Sums();
        m_posted.clear();
        connect(&m_context->bus(), &MessageBus::traffic, this, [this](const BusMessage &message) {
            if (message.address == PaysController::PACK_DESTINATION)
                m_posted.append(QJsonDocument::fromJson(message.body.bytes()).object());
        });
    }

    void cleanup()
    {
        m_runner.reset();
        m_window.reset();
        m_context.close();
        QVERIFY(QApplication::topLevelWidgets().isEmpty());
    }

    void individual_data()
    {
        QTest::addColumn<QString>("card");
        QTest::addColumn<QString>("total");
        QTest::newRow("cash") << QString() << QStringLiteral("1500.50");
        QTest::newRow("card and cash") << QStringLiteral("700.00") << QStringLiteral("1500.50");
        QTest::newRow("card alone") << QStringLiteral("1500.50") << QStringLiteral("1500.50");
        QTest::newRow("two kopecks of cash")
            << QStringLiteral("1500.48") << QStringLiteral("1500.50");
    }

    void individual()
    {
        QFETCH(QString, card);
        QFETCH(QString, total);
        step(
            QStringLiteral("account"), [] { return enabled("leAccount"); },
            [this] {
                return m_hands.fill(QStringLiteral("leAccount"), SampleNumber::ORDINARY)
                    && m_hands.click(QStringLiteral("pbGetData"));
            });
        step(QStringLiteral("answer"), accountShown, [] { return true; });
        next();
        step(
            QStringLiteral("by debt"), [] { return enabled("pbByDebt"); },
            [this] { return m_hands.click(QStringLiteral("pbByDebt")); });
        next();
        if (!card.isEmpty())
            payCard(card);
        finish();
        pay();
        QCOMPARE(m_screen.total, basix::FixNumber(100, total).value());
        compareTheFour();
        compareReceiptOnScreen();
    }

    void legalWithSeveralDocuments()
    {
        auto *providers = child<QTableWidget>("twProviders");
        providers->setFocus();
        QTest::keyClick(providers, Qt::Key_Down);
        step(
            QStringLiteral("contract"), [] { return enabled("leAccount"); },
            [this] {
                return m_hands.fill(QStringLiteral("leAccount"), SampleNumber::LEGAL_SEVERAL)
                    && m_hands.click(QStringLiteral("pbGetData"));
            });
        step(QStringLiteral("answer"), accountShown, [] { return true; });
        next();
        step(
            QStringLiteral("documents"), [] { return enabled("tvServices"); },
            [this] {
                auto *view = qobject_cast<QAbstractItemView *>(
                    CashierHands::find(QStringLiteral("tvServices")));
                int ticked = 0;
                for (int row = 0; view && row < view->model()->rowCount(); ++row) {
                    const QModelIndex cell = view->model()->index(row, 0);
                    if (cell.data(Qt::CheckStateRole).isValid()
                        && cell.data(Qt::CheckStateRole).toInt() == Qt::Unchecked) {
                        if (!m_hands.tickCell(*view, cell))
                            return false;
                        ++ticked;
                    }
                }
                return ticked > 1;
            });
        step(
            QStringLiteral("by debt"), [] { return enabled("pbByDebt"); },
            [this] { return m_hands.click(QStringLiteral("pbByDebt")); });
        next();
        finish();
        pay();
        compareTheFour();
        compareReceiptOnScreen();
    }

    void codeOfABillIsTypedIntoTheOpenPayment()
    {
        QTest::keyClick(m_window.get(), Qt::Key_3, Qt::ControlModifier);
        QTest::mouseClick(child<QPushButton>("pbBillSend"), Qt::LeftButton);
        QTest::keyClick(m_window.get(), Qt::Key_1, Qt::ControlModifier);
        // The scanner's window had the keyboard until now.
        step(
            QStringLiteral("trigger"),
            [] { return enabled("leAccount") && CashierHands::front()->isActiveWindow(); },
            [this] {
                return m_hands.click(QStringLiteral("leAccount")) && m_hands.press(Qt::Key_F9);
            });
        finishScanned();
        pay();
        QCOMPARE(m_context->payments().records({}, 0, 1).value(0).account, SampleNumber::ORDINARY);
        compareTheFour();
    }

    void scannerIsOpenedAndFedWhileAPaymentIsOpen()
    {
        QApplication::clipboard()->setText(
            QStringLiteral("ST00012|Name=Водоканал|PersAcc=%1").arg(SampleNumber::ORDINARY));
        step(
            QStringLiteral("scanner's key"), [] { return enabled("leAccount"); },
            [this] {
                return m_hands.click(QStringLiteral("leAccount"))
                    && m_hands.press(Qt::Key_F9, Qt::ShiftModifier);
            });
        step(
            QStringLiteral("read the clipboard"),
            [] { return scannerWindow() && scannerWindow()->isActiveWindow(); },
            [] {
                const ScannerPage *scanner = scannerWindow();
                auto *read =
                    scanner->findChild<QPushButton *>(QStringLiteral("pbScannerClipboard"));
                // What a dialog holds up gets no clicks.
                QTest::mouseClick(read, Qt::LeftButton);
                CashierHands::front()->activateWindow();
                return !scanner->text().isEmpty();
            });
        step(
            QStringLiteral("trigger"),
            [] { return CashierHands::front() && CashierHands::front()->isActiveWindow(); },
            [this] {
                return m_hands.click(QStringLiteral("leAccount")) && m_hands.press(Qt::Key_F9);
            });
        finishScanned();
        pay();
        compareTheFour();
    }

    void journalIsSearchedByKeys()
    {
        payOrdinary(QString());
        compareTheFour();
        QTest::keyClick(m_window.get(), Qt::Key_2, Qt::ControlModifier);
        const QAbstractItemModel *model = child<QTableView>("tvJournal")->model();
        QCOMPARE(model->rowCount(), 1);
        auto *account = child<QLineEdit>("leJournalAccount");
        account->setFocus();
        QTest::keyClicks(account, QStringLiteral("7002"));
        QCOMPARE(model->rowCount(), 0);
        QCOMPARE(child<QLabel>("lJournalExtent")->text(), QStringLiteral("Таких платежей нет."));
        QTest::keyClick(account, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(account, SampleNumber::ORDINARY.left(5));
        QCOMPARE(model->rowCount(), 1);
        // One day, then the day before it.
        auto *oneDay = child<QAbstractButton>("cbJournalOneDay");
        QTest::keyClick(oneDay, Qt::Key_Space);
        auto *day = child<QDateEdit>("deJournalDay");
        QVERIFY(day->isEnabled());
        QCOMPARE(model->rowCount(), 1);
        day->setFocus();
        day->setCurrentSection(QDateTimeEdit::DaySection);
        QTest::keyClick(day, Qt::Key_Down);
        if (day->date().day() != QDate::currentDate().day())
            QCOMPARE(model->rowCount(), 0);
        QTest::keyClick(oneDay, Qt::Key_Space);
        QCOMPARE(model->rowCount(), 1);
        auto *state = child<QComboBox>("cbJournalState");
        QTest::keyClick(state, Qt::Key_Down);
        QCOMPARE(state->currentText(), packStateText(PackState::Saved));
        QCOMPARE(model->rowCount(), 0);
        QTest::keyClick(state, Qt::Key_End);
        QCOMPARE(state->currentText(), packStateText(PackState::Acknowledged));
        QCOMPARE(model->rowCount(), 1);
    }

    void receiptAddressIsShown_data()
    {
        QTest::addColumn<QString>("address");
        QTest::addColumn<QString>("shown");
        QTest::newRow("none") << QString()
                              << QStringLiteral("Электронный чек: покупатель не просил.");
        QTest::newRow("e-mail") << QStringLiteral("petrov@example.org")
                                << QStringLiteral("Электронный чек: petrov@example.org");
    }

    void receiptAddressIsShown()
    {
        QFETCH(QString, address);
        QFETCH(QString, shown);
        payOrdinary(address);
        compareTheFour();
        m_window->showJournal();
        QCOMPARE(child<QLabel>("lReceiptAddress")->text(), shown);
        const QString summary = child<QLabel>("lPaymentDetails")->text();
        for (const PackState state :
             {PackState::HandedOn, PackState::Posted, PackState::Acknowledged})
            QVERIFY2(summary.contains(packStateText(state)), qPrintable(summary));
    }

    void packIsShownAndSaved()
    {
        payOrdinary(QString());
        compareTheFour();
        m_window->showJournal();
        const QString shown = child<QPlainTextEdit>("ptePack")->toPlainText();
        const QJsonObject pack = QJsonDocument::fromJson(shown.toUtf8()).object();
        QJsonObject posted = m_posted.constFirst();
        // Whoever posts it adds where it comes from.
        posted.remove(PaysController::BOX_ID);
        QCOMPARE(pack, posted);
        QVERIFY(shown.count(QLatin1Char('\n')) > 50);
        ModalAnswers answers;
        const QString file = m_context.file(QStringLiteral("пачка.json"));
        answerFileDialog(answers, file);
        QTest::mouseClick(child<QPushButton>("pbSavePack"), Qt::LeftButton);
        QCOMPARE(answers.problems(), QStringList());
        QCOMPARE(contentOf(file), shown.toUtf8());
    }

    void receiptIsSaved()
    {
        payOrdinary(QStringLiteral("petrov@example.org"));
        compareTheFour();
        m_window->showJournal();
        const QString text = child<QPlainTextEdit>("pteReceiptText")->toPlainText();
        auto *save = child<QPushButton>("pbSaveReceipt");
        for (const char *name : {"receipt.txt", "receipt.png", "receipt"}) {
            ModalAnswers answers;
            answerFileDialog(answers, m_context.file(QLatin1String(name)));
            QTest::mouseClick(save, Qt::LeftButton);
            QCOMPARE(answers.problems(), QStringList());
        }
        QCOMPARE(contentOf(m_context.file(QStringLiteral("receipt.txt"))), text.toUtf8() + '\n');
        const QImage picture(m_context.file(QStringLiteral("receipt.png")));
        QVERIFY(decodeQr(picture).contains("fn="));
        // Without an ending it is the kind of file that the dialog offers.
        QVERIFY(contentOf(m_context.file(QStringLiteral("receipt.pdf"))).startsWith("%PDF"));

        ModalAnswers answers;
        answerFileDialog(answers, m_context.file(QStringLiteral("receipt.docx")));
        answers.ok();
        QTest::mouseClick(save, Qt::LeftButton);
        QCOMPARE(answers.problems(), QStringList());
        QCOMPARE(answers.pending(), 0);
        QVERIFY(answers.seen().constLast().text.contains(QStringLiteral(".pdf, .png или .txt")));
    }

    void receiptOfAnotherStorageIsNotShown()
    {
        payOrdinary(QString());
        compareTheFour();
        PaymentRecord stranger = m_context->payments().records({}, 0, 1).constFirst();
        stranger.packId += 1;
        stranger.created = stranger.created.addSecs(1);
        stranger.fiscalStorage = QStringLiteral("9960440300000099");
        QVERIFY2(m_context->payments().save(stranger, {{QStringLiteral("id"), stranger.packId}}),
                 qPrintable(m_context->payments().lastError()));
        emit m_context->paysController().changed(stranger.packId);
        m_window->showJournal();
        QVERIFY(
            child<QLabel>("lPaymentDetails")->text().contains(QString::number(stranger.packId)));
        QVERIFY(m_window->findChild<ReceiptView *>()->receipt().isNull());
        QVERIFY(!child<QPushButton>("pbSaveReceipt")->isEnabled());
        QTest::keyClick(child<QTableView>("tvJournal"), Qt::Key_Down);
        QVERIFY(!m_window->findChild<ReceiptView *>()->receipt().isNull());
        QVERIFY(child<QPushButton>("pbSaveReceipt")->isEnabled());
    }
};

QTEST_MAIN(TestWindowPayment)
#include "tst_windowpayment.moc"
