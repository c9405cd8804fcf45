#include <actingcharacters.h>
#include <hostiletexts.h>

#include <bus/busjournal.h>
#include <bus/inprocessbus.h>
#include <ui/buspage.h>

#include <QApplication>
#include <QClipboard>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableView>
#include <QTest>

/// Messages whose every text is hostile: the window stays usable, and nothing is read or fetched.
class TestHostileBus : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<InProcessBus> m_bus;
    std::unique_ptr<BusJournal> m_journal;
    std::unique_ptr<BusPage> m_page;
    std::unique_ptr<Canary> m_canary;

    template<class Type>
    Type *child(const char *name) const
    {
        return m_page->findChild<Type *>(QLatin1String(name));
    }

private slots:
    void init()
    {
        m_canary = std::make_unique<Canary>();
        m_bus = std::make_unique<InProcessBus>();
        m_journal = std::make_unique<BusJournal>();
        m_journal->follow(*m_bus);
        m_page = std::make_unique<BusPage>(*m_journal, *m_bus);
        m_page->resize(900, 600);
        m_page->show();
        QVERIFY(QTest::qWaitForWindowActive(m_page.get()));
    }

    void cleanup()
    {
        m_page.reset();
        QVERIFY2(m_canary->untouched(), qPrintable(m_canary->report()));
        QVERIFY(QApplication::topLevelWidgets().isEmpty());
    }

    void windowStaysUsable_data()
    {
        QTest::addColumn<QString>("text");
        for (const HostileTexts::Named &row : HostileTexts::all())
            QTest::newRow(row.first) << row.second;
        QTest::newRow("a placeholder") << "%1 %2 %99";
        QTest::newRow("a megabyte") << QString(1024 * 1024, QLatin1Char('W'));
    }

    void windowStaysUsable()
    {
        QFETCH(QString, text);
        const QString hostile = HostileTexts::pointingAt(*m_canary, text);
        BusMessage message;
        message.direction = BusMessage::Direction::Incoming;
        message.address = hostile;
        message.headers = {{QStringLiteral("msgType"), hostile}};
        const QJsonObject fields{{QStringLiteral("fio"), hostile}};
        message.body = QJsonDocument(fields).toJson(QJsonDocument::Compact);
        m_bus->replay(message);
        // Nobody serves it: the refusal names the address.
        m_bus->sendMessage(hostile, QVariantMap{{QStringLiteral("uid"), hostile}});
        QTRY_VERIFY(!m_journal->at(1).refusal.isEmpty());
        m_page->settle();

        const auto *table = child<QTableView>("tvBus");
        for (int row = 0; row < 2; ++row) {
            for (int column = 0; column < table->model()->columnCount(); ++column) {
                const QModelIndex cell = table->model()->index(row, column);
                const QString shown = cell.data().toString();
                QVERIFY2(shown.size() <= 1000, qPrintable(QString::number(shown.size())));
                QCOMPARE(actingCharacters(shown, QStringLiteral("\u200b")), QString());
                const QString tip = cell.data(Qt::ToolTipRole).toString();
                QVERIFY(tip.size() <= 10000);
                QVERIFY(!tip.contains(QLatin1Char('<')));
            }
            m_page->findChild<QTableView *>()->setCurrentIndex(table->model()->index(row, 0));
            m_page->grab();
        }
        QCOMPARE(table->model()->rowCount(), 2);
        QCOMPARE(m_page->width(), 900);
        QVERIFY(child<QPlainTextEdit>("teBusMessage")->toPlainText().size() < 400000);
        QTest::mouseClick(child<QPushButton>("pbBusCopy"), Qt::LeftButton);
        QVERIFY(QApplication::clipboard()->text().contains(QStringLiteral("uid")));
        child<QLineEdit>("leBusFilter")->setText(hostile.left(1000));
        QTest::keyClick(child<QLineEdit>("leBusFilter"), Qt::Key_Return);
        child<QLineEdit>("leBusFilter")->clear();
        QTest::keyClick(child<QLineEdit>("leBusFilter"), Qt::Key_Return);
        QCOMPARE(table->model()->rowCount(), 2);
    }
};

QTEST_MAIN(TestHostileBus)
#include "tst_hostilebus.moc"
