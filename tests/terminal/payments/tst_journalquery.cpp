#include <payments/journalquery.h>

#include <payments/paymentrows.h>
#include <payments/paymentsstore.h>

#include <basixcore/sqlitedatabase.h>

#include <QRandomGenerator>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>

Q_DECLARE_METATYPE(JournalQuery::Matches)
Q_DECLARE_METATYPE(PaymentFilter)

namespace {

constexpr int saved = 600;

QDateTime moment(int minute)
{
    return QDateTime(QDate(2026, 11, 19), QTime(22, 0)).addSecs(60 * minute);
}

} // namespace

class TestJournalQuery : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_folder;
    QString m_file;
    PaymentsStore m_store;
    QVector<PaymentRecord> m_saved;

    /// What SQLite says about how it would answer.
    QStringList plan(const JournalQuery &query) const
    {
        basix::SqliteDatabase database;
        if (!database.open(m_file, PaymentRows::schema()))
            return {database.lastError()};
        QSqlQuery explain(database.connection());
        explain.prepare(QStringLiteral("EXPLAIN QUERY PLAN ") + query.sql());
        for (const QVariant &value : query.values())
            explain.addBindValue(value);
        QStringList steps;
        if (!explain.exec())
            return steps;
        while (explain.next())
            steps.append(explain.value(3).toString());
        return steps;
    }

    static PaymentFilter day()
    {
        PaymentFilter filter;
        filter.from = QDate(2026, 11, 20).startOfDay();
        filter.until = QDate(2026, 11, 21).startOfDay();
        return filter;
    }

    void comparePages(const PaymentFilter &filter, const PaymentOrder &order)
    {
        QVector<PaymentRecord> expected;
        for (const PaymentRecord &record : qAsConst(m_saved)) {
            if (filter.lets(record))
                expected.append(record);
        }
        std::sort(expected.begin(), expected.end(),
                  [order](const PaymentRecord &a, const PaymentRecord &b) {
                      return standsAbove(a, b, order);
                  });
        QVector<PaymentRecord> found;
        for (;;) {
            const PaymentRecord last = found.isEmpty() ? PaymentRecord() : found.constLast();
            const auto page = m_store.page(filter, order, found.isEmpty() ? nullptr : &last, 17);
            QVERIFY2(m_store.lastError().isEmpty(), qPrintable(m_store.lastError()));
            found += page;
            if (page.size() < 17)
                break;
        }
        const auto ids = [](const QVector<PaymentRecord> &records) {
            QVector<qint64> result;
            for (const PaymentRecord &record : records)
                result.append(record.packId);
            return result;
        };
        QCOMPARE(ids(found), ids(expected));
        QCOMPARE(m_store.count(filter), expected.size());
    }

