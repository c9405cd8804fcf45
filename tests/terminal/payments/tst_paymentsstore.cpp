#include <payments/paymentsstore.h>

#include <payments/paymentrows.h>
#include <storage/jsontext.h>
#include <storage/sqlstatement.h>

#include <basixcore/sqlitedatabase.h>

#include <QTemporaryDir>
#include <QtTest>

class tst_PaymentsStore : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void savesAndReadsBack();
    void keepsThePackAsText();
    void savesOnce();
    void refusesAnotherPackUnderTheSameId();
    void statesOnlyMoveForward();
    void remembersTheLastError();
    void outboxInOrder();
    void filters_data();
    void filters();
    void pages();
    void closedStore();
    void unknownPack();

private:
    PaymentRecord record(qint64 id, const QString &account = QStringLiteral("7001"),
                         int hour = 10) const;
    static QVariantMap pack(qint64 id)
    {
        return {{QStringLiteral("id"), QString::number(id)},
                {QStringLiteral("sum"), Q_INT64_C(150050)}};
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_file;
    std::unique_ptr<PaymentsStore> m_store;
};

void tst_PaymentsStore::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_file = m_folder->filePath(QStringLiteral("платежи/payments.sqlite"));
    m_store = std::make_unique<PaymentsStore>();
    QVERIFY2(m_store->open(m_file), qPrintable(m_store->lastError()));
}

void tst_PaymentsStore::cleanup()
{
    m_store.reset();
    m_folder.reset();
}

PaymentRecord tst_PaymentsStore::record(qint64 id, const QString &account, int hour) const
{
    PaymentRecord result;
    result.packId = id;
    result.created = QDateTime(QDate(2026, 11, 21), QTime(hour, 0, 0, 123));
    result.providerId = 18722;
    result.providerName = QStringLiteral("Водоканал ФЛ");
    result.account = account;
    result.sum = basix::FixNumber(100, 150050);
    result.cash = basix::FixNumber(100, 50050);
    result.card = basix::FixNumber(100, 100000);
    result.fiscalStorage = QStringLiteral("9960440300000001");
    result.fiscalDocument = QString::number(id % 1000);
    result.fiscalSign = QStringLiteral("0123456789");
    return result;
}

void tst_PaymentsStore::savesAndReadsBack()
{
    const qint64 id = Q_INT64_C(9223372036854775807);
    QVERIFY2(m_store->save(record(id), pack(id)), qPrintable(m_store->lastError()));
    m_store = std::make_unique<PaymentsStore>();
    QVERIFY(m_store->open(m_file));
    const std::optional<PaymentRecord> back = m_store->record(id);
    QVERIFY(back);
    const PaymentRecord expected = record(id);
    QCOMPARE(back->packId, id);
    QCOMPARE(back->state, PackState::Saved);
    QCOMPARE(back->created, expected.created);
    QCOMPARE(back->providerId, expected.providerId);
    QCOMPARE(back->providerName, expected.providerName);
    QCOMPARE(back->account, expected.account);
    QCOMPARE(back->sum, expected.sum);
    QCOMPARE(back->cash, expected.cash);
    QCOMPARE(back->card, expected.card);
    QCOMPARE(back->fiscalStorage, expected.fiscalStorage);
    QCOMPARE(back->fiscalDocument, expected.fiscalDocument);
    QCOMPARE(back->fiscalSign, expected.fiscalSign);
    QVERIFY(!back->posted.isValid());
    QCOMPARE(m_store->pack(id)->value(QStringLiteral("id")).toString(), QString::number(id));
    QCOMPARE(m_store->pack(id)->value(QStringLiteral("sum")).toLongLong(), Q_INT64_C(150050));
}

void tst_PaymentsStore::keepsThePackAsText()
{
    QVariantMap map = pack(5);
    map.insert(QStringLiteral("payer"), QStringLiteral("ООО «Ёж» № 1 \"и Ко\"\t\U0001F4A7"));
    QVERIFY2(m_store->save(record(5), map), qPrintable(m_store->lastError()));
    QVERIFY2(m_store->save(record(5), map), qPrintable(m_store->lastError()));
    QCOMPARE(*m_store->pack(5), map);

    basix::SqliteDatabase file;
    QVERIFY2(file.open(m_file, PaymentRows::schema()), qPrintable(file.lastError()));
    SqlStatement row(file, QStringLiteral("SELECT typeof(body), body, length(body) FROM packs"));
    QVERIFY(row.run() && row.next());
    QCOMPARE(row.text(0), QStringLiteral("text"));
    QCOMPARE(row.text(1), JsonText::compact(map));
    QCOMPARE(row.number(2), qint64(JsonText::compact(map).toUcs4().size()));
}

void tst_PaymentsStore::savesOnce()
{
    QVERIFY(m_store->save(record(5), pack(5)));
    QVERIFY(m_store->advance(5, PackState::Posted));
    QVERIFY(m_store->save(record(5), pack(5)));
    QCOMPARE(m_store->record(5)->state, PackState::Posted);
    QCOMPARE(m_store->count({}), 1);
}

void tst_PaymentsStore::refusesAnotherPackUnderTheSameId()
{
    QVERIFY(m_store->save(record(5), pack(5)));
    QVERIFY(!m_store->save(record(5), pack(6)));
    QVERIFY(m_store->lastError().contains(QStringLiteral("5")));
    QCOMPARE(*m_store->pack(5), pack(5));
}

