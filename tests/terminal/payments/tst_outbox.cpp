#include <bus/inprocessbus.h>
#include <payments/outbox.h>
#include <payments/paymentsstore.h>
#include <payments/payscontroller.h>

#include <QSignalSpy>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QtTest>

/// The clock and the chance are the test's; only what is due by them is posted.
class tst_Outbox : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void delays_data();
    void delays();
    void postsWhatAnEarlierRunLeft();
    void waitsLongerAfterEachRefusal();
    void aRefusedPackHoldsUpNoOther();
    void returnOfTheBusEndsAllWaits();
    void leavesAPackToWhoeverPostsIt();
    void postsWhatNobodyPosted();
    void postsLaterWhenNotAtOnce();
    void sendsABacklogInOrderAFewAtATime();
    void confirmsOnceMoreWhatWasNotConfirmed();
    void asksOnceMoreOverANewConnection();
    void postsAgainOnRequest();
    void retriesByItself();
    void comesBackToAStoreThatCouldNotBeRead();

private:
    void save(qint64 id);
    /// Does something to the store's file behind its back.
    void executeInFile(const QString &sql);
    void start();
    /// Lets the bus answer what it was sent.
    void settle()
    {
        QTest::qWait(1);
        QCoreApplication::processEvents();
    }
    QVector<qint64> taken() const { return m_taken; }
    PackState state(qint64 id) { return m_store->record(id)->state; }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<PaymentsStore> m_store;
    std::unique_ptr<InProcessBus> m_bus;
    std::unique_ptr<PaysController> m_controller;
    OutboxTiming m_timing;
    qint64 m_now = 0;
    QVector<qint64> m_taken;
    QSet<qint64> m_refused;
};

void tst_Outbox::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_store = std::make_unique<PaymentsStore>();
    QVERIFY(m_store->open(m_folder->filePath(QStringLiteral("payments.sqlite"))));
    m_now = 1000000;
    m_taken.clear();
    m_refused.clear();
    m_timing = OutboxTiming();
    m_timing.now = [this] { return m_now; };
    m_timing.random = [] { return 0.0; };
    m_bus = std::make_unique<InProcessBus>();
    m_bus->serve(Outbox::PACK_DESTINATION, [this](const QVariantMap &pack) {
        const qint64 id = pack.value(QStringLiteral("id")).toString().toLongLong();
        InProcessBus::Outcome outcome;
        if (m_refused.contains(id))
            outcome.refusal = QStringLiteral("Биллинг занят");
        else
            m_taken.append(id);
        return outcome;
    });
}

void tst_Outbox::cleanup()
{
    m_controller.reset();
    m_bus.reset();
    m_store.reset();
    m_folder.reset();
}

void tst_Outbox::save(qint64 id)
{
    PaymentRecord record;
    record.packId = id;
    record.created = QDateTime::currentDateTime();
    QVERIFY(m_store->save(record, {{QStringLiteral("id"), QString::number(id)}}));
}

void tst_Outbox::executeInFile(const QString &sql)
{
    const QString name = QStringLiteral("other");
    {
        QSqlDatabase other = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
        other.setDatabaseName(m_folder->filePath(QStringLiteral("payments.sqlite")));
        QVERIFY(other.open());
        QSqlQuery query(other);
        QVERIFY2(query.exec(sql), qPrintable(query.lastError().text()));
    }
    QSqlDatabase::removeDatabase(name);
}

void tst_Outbox::start()
{
    m_controller = std::make_unique<PaysController>(*m_store, 4107, m_timing);
    m_controller->follow(*m_bus);
    m_controller->outbox().start(*m_bus);
}

void tst_Outbox::delays_data()
{
    QTest::addColumn<int>("attempts");
    QTest::addColumn<double>("chance");
    QTest::addColumn<int>("wait");
    QTest::newRow("first") << 1 << 0.0 << 1000;
    QTest::newRow("second") << 2 << 0.0 << 2000;
    QTest::newRow("sixth") << 6 << 0.0 << 32000;
    QTest::newRow("seventh is the longest") << 7 << 0.0 << 60000;
    QTest::newRow("hundredth") << 100 << 0.0 << 60000;
    QTest::newRow("shortened") << 7 << 0.5 << 52500;
    QTest::newRow("shortened by a quarter at most") << 1 << 0.999 << 751;
}

