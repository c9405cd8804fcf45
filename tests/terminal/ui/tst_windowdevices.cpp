#include <scenario/cashierhands.h>
#include <scenario/steprunner.h>
#include <temporaryterminal.h>
#include <ui/mainwindow.h>
#include <windows.h>

#include <molvacore/cardchargelog.h>
#include <molvacore/fiscaltag.h>

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QDoubleSpinBox>
#include <QInputDialog>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTableView>
#include <QTest>

/// Payments through the plugin's own wizard while the windows beside it switch devices and show the
/// bus: by keys and clicks that a window held up by a dialog would not hear.
class TestWindowDevices : public QObject
{
    Q_OBJECT

private:
    /// Kopecks of one payment as one of those who know of it has them.
    struct Sums
    {
        qint64 cash = -1;
        qint64 card = -1;
    };

    TemporaryTerminal m_context;
    std::unique_ptr<MainWindow> m_window;
    std::unique_ptr<StepRunner> m_runner;
    CashierHands m_hands;
    Sums m_screen; ///< on the payment page when Finish was pressed

    /// Through the window system, so that a dialog that holds the window up swallows the click.
    static void click(QWidget &widget, const QPoint &place)
    {
        QWidget *window = widget.window();
        QTest::mouseClick(window->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                          widget.mapTo(window, place));
    }

    template<class Type>
    static Type *busChild(const char *name)
    {
        return Windows::shownWindow("busWindow")->findChild<Type *>(QLatin1String(name));
    }

    static QStringList busColumn(int column)
    {
        const QAbstractItemModel *model = busChild<QTableView>("tvBus")->model();
        QStringList texts;
        for (int row = 0; row < model->rowCount(); ++row)
            texts.append(model->index(row, column).data().toString());
        return texts;
    }

    static int repeated() { return busColumn(4).filter(QStringLiteral("Повторён вручную")).size(); }

    static void chooseOnBus(int row)
    {
        auto *table = busChild<QTableView>("tvBus");
        const QModelIndex cell = table->model()->index(row, 1);
        table->scrollTo(cell);
        click(*table->viewport(), table->visualRect(cell).center());
    }

    void step(const QString &title, const std::function<bool()> &ready,
              const std::function<bool()> &act, bool overMessage = false)
    {
        StepRunner::Step planned;
        planned.title = title;
        planned.ready = ready;
        planned.expectsMessage = overMessage;
        planned.act = [this, title, act] {
            if (!act())
                m_runner->fail(title + QStringLiteral(": ") + m_hands.error());
        };
        m_runner->add(planned);
    }

    static bool messageShown()
    {
        return qobject_cast<QMessageBox *>(CashierHands::front()) != nullptr;
    }

    /// Chooses the state with the mouse, whatever dialog is open over the main window.
    void choose(Device device, const QString &key, bool overMessage = false)
    {
        step(
            key, overMessage ? &TestWindowDevices::messageShown : nullptr,
            [device, key] {
                auto *list = Windows::shownWindow("devicesWindow")
                                 ->findChild<QListWidget *>(QStringLiteral("lw_")
                                                            + DeviceStates::option(device));
                QListWidgetItem *item = list->item(DeviceStates::keys(device).indexOf(key));
                list->scrollToItem(item);
                click(*list->viewport(), list->visualItemRect(item).center());
                return list->currentItem() == item;
            },
            overMessage);
    }

    void confirm(const QString &part)
    {
        step(
            part, &TestWindowDevices::messageShown,
            [this, part] {
                const QString text = qobject_cast<QMessageBox *>(CashierHands::front())->text();
                if (!text.contains(part))
                    m_runner->fail(text);
                return m_hands.confirmMessage();
            },
            true);
    }

    static bool enabled(const char *name)
    {
        const QWidget *widget = CashierHands::find(QLatin1String(name));
        return widget && widget->isEnabled();
    }

    void press(const char *name)
    {
        step(
            QLatin1String(name), [name] { return enabled(name); },
            [this, name] { return m_hands.click(QLatin1String(name)); });
    }

    void wizardButton(QWizard::WizardButton which)
    {
        step(
            QStringLiteral("button %1").arg(which),
            [which] {
                const auto *wizard = qobject_cast<QWizard *>(CashierHands::front());
                return wizard && wizard->button(which)->isEnabled();
            },
            [this, which] {
                if (which == QWizard::FinishButton)
                    m_screen = {shownIn("dsbCash"), shownIn("dsbCard")};
                return m_hands.clickWizard(which);
            });
    }