void tst_PaymentsStore::statesOnlyMoveForward()
{
    QVERIFY(m_store->save(record(5), pack(5)));
    QVERIFY(m_store->advance(5, PackState::Posted));
    const QDateTime posted = m_store->record(5)->posted;
    QVERIFY(posted.isValid());
    QVERIFY(m_store->advance(5, PackState::HandedOn));
    QVERIFY(m_store->advance(5, PackState::Posted));
    QCOMPARE(m_store->record(5)->state, PackState::Posted);
    QCOMPARE(m_store->record(5)->posted, posted);
    QVERIFY(m_store->advance(5, PackState::Acknowledged));
    QCOMPARE(m_store->record(5)->state, PackState::Acknowledged);
    QVERIFY(m_store->record(5)->acknowledged.isValid());
}

void tst_PaymentsStore::remembersTheLastError()
{
    QVERIFY(m_store->save(record(5), pack(5)));
    QVERIFY(m_store->setLastError(5, QStringLiteral("Нет связи")));
    QCOMPARE(m_store->record(5)->lastError, QStringLiteral("Нет связи"));
    QVERIFY(m_store->advance(5, PackState::Posted));
    QVERIFY(m_store->record(5)->lastError.isEmpty());
    QVERIFY(!m_store->setLastError(6, QStringLiteral("Нет связи")));
}

void tst_PaymentsStore::outboxInOrder()
{
    for (qint64 id : {30, 10, 20})
        QVERIFY(m_store->save(record(id, QStringLiteral("7001"), int(40 - id) / 2), pack(id)));
    QVERIFY(m_store->advance(10, PackState::HandedOn));
    // In the order of saving, whatever the packs say about their time.
    QCOMPARE(m_store->unposted(), (QVector<qint64>{30, 10, 20}));
    QVERIFY(m_store->advance(20, PackState::Posted));
    QVERIFY(m_store->advance(30, PackState::Acknowledged));
    QCOMPARE(m_store->unposted(), QVector<qint64>{10});
}

void tst_PaymentsStore::filters_data()
{
    QTest::addColumn<QDateTime>("from");
    QTest::addColumn<QDateTime>("until");
    QTest::addColumn<QString>("account");
    QTest::addColumn<int>("state");
    QTest::addColumn<int>("count");
    const QDateTime none;
    const QDate day(2026, 11, 21);
    QTest::newRow("all") << none << none << QString() << -1 << 4;
    QTest::newRow("from") << QDateTime(day, QTime(11, 0)) << none << QString() << -1 << 3;
    QTest::newRow("until") << none << QDateTime(day, QTime(11, 0)) << QString() << -1 << 1;
    QTest::newRow("hour") << QDateTime(day, QTime(11, 0)) << QDateTime(day, QTime(12, 0))
                          << QString() << -1 << 1;
    QTest::newRow("account") << none << none << QStringLiteral("7002") << -1 << 2;
    QTest::newRow("state") << none << none << QString() << int(PackState::Posted) << 1;
    QTest::newRow("both") << none << none << QStringLiteral("7002") << int(PackState::Saved) << 1;
    QTest::newRow("nothing") << none << none << QStringLiteral("' OR 1=1") << -1 << 0;
}

void tst_PaymentsStore::filters()
{
    QFETCH(QDateTime, from);
    QFETCH(QDateTime, until);
    QFETCH(QString, account);
    QFETCH(int, state);
    QFETCH(int, count);
    for (qint64 id = 0; id < 4; ++id)
        QVERIFY(m_store->save(
            record(id + 1, id < 2 ? QStringLiteral("7001") : QStringLiteral("7002"), 10 + int(id)),
            pack(id + 1)));
    QVERIFY(m_store->advance(4, PackState::Posted));
    PaymentFilter filter;
    filter.from = from;
    filter.until = until;
    filter.account = account;
    filter.state = state;
    QCOMPARE(m_store->count(filter), count);
    QCOMPARE(m_store->records(filter, 0, 100).size(), count);
}

void tst_PaymentsStore::pages()
{
    for (qint64 id = 1; id <= 5; ++id)
        QVERIFY(m_store->save(record(id), pack(id)));
    const QVector<PaymentRecord> page = m_store->records({}, 1, 2);
    QCOMPARE(page.size(), 2);
    QCOMPARE(page.at(0).packId, Q_INT64_C(4));
    QCOMPARE(page.at(1).packId, Q_INT64_C(3));
    QVERIFY(m_store->records({}, 5, 2).isEmpty());
}

void tst_PaymentsStore::closedStore()
{
    PaymentsStore closed;
    QVERIFY(!closed.save(record(1), pack(1)));
    QVERIFY(!closed.lastError().isEmpty());
    QVERIFY(closed.unposted().isEmpty());
    QVERIFY(!closed.record(1));
}

void tst_PaymentsStore::unknownPack()
{
    QVERIFY(!m_store->advance(77, PackState::Posted));
    QVERIFY(m_store->lastError().contains(QStringLiteral("77")));
    QVERIFY(!m_store->record(77));
    QVERIFY(!m_store->pack(77));
}

QTEST_GUILESS_MAIN(tst_PaymentsStore)
#include "tst_paymentsstore.moc"
