#include "billingsamples.h"
#include "hoststation.h"
#include "legal/srlegalaccount.h"

#include <molvacore/fiscaltypes.h>
#include <molvacore/providerparameter.h>

#include <QTest>

using namespace BillingSamples;

class TestSrLegalAccountReceipt : public QObject
{
    Q_OBJECT

private slots:
    void linesInOrder();
    void agentSignOfTheProfileIsNotCopied();
    void remainderLine_data();
    void remainderLine();
    void buyer_data();
    void buyer();
    void printableLines();
    void printableLinesOfBareAccount();
    void restOfTheReceipt();
    void onePaymentPerDocument();
    void startAmountAndOneDocument_data();
    void startAmountAndOneDocument();
    void oneKopeckByCard();
    void packLeavesTheProviderAlone();

private:
    HostStation m_station;
};

static SrLegalAccount sample()
{
    SrLegalAccount account;
    account.parseCheckList(legalAccount());
    account.setAccountNumber(QStringLiteral("Д-5"));
    account.setContract(QStringLiteral("А-17"));
    account.setClientPhoneOrEmail(QStringLiteral("+7 912 345-67-89"));
    return account;
}

static Check receiptOf(const SRAccount &account, bool withBuyer = false)
{
    return account.createCheck(HostStation::provider(), HostStation::profile(),
                               basix::FixNumber(100, 3240), basix::FixNumber(100, 80000),
                               withBuyer);
}

static PayPack packOf(const SRAccount &account)
{
    const QVariantList properties{QVariantMap{
        {QStringLiteral("tag"), 1196}, {QStringLiteral("value"), QStringLiteral("t=1&s=2")}}};
    return account.createPack(*HostStation::provider(), properties, HostStation::roubles(),
                              basix::FixNumber(100, 3240), basix::FixNumber(100, 80000));
}

static QMap<QString, QString> parametersOf(const Payment &payment)
{
    QMap<QString, QString> values;
    for (const QSharedPointer<ProviderParameter> &parameter : payment.providerData().parameters())
        values.insert(parameter->name(), parameter->value());
    return values;
}

void TestSrLegalAccountReceipt::linesInOrder()
{
    QStringList lines;
    for (const CheckOperation &line : receiptOf(sample()).operations()) {
        lines.append(QStringLiteral("%1|%2|%3|%4|%5")
                         .arg(line.itemName(), line.price().toString(), line.quantity().toString(),
                              QString::number(static_cast<int>(line.method())),
                              QString::number(static_cast<int>(line.itemType()))));
        QCOMPARE(line.taxNumber(), HostStation::profile().taxRate());
    }
    // The service with a blank name gets a name, the remainder has none.
    QCOMPARE(lines,
             (QStringList{QStringLiteral("Холодная вода|800.00|1.000|4|4"),
                          QStringLiteral("Пени|20.10|1.000|4|12"),
                          QStringLiteral("Услуга|0.00|1.000|4|4"),
                          QStringLiteral("|12.30|1.000|3|10")}));
}

void TestSrLegalAccountReceipt::agentSignOfTheProfileIsNotCopied()
{
    const Check receipt = receiptOf(sample());
    QCOMPARE(static_cast<int>(HostStation::profile().agentSign()), 4);
    QCOMPARE(receipt.operations().size(), 4);
    for (const CheckOperation &line : receipt.operations()) {
        QCOMPARE(static_cast<int>(line.agentFlag()), 0);
        QVERIFY(line.provider().isEmpty());
        QVERIFY(line.providerInn().isEmpty());
        QVERIFY(line.agent().isEmpty());
    }
}

void TestSrLegalAccountReceipt::remainderLine_data()
{
    QTest::addColumn<QString>("remainder");
    QTest::addColumn<int>("count");
    QTest::newRow("0.00") << QStringLiteral("0.00") << 0;
    QTest::newRow("0.01") << QStringLiteral("0.01") << 1;
    QTest::newRow("negative") << QStringLiteral("-1.00") << 0;
}

void TestSrLegalAccountReceipt::remainderLine()
{
    QFETCH(QString, remainder);
    SrLegalAccount account;
    account.parseCheckList({field(SRAccount::FIELD_REMAINDER, remainder)});
    QTEST(receiptOf(account).operations().size(), "count");
}

void TestSrLegalAccountReceipt::buyer_data()
{
    QTest::addColumn<bool>("withBuyer");
    QTest::addColumn<QString>("buyer");
    QTest::addColumn<QString>("buyerInn");
    QTest::newRow("with buyer") << true << QStringLiteral("ООО \"Ромашка\"")
                                << QStringLiteral(" 770712345678 ");
    QTest::newRow("without buyer") << false << QString() << QString();
}

void TestSrLegalAccountReceipt::buyer()
{
    QFETCH(bool, withBuyer);
    const Check receipt = receiptOf(sample(), withBuyer);
    QTEST(receipt.buyer(), "buyer");
    QTEST(receipt.buyerInn(), "buyerInn");
}

void TestSrLegalAccountReceipt::printableLines()
{
    QCOMPARE(receiptOf(sample()).printableData(),
             (QStringList{QStringLiteral("пр. Заводской, 1"), QStringLiteral("Договор №\tД-5"),
                          QStringLiteral("Документ №\tА-17"), QStringLiteral("Документ №\tА-18")}));
}

void TestSrLegalAccountReceipt::printableLinesOfBareAccount()
{
    QCOMPARE(receiptOf(SrLegalAccount()).printableData(), QStringList());
}

