#include <latencies.h>

#include <QtTest>

class tst_Latencies : public QObject
{
    Q_OBJECT

private slots:
    void percentiles_data();
    void percentiles();
    void clearForgets();
};

void tst_Latencies::percentiles_data()
{
    QTest::addColumn<QVector<qint64>>("values");
    QTest::addColumn<double>("percent");
    QTest::addColumn<qint64>("expected");

    const QVector<qint64> four{40, 10, 30, 20};
    QVector<qint64> hundred;
    for (qint64 value = 100; value >= 1; --value)
        hundred.append(value);
    QTest::newRow("nothing") << QVector<qint64>() << 99.0 << Q_INT64_C(0);
    QTest::newRow("one") << QVector<qint64>{7} << 50.0 << Q_INT64_C(7);
    QTest::newRow("half of four") << four << 50.0 << Q_INT64_C(20);
    QTest::newRow("a little above half") << four << 51.0 << Q_INT64_C(30);
    QTest::newRow("all of four") << four << 100.0 << Q_INT64_C(40);
    QTest::newRow("none of four") << four << 0.0 << Q_INT64_C(10);
    QTest::newRow("99 of a hundred") << hundred << 99.0 << Q_INT64_C(99);
    QTest::newRow("95 of a hundred") << hundred << 95.0 << Q_INT64_C(95);
}

void tst_Latencies::percentiles()
{
    QFETCH(QVector<qint64>, values);
    QFETCH(double, percent);
    Latencies latencies;
    for (const qint64 value : qAsConst(values))
        latencies.add(value);
    QCOMPARE(latencies.count(), values.size());
    QTEST(latencies.percentile(percent), "expected");
}

void tst_Latencies::clearForgets()
{
    Latencies latencies;
    latencies.add(5);
    latencies.clear();
    QCOMPARE(latencies.count(), 0);
    QCOMPARE(latencies.largest(), Q_INT64_C(0));
}

QTEST_GUILESS_MAIN(tst_Latencies)
#include "tst_latencies.moc"