private slots:
    void initTestCase()
    {
        m_file = m_folder.filePath(QStringLiteral("payments.sqlite"));
        QVERIFY2(m_store.open(m_file), qPrintable(m_store.lastError()));
        QRandomGenerator random(20261121);
        for (int i = 0; i < saved; ++i) {
            PaymentRecord record;
            record.packId = 1000 + i;
            // Fewer moments than payments: many share one, down to the millisecond.
            record.created = moment(random.bounded(saved / 3));
            record.account = random.bounded(10) == 0
                ? QStringLiteral("Договор №%1").arg(random.bounded(3))
                : QStringLiteral("7001%1").arg(random.bounded(40), 3, 10, QLatin1Char('0'));
            record.providerName =
                random.bounded(2) == 0 ? QStringLiteral("Водоканал, %1") : QStringLiteral("Ёлка");
            record.cash = basix::FixNumber(100, qint64(random.bounded(20)));
            record.card = basix::FixNumber(100, qint64(random.bounded(20)));
            record.sum = record.cash + record.card;
            QVERIFY2(m_store.save(record, {{QStringLiteral("id"), record.packId}}),
                     qPrintable(m_store.lastError()));
            const int state = random.bounded(4);
            if (state > 0)
                QVERIFY(m_store.advance(record.packId, PackState(state)));
            const auto stored = m_store.record(record.packId);
            QVERIFY(stored);
            m_saved.append(*stored);
        }
    }

    void pagesTogetherAreTheWholeJournal_data()
    {
        QTest::addColumn<QString>("account");
        QTest::addColumn<bool>("oneDay");
        QTest::addColumn<int>("state");
        QTest::addColumn<bool>("newest"); ///< or whatever is the highest
        const QVector<QPair<const char *, QString>> accounts{
            {"any account", QString()},
            {"one account", QStringLiteral("7001007")},
            {"one, its beginning", QStringLiteral("Договор №2")},
            {"some accounts", QStringLiteral("70010")},
            {"most accounts", QStringLiteral("7")},
            {"contracts", QStringLiteral("Дог")},
            {"nobody's", QStringLiteral("9")},
            {"wildcards", QStringLiteral("%")}};
        for (const auto &account : accounts) {
            for (const bool oneDay : {false, true}) {
                for (const int state : {-1, 1, 3}) {
                    for (const bool newest : {false, true})
                        QTest::addRow("%s%s, state %d, %s first", account.first,
                                      oneDay ? ", one day" : "", state,
                                      newest ? "newest" : "oldest")
                            << account.second << oneDay << state << newest;
                }
            }
        }
    }

    void pagesTogetherAreTheWholeJournal()
    {
        QFETCH(QString, account);
        QFETCH(bool, oneDay);
        QFETCH(int, state);
        QFETCH(bool, newest);
        PaymentFilter filter = oneDay ? day() : PaymentFilter();
        filter.account = account;
        filter.state = state;
        using Key = PaymentOrder::Key;
        for (const Key key :
             {Key::Time, Key::Provider, Key::Account, Key::Sum, Key::Cash, Key::Card, Key::State})
            comparePages(filter, {key, newest});
        QVERIFY(m_store.canSort(filter));
    }

    void lastRowsFollowTheIndex_data()
    {
        QTest::addColumn<QString>("account");
        QTest::addColumn<bool>("oneDay");
        QTest::addColumn<int>("state");
        QTest::addColumn<JournalQuery::Matches>("matches");
        QTest::addColumn<QString>("index");
        using Matches = JournalQuery::Matches;
        const QString none;
        const QString byTime = QStringLiteral("packs_by_time");
        const QString byState = QStringLiteral("packs_by_state");
        const QString byAccount = QStringLiteral("packs_by_account");
        const QString seven = QStringLiteral("7");
        QTest::newRow("everything") << none << false << -1 << Matches::Many << byTime;
        QTest::newRow("day") << none << true << -1 << Matches::Many << byTime;
        QTest::newRow("state") << none << false << 3 << Matches::Many << byState;
        QTest::newRow("state of a day") << none << true << 3 << Matches::Many << byState;
        QTest::newRow("account") << seven << false << -1 << Matches::One << byAccount;
        QTest::newRow("account and day") << seven << true << -1 << Matches::One << byAccount;
        QTest::newRow("account and state") << seven << false << 3 << Matches::One << byAccount;
        QTest::newRow("many accounts") << seven << false << -1 << Matches::Many << byTime;
        QTest::newRow("many accounts of a day") << seven << true << -1 << Matches::Few << byTime;
        QTest::newRow("many accounts, state") << seven << false << 3 << Matches::Many << byState;
    }

    void lastRowsFollowTheIndex()
    {
        QFETCH(QString, account);
        QFETCH(bool, oneDay);
        QFETCH(int, state);
        QFETCH(JournalQuery::Matches, matches);
        QFETCH(QString, index);
        PaymentFilter filter = oneDay ? day() : PaymentFilter();
        filter.account = account;
        filter.state = state;
        PaymentRecord last;
        last.created = moment(100);
        last.account = QStringLiteral("7001007");
        last.sequence = 50;
        for (const PaymentRecord *after : {static_cast<PaymentRecord *>(nullptr), &last}) {
            for (const PaymentOrder order :
                 {PaymentOrder::NewestFirst, PaymentOrder::OldestFirst}) {
                const QStringList steps = plan(JournalQuery(filter, order, matches, after, 100));
                const QString all = steps.join(QLatin1Char('\n'));
                QVERIFY2(!steps.isEmpty(), "the query is wrong");
                QVERIFY2(!all.contains(QStringLiteral("TEMP B-TREE")), qPrintable(all));
                // The whole index is walked only from its end, until the page is full.
                const bool narrowed =
                    oneDay || state >= 0 || matches == JournalQuery::Matches::One || after;
                const QString verb = narrowed ? QStringLiteral("SEARCH") : QStringLiteral("SCAN");
                QVERIFY2(steps.constFirst().startsWith(
                             QStringLiteral("%1 packs USING INDEX %2").arg(verb, index)),
                         qPrintable(all));
                for (const QString &step : steps.mid(1))
                    QVERIFY2(!step.startsWith(QStringLiteral("SCAN")), qPrintable(all));
            }
        }
    }

    void tooManyAreNotSorted_data()
    {
        QTest::addColumn<PaymentFilter>("filter");
        QTest::addColumn<JournalQuery::Matches>("matches");
        QTest::addColumn<QString>("index");
        using Matches = JournalQuery::Matches;
        const QString seven = QStringLiteral("7");
        QTest::newRow("everything")
            << PaymentFilter() << Matches::Many << QStringLiteral("packs_by_time");
        QTest::newRow("day") << day() << Matches::Many << QStringLiteral("packs_by_time");
        QTest::newRow("state") << PaymentFilter{{}, {}, {}, 1} << Matches::Many
                               << QStringLiteral("packs_by_state");
        QTest::newRow("accounts") << PaymentFilter{{}, {}, seven, 1} << Matches::Few
                                  << QStringLiteral("packs_by_account");
        QTest::newRow("accounts of a state")
            << PaymentFilter{{}, {}, seven, 1} << Matches::Many << QStringLiteral("packs_by_state");
    }

    /// Counted along the index alone, to a bound: looking must not take longer than sorting.
    void tooManyAreNotSorted()
    {
        QFETCH(PaymentFilter, filter);
        QFETCH(JournalQuery::Matches, matches);
        QFETCH(QString, index);
        const JournalQuery query = JournalQuery::walkCount(filter, matches);
        const QString all = plan(query).join(QLatin1Char('\n'));
        QVERIFY2(all.contains(QStringLiteral("USING COVERING INDEX %1").arg(index)),
                 qPrintable(all));
        QVERIFY(
            query.sql().contains(QStringLiteral("LIMIT %1)").arg(JournalQuery::MOST_SORTED + 1)));
    }

    void fewMatchesAreSortedAndManyAreNotCounted()
    {
        const QString few =
            plan(JournalQuery({{}, {}, QStringLiteral("7"), -1}, PaymentOrder::NewestFirst,
                              JournalQuery::Matches::Few, nullptr, 100))
                .join(QLatin1Char('\n'));
        QVERIFY2(few.contains(QStringLiteral("SEARCH packs USING INDEX packs_by_account")),
                 qPrintable(few));
        for (const JournalQuery &query : {JournalQuery::accounts(QStringLiteral("7")),
                                          JournalQuery::matchCount(QStringLiteral("7"))}) {
            const QStringList steps = plan(query);
            QVERIFY(
                !steps.filter(QStringLiteral("USING COVERING INDEX packs_by_account")).isEmpty());
            QVERIFY2(steps.filter(QStringLiteral("SCAN packs")).isEmpty(),
                     qPrintable(steps.join(QLatin1Char('\n'))));
        }
        QVERIFY(JournalQuery::matchCount(QString()).sql().contains(
            QStringLiteral("LIMIT %1").arg(JournalQuery::FEW + 1)));
    }

    void fileOfAnEarlierVersionIsBroughtUp()
    {
        const QString file = m_folder.filePath(QStringLiteral("old.sqlite"));
        basix::SqliteSchema old = PaymentRows::schema();
        const int current = old.version();
        while (old.version() > 1)
            old.migrations.removeLast();
        {
            basix::SqliteDatabase database;
            QVERIFY2(database.open(file, old), qPrintable(database.lastError()));
            QSqlQuery insert(database.connection());
            QVERIFY(insert.exec(QStringLiteral(
                "INSERT INTO packs (pack_id, state, created, provider_id, provider_name, account, "
                "sum, cash, card, fiscal_storage, fiscal_document, fiscal_sign, saved, body) "
                "VALUES (77, 2, '2026-11-20T10:00:00.123Z', 18722, 'Водоканал', '7001000101', "
                "150050, 50050, 100000, '9960440300000001', '5', '0123456789', "
                "'2026-11-20T10:00:01.000Z', '{\"id\":\"77\"}')")));
        }
        PaymentsStore store;
        QVERIFY2(store.open(file), qPrintable(store.lastError()));
        const auto page = store.page({}, PaymentOrder::NewestFirst, nullptr, 10);
        QVERIFY2(page.size() == 1, qPrintable(store.lastError()));
        QCOMPARE(page.constFirst().packId, Q_INT64_C(77));
        QCOMPARE(page.constFirst().sum.value(), Q_INT64_C(150050));
        QCOMPARE(page.constFirst().created.toUTC(),
                 QDateTime(QDate(2026, 11, 20), QTime(10, 0, 0, 123), Qt::UTC));
        QCOMPARE(page.constFirst().state, PackState::Posted);
        QVERIFY(!page.constFirst().recovered);
        QCOMPARE(store.pack(77)->value(QStringLiteral("id")).toString(), QStringLiteral("77"));
        basix::SqliteDatabase database;
        QVERIFY(database.open(file, PaymentRows::schema()));
        QSqlQuery version(database.connection());
        QVERIFY(version.exec(QStringLiteral("PRAGMA user_version")) && version.next());
        QCOMPARE(version.value(0).toInt(), current);
    }
};

QTEST_GUILESS_MAIN(TestJournalQuery)
#include "tst_journalquery.moc"
