#include <molvacore/boxcomprofile.h>
#include <molvacore/boxinfo.h>
#include <molvacore/check.h>
#include <molvacore/frhandler.h>
#include <molvacore/ipaybyproviderplugin.h>
#include <molvacore/onlinekkmprofile.h>
#include <molvacore/paymentcheckprofile.h>
#include <molvacore/paypack.h>

#include <QTest>

#include <type_traits>

class tst_MetaTypes : public QObject
{
    Q_OBJECT

private slots:
    void registeredByName_data();
    void registeredByName();
    void queuedDelivery();
    void variantsCompare();
    void interfaceIdentifier();
    void enumerationsAreInts();

signals:
    void saved(const Payment &payment);
};

void tst_MetaTypes::registeredByName_data()
{
    QTest::addColumn<QByteArray>("name");
    for (const char *name :
         {"Payment", "PayPack", "PayPackOperation", "Provider", "ProviderParameter", "Check",
          "BoxInfo", "BoxComProfile", "PaymentCheckProfile", "OnlineKkmInfo", "OnlineKkmProfile",
          "CardCharge", "AppSession", "basix::FixNumber", "basix::Currency"})
        QTest::newRow(name) << QByteArray(name);
}

void tst_MetaTypes::registeredByName()
{
    QFETCH(QByteArray, name);
    const int type = QMetaType::type(name.constData());
    QVERIFY(type != QMetaType::UnknownType);
    QVERIFY(QVariant(type, nullptr).isValid());
}

void tst_MetaTypes::queuedDelivery()
{
    Payment received;
    connect(
        this, &tst_MetaTypes::saved, this,
        [&received](const Payment &payment) { received = payment; }, Qt::QueuedConnection);
    Payment sent;
    sent.setAccount(QStringLiteral("001"));
    emit saved(sent);
    QVERIFY(received.isEmpty());
    QTRY_COMPARE(received, sent);
}

void tst_MetaTypes::variantsCompare()
{
    Payment payment;
    payment.setAccount(QStringLiteral("001"));
    QCOMPARE(QVariant::fromValue(payment), QVariant::fromValue(Payment(payment)));
    QVERIFY(QVariant::fromValue(payment) != QVariant::fromValue(Payment()));
}

void tst_MetaTypes::interfaceIdentifier()
{
    QCOMPARE(qobject_interface_iid<IPayByProviderPlugin *>(),
             "org.molva.plugins.paybyproviderplugin");
    QVERIFY(std::is_abstract<IPayByProviderPlugin>::value);
    QVERIFY(std::has_virtual_destructor<IPayByProviderPlugin>::value);
    QVERIFY(std::is_abstract<FrHandler>::value);
}

void tst_MetaTypes::enumerationsAreInts()
{
    QVERIFY((std::is_same<std::underlying_type_t<AgentFlag>, int>::value));
    QCOMPARE(static_cast<int>(PaymentItemType::Service), 4);
    QCOMPARE(static_cast<int>(PaymentItemType::Payment), 10);
    QCOMPARE(static_cast<int>(PaymentItemType::Payout), 12);
    QCOMPARE(static_cast<int>(PaymentMethod::Advance), 3);
    QCOMPARE(static_cast<int>(PaymentMethod::FullPayment), 4);
    QCOMPARE(static_cast<int>(MoneyType::Cash), 1);
    QCOMPARE(static_cast<int>(MoneyType::Card), 2);
    QCOMPARE(static_cast<int>(PaymentType::Income), 1);
    QCOMPARE(static_cast<int>(CheckType::Sale), 1);
    QCOMPARE(static_cast<int>(AgentFlag::OtherAgent), 64);
    QCOMPARE(static_cast<int>(FDTax::Patent), 32);
}

QTEST_GUILESS_MAIN(tst_MetaTypes)
#include "tst_metatypes.moc"
