#include "billingsamples.h"
#include "srcounter.h"

#include <QTest>

using namespace BillingSamples;

class TestSrCounter : public QObject
{
    Q_OBJECT

private slots:
    void readsReading_data();
    void readsReading();
    void negativeReadingIsStoredAsText();
    void settersStoreTexts();
    void setterOnReadOnlyField();
    void paramsMap();
    void titles();
    void titlesOfEmptyRecord();
};

static SrCounter sample()
{
    SrCounter counter;
    counter.parseCheckList(BillingSamples::counter(11, QStringLiteral("ХВС"), QStringLiteral("120"),
                                                   QStringLiteral("131")));
    return counter;
}

void TestSrCounter::readsReading_data()
{
    QTest::addColumn<QVariantList>("list");
    QTest::addColumn<qint64>("current");
    QTest::newRow("text") << QVariantList{field(SrCounter::FIELD_CUR_VALUE, QStringLiteral("131"))}
                          << qint64(131);
    QTest::newRow("number") << QVariantList{field(SrCounter::FIELD_CUR_VALUE, 131)} << qint64(131);
    QTest::newRow("missing") << QVariantList() << qint64(0);
    QTest::newRow("not numeric") << QVariantList{field(SrCounter::FIELD_CUR_VALUE,
                                                       QStringLiteral("нет"))}
                                 << qint64(0);
}

void TestSrCounter::readsReading()
{
    QFETCH(QVariantList, list);
    SrCounter counter;
    counter.parseCheckList(list);
    QTEST(counter.curValue(), "current");
}

void TestSrCounter::negativeReadingIsStoredAsText()
{
    SrCounter counter = sample();
    counter.setCurValue(-3);
    QCOMPARE(counter.getValue(SrCounter::FIELD_CUR_VALUE), QVariant(QStringLiteral("-3")));
    QCOMPARE(counter.curValue(), qint64(-3));
}

void TestSrCounter::settersStoreTexts()
{
    SrCounter counter = sample();
    counter.setId(7);
    counter.setName(QStringLiteral("Имя"));
    counter.setLastValue(9223372036854775807);
    QCOMPARE(counter.getValue(SrCounter::FIELD_ID), QVariant(QStringLiteral("7")));
    QCOMPARE(counter.id(), qint64(7));
    QCOMPARE(counter.name(), QStringLiteral("Имя"));
    QCOMPARE(counter.getValue(SrCounter::FIELD_LAST_VALUE),
             QVariant(QStringLiteral("9223372036854775807")));
    QCOMPARE(counter.lastValue(), qint64(9223372036854775807));
}

void TestSrCounter::setterOnReadOnlyField()
{
    SrCounter counter;
    counter.parseCheckList(
        {field(SrCounter::FIELD_LAST_VALUE, QStringLiteral("5"), Edit::Refused)});
    counter.setLastValue(6);
    counter.setCurValue(6);
    QCOMPARE(counter.lastValue(), qint64(5));
    QVERIFY(!counter.getValue(SrCounter::FIELD_CUR_VALUE).isValid());
}

void TestSrCounter::paramsMap()
{
    const SrCounter counter = sample();
    QCOMPARE(counter.toParamsMap(),
             (QVariantMap{{QStringLiteral("name"), QStringLiteral("counter")},
                          {QStringLiteral("paramList"), QVariant(counter.toPayParamsList())}}));
}

void TestSrCounter::titles()
{
    const QMap<QString, QString> expected{
        {QStringLiteral("id"), QStringLiteral("Код")},
        {QStringLiteral("name"), QStringLiteral("Счетчик")},
        {QStringLiteral("lastvalue"), QStringLiteral("Предыдущее")},
        {QStringLiteral("currvalue"), QStringLiteral("Текущее")}};
    QCOMPARE(sample().titles(), expected);
}

void TestSrCounter::titlesOfEmptyRecord()
{
    QCOMPARE(SrCounter().titles(),
             (QMap<QString, QString>{{QStringLiteral("id"), QString()},
                                     {QStringLiteral("name"), QString()},
                                     {QStringLiteral("lastvalue"), QString()},
                                     {QStringLiteral("currvalue"), QString()}}));
}

QTEST_GUILESS_MAIN(TestSrCounter)
#include "tst_srcounter.moc"