    static qint64 shownIn(const char *name)
    {
        const auto *box = qobject_cast<QDoubleSpinBox *>(CashierHands::find(QLatin1String(name)));
        return box ? basix::FixNumber(100, box->value()).value() : -1;
    }

    void askForTheAccount()
    {
        step(
            QStringLiteral("account"), [] { return enabled("leAccount"); },
            [this] { return m_hands.fill(QStringLiteral("leAccount"), SampleNumber::ORDINARY); });
        press("pbGetData");
    }

    void goToPayment()
    {
        wizardButton(QWizard::NextButton);
        press("pbByDebt");
        wizardButton(QWizard::NextButton);
    }

    void payByCard(const QString &amount)
    {
        press("pbCard");
        step(
            QStringLiteral("amount"),
            [] { return qobject_cast<QInputDialog *>(CashierHands::front()) != nullptr; },
            [this, amount] { return m_hands.enterAmount(amount); });
    }

    void run()
    {
        m_runner->start();
        QTest::keyClick(m_window.get(), Qt::Key_F2);
        QTRY_VERIFY2_WITH_TIMEOUT(m_runner->isFinished(), "the steps did not end", 30000);
        QVERIFY2(!m_runner->failed(), qPrintable(m_runner->failure()));
        QVERIFY2(!m_context->pluginHost().isDialogOpen(), "the wizard is open");
        QTRY_COMPARE(m_context->payments().records({}, 0, 1).value(0).state,
                     PackState::Acknowledged);
    }

    Sums inDatabase() const
    {
        Sums sums;
        {
            QSqlDatabase db =
                QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("check"));
            db.setDatabaseName(m_context.file(QStringLiteral("payments.sqlite")));
            db.open();
            QSqlQuery query(db);
            if (query.exec(QStringLiteral("SELECT cash, card FROM packs")) && query.next())
                sums = {query.value(0).toLongLong(), query.value(1).toLongLong()};
            if (query.next())
                sums = Sums();
        }
        QSqlDatabase::removeDatabase(QStringLiteral("check"));
        return sums;
    }

    Sums inFiscalJournal() const
    {
        if (m_context->fiscalJournal().receiptCount() != 1)
            return {};
        const auto receipt = m_context->fiscalJournal().receipts(0, 1).value(0);
        return {receipt.document.value(FiscalTag::key(FiscalTag::CashSum)).toLongLong(),
                receipt.document.value(FiscalTag::key(FiscalTag::CashlessSum)).toLongLong()};
    }

    /// As the chosen message of the bus window has them, copied from there.
    static Sums copiedFromTheBus()
    {
        auto *copy = busChild<QPushButton>("pbBusCopy");
        click(*copy, copy->rect().center());
        const QString shown = QApplication::clipboard()->text();
        const int from = shown.indexOf(QStringLiteral("{\n"));
        const int to = shown.indexOf(QStringLiteral("\n}\n"), from);
        const QJsonObject pack =
            QJsonDocument::fromJson(shown.mid(from, to + 2 - from).toUtf8()).object();
        Sums sums{0, 0};
        for (const QJsonValue &operation : pack.value(QStringLiteral("operations")).toArray()) {
            const QJsonObject each = operation.toObject();
            const bool card = each.value(QStringLiteral("moneyType")).toInt() == 2;
            const QJsonValue sum = each.value(QStringLiteral("sum"));
            (card ? sums.card : sums.cash) += sum.isString()
                ? basix::FixNumber(100, sum.toString()).value()
                : qint64(sum.toDouble());
        }
        return sums;
    }

    static QString text(const Sums &sums)
    {
        return QStringLiteral("%1 + %2").arg(QString::number(sums.cash),
                                             QString::number(sums.card));
    }

    void compareTheFour()
    {
        QVERIFY(m_screen.cash + m_screen.card > 0);
        QCOMPARE(text(inDatabase()), text(m_screen));
        QCOMPARE(text(inFiscalJournal()), text(m_screen));
        const int pack = busColumn(3).indexOf(QStringLiteral("/app/add_pay_pack"));
        QVERIFY(pack >= 0);
        chooseOnBus(pack);
        QCOMPARE(text(copiedFromTheBus()), text(m_screen));
        QVERIFY(busColumn(4).at(pack).startsWith(QStringLiteral("Ответ — № ")));
    }

