#include <ui/devicebox.h>
#include <ui/devicespage.h>

#include <temporaryterminal.h>
#include <windows.h>

#include <molvacore/cardreadersettings.h>
#include <molvacore/posactivity.h>
#include <molvacore/postestamount.h>

#include <modalanswers.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTableWidget>
#include <QTest>

class TestDevicesPage : public QObject
{
    Q_OBJECT

private:
    TemporaryTerminal m_context;
    std::unique_ptr<DevicesPage> m_page;

    template<class Type>
    Type *child(const QString &name) const
    {
        Type *found = m_page->findChild<Type *>(name);
        Q_ASSERT(found);
        return found;
    }
    QListWidget *list(Device device) const
    {
        return child<QListWidget>(QStringLiteral("lw_") + DeviceStates::option(device));
    }
    QString effect(Device device) const
    {
        return child<QLabel>(QStringLiteral("lEffect_") + DeviceStates::option(device))->text();
    }
    void clickState(Device device, const QString &key) const
    {
        QListWidget *states = list(device);
        QListWidgetItem *item = states->item(DeviceStates::keys(device).indexOf(key));
        states->scrollToItem(item);
        QTest::mouseClick(states->viewport(), Qt::LeftButton, Qt::NoModifier,
                          states->visualItemRect(item).center());
    }
    DeviceControl &control() const { return m_context->devices(); }

private slots:
    void initTestCase() { Windows::useFontOfTheTerminal(); }

    void init()
    {
        QVERIFY2(m_context.open(), qPrintable(m_context.error()));
        m_page = std::make_unique<DevicesPage>(control());
        m_page->resize(1000, 700);
        m_page->show();
        QVERIFY(QTest::qWaitForWindowActive(m_page.get()));
    }

    void cleanup()
    {
        m_page.reset();
        m_context.close();
        QVERIFY(QApplication::topLevelWidgets().isEmpty());
    }

    void clickSetsTheState_data()
    {
        QTest::addColumn<int>("device");
        for (const Device device : DeviceStates::devices())
            QTest::newRow(qPrintable(DeviceStates::option(device))) << int(device);
    }

    void clickSetsTheState()
    {
        QFETCH(int, device);
        QStringList keys = DeviceStates::keys(Device(device));
        // The first one is chosen already: it comes last.
        keys.append(keys.takeFirst());
        for (const QString &key : qAsConst(keys)) {
            clickState(Device(device), key);
            QCOMPARE(control().state(Device(device)), key);
            QCOMPARE(effect(Device(device)), DeviceStates::find(Device(device), key)->effect);
        }
    }

