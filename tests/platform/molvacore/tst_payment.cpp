#include <molvacore/payment.h>

#include <QTest>

namespace {

Provider provider()
{
    Provider record;
    record.setId(18722);
    record.addParameter(
        ProviderParameter(QStringLiteral("account"), QString(), QStringLiteral("001")));
    return record;
}

} // namespace

class tst_Payment : public QObject
{
    Q_OBJECT

private slots:
    void freshOneIsEmpty();
    void anyFieldMakesItNotEmpty();
    void providerWithParameters();
    void providerWithoutParameters();
    void storedParametersCannotBeReachedFromOutside();
    void changedCopyLeavesTheOriginal();
    void equalityIsStrictAboutTheSum();
};

void tst_Payment::freshOneIsEmpty()
{
    QVERIFY(Payment().isEmpty());
    QCOMPARE(Payment().summ().toString(), QStringLiteral("0.00"));
    QVERIFY(!Payment().created().isValid());
}

void tst_Payment::anyFieldMakesItNotEmpty()
{
    Payment payment;
    payment.setAccount(QStringLiteral("1"));
    QVERIFY(!payment.isEmpty());
    payment = Payment();
    payment.setCreated(QDateTime::currentDateTime());
    QVERIFY(!payment.isEmpty());
    payment = Payment();
    payment.setCurrencyId(643);
    QVERIFY(!payment.isEmpty());
    payment = Payment();
    payment.setSumm(basix::FixNumber(100, 1));
    QVERIFY(!payment.isEmpty());
    payment = Payment();
    payment.setProviderData(provider(), true);
    QVERIFY(!payment.isEmpty());
}

void tst_Payment::providerWithParameters()
{
    Payment payment;
    payment.setProviderData(provider(), true);
    QCOMPARE(payment.providerData(), provider());
}

void tst_Payment::providerWithoutParameters()
{
    Payment payment;
    payment.setProviderData(provider(), false);
    QCOMPARE(payment.providerData().id(), 18722);
    QVERIFY(payment.providerData().parameters().isEmpty());
}

void tst_Payment::storedParametersCannotBeReachedFromOutside()
{
    Payment payment;
    const Provider given = provider();
    payment.setProviderData(given, true);
    given.parameters().first()->setValue(QStringLiteral("002"));
    payment.providerData().parameters().first()->setValue(QStringLiteral("003"));
    QCOMPARE(payment.providerData().parameters().first()->value(), QStringLiteral("001"));
}

void tst_Payment::changedCopyLeavesTheOriginal()
{
    Payment payment;
    payment.setSumm(basix::FixNumber(100, 100));
    Payment copy = payment;
    copy.setSumm(copy.summ() + basix::FixNumber(100, 50));
    QCOMPARE(payment.summ().toString(), QStringLiteral("1.00"));
    QCOMPARE(copy.summ().toString(), QStringLiteral("1.50"));
}

void tst_Payment::equalityIsStrictAboutTheSum()
{
    Payment kopecks;
    kopecks.setSumm(basix::FixNumber(100, 100));
    Payment mills;
    mills.setSumm(basix::FixNumber(1000, 100));
    QVERIFY(kopecks != mills);
}

QTEST_GUILESS_MAIN(tst_Payment)
#include "tst_payment.moc"
