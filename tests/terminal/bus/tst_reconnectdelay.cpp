#include <bus/amqp/reconnectdelay.h>

#include <QtTest>

class tst_ReconnectDelay : public QObject
{
    Q_OBJECT

private slots:
    void growsUpToALimit();
    void startsAgainAfterSuccess();
    void isNeverTheSame();
};

void tst_ReconnectDelay::growsUpToALimit()
{
    ReconnectDelay shortest([] { return 0.0; });
    ReconnectDelay longest([] { return 0.999999; });
    QVector<int> lower;
    QVector<int> upper;
    for (int i = 0; i < 9; ++i) {
        lower.append(shortest.next());
        upper.append(longest.next());
    }
    QCOMPARE(lower, (QVector<int>{250, 500, 1000, 2000, 4000, 8000, 15000, 15000, 15000}));
    QCOMPARE(upper, (QVector<int>{499, 999, 1999, 3999, 7999, 15999, 29999, 29999, 29999}));
}

void tst_ReconnectDelay::startsAgainAfterSuccess()
{
    ReconnectDelay delay([] { return 0.0; });
    for (int i = 0; i < 5; ++i)
        delay.next();
    delay.reset();
    QCOMPARE(delay.next(), 250);
}

void tst_ReconnectDelay::isNeverTheSame()
{
    QSet<int> seen;
    for (int i = 0; i < 50; ++i) {
        ReconnectDelay delay;
        for (int j = 0; j < 6; ++j)
            delay.next();
        const int last = delay.next();
        QVERIFY(last >= 15000 && last <= 30000);
        seen.insert(last);
    }
    QVERIFY(seen.size() > 10);
}

QTEST_APPLESS_MAIN(tst_ReconnectDelay)
#include "tst_reconnectdelay.moc"
