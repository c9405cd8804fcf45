#include <ui/journalmodel.h>

#include <payments/paymentsstore.h>

#include <QAbstractItemModelTester>
#include <QColor>
#include <QSignalSpy>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>
#include <QTimeZone>

#include <algorithm>

class TestJournalModel : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_folder;
    std::unique_ptr<PaymentsStore> m_store;
    int m_files = 0;

    static PaymentRecord payment(qint64 id, const QString &account = QStringLiteral("100200"))
    {
        PaymentRecord record;
        record.packId = id;
        record.created = QDateTime(QDate(2026, 11, 20), QTime(10, 0)).addSecs(id);
        record.providerId = 18722;
        record.providerName = QStringLiteral("Водоканал, «ФЛ» %1");
        record.account = account;
        record.sum = basix::FixNumber(100, 150050);
        record.cash = basix::FixNumber(100, 50050);
        record.card = basix::FixNumber(100, 100000);
        return record;
    }

    void save(const PaymentRecord &record)
    {
        QVERIFY2(m_store->save(record, {{QStringLiteral("id"), QString::number(record.packId)}}),
                 qPrintable(m_store->lastError()));
    }

private slots:
    void init()
    {
        m_store = std::make_unique<PaymentsStore>();
        QVERIFY(m_store->open(m_folder.filePath(QStringLiteral("%1.sqlite").arg(++m_files))));
    }

    void emptyStoreHasNoRows()
    {
        JournalModel model(*m_store);
        const QAbstractItemModelTester tester(&model);
        QCOMPARE(model.rowCount(), 0);
        QVERIFY(!model.hasMore());
        QVERIFY(!model.canFetchMore(QModelIndex()));
        QCOMPARE(model.rowOf(1), -1);
        QCOMPARE(model.record(0).packId, Q_INT64_C(0));
    }

    void storeThatCannotBeReadIsNotShownAsEmpty()
    {
        save(payment(1));
        const QString file = m_folder.filePath(QStringLiteral("%1.sqlite").arg(m_files));
        {
            QSqlDatabase other =
                QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("other"));
            other.setDatabaseName(file);
            QVERIFY(other.open());
            QVERIFY(QSqlQuery(other).exec(QStringLiteral("DROP TABLE packs")));
        }
        QSqlDatabase::removeDatabase(QStringLiteral("other"));
        JournalModel model(*m_store);
        QCOMPARE(model.rowCount(), 0);
        QVERIFY(!model.error().isEmpty());
    }

    void rowShowsThePayment()
    {
        save(payment(5));
        JournalModel model(*m_store);
        const QAbstractItemModelTester tester(&model);
        QStringList texts;
        for (int column = 0; column < model.columnCount(); ++column)
            texts.append(model.index(0, column).data().toString());
        QCOMPARE(texts,
                 QStringList({QStringLiteral("20.11.26 10:00"),
                              QStringLiteral("Водоканал, «ФЛ» %1"), QStringLiteral("100200"),
                              QStringLiteral("1500.50"), QStringLiteral("500.50"),
                              QStringLiteral("1000.00"), packStateText(PackState::Saved)}));
        QCOMPARE(model.headerData(JournalModel::Card, Qt::Horizontal, Qt::DisplayRole).toString(),
                 QStringLiteral("Картой"));
        QVERIFY(model.index(0, JournalModel::State).data(Qt::ForegroundRole).isValid());
    }

    void newestStandsFirst()
    {
        save(payment(1));
        save(payment(2));
        JournalModel model(*m_store);
        QCOMPARE(model.record(0).packId, Q_INT64_C(2));
        QCOMPARE(model.rowOf(1), 1);
    }

    void rowsAreReadAPageAtATime()
    {
        for (int id = 1; id <= 2 * JournalModel::pageSize + 3; ++id)
            save(payment(id));
        // Without the model tester, which fetches by itself.
        JournalModel model(*m_store);
        QVERIFY(model.hasMore());
        QCOMPARE(model.rowCount(), JournalModel::pageSize);
        QVERIFY(model.canFetchMore(QModelIndex()));
        model.fetchMore(QModelIndex());
        QCOMPARE(model.rowCount(), 2 * JournalModel::pageSize);
        model.fetchMore(QModelIndex());
        QCOMPARE(model.rowCount(), 2 * JournalModel::pageSize + 3);
        QVERIFY(!model.canFetchMore(QModelIndex()));
        model.fetchMore(QModelIndex());
        QCOMPARE(model.rowCount(), 2 * JournalModel::pageSize + 3);
        QCOMPARE(model.record(model.rowCount() - 1).packId, Q_INT64_C(1));
    }

    void newPaymentAppearsAndKeepsWhatWasRead()
    {
        for (int id = 1; id <= JournalModel::pageSize + 1; ++id)
            save(payment(id));
        JournalModel model(*m_store);
        const QAbstractItemModelTester tester(&model);
        model.fetchMore(QModelIndex());
        QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
        save(payment(9999));
        model.refresh(9999);
        QCOMPARE(reset.count(), 0);
        QCOMPARE(model.record(0).packId, Q_INT64_C(9999));
        // The tester reads on by itself.
        while (model.hasMore())
            model.fetchMore(QModelIndex());
        QCOMPARE(model.rowCount(), JournalModel::pageSize + 2);
    }

    void paymentOfAnotherAccountStaysOutOfTheFilteredList()
    {
        save(payment(1, QStringLiteral("777")));
        JournalModel model(*m_store);
        PaymentFilter wanted;
        wanted.account = QStringLiteral("777");
        model.setFilter(wanted);
        save(payment(2));
        model.refresh(2);
        QCOMPARE(model.rowCount(), 1);
        QCOMPARE(model.record(0).packId, Q_INT64_C(1));
    }

    void olderPaymentTakesItsPlaceByTime()
    {
        save(payment(5));
        JournalModel model(*m_store);
        save(payment(3));
        model.refresh(3);
        QCOMPARE(model.rowOf(5), 0);
        QCOMPARE(model.rowOf(3), 1);
    }

    void changedStateIsShownInPlace()
    {
        save(payment(1));
        save(payment(2));
        JournalModel model(*m_store);
        QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
        QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
        QVERIFY(m_store->advance(1, PackState::Posted));
        model.refresh(1);
        QCOMPARE(changed.count(), 1);
        QCOMPARE(changed.at(0).at(0).toModelIndex().row(), 1);
        QCOMPARE(reset.count(), 0);
        QCOMPARE(model.record(1).state, PackState::Posted);
        QVERIFY(!model.index(1, JournalModel::State).data(Qt::ForegroundRole).isValid());
    }

    void filter_data()
    {
        QTest::addColumn<QString>("account");
        QTest::addColumn<int>("state");
        QTest::addColumn<QVector<int>>("ids");
        QTest::newRow("everything") << QString() << -1 << QVector<int>{3, 2, 1};
        QTest::newRow("account") << QStringLiteral("777") << -1 << QVector<int>{2};
        QTest::newRow("beginning of an account")
            << QStringLiteral("1002") << -1 << QVector<int>{3, 1};
        QTest::newRow("middle of an account") << QStringLiteral("200") << -1 << QVector<int>();
        QTest::newRow("state") << QString() << int(PackState::Posted) << QVector<int>{3};
        QTest::newRow("nothing fits")
            << QStringLiteral("777") << int(PackState::Posted) << QVector<int>();
    }

    void filter()
    {
        QFETCH(QString, account);
        QFETCH(int, state);
        QFETCH(QVector<int>, ids);
        save(payment(1));
        save(payment(2, QStringLiteral("777")));
        save(payment(3));
        QVERIFY(m_store->advance(3, PackState::Posted));

        JournalModel model(*m_store);
        const QAbstractItemModelTester tester(&model);
        PaymentFilter wanted;
        wanted.account = account;
        wanted.state = state;
        model.setFilter(wanted);
        QVector<int> found;
        for (int row = 0; row < model.rowCount(); ++row)
            found.append(int(model.record(row).packId));
        QCOMPARE(found, ids);
        QVERIFY(!model.hasMore());
    }

    void oldestFirstOnRequest()
    {
        for (int id = 1; id <= JournalModel::pageSize + 2; ++id)
            save(payment(id));
        JournalModel model(*m_store);
        QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
        model.sort(JournalModel::Time, Qt::DescendingOrder);
        QCOMPARE(reset.count(), 0);
        model.sort(JournalModel::Time, Qt::AscendingOrder);
        QCOMPARE(reset.count(), 1);
        QCOMPARE(model.record(0).packId, Q_INT64_C(1));
        // A new payment stands at the end, which has not been read yet.
        save(payment(9999));
        model.refresh(9999);
        QCOMPARE(model.rowOf(9999), -1);
        model.fetchMore(QModelIndex());
        QCOMPARE(model.rowOf(9999), model.rowCount() - 1);
        QVERIFY(!model.hasMore());
        save(payment(10000));
        model.refresh(10000);
        QCOMPARE(model.rowOf(10000), model.rowCount() - 1);
    }

    void sortedByAnyColumn_data()
    {
        QTest::addColumn<int>("column");
        QTest::addColumn<QVector<int>>("ascending");
        QTest::newRow("time") << int(JournalModel::Time) << QVector<int>{1, 2, 3, 4};
        QTest::newRow("provider") << int(JournalModel::ProviderName) << QVector<int>{2, 4, 3, 1};
        QTest::newRow("account") << int(JournalModel::Account) << QVector<int>{3, 1, 4, 2};
        QTest::newRow("sum") << int(JournalModel::Sum) << QVector<int>{4, 2, 1, 3};
        QTest::newRow("cash") << int(JournalModel::Cash) << QVector<int>{1, 4, 2, 3};
        QTest::newRow("card") << int(JournalModel::Card) << QVector<int>{2, 4, 3, 1};
        QTest::newRow("state") << int(JournalModel::State) << QVector<int>{2, 3, 4, 1};
    }

    void sortedByAnyColumn()
    {
        QFETCH(int, column);
        QFETCH(QVector<int>, ascending);
        const auto saveNext = [this](qint64 id, const char *provider, const char *account,
                                     qint64 cash, qint64 card) {
            PaymentRecord record = payment(id, QLatin1String(account));
            record.providerName = QString::fromUtf8(provider);
            record.cash = basix::FixNumber(100, cash);
            record.card = basix::FixNumber(100, card);
            record.sum = record.cash + record.card;
            save(record);
        };
        saveNext(1, "Я", "20", 0, 1200);
        saveNext(2, "А", "7", 900, 0);
        saveNext(3, "Б", "100", 1000, 1000);
        saveNext(4, "А", "20", 100, 0);
        QVERIFY(m_store->advance(1, PackState::Acknowledged));
        QVERIFY(m_store->advance(4, PackState::Posted));
        JournalModel model(*m_store);
        const QAbstractItemModelTester tester(&model);
        const auto ids = [&model] {
            QVector<int> result;
            for (int row = 0; row < model.rowCount(); ++row)
                result.append(int(model.record(row).packId));
            return result;
        };
        model.sort(column, Qt::AscendingOrder);
        QCOMPARE(ids(), ascending);
        QCOMPARE(int(JournalModel::columnOf(model.order().key)), column);
        QVERIFY(!model.tooManyToSort());
        model.sort(column, Qt::DescendingOrder);
        QCOMPARE(ids(), QVector<int>(ascending.crbegin(), ascending.crend()));
        // A new one takes its place in that order.
        saveNext(5, "Я", "9", 99999, 99999);
        model.refresh(5);
        const QVector<int> shown = ids();
        model.reload();
        QCOMPARE(shown, ids());
        QCOMPARE(shown.size(), 5);
    }

    void changedStateMovesThePayment()
    {
        for (int id = 1; id <= 3; ++id)
            save(payment(id));
        JournalModel model(*m_store);
        const QAbstractItemModelTester tester(&model);
        model.sort(JournalModel::State, Qt::AscendingOrder);
        const QPersistentModelIndex chosen = model.index(model.rowOf(1), 0);
        QVERIFY(m_store->advance(1, PackState::Posted));
        model.refresh(1);
        QCOMPARE(model.rowOf(1), 2);
        QCOMPARE(chosen.row(), 2);
        QCOMPARE(model.record(2).state, PackState::Posted);
        model.sort(JournalModel::State, Qt::DescendingOrder);
        QVERIFY(m_store->advance(3, PackState::Acknowledged));
        model.refresh(3);
        QCOMPARE(model.rowOf(3), 0);
        QCOMPARE(chosen.row(), -1);
    }

    void changedPaymentMayMoveToWhatWasNotReadYet()
    {
        for (int id = 1; id <= JournalModel::pageSize + 2; ++id)
            save(payment(id));
        JournalModel model(*m_store);
        model.sort(JournalModel::State, Qt::AscendingOrder);
        QCOMPARE(model.rowCount(), JournalModel::pageSize);
        QVERIFY(m_store->advance(1, PackState::Posted));
        model.refresh(1);
        QCOMPARE(model.rowOf(1), -1);
        model.fetchMore(QModelIndex());
        QCOMPARE(model.rowOf(1), JournalModel::pageSize + 1);
        QCOMPARE(model.rowCount(), JournalModel::pageSize + 2);
    }

    void tooManyStayInTheOrderOfTime()
    {
        save(payment(1));
        const QString file = m_folder.filePath(QStringLiteral("%1.sqlite").arg(m_files));
        {
            QSqlDatabase other =
                QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("other"));
            other.setDatabaseName(file);
            QVERIFY(other.open());
            QVERIFY(QSqlQuery(other).exec(
                QStringLiteral("WITH RECURSIVE n (i) AS (SELECT 2 UNION ALL SELECT i + 1 FROM n "
                               "WHERE i < 5001) INSERT INTO packs (pack_id, state, created, "
                               "provider_id, provider_name, account, sum, cash, card, "
                               "fiscal_storage, fiscal_document, fiscal_sign, saved, body) SELECT "
                               "i, 0, '2026-11-19T10:00:00.000Z', 1, '', '5', i, 0, i, '', '', '', "
                               "'', '{}' FROM n")));
        }
        QSqlDatabase::removeDatabase(QStringLiteral("other"));
        JournalModel model(*m_store);
        model.sort(JournalModel::Sum, Qt::AscendingOrder);
        QVERIFY(model.tooManyToSort());
        QCOMPARE(model.order(), PaymentOrder::NewestFirst);
        QCOMPARE(model.record(0).packId, Q_INT64_C(1));
        PaymentFilter filter;
        filter.until = payment(1).created;
        model.setFilter(filter);
        QVERIFY(!model.tooManyToSort());
        QCOMPARE(model.record(0).packId, Q_INT64_C(2));
    }

    void paymentsThatArriveWhileReadingComeOnce()
    {
        for (int id = 1; id <= 2 * JournalModel::pageSize; ++id)
            save(payment(id));
        JournalModel model(*m_store);
        for (int id = 1001; id <= 1005; ++id) {
            save(payment(id));
            model.refresh(id);
        }
        model.fetchMore(QModelIndex());
        QVector<qint64> ids;
        for (int row = 0; row < model.rowCount(); ++row)
            ids.append(model.record(row).packId);
        QCOMPARE(ids.size(), 2 * JournalModel::pageSize + 5);
        QVERIFY(std::is_sorted(ids.crbegin(), ids.crend()));
        QVERIFY(std::adjacent_find(ids.cbegin(), ids.cend()) == ids.cend());
    }

    void dayIsADayHere()
    {
        const QDate day(2026, 11, 20);
        PaymentRecord evening = payment(1);
        evening.created = QDateTime(day, QTime(23, 59, 59, 999));
        PaymentRecord midnight = payment(2);
        midnight.created = QDateTime(day.addDays(1), QTime(0, 0));
        PaymentRecord first = payment(3);
        first.created = QDateTime(day, QTime(0, 0));
        for (const PaymentRecord &record : {evening, midnight, first})
            save(record);
        PaymentFilter filter;
        filter.from = day.startOfDay();
        filter.until = day.addDays(1).startOfDay();
        JournalModel model(*m_store);
        model.setFilter(filter);
        QCOMPARE(model.rowCount(), 2);
        QCOMPARE(model.rowOf(1), 0);
        QCOMPARE(model.rowOf(3), 1);
    }

    void paymentThatLeavesTheFilterLeavesTheList()
    {
        save(payment(1));
        JournalModel model(*m_store);
        PaymentFilter saved;
        saved.state = int(PackState::Saved);
        model.setFilter(saved);
        QCOMPARE(model.rowCount(), 1);
        QVERIFY(m_store->advance(1, PackState::Posted));
        model.refresh(1);
        QCOMPARE(model.rowCount(), 0);
    }
};

QTEST_GUILESS_MAIN(TestJournalModel)
#include "tst_journalmodel.moc"
