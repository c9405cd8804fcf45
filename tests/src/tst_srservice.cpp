#include "billingsamples.h"
#include "srservice.h"

#include <QTest>

using namespace BillingSamples;

class TestSrService : public QObject
{
    Q_OBJECT

private slots:
    void readsMoney_data();
    void readsMoney();
    void settersStoreTexts();
    void setDistributedOnReadOnlyField();
    void settersOnAbsentFields();
    void isPeni_data();
    void isPeni();
    void paramMap();
    void titles();
    void titlesOfEmptyRecord();
    void changedCopyLeavesTheOriginal();
    void valuesFollowEveryChange();
    void valuesFollowAMove();
    void amountTexts();
};

static SrService sample()
{
    SrService service;
    service.parseCheckList(BillingSamples::service(5, QStringLiteral("Вода"), QStringLiteral("10"),
                                                   QStringLiteral("20.5"), QStringLiteral("0.00")));
    return service;
}

void TestSrService::readsMoney_data()
{
    QTest::addColumn<QVariantList>("list");
    QTest::addColumn<QString>("charge");
    QTest::newRow("text 12.5") << QVariantList{field(SrService::FIELD_CHARGE,
                                                     QStringLiteral("12.5"))}
                               << QStringLiteral("12.50");
    QTest::newRow("missing") << QVariantList() << QStringLiteral("0.00");
    QTest::newRow("number of a million")
        << QVariantList{field(SrService::FIELD_CHARGE, 1e6)} << QStringLiteral("1000000.00");
    QTest::newRow("negative") << QVariantList{field(SrService::FIELD_CHARGE,
                                                    QStringLiteral("-7.01"))}
                              << QStringLiteral("-7.01");
}

void TestSrService::readsMoney()
{
    QFETCH(QVariantList, list);
    SrService service;
    service.parseCheckList(list);
    QTEST(service.charge().toString(), "charge");
}

void TestSrService::settersStoreTexts()
{
    SrService service = sample();
    service.setId(-12);
    service.setName(QStringLiteral("Имя"));
    service.setCharge(basix::FixNumber(100, 123456));
    service.setTopay(basix::FixNumber(100, -5));
    service.setDistributed(basix::FixNumber(100, 100000000));
    QCOMPARE(service.getValue(SrService::FIELD_ID), QVariant(QStringLiteral("-12")));
    QCOMPARE(service.getValue(SrService::FIELD_NAME), QVariant(QStringLiteral("Имя")));
    QCOMPARE(service.getValue(SrService::FIELD_CHARGE), QVariant(QStringLiteral("1234.56")));
    QCOMPARE(service.getValue(SrService::FIELD_TOPAY), QVariant(QStringLiteral("-0.05")));
    QCOMPARE(service.getValue(SrService::FIELD_DISTRIBUTED),
             QVariant(QStringLiteral("1000000.00")));
    QCOMPARE(service.id(), qint64(-12));
    QCOMPARE(service.name(), QStringLiteral("Имя"));
    QCOMPARE(service.charge(), basix::FixNumber(100, 123456));
    QCOMPARE(service.topay(), basix::FixNumber(100, -5));
    QCOMPARE(service.distributed(), basix::FixNumber(100, 100000000));
}

void TestSrService::setDistributedOnReadOnlyField()
{
    SrService service;
    service.parseCheckList(
        {field(SrService::FIELD_DISTRIBUTED, QStringLiteral("3.00"), Edit::Refused)});
    service.setDistributed(basix::FixNumber(100, 100));
    QCOMPARE(service.distributed().toString(), QStringLiteral("3.00"));
}

void TestSrService::settersOnAbsentFields()
{
    SrService service;
    service.setId(1);
    service.setName(QStringLiteral("x"));
    service.setCharge(basix::FixNumber(100, 1));
    service.setTopay(basix::FixNumber(100, 1));
    service.setDistributed(basix::FixNumber(100, 1));
    QCOMPARE(service, SrService());
}

void TestSrService::isPeni_data()
{
    QTest::addColumn<QVariantList>("list");
    QTest::addColumn<bool>("peni");
    QTest::newRow("3924990") << QVariantList{field(SrService::FIELD_ID, QStringLiteral("3924990"))}
                             << true;
    QTest::newRow("3924990 as number") << QVariantList{field(SrService::FIELD_ID, 3924990)} << true;
    QTest::newRow("3924991") << QVariantList{field(SrService::FIELD_ID, QStringLiteral("3924991"))}
                             << false;
    QTest::newRow("without id") << QVariantList() << false;
}

