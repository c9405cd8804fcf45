#include "hoststation.h"
#include "srpayment.h"

#include <molvacore/providerparameter.h>

#include <QTest>

class TestSrPayment : public QObject
{
    Q_OBJECT

private slots:
    void fillsParametersByExactName();
    void fillingLeavesOtherCopiesAlone();
    void payment();
    void paymentKeepsItsOwnParameters();
};

static QMap<QString, QString> valuesOf(const Provider &provider)
{
    QMap<QString, QString> values;
    for (const QSharedPointer<ProviderParameter> &parameter : provider.parameters())
        values.insert(parameter->name(), parameter->value());
    return values;
}

static const QString account = QStringLiteral("account");
static const QString before = QStringLiteral("before");

void TestSrPayment::fillsParametersByExactName()
{
    Provider provider = *HostStation::provider();
    SrPayment::fillParameters(provider,
                              {{account, QStringLiteral("17")},
                               {QStringLiteral("qrcode"), QString()},
                               {QStringLiteral("unknown"), QStringLiteral("x")}});
    QCOMPARE(valuesOf(provider),
             (QMap<QString, QString>{{account, QStringLiteral("17")},
                                     {QStringLiteral("Account"), before},
                                     {QStringLiteral("period"), before},
                                     {QStringLiteral("paydata"), before},
                                     {QStringLiteral("qrcode"), QString()},
                                     {QStringLiteral("numdoc"), before}}));
}

void TestSrPayment::fillingLeavesOtherCopiesAlone()
{
    const Provider original = *HostStation::provider();
    Provider copy = original;
    SrPayment::fillParameters(copy, {{account, QStringLiteral("17")}});
    QCOMPARE(valuesOf(original).value(account), before);
}

void TestSrPayment::payment()
{
    const Provider provider = *HostStation::provider();
    const QDateTime start = QDateTime::currentDateTime();
    const Payment payment = SrPayment::create(provider, QStringLiteral("0017"),
                                              HostStation::roubles(), basix::FixNumber(100, 1050));
    QVERIFY(payment.created() >= start && payment.created() <= QDateTime::currentDateTime());
    QCOMPARE(payment.account(), QStringLiteral("0017"));
    QCOMPARE(payment.currencyId(), qint64(643));
    QCOMPARE(payment.summ().toString(), QStringLiteral("10.50"));
    QCOMPARE(payment.providerData(), provider);
}

void TestSrPayment::paymentKeepsItsOwnParameters()
{
    Provider provider = *HostStation::provider();
    const Payment payment = SrPayment::create(provider, QStringLiteral("1"), HostStation::roubles(),
                                              basix::FixNumber(100, 1));
    SrPayment::fillParameters(provider, {{account, QStringLiteral("later")}});
    QCOMPARE(valuesOf(payment.providerData()).value(account), before);
}

QTEST_GUILESS_MAIN(TestSrPayment)
#include "tst_srpayment.moc"
