#include "srrequest.h"

#include <QSet>
#include <QTest>

class TestSrRequest : public QObject
{
    Q_OBJECT

private slots:
    void defaultRequest();
    void keepsWhatIsSet();
    void isValid_data();
    void isValid();
    void body();
    void bodyOverwritesKeysOfTheData();
    void sumInBody_data();
    void sumInBody();
    void uidIsDecimalText();
    void sameContentsGetDifferentUids();
    void equalityComparesEveryField();
    void fixedTexts();
};

static SRRequest sample()
{
    SRRequest request;
    request.setType(SRRequest::AccountData);
    request.setFunction(SRRequest::GET_DATA);
    request.setUid(QStringLiteral("-42"));
    request.setData({{QStringLiteral("params"), 5}});
    request.setCurrencyId(643);
    request.setProviderId(18722);
    request.setSum(basix::FixNumber(100, 12345));
    return request;
}

void TestSrRequest::defaultRequest()
{
    const SRRequest request;
    QCOMPARE(static_cast<int>(request.type()), 0);
    QVERIFY(request.function().isEmpty());
    QVERIFY(request.uid().isEmpty());
    QVERIFY(request.data().isEmpty());
    QCOMPARE(request.currencyId(), 0);
    QCOMPARE(request.providerId(), qint64(0));
    QCOMPARE(request.sum(), basix::FixNumber(100, 0));
}

void TestSrRequest::keepsWhatIsSet()
{
    const SRRequest request = sample();
    QCOMPARE(request.type(), SRRequest::AccountData);
    QCOMPARE(request.function(), SRRequest::GET_DATA);
    QCOMPARE(request.uid(), QStringLiteral("-42"));
    QCOMPARE(request.data(), (QMap<QString, QVariant>{{QStringLiteral("params"), 5}}));
    QCOMPARE(request.currencyId(), 643);
    QCOMPARE(request.providerId(), qint64(18722));
    QCOMPARE(request.sum().toString(), QStringLiteral("123.45"));
}

void TestSrRequest::isValid_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("function");
    QTest::addColumn<QString>("uid");
    QTest::addColumn<bool>("valid");
    QTest::newRow("all set") << 1 << QStringLiteral("check") << QStringLiteral("1") << true;
    QTest::newRow("no type") << 0 << QStringLiteral("check") << QStringLiteral("1") << false;
    QTest::newRow("no function") << 1 << QString() << QStringLiteral("1") << false;
    QTest::newRow("no uid") << 1 << QStringLiteral("check") << QString() << false;
}

void TestSrRequest::isValid()
{
    QFETCH(int, type);
    QFETCH(QString, function);
    QFETCH(QString, uid);
    SRRequest request;
    request.setType(static_cast<SRRequest::ERequestType>(type));
    request.setFunction(function);
    request.setUid(uid);
    QTEST(request.isValid(), "valid");
}

void TestSrRequest::body()
{
    const QVariantMap body = sample().toMap();
    QCOMPARE(body,
             (QVariantMap{{QStringLiteral("params"), 5},
                          {QStringLiteral("code"), QStringLiteral("check")},
                          {QStringLiteral("uid"), QStringLiteral("-42")},
                          {QStringLiteral("currencyId"), 643},
                          {QStringLiteral("providerId"), qint64(18722)},
                          {QStringLiteral("summ"), 123.45}}));
    QCOMPARE(body.value(QStringLiteral("currencyId")).userType(), int(QMetaType::Int));
    QCOMPARE(body.value(QStringLiteral("providerId")).userType(), int(QMetaType::LongLong));
    QCOMPARE(body.value(QStringLiteral("summ")).userType(), int(QMetaType::Double));
}

void TestSrRequest::bodyOverwritesKeysOfTheData()
{
    SRRequest request = sample();
    request.setData(
        {{QStringLiteral("uid"), QStringLiteral("foreign")}, {QStringLiteral("code"), 1}});
    QCOMPARE(request.toMap().value(QStringLiteral("uid")), QVariant(QStringLiteral("-42")));
    QCOMPARE(request.toMap().value(QStringLiteral("code")), QVariant(QStringLiteral("check")));
}

void TestSrRequest::sumInBody_data()
{
    QTest::addColumn<int>("kopecks");
    QTest::addColumn<QVariant>("summ");
    QTest::newRow("zero") << 0 << QVariant();
    QTest::newRow("negative") << -1 << QVariant();
    QTest::newRow("one kopeck") << 1 << QVariant(0.01);
    QTest::newRow("roubles") << 150050 << QVariant(1500.5);
}

void TestSrRequest::sumInBody()
{
    QFETCH(int, kopecks);
    SRRequest request = sample();
    request.setSum(basix::FixNumber(100, kopecks));
    QTEST(request.toMap().value(QStringLiteral("summ")), "summ");
    QCOMPARE(request.toMap().contains(QStringLiteral("summ")), kopecks > 0);
}

void TestSrRequest::uidIsDecimalText()
{
    SRRequest request = sample();
    request.generateUid(5000000001);
    bool ok = false;
    const qint64 number = request.uid().toLongLong(&ok);
    QVERIFY(ok);
    QCOMPARE(QString::number(number), request.uid());
}

void TestSrRequest::sameContentsGetDifferentUids()
{
    QSet<QString> uids;
    for (int i = 0; i < 1000; ++i) {
        SRRequest request = sample();
        request.generateUid(17);
        uids.insert(request.uid());
    }
    QCOMPARE(uids.size(), 1000);
}

void TestSrRequest::equalityComparesEveryField()
{
    QCOMPARE(sample(), sample());
    SRRequest other = sample();
    other.setType(SRRequest::NoRequest);
    QVERIFY(other != sample());
    other = sample();
    other.setFunction(QStringLiteral("x"));
    QVERIFY(other != sample());
    other = sample();
    other.setUid(QStringLiteral("x"));
    QVERIFY(other != sample());
    other = sample();
    other.setData({});
    QVERIFY(other != sample());
    other = sample();
    other.setCurrencyId(840);
    QVERIFY(other != sample());
    other = sample();
    other.setProviderId(18723);
    QVERIFY(other != sample());
    other = sample();
    other.setSum(basix::FixNumber(100, 1));
    QVERIFY(other != sample());
}

void TestSrRequest::fixedTexts()
{
    QCOMPARE(SRRequest::DESTINATION, QStringLiteral("/app/box_plugin_check_pay"));
    QCOMPARE(SRRequest::REPLY, QStringLiteral("checkPayStatus"));
    QCOMPARE(SRRequest::GET_DATA, QStringLiteral("check"));
}

QTEST_GUILESS_MAIN(TestSrRequest)
#include "tst_srrequest.moc"
