#include "hoststation.h"
#include "srreceipt.h"

#include <molvacore/appsession.h>
#include <molvacore/fiscaltypes.h>

#include <QTest>

class TestSrReceipt : public QObject
{
    Q_OBJECT

private slots:
    void startOfReceipt();
    void registerData();
    void unknownCashierIsLeftOut();
    void payments_data();
    void payments();
    void packOperations_data();
    void packOperations();
    void qrText_data();
    void qrText();
};

static void moneyRows()
{
    QTest::addColumn<int>("card");
    QTest::addColumn<int>("cash");
    QTest::addColumn<QString>("expected");
    QTest::newRow("both") << 5000 << 10000 << QStringLiteral("2:50.00 1:100.00");
    QTest::newRow("cash only") << 0 << 10000 << QStringLiteral("1:100.00");
    QTest::newRow("card only") << 10000 << 0 << QStringLiteral("2:100.00");
    QTest::newRow("card of one kopeck and cash") << 1 << 10000 << QStringLiteral("1:100.00");
    QTest::newRow("card and cash of one kopeck") << 10000 << 1 << QStringLiteral("2:100.00");
    QTest::newRow("two kopecks each") << 2 << 2 << QStringLiteral("2:0.02 1:0.02");
    QTest::newRow("nothing") << 0 << 0 << QString();
    QTest::newRow("negative") << -500 << -500 << QString();
}

void TestSrReceipt::startOfReceipt()
{
    const Check receipt = SrReceipt::start(HostStation::profile());
    QCOMPARE(receipt.additionalUserParameter().name(), QStringLiteral("Участок"));
    QCOMPARE(receipt.additionalUserParameter().value(), QStringLiteral("Северный"));
    QCOMPARE(static_cast<int>(receipt.tax()), 2);
    QVERIFY(receipt.operations().isEmpty());
}

void TestSrReceipt::registerData()
{
    HostStation station;
    // A host's fresh receipt may be anything.
    Check receipt;
    receipt.setType(static_cast<PaymentType>(2));
    receipt.setCheckType(static_cast<CheckType>(2));
    SrReceipt::fillRegisterData(receipt);
    QCOMPARE(static_cast<int>(receipt.type()), 1);
    QCOMPARE(static_cast<int>(receipt.checkType()), 1);
    QCOMPARE(receipt.cashier(), HostStation::cashier());
    QCOMPARE(receipt.userInn(), HostStation::registerInn());
    QCOMPARE(receipt.regNumber(), HostStation::registerNumber());
}

void TestSrReceipt::unknownCashierIsLeftOut()
{
    HostStation station;
    AppSession::setCurrentSession(AppSession(8));
    Check receipt;
    receipt.setCashier(QStringLiteral("прежний"));
    SrReceipt::fillRegisterData(receipt);
    QCOMPARE(receipt.cashier(), QStringLiteral("прежний"));
    QCOMPARE(receipt.userInn(), HostStation::registerInn());
}

void TestSrReceipt::payments_data()
{
    moneyRows();
}

void TestSrReceipt::payments()
{
    QFETCH(int, card);
    QFETCH(int, cash);
    Check receipt;
    SrReceipt::addPayments(receipt, basix::FixNumber(100, card), basix::FixNumber(100, cash));
    QStringList found;
    for (const CheckPayment &payment : receipt.payments())
        found.append(QStringLiteral("%1:%2").arg(
            QString::number(static_cast<int>(payment.moneyType())), payment.sum().toString()));
    QTEST(found.join(QLatin1Char(' ')), "expected");
}

void TestSrReceipt::packOperations_data()
{
    moneyRows();
}

void TestSrReceipt::packOperations()
{
    QFETCH(int, card);
    QFETCH(int, cash);
    PayPack pack;
    SrReceipt::addOperations(pack, HostStation::roubles(), basix::FixNumber(100, card),
                             basix::FixNumber(100, cash));
    QStringList found;
    for (const PayPackOperation &operation : pack.operations()) {
        found.append(QStringLiteral("%1:%2").arg(
            QString::number(static_cast<int>(operation.moneyType())), operation.sum().toString()));
        QCOMPARE(operation.currency(), HostStation::roubles());
        QCOMPARE(operation.details(), QString());
    }
    QTEST(found.join(QLatin1Char(' ')), "expected");
}

void TestSrReceipt::qrText_data()
{
    QTest::addColumn<QVariantList>("properties");
    QTest::addColumn<QString>("expected");
    const QString tag = QStringLiteral("tag");
    const QString value = QStringLiteral("value");
    const QString text = QStringLiteral("t=20240301T1200&s=10.00");
    const QVariantMap total{{tag, 1020}, {value, 1000}};

    QTest::newRow("among others") << QVariantList{total, QVariantMap{{tag, 1196}, {value, text}}}
                                  << text;
    QTest::newRow("tag as text") << QVariantList{QVariantMap{{tag, QStringLiteral("1196")},
                                                             {value, text}}}
                                 << text;
    QTest::newRow("tag as double")
        << QVariantList{QVariantMap{{tag, 1196.0}, {value, text}}} << text;
    QTest::newRow("first of two") << QVariantList{QVariantMap{{tag, 1196}, {value, text}},
                                                  QVariantMap{{tag, 1196},
                                                              {value, QStringLiteral("second")}}}
                                  << text;
    QTest::newRow("without the tag") << QVariantList{total} << QString();
    QTest::newRow("without value") << QVariantList{QVariantMap{{tag, 1196}}} << QString();
    QTest::newRow("elements that are no maps")
        << QVariantList{5, QStringLiteral("1196"), QVariant()} << QString();
    QTest::newRow("empty") << QVariantList() << QString();
}

void TestSrReceipt::qrText()
{
    QFETCH(QVariantList, properties);
    QTEST(SrReceipt::qrText(properties), "expected");
}

QTEST_GUILESS_MAIN(TestSrReceipt)
#include "tst_srreceipt.moc"