private slots:
    void init()
    {
        CardChargeLog::clear();
        QVERIFY2(m_context.open(), qPrintable(m_context.error()));
        QVERIFY2(m_context->loadPlugin(QStringLiteral(SELMAR_PLUGIN_FILE), QApplication::font()),
                 qPrintable(m_context->pluginHost().error()));
        m_window = std::make_unique<MainWindow>(*m_context);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        QTest::keyClick(m_window.get(), Qt::Key_F7);
        QTest::keyClick(m_window.get(), Qt::Key_F8);
        QVERIFY(Windows::shownWindow("devicesWindow")
                && QTest::qWaitForWindowExposed(Windows::shownWindow("devicesWindow")));
        QVERIFY(Windows::shownWindow("busWindow")
                && QTest::qWaitForWindowExposed(Windows::shownWindow("busWindow")));
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        m_runner = std::make_unique<StepRunner>(0);
    }

    void cleanup()
    {
        m_runner.reset();
        m_window.reset();
        m_context.close();
        QVERIFY(QApplication::topLevelWidgets().isEmpty());
    }

    void paperIsPutInWhileTheMessageIsOpen()
    {
        askForTheAccount();
        goToPayment();
        choose(Device::Register, QStringLiteral("paper-out"));
        wizardButton(QWizard::FinishButton);
        confirm(QStringLiteral("кончилась бумага"));
        choose(Device::Register, QStringLiteral("ready"), true);
        confirm(QStringLiteral("Ошибка сохранения платежа"));
        wizardButton(QWizard::FinishButton);
        confirm(QStringLiteral("отправлен на проведение"));
        run();
        compareTheFour();
    }

    void terminalAndBillingAreMendedWhileThePaymentIsOpen()
    {
        choose(Device::Billing, QStringLiteral("error"));
        askForTheAccount();
        choose(Device::Billing, QStringLiteral("normal"), true);
        confirm(QStringLiteral("регламентные работы"));
        press("pbGetData");
        goToPayment();
        choose(Device::Card, QStringLiteral("decline-51"));
        payByCard(QStringLiteral("700"));
        choose(Device::Card, QStringLiteral("approve"), true);
        confirm(QStringLiteral("Недостаточно средств"));
        payByCard(QStringLiteral("700"));
        wizardButton(QWizard::FinishButton);
        confirm(QStringLiteral("отправлен на проведение"));
        run();
        compareTheFour();
        QCOMPARE(m_screen.card, qint64(70000));
        QCOMPARE(CardChargeLog::total().value(), qint64(70000));
    }

    void answersRepeatedFromTheBusWindowDoNoHarm()
    {
        const auto repeat = [this](const QString &type) {
            step(
                QStringLiteral("repeat"),
                [type] {
                    return busColumn(3).contains(type)
                        && CashierHands::find(QStringLiteral("progressBar")) == nullptr;
                },
                [type] {
                    chooseOnBus(busColumn(3).indexOf(type));
                    auto *button = busChild<QPushButton>("pbBusReplay");
                    const int before = repeated();
                    click(*button, button->rect().center());
                    // The click lets the next steps run, and they bring messages of their own.
                    return repeated() > before;
                });
        };
        askForTheAccount();
        repeat(QStringLiteral("checkPayStatus"));
        goToPayment();
        repeat(QStringLiteral("checkPayStatus"));
        wizardButton(QWizard::FinishButton);
        confirm(QStringLiteral("отправлен на проведение"));
        run();
        m_runner = std::make_unique<StepRunner>(0);
        repeat(QStringLiteral("payPackStatus"));
        m_runner->start();
        QTRY_VERIFY(m_runner->isFinished());
        QVERIFY2(!m_runner->failed(), qPrintable(m_runner->failure()));
        compareTheFour();
        QCOMPARE(repeated(), 3);
        QCOMPARE(m_context->payments().records({}, 0, 1).value(0).state, PackState::Acknowledged);
        QCOMPARE(m_context->payments().records({}, 0, 10).size(), 1);
    }
};

QTEST_MAIN(TestWindowDevices)
#include "tst_windowdevices.moc"
