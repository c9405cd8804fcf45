#include <ui/busfilter.h>
#include <ui/busmodel.h>

#include <bus/busjournal.h>
#include <bus/inprocessbus.h>

#include <QAbstractItemModelTester>
#include <QColor>
#include <QSignalSpy>
#include <QTest>

class TestBusModel : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<InProcessBus> m_bus;
    std::unique_ptr<BusJournal> m_journal;

    void send(const QString &uid)
    {
        m_bus->sendMessage(QStringLiteral("/app/check"), QVariantMap{{QStringLiteral("uid"), uid}});
    }

    void arrive(const QByteArray &body, const QString &type = QStringLiteral("checkPayStatus"))
    {
        BusMessage message;
        message.direction = BusMessage::Direction::Incoming;
        message.headers = {{MessageBus::MESSAGE_TYPE, type}};
        message.body = body;
        m_bus->replay(message);
    }

    static QString text(const QAbstractItemModel &model, int row, int column)
    {
        return model.index(row, column).data().toString();
    }

    static QString numbers(const QAbstractItemModel &model)
    {
        QStringList list;
        for (int row = 0; row < model.rowCount(); ++row)
            list.append(text(model, row, BusModel::Number));
        return list.join(QLatin1Char(' '));
    }

private slots:
    void init()
    {
        m_bus = std::make_unique<InProcessBus>();
        m_journal = std::make_unique<BusJournal>(4);
        m_journal->follow(*m_bus);
    }

    void showsMessagesAndTheirAnswers()
    {
        BusModel model(*m_journal);
        const QAbstractItemModelTester tester(&model);
        send(QStringLiteral("7"));
        QCOMPARE(text(model, 0, BusModel::Number), QStringLiteral("1"));
        QCOMPARE(text(model, 0, BusModel::Direction), QStringLiteral("→ отправлено"));
        QCOMPARE(text(model, 0, BusModel::Address), QStringLiteral("/app/check"));
        QCOMPARE(text(model, 0, BusModel::Relation), QStringLiteral("Ответа ещё нет"));
        QCOMPARE(text(model, 0, BusModel::RoundTrip), QString());
        QCOMPARE(text(model, 0, BusModel::Size), QStringLiteral("11"));
        QCOMPARE(text(model, 0, BusModel::Time).size(), 12);
        arrive(R"({"uid":"7"})");
        QCOMPARE(text(model, 0, BusModel::Relation), QStringLiteral("Ответ — № 2"));
        QVERIFY(!text(model, 0, BusModel::RoundTrip).isEmpty());
        QCOMPARE(text(model, 1, BusModel::Direction), QStringLiteral("← получено"));
        QCOMPARE(text(model, 1, BusModel::Address), QStringLiteral("checkPayStatus"));
        QCOMPARE(text(model, 1, BusModel::Relation), QStringLiteral("Ответ на № 1"));
        QVERIFY(!model.index(1, 0).data(Qt::ForegroundRole).isValid());
        arrive(R"({"uid":"7"})");
        QVERIFY(model.index(2, 0).data(Qt::ForegroundRole).value<QColor>().isValid());
    }

    void showsWhatWasThereBefore()
    {
        send(QStringLiteral("7"));
        const BusModel model(*m_journal);
        QCOMPARE(numbers(model), QStringLiteral("1"));
    }

    void dropsTheOldest()
    {
        BusModel model(*m_journal);
        const QAbstractItemModelTester tester(&model);
        for (int i = 0; i < 6; ++i)
            send(QString::number(i));
        QCOMPARE(numbers(model), QStringLiteral("3 4 5 6"));
        QCOMPARE(model.rowOf(4), 1);
        QCOMPARE(model.rowOf(2), -1);
        QCOMPARE(model.rowOf(7), -1);
        m_journal->clear();
        QCOMPARE(model.rowCount(), 0);
        QCOMPARE(model.rowOf(4), -1);
    }

    void pausedItStandsStill()
    {
        BusModel model(*m_journal);
        const QAbstractItemModelTester tester(&model);
        send(QStringLiteral("7"));
        model.setPaused(true);
        arrive(R"({"uid":"7"})");
        for (int i = 0; i < 6; ++i)
            send(QString::number(i));
        QCOMPARE(numbers(model), QStringLiteral("1"));
        QCOMPARE(text(model, 0, BusModel::Relation), QStringLiteral("Ответа ещё нет"));
        model.setPaused(false);
        QCOMPARE(numbers(model), QStringLiteral("5 6 7 8"));
    }

    void filter_data()
    {
        QTest::addColumn<QString>("wanted");
        QTest::addColumn<QString>("found");
        QTest::newRow("everything") << QString() << QStringLiteral("1 2 3");
        QTest::newRow("uid") << QStringLiteral("4711") << QStringLiteral("1 2");
        QTest::newRow("address, another case") << QStringLiteral("/APP/") << QStringLiteral("1");
        QTest::newRow("header") << QStringLiteral("packstatus") << QStringLiteral("3");
        QTest::newRow("Russian in the body") << QStringLiteral(" Ёлкин ") << QStringLiteral("2");
        QTest::newRow("nothing") << QStringLiteral("absent") << QString();
    }

    void filter()
    {
        QFETCH(QString, wanted);
        BusModel model(*m_journal);
        BusFilter filter;
        filter.setSourceModel(&model);
        const QAbstractItemModelTester tester(&filter);
        filter.setText(wanted);
        send(QStringLiteral("4711"));
        arrive("{\"uid\":\"4711\",\"fio\":\"Ёлкин\"}");
        arrive("{}", QStringLiteral("payPackStatus"));
        QTEST(numbers(filter), "found");
        filter.setText(QString());
        QCOMPARE(numbers(filter), QStringLiteral("1 2 3"));
    }
};

QTEST_GUILESS_MAIN(TestBusModel)
#include "tst_busmodel.moc"