void tst_Outbox::delays()
{
    QFETCH(int, attempts);
    QFETCH(double, chance);
    OutboxTiming timing;
    timing.random = [chance] { return chance; };
    QTEST(timing.delay(attempts), "wait");
}

void tst_Outbox::postsWhatAnEarlierRunLeft()
{
    save(3);
    save(1);
    save(2);
    QVERIFY(m_store->advance(1, PackState::HandedOn));
    start();
    QTRY_COMPARE(taken(), (QVector<qint64>{3, 1, 2}));
    QTRY_COMPARE(state(2), PackState::Posted);
    QCOMPARE(m_controller->outbox().untilNext(), Q_INT64_C(-1));
    QVERIFY(m_controller->outbox().idle());
}

void tst_Outbox::waitsLongerAfterEachRefusal()
{
    save(1);
    m_refused.insert(1);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("refused")));
    start();
    qint64 expected = 1000;
    for (int i = 0; i < 8; ++i) {
        QTRY_COMPARE(m_controller->outbox().untilNext(), expected);
        m_controller->outbox().wake();
        settle();
        QCOMPARE(m_controller->outbox().untilNext(), expected); // not yet due
        m_now += expected;
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("refused")));
        m_controller->outbox().wake();
        expected = qMin<qint64>(expected * 2, 60000);
    }
    QTRY_COMPARE(m_controller->outbox().untilNext(), Q_INT64_C(60000));
    QCOMPARE(m_store->record(1)->lastError, QStringLiteral("Биллинг занят"));
    QCOMPARE(state(1), PackState::HandedOn);
    m_refused.clear();
    m_now += 60000;
    m_controller->outbox().wake();
    QTRY_COMPARE(state(1), PackState::Posted);
}

void tst_Outbox::aRefusedPackHoldsUpNoOther()
{
    for (const qint64 id : {1, 2, 3})
        save(id);
    m_refused.insert(1);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("refused")));
    start();
    QTRY_COMPARE(taken(), (QVector<qint64>{2, 3}));
}

void tst_Outbox::returnOfTheBusEndsAllWaits()
{
    m_bus->setConnected(false);
    for (const qint64 id : {1, 2})
        save(id);
    start();
    m_now += 600000;
    m_controller->outbox().wake();
    settle();
    QVERIFY(taken().isEmpty());
    QCOMPARE(state(1), PackState::Saved); // nothing was even tried
    m_bus->setConnected(true);
    QTRY_COMPARE(taken(), (QVector<qint64>{1, 2}));
}

void tst_Outbox::leavesAPackToWhoeverPostsIt()
{
    start();
    save(1);
    m_controller->outbox().packSaved(1, true);
    QVariantMap message;
    QString error;
    QVERIFY(m_controller->handOn(1, message, error));
    m_controller->outbox().wake();
    QCOMPARE(m_controller->drain(*m_bus), 0);
    m_bus->sendMessage(Outbox::PACK_DESTINATION, message);
    QTRY_COMPARE(state(1), PackState::Posted);
    QCOMPARE(taken(), QVector<qint64>{1});
}

void tst_Outbox::postsWhatNobodyPosted()
{
    start();
    save(1);
    QVariantMap message;
    QString error;
    QVERIFY(m_controller->handOn(1, message, error));
    QCOMPARE(m_controller->outbox().untilNext(), qint64(m_timing.grace));
    m_now += m_timing.grace;
    m_controller->outbox().wake();
    QTRY_COMPARE(taken(), QVector<qint64>{1});
}

void tst_Outbox::postsLaterWhenNotAtOnce()
{
    start();
    save(1);
    m_controller->outbox().packSaved(1, false);
    m_controller->outbox().wake();
    settle();
    QVERIFY(taken().isEmpty());
    m_now += m_timing.first;
    m_controller->outbox().wake();
    QTRY_COMPARE(taken(), QVector<qint64>{1});
}