    void keysSetTheState()
    {
        list(Device::Register)->setFocus();
        QTest::keyClick(list(Device::Register), Qt::Key_Down);
        QCOMPARE(control().state(Device::Register), QStringLiteral("no-connection"));
        QTest::keyClick(list(Device::Register), Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), child<QCheckBox>(QStringLiteral("cbRegisterOnce")));
    }

    void listsFollowTheDevices()
    {
        QVERIFY(control().setState(Device::Billing, QStringLiteral("late")));
        m_context->fiscalRegister().setCondition(EmulatedRegister::Condition::PaperOut);
        QCOMPARE(list(Device::Billing)->currentRow(),
                 DeviceStates::keys(Device::Billing).indexOf(QStringLiteral("late")));
        QCOMPARE(list(Device::Register)->currentRow(), int(EmulatedRegister::Condition::PaperOut));
        QVERIFY(list(Device::Register)->currentItem()->font().bold());
        QVERIFY(!list(Device::Register)->item(0)->font().bold());
        m_context->ownBus().setConnected(false);
        QVERIFY(!child<QCheckBox>(QStringLiteral("cbBillingLink"))->isChecked());
    }

    void oneReceiptOnly()
    {
        child<QCheckBox>(QStringLiteral("cbRegisterOnce"))->click();
        clickState(Device::Register, QStringLiteral("paper-out"));
        QVariantMap result;
        QString error;
        QVERIFY(!m_context->fiscalRegister().doReceipt({}, QString(), result, error));
        QCOMPARE(list(Device::Register)->currentRow(), 0);
    }

    void terminalIsChosen()
    {
        auto *terminals = child<QComboBox>(QStringLiteral("cbCardTerminal"));
        QCOMPARE(terminals->currentData().toInt(), control().cardTerminal());
        terminals->setFocus();
        QTest::keyClick(terminals, Qt::Key_Home);
        QCOMPARE(CardReaderSettings().type(), int(CardReaderSettings::IngericoLib));
        QTest::keyClick(terminals, Qt::Key_End);
        QCOMPARE(CardReaderSettings().type(), int(CardReaderSettings::None));
        QVERIFY(control().setCardTerminal(CardReaderSettings::QEftPos));
        QCOMPARE(terminals->currentData().toInt(), int(CardReaderSettings::QEftPos));
    }

    void linkIsCutAndMade()
    {
        auto *link = child<QCheckBox>(QStringLiteral("cbBillingLink"));
        link->click();
        QVERIFY(!m_context->bus().connected());
        link->click();
        QVERIFY(m_context->bus().connected());
    }

    void everythingIsMadeSound()
    {
        clickState(Device::Card, QStringLiteral("decline-51"));
        clickState(Device::Register, QStringLiteral("paper-out"));
        child<QCheckBox>(QStringLiteral("cbBillingLink"))->click();
        QTest::mouseClick(child<QPushButton>(QStringLiteral("pbDevicesReset")), Qt::LeftButton);
        for (const Device device : DeviceStates::devices()) {
            QVERIFY(!control().isFaulty(device));
            QCOMPARE(list(device)->currentRow(), 0);
        }
        QVERIFY(m_context->bus().connected());
    }

    void amountsAreThoseOfTheTerminal()
    {
        const auto *table = child<QTableWidget>(QStringLiteral("twTestAmounts"));
        const QVector<PosTestAmount> rows = PosTestAmount::table();
        QCOMPARE(table->rowCount(), rows.size() + 1);
        for (int row = 0; row < rows.size(); ++row) {
            QCOMPARE(table->item(row, 0)->text(),
                     QStringLiteral(",%1").arg(rows.at(row).digits, 2, 10, QLatin1Char('0')));
            QVERIFY(!table->item(row, 1)->text().isEmpty());
            QCOMPARE(table->item(row, 2)->text(), rows.at(row).text);
        }
    }

    void waitOfTheTerminalIsShown()
    {
        const auto *hint = child<QLabel>(QStringLiteral("lDevicesHint"));
        const QString before = hint->text();
        PosActivity::setSlowTime(1);
        QString meanwhile;
        QTimer::singleShot(0, this, [&] { meanwhile = hint->text(); });
        PosActivity::wait();
        QVERIFY2(meanwhile.contains(QStringLiteral("ждёт карту")), qPrintable(meanwhile));
        QCOMPARE(hint->text(), before);
    }

    void stateThatCannotBeSetIsReported()
    {
        {
            QSqlDatabase other =
                QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("other"));
            other.setDatabaseName(m_context.file(QStringLiteral("host.sqlite")));
            QVERIFY(other.open());
            QVERIFY(QSqlQuery(other).exec(
                QStringLiteral("CREATE TRIGGER full BEFORE UPDATE ON card_reader_settings BEGIN "
                               "SELECT RAISE(FAIL, 'full'); END")));
        }
        QSqlDatabase::removeDatabase(QStringLiteral("other"));
        ModalAnswers answers;
        answers.ok();
        clickState(Device::Card, QStringLiteral("decline"));
        QCOMPARE(answers.problems(), QStringList());
        QCOMPARE(answers.seen().size(), 1);
        QVERIFY(answers.seen().at(0).text.contains(QStringLiteral("записать не удалось")));
        QCOMPARE(list(Device::Card)->currentRow(), 0);
    }

    void billingElsewhereIsLocked()
    {
        DeviceControl elsewhere(m_context->fiscalRegister(), nullptr, nullptr);
        const DeviceBox box(elsewhere, Device::Billing);
        QVERIFY(!box.findChild<QListWidget *>()->isEnabled());
        QVERIFY(box.findChild<QLabel *>()->text().contains(QStringLiteral("за сервером")));
    }

    void nothingIsCut_data()
    {
        QTest::addColumn<int>("width");
        QTest::newRow("alone on the screen") << 1000;
        QTest::newRow("beside a payment") << 640;
    }

    void nothingIsCut()
    {
        QFETCH(int, width);
        m_page->resize(width, 700);
        QTRY_COMPARE(m_page->width(), width);
        for (const Device device : DeviceStates::devices()) {
            QListWidget *states = list(device);
            const QStringList keys = DeviceStates::keys(device);
            for (const DeviceState &state : DeviceStates::of(device)) {
                QVERIFY(control().setState(device, state.key));
                QCoreApplication::processEvents();
                const auto *label =
                    child<QLabel>(QStringLiteral("lEffect_") + DeviceStates::option(device));
                QVERIFY2(label->heightForWidth(label->width()) <= label->height(),
                         qPrintable(state.effect));
                QListWidgetItem *item = states->item(keys.indexOf(state.key));
                const QRect place = states->visualItemRect(item);
                QVERIFY(item->font().bold() && place.width() <= states->viewport()->width());
                const QRect needed = QFontMetrics(item->font())
                                         .boundingRect(QRect(0, 0, place.width(), 1000),
                                                       Qt::TextWordWrap, state.title);
                QVERIFY2(needed.width() <= place.width() && needed.height() <= place.height(),
                         qPrintable(state.title));
                QVERIFY2(states->height() > 4 * place.height(), "the list has hardly a row");
            }
        }
        const auto *amounts = child<QTableWidget>(QStringLiteral("twTestAmounts"));
        QVERIFY(amounts->columnViewportPosition(2) + amounts->columnWidth(2)
                <= amounts->viewport()->width() + 1);
    }

    void chosenStateStaysInSight_data()
    {
        QTest::addColumn<int>("device");
        QTest::addColumn<QSize>("size");
        for (const Device device : DeviceStates::devices()) {
            const QByteArray name = DeviceStates::option(device).toLatin1();
            QTest::addRow("%s, lower", name.constData()) << int(device) << QSize(1000, 500);
            QTest::addRow("%s, narrower", name.constData()) << int(device) << QSize(640, 700);
            QTest::addRow("%s, both", name.constData()) << int(device) << QSize(640, 500);
        }
    }

    void chosenStateStaysInSight()
    {
        QFETCH(int, device);
        QFETCH(QSize, size);
        const QStringList keys = DeviceStates::keys(Device(device));
        const QListWidget *states = list(Device(device));
        const auto chosenInSight = [states] {
            const QRect place = states->visualItemRect(states->currentItem());
            return states->viewport()->rect().contains(place);
        };
        for (const QString &key : keys) {
            m_page->resize(1000, 1200);
            QVERIFY(control().setState(Device(device), key));
            QTRY_VERIFY2(chosenInSight(), qPrintable(key));
            m_page->resize(size);
            QTRY_VERIFY2(m_page->height() == size.height() && chosenInSight(), qPrintable(key));
        }
        // Chosen from elsewhere while nobody looks.
        m_page->hide();
        QVERIFY(control().setState(Device(device), keys.constFirst()));
        m_page->show();
        QTRY_VERIFY(chosenInSight());
    }

    void listScrolledByHandStaysThere()
    {
        m_page->resize(640, 500);
        QListWidget *states = list(Device::Card);
        QTRY_COMPARE(m_page->height(), 500);
        QTRY_VERIFY(states->verticalScrollBar()->maximum() > 0);
        QCoreApplication::processEvents();
        states->scrollToBottom();
        const int place = states->verticalScrollBar()->value();
        QVERIFY(place > 0 && control().setState(Device::Register, QStringLiteral("paper-out")));
        QCoreApplication::processEvents();
        QCOMPARE(states->verticalScrollBar()->value(), place);
    }
};

QTEST_MAIN(TestDevicesPage)
#include "tst_devicespage.moc"
