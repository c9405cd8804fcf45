#include <ui/billspage.h>
#include <ui/mainwindow.h>
#include <ui/scannerpage.h>

#include <hostdata/hostdataseeder.h>
#include <temporaryterminal.h>
#include <ui/paymentpage.h>
#include <windows.h>

#include <molvacore/payment.h>
#include <molvacore/paypack.h>

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QMap>
#include <QMenuBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QStatusBar>
#include <QTabWidget>
#include <QTableView>
#include <QTableWidget>
#include <QTest>

class TestMainWindow : public QObject
{
    Q_OBJECT

private:
    TemporaryTerminal m_context;
    std::unique_ptr<MainWindow> m_window;

    template<class Type>
    Type *child(const char *name) const
    {
        return m_window->findChild<Type *>(QLatin1String(name));
    }

    static ScannerPage *scannerWindow()
    {
        return qobject_cast<ScannerPage *>(Windows::window("scannerWindow"));
    }

private slots:
    void initTestCase() { Windows::useFontOfTheTerminal(); }

    void init()
    {
        QVERIFY2(m_context.open(), qPrintable(m_context.error()));
        m_window = std::make_unique<MainWindow>(*m_context);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    }

    void cleanup()
    {
        m_window.reset();
        m_context.close();
        QVERIFY(QApplication::topLevelWidgets().isEmpty());
    }

    void withoutAPluginNoPaymentBeginsAndTheReasonIsShown()
    {
        QVERIFY(!m_context->loadPlugin(QStringLiteral("/absent.so"), QFont()));
        m_window = std::make_unique<MainWindow>(*m_context);
        QVERIFY(!child<QPushButton>("pbStartPayment")->isEnabled());
        child<QTabWidget>("twPages")->setCurrentIndex(3);
        QVERIFY(child<QLabel>("lModuleIdentity")->text().contains(QStringLiteral("/absent.so")));
    }

    void providersOfTheHostAreListed()
    {
        const auto *providers = child<QTableWidget>("twProviders");
        QCOMPARE(providers->rowCount(), 2);
        QCOMPARE(providers->item(0, 0)->text(),
                 QString::number(HostDataSeeder::PROVIDER_INDIVIDUAL));
        QCOMPARE(providers->item(1, 0)->text(), QString::number(HostDataSeeder::PROVIDER_LEGAL));
        QCOMPARE(providers->currentRow(), 0);
    }

    void samplesFollowTheChosenProvider()
    {
        auto *providers = child<QTableWidget>("twProviders");
        const auto *samples = child<QTableWidget>("twSamples");
        QCOMPARE(samples->item(0, 0)->text(), SampleNumber::ORDINARY);
        QVERIFY(samples->isColumnHidden(1));
        QTest::keyClick(providers, Qt::Key_Down);
        QCOMPARE(samples->item(0, 0)->text(), SampleNumber::LEGAL_ONE_DOCUMENT);
        QVERIFY(!samples->isColumnHidden(1));
    }

    void sampleNumberGoesToTheClipboard()
    {
        QTest::mouseClick(child<QPushButton>("pbCopySample"), Qt::LeftButton);
        QCOMPARE(QApplication::clipboard()->text(), SampleNumber::ORDINARY);
    }

