#include "billingsamples.h"
#include "hoststation.h"
#include "srreceiptline.h"

#include <molvacore/fiscaltypes.h>

#include <QTest>

class TestSrReceiptLine : public QObject
{
    Q_OBJECT

private slots:
    void serviceLine_data();
    void serviceLine();
    void methodOfServiceIsTheProfiles();
    void amountLine();
    void agentAndSupplier_data();
    void agentAndSupplier();
    void supplierWithoutLegalName();
    void supplierPhones_data();
    void supplierPhones();
};

static SrService service(qint64 id, const QString &distributed)
{
    SrService service;
    service.parseCheckList(BillingSamples::service(id, QStringLiteral("Вода"), QStringLiteral("1"),
                                                   QStringLiteral("2"), distributed));
    return service;
}

void TestSrReceiptLine::serviceLine_data()
{
    QTest::addColumn<qint64>("id");
    QTest::addColumn<QString>("distributed");
    QTest::addColumn<int>("itemType");
    QTest::newRow("service") << qint64(1) << QStringLiteral("12.30") << 4;
    QTest::newRow("penalty") << qint64(3924990) << QStringLiteral("5.00") << 12;
    QTest::newRow("nothing distributed") << qint64(1) << QStringLiteral("0.00") << 4;
}

void TestSrReceiptLine::serviceLine()
{
    QFETCH(qint64, id);
    QFETCH(QString, distributed);
    const CheckOperation line = SrReceiptLine::forService(
        QStringLiteral("Название"), service(id, distributed), HostStation::profile());
    QCOMPARE(line.itemName(), QStringLiteral("Название"));
    QCOMPARE(line.quantity().toString(), QStringLiteral("1.000"));
    QCOMPARE(line.price().toString(), distributed);
    QCOMPARE(line.taxNumber(), static_cast<unsigned char>(6));
    QCOMPARE(static_cast<int>(line.method()), 4);
    QTEST(static_cast<int>(line.itemType()), "itemType");
    QCOMPARE(static_cast<int>(line.agentFlag()), 0);
}

void TestSrReceiptLine::methodOfServiceIsTheProfiles()
{
    for (const int method : {1, 3, 7}) {
        OnlineKkmInfo profile = HostStation::profile();
        profile.setDefaultCalcType(static_cast<PaymentMethod>(method));
        const CheckOperation line = SrReceiptLine::forService(
            QStringLiteral("Вода"), service(1, QStringLiteral("1.00")), profile);
        QCOMPARE(static_cast<int>(line.method()), method);
    }
}

void TestSrReceiptLine::amountLine()
{
    const CheckOperation line =
        SrReceiptLine::forAmount(basix::FixNumber(100, 1230), HostStation::profile());
    QCOMPARE(line.itemName(), QString());
    QCOMPARE(line.quantity().toString(), QStringLiteral("1.000"));
    QCOMPARE(line.price().toString(), QStringLiteral("12.30"));
    QCOMPARE(line.taxNumber(), static_cast<unsigned char>(6));
    QCOMPARE(static_cast<int>(line.method()), 3);
    QCOMPARE(static_cast<int>(line.itemType()), 10);
}

void TestSrReceiptLine::agentAndSupplier_data()
{
    QTest::addColumn<int>("flag");
    QTest::addColumn<bool>("supplier");
    QTest::addColumn<bool>("transferOperator");
    QTest::newRow("no agent") << 0 << false << false;
    QTest::newRow("bank payment agent") << 1 << true << true;
    QTest::newRow("bank payment subagent") << 2 << true << true;
    QTest::newRow("payment agent") << 4 << true << false;
    QTest::newRow("payment subagent") << 8 << true << false;
    QTest::newRow("attorney") << 16 << true << false;
    QTest::newRow("commission agent") << 32 << true << false;
    QTest::newRow("other agent") << 64 << true << false;
    QTest::newRow("two bits at once") << 3 << false << false;
    QTest::newRow("unknown bit") << 128 << false << false;
}

void TestSrReceiptLine::agentAndSupplier()
{
    QFETCH(int, flag);
    QFETCH(bool, supplier);
    QFETCH(bool, transferOperator);
    const OnlineKkmInfo kkm = HostStation::profile();
    CheckOperation line;
    line.setAgentFlag(static_cast<AgentFlag>(flag));
    SrReceiptLine::fillAgentAndSupplier(*HostStation::provider(), kkm, line);

    QCOMPARE(static_cast<int>(line.agentFlag()), flag);
    QCOMPARE(line.provider().isEmpty(), !supplier);
    QCOMPARE(line.agent().isEmpty(), !supplier);
    if (supplier) {
        QCOMPARE(line.provider().name(), QStringLiteral("АО \"Селмар Ривенхолд\""));
        QCOMPARE(line.provider().phones(),
                 (QStringList{QStringLiteral("8342200-00-01"), QStringLiteral("+73422000002")}));
        QCOMPARE(line.agent().paymentAgengPhone(), kkm.payAgentPhone());
        QCOMPARE(line.agent().paymentOperatorPhone(), kkm.payOperatorPhone());
    }
    QCOMPARE(line.providerInn(), supplier ? QStringLiteral("5900000001") : QString());
    const auto onlyBank = [transferOperator](const QString &text) {
        return transferOperator ? text : QString();
    };
    QCOMPARE(line.agent().paymentAgengOperation(), onlyBank(kkm.payAgentOp()));
    QCOMPARE(line.agent().transferOperatorAddress(), onlyBank(kkm.transferOperatorAddress()));
    QCOMPARE(line.agent().transferOperatorInn(), onlyBank(kkm.transferOperatorInn()));
    QCOMPARE(line.agent().transferOperatorName(), onlyBank(kkm.transferOperatorName()));
    QCOMPARE(line.agent().transferOperatorPhone(), onlyBank(kkm.transferOperatorPhone()));
}

void TestSrReceiptLine::supplierWithoutLegalName()
{
    Provider provider = *HostStation::provider();
    provider.setLegalName(QString());
    CheckOperation line;
    line.setAgentFlag(AgentFlag::PayAgent);
    SrReceiptLine::fillAgentAndSupplier(provider, HostStation::profile(), line);
    QCOMPARE(line.provider().name(), QStringLiteral("Селмар Ривенхолд"));
}

void TestSrReceiptLine::supplierPhones_data()
{
    QTest::addColumn<QString>("phones");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("one") << QStringLiteral("7 912") << QStringList{QStringLiteral("7912")};
    QTest::newRow("empty parts stay")
        << QStringLiteral("1,,2,")
        << QStringList{QStringLiteral("1"), QString(), QStringLiteral("2"), QString()};
    QTest::newRow("none") << QString() << QStringList{QString()};
}

void TestSrReceiptLine::supplierPhones()
{
    QFETCH(QString, phones);
    Provider provider = *HostStation::provider();
    provider.setPhones(phones);
    CheckOperation line;
    line.setAgentFlag(AgentFlag::BankPayAgent);
    SrReceiptLine::fillAgentAndSupplier(provider, HostStation::profile(), line);
    QTEST(line.provider().phones(), "expected");
}

QTEST_GUILESS_MAIN(TestSrReceiptLine)
#include "tst_srreceiptline.moc"