void TestSrService::isPeni()
{
    QFETCH(QVariantList, list);
    SrService service;
    service.parseCheckList(list);
    QTEST(service.isPeni(), "peni");
}

void TestSrService::paramMap()
{
    const SrService service = sample();
    QCOMPARE(service.toParamMap(),
             (QVariantMap{{QStringLiteral("name"), QStringLiteral("service")},
                          {QStringLiteral("paramList"), QVariant(service.toPayParamsList())}}));
    QCOMPARE(service.toPayParamsList().size(), 5);
}

void TestSrService::titles()
{
    const QMap<QString, QString> expected{
        {QStringLiteral("id"), QStringLiteral("Код")},
        {QStringLiteral("name"), QStringLiteral("Услуга")},
        {QStringLiteral("charge"), QStringLiteral("Начислено")},
        {QStringLiteral("topay"), QStringLiteral("К оплате")},
        {QStringLiteral("distributed"), QStringLiteral("Распределено")}};
    QCOMPARE(sample().titles(), expected);
}

void TestSrService::titlesOfEmptyRecord()
{
    const QMap<QString, QString> titles = SrService().titles();
    QCOMPARE(titles.keys(),
             (QStringList{QStringLiteral("charge"), QStringLiteral("distributed"),
                          QStringLiteral("id"), QStringLiteral("name"), QStringLiteral("topay")}));
    for (const QString &title : titles)
        QCOMPARE(title, QString());
}

void TestSrService::changedCopyLeavesTheOriginal()
{
    const SrService original = sample();
    SrService copy = original;
    QCOMPARE(copy, original);
    copy.setDistributed(basix::FixNumber(100, 1));
    QVERIFY(copy != original);
    QCOMPARE(original.distributed().value(), qint64(0));
}

/// Values are kept once they were read; whatever changes the record must make them read anew.
void TestSrService::valuesFollowEveryChange()
{
    SrService service = sample();
    QCOMPARE(service.topay().toString(), QStringLiteral("20.50"));

    service.setValue(SrService::FIELD_DISTRIBUTED, QStringLiteral("3"));
    QCOMPARE(service.distributed().toString(), QStringLiteral("3.00"));

    SrObject &record = service;
    record.setParams({{SrService::FIELD_NAME, field(SrService::FIELD_NAME, QStringLiteral("a"))}});
    QCOMPARE(service.name(), QStringLiteral("a"));
    QCOMPARE(service.topay().value(), qint64(0));

    record.parseCheckList(BillingSamples::service(7, QStringLiteral("b"), QStringLiteral("1"),
                                                  QStringLiteral("2"), QStringLiteral("3")));
    QCOMPARE(service.name(), QStringLiteral("b"));
    QCOMPARE(service.id(), qint64(7));

    const SrService other = sample();
    QCOMPARE(other.name(), QStringLiteral("Вода"));
    record = other;
    QCOMPARE(service.name(), QStringLiteral("Вода"));
    QCOMPARE(service, other);
}

void TestSrService::valuesFollowAMove()
{
    SrService from = sample();
    SrService to;
    QCOMPARE(from.name(), QStringLiteral("Вода"));
    QCOMPARE(to.name(), QString());
    to = std::move(from);
    QCOMPARE(to.name(), QStringLiteral("Вода"));

    SrService built(std::move(to));
    QCOMPARE(built.name(), QStringLiteral("Вода"));
    to = SrService();
    QCOMPARE(to.name(), QString());
    QCOMPARE(to, SrService());
    QVERIFY(to != built);
}

void TestSrService::amountTexts()
{
    SrService service = sample();
    QCOMPARE(service.chargeText(), QStringLiteral("10.00"));
    QCOMPARE(service.topayText(), QStringLiteral("20.50"));
    service.setDistributed(basix::FixNumber(100, -5));
    QCOMPARE(service.distributedText(), QStringLiteral("-0.05"));
    QCOMPARE(SrService().chargeText(), QStringLiteral("0.00"));
}

QTEST_GUILESS_MAIN(TestSrService)
#include "tst_srservice.moc"
