#include "srrequest.h"

#include <molvacore/paymenti64idgenerator.h>

#include <QDataStream>
#include <QDateTime>
#include <QTest>

namespace {

unsigned int usedBox = 0;
QByteArray usedSeed;
qint64 nextId = 0;

} // namespace

/// Takes the place of the host's generator in this program.
qint64 PaymentI64IdGenerator::generate(unsigned int box, const QByteArray &seed)
{
    usedBox = box;
    usedSeed = seed;
    return nextId;
}

/// What a request gives the host's generator of ids.
class TestSrRequestSeed : public QObject
{
    Q_OBJECT

private slots:
    void seedHoldsTheContentsAndTheTime();
    void idIsStoredAsDecimalText_data();
    void idIsStoredAsDecimalText();
};

void TestSrRequestSeed::seedHoldsTheContentsAndTheTime()
{
    SRRequest request;
    request.setType(SRRequest::AccountData);
    request.setFunction(QStringLiteral("проверка"));
    request.setData({{QStringLiteral("a"), 1}, {QStringLiteral("b"), QStringLiteral("два")}});
    request.setCurrencyId(643);
    request.setProviderId(18722);
    request.setSum(basix::FixNumber(100, 12345));
    const QDateTime before = QDateTime::currentDateTime();
    request.generateUid((qint64(3) << 32) + 17);

    QCOMPARE(usedBox, 17u);
    QDataStream stream(usedSeed);
    QByteArray function;
    qint32 type = 0;
    QVariantMap data;
    qint64 provider = 0;
    QString sum;
    QDateTime time;
    stream >> function >> type >> data >> provider >> sum >> time;
    QCOMPARE(stream.status(), QDataStream::Ok);
    QVERIFY(stream.atEnd());
    QCOMPARE(function, QByteArray("проверка"));
    QCOMPARE(type, qint32(SRRequest::AccountData));
    QCOMPARE(data, request.data());
    QCOMPARE(provider, qint64(18722));
    QCOMPARE(sum, QStringLiteral("123.45"));
    QVERIFY(time >= before && time <= QDateTime::currentDateTime());
}

void TestSrRequestSeed::idIsStoredAsDecimalText_data()
{
    QTest::addColumn<qint64>("id");
    QTest::addColumn<QString>("uid");
    QTest::newRow("positive") << qint64(1234567890123456789)
                              << QStringLiteral("1234567890123456789");
    QTest::newRow("negative") << qint64(-5) << QStringLiteral("-5");
    QTest::newRow("zero") << qint64(0) << QStringLiteral("0");
}

void TestSrRequestSeed::idIsStoredAsDecimalText()
{
    QFETCH(qint64, id);
    nextId = id;
    SRRequest request;
    request.generateUid(1);
    QTEST(request.uid(), "uid");
}

QTEST_GUILESS_MAIN(TestSrRequestSeed)
#include "tst_srrequestseed.moc"