void TestSrLegalAccountReceipt::restOfTheReceipt()
{
    const Check receipt = receiptOf(sample());
    QCOMPARE(receipt.clientPhone(), QStringLiteral("79123456789"));
    QCOMPARE(receipt.additionalUserParameter(),
             CheckAdditionalParameter(QStringLiteral("Участок"), QStringLiteral("Северный")));
    QCOMPARE(static_cast<int>(receipt.tax()), 2);
    QCOMPARE(static_cast<int>(receipt.type()), 1);
    QCOMPARE(static_cast<int>(receipt.checkType()), 1);
    QCOMPARE(receipt.cashier(), HostStation::cashier());
    QCOMPARE(receipt.userInn(), HostStation::registerInn());
    QCOMPARE(receipt.regNumber(), HostStation::registerNumber());
    QCOMPARE(receipt.payments(),
             (QList<CheckPayment>{CheckPayment(MoneyType::Card, basix::FixNumber(100, 3240)),
                                  CheckPayment(MoneyType::Cash, basix::FixNumber(100, 80000))}));
}

void TestSrLegalAccountReceipt::onePaymentPerDocument()
{
    SrLegalAccount account = sample();
    account.setStartAmount(basix::FixNumber(100, 100));
    const PayPack pack = packOf(account);
    QCOMPARE(pack.payments().size(), 2);
    const Payment first = pack.payments().at(0);
    const Payment second = pack.payments().at(1);
    QCOMPARE(first.summ().toString(), QStringLiteral("820.10"));
    QCOMPARE(second.summ().toString(), QStringLiteral("0.00"));
    QCOMPARE(first.account(), QStringLiteral("Д-5"));
    QCOMPARE(parametersOf(first),
             (QMap<QString, QString>{
                 {QStringLiteral("account"), QStringLiteral("Д-5")},
                 {QStringLiteral("Account"), QStringLiteral("before")},
                 {QStringLiteral("period"), QStringLiteral("before")},
                 {QStringLiteral("paydata"), account.documents().at(0).toJsonParamsList()},
                 {QStringLiteral("qrcode"), QStringLiteral("t=1&s=2")},
                 {QStringLiteral("numdoc"), QStringLiteral("А-17")}}));
    QCOMPARE(parametersOf(second).value(QStringLiteral("numdoc")), QStringLiteral("А-18"));
    QCOMPARE(parametersOf(second).value(QStringLiteral("paydata")),
             account.documents().at(1).toJsonParamsList());
    QCOMPARE(
        pack.operations(),
        (QList<PayPackOperation>{
            PayPackOperation(MoneyType::Card, basix::FixNumber(100, 3240), HostStation::roubles()),
            PayPackOperation(MoneyType::Cash, basix::FixNumber(100, 80000),
                             HostStation::roubles())}));
}

void TestSrLegalAccountReceipt::startAmountAndOneDocument_data()
{
    QTest::addColumn<int>("startAmount");
    QTest::addColumn<QString>("remainder");
    QTest::addColumn<QString>("summ");
    QTest::newRow("start amount and remainder")
        << 100 << QStringLiteral("12.30") << QStringLiteral("832.40");
    QTest::newRow("start amount, no remainder")
        << 100 << QStringLiteral("0.00") << QStringLiteral("820.10");
    QTest::newRow("start amount, negative remainder")
        << 100 << QStringLiteral("-5.00") << QStringLiteral("820.10");
    QTest::newRow("start amount and remainder of one kopeck")
        << 1 << QStringLiteral("0.01") << QStringLiteral("820.11");
    QTest::newRow("no start amount") << 0 << QStringLiteral("12.30") << QStringLiteral("820.10");
}

void TestSrLegalAccountReceipt::startAmountAndOneDocument()
{
    QFETCH(int, startAmount);
    QFETCH(QString, remainder);
    SrLegalAccount account = sample();
    account.setDocuments(account.documents().mid(0, 1));
    account.setStartAmount(basix::FixNumber(100, startAmount));
    account.setRemainder(basix::FixNumber(100, remainder));
    const PayPack pack = packOf(account);
    QCOMPARE(pack.payments().size(), 1);
    QTEST(pack.payments().first().summ().toString(), "summ");
}

void TestSrLegalAccountReceipt::oneKopeckByCard()
{
    const basix::FixNumber card(100, 1);
    const basix::FixNumber cash(100, 10000);
    const Check receipt =
        sample().createCheck(HostStation::provider(), HostStation::profile(), card, cash, false);
    QCOMPARE(receipt.payments(), (QList<CheckPayment>{CheckPayment(MoneyType::Cash, cash)}));
    const PayPack pack =
        sample().createPack(*HostStation::provider(), {}, HostStation::roubles(), card, cash);
    QCOMPARE(
        pack.operations(),
        (QList<PayPackOperation>{PayPackOperation(MoneyType::Cash, cash, HostStation::roubles())}));
}

void TestSrLegalAccountReceipt::packLeavesTheProviderAlone()
{
    const QSharedPointer<Provider> provider = HostStation::provider();
    sample().createPack(*provider, {}, HostStation::roubles(), basix::FixNumber(),
                        basix::FixNumber(100, 500));
    QCOMPARE(*provider, *HostStation::provider());
}

QTEST_GUILESS_MAIN(TestSrLegalAccountReceipt)
#include "tst_srlegalaccountreceipt.moc"
