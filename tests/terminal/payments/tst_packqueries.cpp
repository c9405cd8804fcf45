#include <payments/packqueries.h>

#include <payments/paymentrows.h>

#include <basixcore/sqlitedatabase.h>

#include <QSqlError>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>

class TestPackQueries : public QObject
{
    Q_OBJECT

private slots:
    void everyAnswerIsFoundThroughAnIndex_data()
    {
        QTest::addColumn<QString>("query");
        QTest::addColumn<int>("values");
        QTest::newRow("numbers in states") << PackQueries::numbersInStates() << 2;
        QTest::newRow("numbers of a receipt") << PackQueries::numbersOfReceipt() << 2;
        QTest::newRow("packs of receipts") << PackQueries::ofReceipts() << 3;
        QTest::newRow("packs without a receipt") << PackQueries::withoutReceipt() << 3;
    }

    void everyAnswerIsFoundThroughAnIndex()
    {
        QFETCH(const QString, query);
        QFETCH(const int, values);
        const QTemporaryDir folder;
        basix::SqliteDatabase database;
        QVERIFY2(database.open(folder.filePath(QStringLiteral("payments.sqlite")),
                               PaymentRows::schema()),
                 qPrintable(database.lastError()));
        QSqlQuery explain(database.connection());
        QVERIFY2(explain.prepare(QStringLiteral("EXPLAIN QUERY PLAN ") + query),
                 qPrintable(explain.lastError().text()));
        QCOMPARE(query.count(QLatin1Char('?')), values);
        for (int i = 0; i < values; ++i)
            explain.addBindValue(1);
        QVERIFY2(explain.exec(), qPrintable(explain.lastError().text()));
        QStringList searches;
        while (explain.next()) {
            const QString step = explain.value(3).toString();
            QVERIFY2(!step.startsWith(QLatin1String("SCAN")), qPrintable(step));
            if (step.startsWith(QLatin1String("SEARCH")))
                searches.append(step);
        }
        QVERIFY(!searches.isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestPackQueries)
#include "tst_packqueries.moc"