void tst_Outbox::sendsABacklogInOrderAFewAtATime()
{
    QVector<qint64> ids;
    for (qint64 id = 1; id <= 150; ++id) {
        save(id);
        ids.append(id);
    }
    m_timing.window = 8;
    int onTheWay = 0;
    int most = 0;
    connect(m_bus.get(), &MessageBus::traffic, m_bus.get(), [&] { most = qMax(most, ++onTheWay); });
    connect(m_bus.get(), &MessageBus::accepted, m_bus.get(), [&] { --onTheWay; });
    start();
    QTRY_COMPARE(taken(), ids);
    QVERIFY2(most <= 8, qPrintable(QString::number(most)));
}

void tst_Outbox::confirmsOnceMoreWhatWasNotConfirmed()
{
    save(1);
    save(2);
    QVERIFY(m_store->advance(1, PackState::Posted));
    QVERIFY(m_store->advance(2, PackState::Acknowledged));
    start();
    QTRY_COMPARE(taken(), QVector<qint64>{1});
    QTRY_VERIFY(m_controller->outbox().idle());
    m_now += 3600000;
    m_controller->outbox().wake();
    settle();
    QCOMPARE(taken(), QVector<qint64>{1});
    QCOMPARE(state(1), PackState::Posted);
}

void tst_Outbox::asksOnceMoreOverANewConnection()
{
    start();
    save(1);
    QVERIFY(m_controller->markPosted(1));
    const auto reconnect = [this] {
        m_bus->setConnected(false);
        m_bus->setConnected(true);
    };
    reconnect();
    QTRY_COMPARE(taken(), QVector<qint64>{1});
    // Billing stays silent and the connection comes and goes: not once for every time.
    save(2);
    reconnect();
    QTRY_COMPARE(taken(), (QVector<qint64>{1, 2}));
    m_now += m_timing.askAgain;
    reconnect();
    QTRY_COMPARE(taken(), (QVector<qint64>{1, 2, 1, 2}));
    QVERIFY(m_controller->markAcknowledged(1));
    m_now += m_timing.askAgain;
    reconnect();
    QTRY_COMPARE(taken(), (QVector<qint64>{1, 2, 1, 2, 2}));
}

void tst_Outbox::postsAgainOnRequest()
{
    save(1);
    QVERIFY(m_store->advance(1, PackState::Acknowledged));
    QString error;
    {
        PaysController unconnected(*m_store, 4107);
        QVERIFY(!unconnected.outbox().postAgain(1, &error));
        QVERIFY(!error.isEmpty());
    }
    start();
    QVERIFY2(m_controller->outbox().postAgain(1, &error), qPrintable(error));
    QTRY_COMPARE(taken(), QVector<qint64>{1});
    QCOMPARE(state(1), PackState::Acknowledged);
    QVERIFY(!m_controller->outbox().postAgain(99, &error));
    QVERIFY(error.contains(QStringLiteral("99")));
}

void tst_Outbox::retriesByItself()
{
    m_timing = OutboxTiming();
    m_timing.first = 20;
    save(1);
    m_refused.insert(1);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("refused")));
    start();
    QTRY_VERIFY(!m_store->record(1)->lastError.isEmpty());
    m_refused.clear();
    QTRY_COMPARE(state(1), PackState::Posted);
}

void tst_Outbox::comesBackToAStoreThatCouldNotBeRead()
{
    m_timing = OutboxTiming();
    m_timing.first = 20;
    m_timing.longest = 20;
    save(1);
    executeInFile(QStringLiteral("ALTER TABLE packs RENAME TO packs_away"));
    start();
    QCOMPARE(m_controller->outbox().untilNext(), qint64(20));
    QVERIFY(!m_controller->outbox().idle());
    QVERIFY(taken().isEmpty());
    executeInFile(QStringLiteral("ALTER TABLE packs_away RENAME TO packs"));
    QTRY_COMPARE(state(1), PackState::Posted);
    QCOMPARE(taken(), QVector<qint64>{1});
    QVERIFY(m_controller->outbox().idle());
}

QTEST_GUILESS_MAIN(tst_Outbox)
#include "tst_outbox.moc"