    void tabReachesEverything()
    {
        auto *providers = child<QTableWidget>("twProviders");
        providers->setFocus();
        QStringList order;
        for (int i = 0; i < 8 && !order.contains(QStringLiteral("pbCopySample")); ++i) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            order.append(QApplication::focusWidget()->objectName());
        }
        QVERIFY2(order.contains(QStringLiteral("twSamples")),
                 qPrintable(order.join(QLatin1Char(' '))));
        QVERIFY2(order.contains(QStringLiteral("pbCopySample")),
                 qPrintable(order.join(QLatin1Char(' '))));
    }

    void stateOfRegisterAndBusIsShown()
    {
        const auto statusText = [this] {
            QStringList texts;
            for (const QLabel *label : m_window->statusBar()->findChildren<QLabel *>())
                texts.append(label->text());
            return texts.join(QLatin1Char('|'));
        };
        QVERIFY(statusText().contains(
            EmulatedRegister::conditionText(EmulatedRegister::Condition::Ready)));
        QVERIFY(statusText().contains(m_context->cashier()));
        QVERIFY(statusText().contains(QStringLiteral("Связь: есть")));
        m_context->fiscalRegister().setCondition(EmulatedRegister::Condition::PaperOut);
        QVERIFY(statusText().contains(
            EmulatedRegister::conditionText(EmulatedRegister::Condition::PaperOut)));
        m_context->ownBus().setConnected(false);
        QVERIFY(statusText().contains(QStringLiteral("Связь: нет")));
        QTRY_VERIFY(child<QLabel>("lConnectionBanner")->isVisible());
        m_context->ownBus().setConnected(true);
        QVERIFY(statusText().contains(QStringLiteral("Связь: есть")));
        QVERIFY(!child<QLabel>("lConnectionBanner")->isVisible());
    }

    void paymentsThatCannotBeCountedAreNotTakenForSent()
    {
        QVERIFY(child<QLabel>("lOutbox")->isHidden());
        const QString name = QStringLiteral("other");
        {
            QSqlDatabase other = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
            other.setDatabaseName(m_context.file(QStringLiteral("payments.sqlite")));
            QVERIFY(other.open());
            QVERIFY(QSqlQuery(other).exec(QStringLiteral("ALTER TABLE packs RENAME TO lost")));
        }
        QSqlDatabase::removeDatabase(name);
        emit m_context->paysController().changed(1);
        QVERIFY(!child<QLabel>("lOutbox")->isHidden());
        QCOMPARE(child<QLabel>("lOutbox")->text(), QStringLiteral("Не отправлено: неизвестно"));
        QVERIFY(!child<QLabel>("lOutbox")->toolTip().isEmpty());
    }

    void savedPackAppearsInTheJournal()
    {
        auto *pages = child<QTabWidget>("twPages");
        m_window->showJournal();
        const auto *journal = child<QTableView>("tvJournal");
        QCOMPARE(journal->model()->rowCount(), 0);
        pages->setCurrentIndex(0);
        Payment payment;
        payment.setProviderData(m_context->providers().constFirst(), true);
        payment.setAccount(SampleNumber::ORDINARY);
        payment.setSumm(basix::FixNumber(100, 100));
        PayPack pack;
        pack.addPayment(payment);
        pack.addCashOperations(payment.summ(), m_context->box().currency());
        QVERIFY(m_context->paysController().savePack(pack, true));
        QCOMPARE(journal->model()->rowCount(), 1);
        m_window->showJournal();
        QCOMPARE(pages->currentIndex(), 1);
        QVERIFY(child<QLabel>("lPaymentDetails")->text().contains(QString::number(pack.id())));
    }

    /// What a start does not wait for.
    void pagesAndSideWindowsAreMadeWhenTheyAreOpened()
    {
        QVERIFY(!child<QTableView>("tvJournal"));
        QVERIFY(!m_window->findChild<BillsPage *>());
        QVERIFY(!child<QLabel>("lModuleIdentity"));
        QVERIFY(!scannerWindow());
        auto *pages = child<QTabWidget>("twPages");
        pages->setCurrentIndex(1);
        const auto *journal = child<QTableView>("tvJournal");
        QVERIFY(journal);
        pages->setCurrentIndex(0);
        pages->setCurrentIndex(1);
        QCOMPARE(child<QTableView>("tvJournal"), journal);
    }

    void focusGoesIntoAPageThatIsOpenedForTheFirstTime()
    {
        child<QTableWidget>("twProviders")->setFocus();
        QTest::keyClick(m_window.get(), Qt::Key_2, Qt::ControlModifier);
        QCOMPARE(QApplication::focusWidget(), child<QWidget>("leJournalAccount"));
    }

    void pagesHaveShortcuts()
    {
        auto *pages = child<QTabWidget>("twPages");
        QTest::keyClick(m_window.get(), Qt::Key_3, Qt::ControlModifier);
        QCOMPARE(pages->currentIndex(), 2);
        QTest::keyClick(m_window.get(), Qt::Key_1, Qt::ControlModifier);
        QCOMPARE(pages->currentIndex(), 0);
    }

    void lettersForAltAreUniqueOnEveryPage()
    {
        auto *pages = child<QTabWidget>("twPages");
        for (int page = 0; page < pages->count(); ++page) {
            pages->setCurrentIndex(page);
            QStringList texts;
            for (const QAction *menu : m_window->menuBar()->actions())
                texts.append(menu->text());
            for (const QAbstractButton *button : m_window->findChildren<QAbstractButton *>()) {
                if (button->isVisible())
                    texts.append(button->text());
            }
            for (const QLabel *label : m_window->findChildren<QLabel *>()) {
                if (label->isVisible() && label->buddy())
                    texts.append(label->text());
            }
            for (int tab = 0; tab < pages->count(); ++tab)
                texts.append(pages->tabText(tab));
            QMap<QChar, QString> letters;
            for (const QString &text : qAsConst(texts)) {
                const int at = text.indexOf(QLatin1Char('&'));
                if (at < 0)
                    continue;
                const QChar letter = text.at(at + 1).toUpper();
                QVERIFY2(!letters.contains(letter),
                         qPrintable(QStringLiteral("page %1: %2 | %3")
                                        .arg(QString::number(page), letters.value(letter), text)));
                letters.insert(letter, text);
            }
        }
    }

    void codeOfABillGoesToTheScanner()
    {
        QTest::keyClick(m_window.get(), Qt::Key_3, Qt::ControlModifier);
        const auto *bills = m_window->findChild<BillsPage *>();
        QVERIFY(bills->isVisible());
        QVERIFY(!bills->code().isEmpty());
        QVERIFY(!scannerWindow());
        auto *send = child<QPushButton>("pbBillSend");
        send->setFocus();
        QTest::keyClick(send, Qt::Key_Space);
        const auto *scanner = scannerWindow();
        QVERIFY(scanner && scanner->isVisible());
        QCOMPARE(scanner->text(), QString::fromUtf8(bills->code()));
    }

    void scannerOpensByItsKeyAndClosesWithTheWindow()
    {
        QTest::keyClick(child<QTableWidget>("twProviders"), Qt::Key_F9, Qt::ShiftModifier);
        const auto *scanner = scannerWindow();
        QVERIFY(scanner && scanner->isVisible());
        m_window->close();
        QVERIFY(!scanner->isVisible());
    }

    void nothingIsCutOnASmallScreen()
    {
        // As much to say as there can be.
        DeviceControl &devices = m_context->devices();
        QVERIFY(devices.setState(Device::Register, QStringLiteral("fails-after-printing")));
        QVERIFY(devices.setState(Device::Card, QStringLiteral("connection-lost-after")));
        QVERIFY(devices.setState(Device::Billing, QStringLiteral("late")));
        m_window->resize(800, 600);
        QVERIFY2(
            m_window->width() <= 800 && m_window->height() <= 600,
            qPrintable(QStringLiteral("%1x%2").arg(m_window->width()).arg(m_window->height())));
        auto *pages = child<QTabWidget>("twPages");
        for (int page = 0; page < pages->count(); ++page) {
            pages->setCurrentIndex(page);
            QCoreApplication::processEvents();
            for (const QPushButton *button : m_window->findChildren<QPushButton *>()) {
                if (button->isVisible())
                    QVERIFY2(button->width() >= button->sizeHint().width(),
                             qPrintable(button->text()));
            }
        }
    }
};

QTEST_MAIN(TestMainWindow)
#include "tst_mainwindow.moc"
