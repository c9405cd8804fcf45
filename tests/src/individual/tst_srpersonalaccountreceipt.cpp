#include "billingsamples.h"
#include "hoststation.h"
#include "individual/srpersonalaccount.h"

#include <molvacore/fiscaltypes.h>
#include <molvacore/providerparameter.h>

#include <QTest>

using namespace BillingSamples;

class TestSrPersonalAccountReceipt : public QObject
{
    Q_OBJECT

private slots:
    void linesInOrder();
    void remainderLine_data();
    void remainderLine();
    void agentSignComesFromTheProfile_data();
    void agentSignComesFromTheProfile();
    void buyer_data();
    void buyer();
    void printableLines();
    void printableLinesOfBareAccount();
    void restOfTheReceipt();
    void oneKopeckByCard();
    void pack();
    void packWithoutQrText();
    void packLeavesTheProviderAlone();

private:
    HostStation m_station;
};

static SrPersonalAccount sample()
{
    SrPersonalAccount account;
    account.parseCheckList(personalAccount());
    account.setAccountNumber(QStringLiteral("0012345"));
    account.setPeriod(QStringLiteral("03-2024"));
    account.setClientPhoneOrEmail(QStringLiteral("+7 912 345-67-89"));
    return account;
}

static Check receiptOf(const SRAccount &account, bool withBuyer = false)
{
    return account.createCheck(HostStation::provider(), HostStation::profile(),
                               basix::FixNumber(100, 6280), basix::FixNumber(100, 100000),
                               withBuyer);
}

static QStringList linesOf(const Check &receipt)
{
    QStringList lines;
    for (const CheckOperation &line : receipt.operations()) {
        lines.append(QStringLiteral("%1|%2|%3|%4|%5")
                         .arg(line.itemName(), line.price().toString(), line.quantity().toString(),
                              QString::number(static_cast<int>(line.method())),
                              QString::number(static_cast<int>(line.itemType()))));
    }
    return lines;
}

void TestSrPersonalAccountReceipt::linesInOrder()
{
    QCOMPARE(linesOf(receiptOf(sample())),
             (QStringList{QStringLiteral("Холодная вода|1000.00|1.000|4|4"),
                          QStringLiteral("Водоотведение|0.00|1.000|4|4"),
                          QStringLiteral("Пени|50.50|1.000|4|12"),
                          QStringLiteral("|12.30|1.000|3|10")}));
    for (const CheckOperation &line : receiptOf(sample()).operations())
        QCOMPARE(line.taxNumber(), HostStation::profile().taxRate());
}

void TestSrPersonalAccountReceipt::remainderLine_data()
{
    QTest::addColumn<QString>("remainder");
    QTest::addColumn<int>("count");
    QTest::newRow("0.00") << QStringLiteral("0.00") << 0;
    QTest::newRow("0.01") << QStringLiteral("0.01") << 1;
    QTest::newRow("negative") << QStringLiteral("-1.00") << 0;
}

void TestSrPersonalAccountReceipt::remainderLine()
{
    QFETCH(QString, remainder);
    SrPersonalAccount account;
    account.parseCheckList({field(SRAccount::FIELD_REMAINDER, remainder)});
    QTEST(receiptOf(account).operations().size(), "count");
}

void TestSrPersonalAccountReceipt::agentSignComesFromTheProfile_data()
{
    QTest::addColumn<int>("sign");
    QTest::newRow("no agent") << 0;
    QTest::newRow("bank payment agent") << 1;
    QTest::newRow("payment agent") << 4;
    QTest::newRow("other agent") << 64;
}

void TestSrPersonalAccountReceipt::agentSignComesFromTheProfile()
{
    QFETCH(int, sign);
    OnlineKkmInfo kkm = HostStation::profile();
    kkm.setAgentSign(static_cast<AgentFlag>(sign));
    const Check receipt = sample().createCheck(HostStation::provider(), kkm, basix::FixNumber(),
                                               basix::FixNumber(), false);
    QCOMPARE(receipt.operations().size(), 4);
    for (const CheckOperation &line : receipt.operations()) {
        QCOMPARE(static_cast<int>(line.agentFlag()), sign);
        QCOMPARE(line.provider().isEmpty(), sign == 0);
        QCOMPARE(line.agent().isEmpty(), sign == 0);
        QCOMPARE(line.providerInn().isEmpty(), sign == 0);
    }
}

void TestSrPersonalAccountReceipt::buyer_data()
{
    QTest::addColumn<bool>("withBuyer");
    QTest::addColumn<QString>("inn");
    QTest::addColumn<QString>("buyer");
    QTest::addColumn<QString>("buyerInn");
    const QString fio = QStringLiteral("Иванова");
    QTest::newRow("with buyer") << true << QStringLiteral(" 770712345678 ") << fio
                                << QStringLiteral("770712345678");
    QTest::newRow("blank taxpayer number") << true << QStringLiteral("  ") << fio << QString();
    QTest::newRow("without buyer")
        << false << QStringLiteral("770712345678") << QString() << QString();
}

void TestSrPersonalAccountReceipt::buyer()
{
    QFETCH(bool, withBuyer);
    QFETCH(QString, inn);
    SrPersonalAccount account;
    account.parseCheckList(
        {field(SRAccount::FIELD_FIO, QStringLiteral("Иванова")), field(SRAccount::FIELD_INN, inn)});
    const Check receipt = receiptOf(account, withBuyer);
    QTEST(receipt.buyer(), "buyer");
    QTEST(receipt.buyerInn(), "buyerInn");
}

void TestSrPersonalAccountReceipt::printableLines()
{
    QCOMPARE(
        receiptOf(sample()).printableData(),
        (QStringList{QStringLiteral("ул. Речная, д. 5, кв. 12"),
                     QStringLiteral("Лицевой счет\t0012345"), QStringLiteral("ПЕРИОД\t03-2024"),
                     QStringLiteral("Показания счетчиков"), QStringLiteral("ХВС кухня\t120/131"),
                     QStringLiteral("ХВС ванная\t7/7")}));
}

void TestSrPersonalAccountReceipt::printableLinesOfBareAccount()
{
    QCOMPARE(receiptOf(SrPersonalAccount()).printableData(), QStringList());
}

void TestSrPersonalAccountReceipt::restOfTheReceipt()
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
    QCOMPARE(receipt.payments().size(), 2);
    QCOMPARE(receipt.payments().at(0), CheckPayment(MoneyType::Card, basix::FixNumber(100, 6280)));
    QCOMPARE(receipt.payments().at(1),
             CheckPayment(MoneyType::Cash, basix::FixNumber(100, 100000)));
}

void TestSrPersonalAccountReceipt::oneKopeckByCard()
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

static QMap<QString, QString> parametersOf(const Payment &payment)
{
    QMap<QString, QString> values;
    for (const QSharedPointer<ProviderParameter> &parameter : payment.providerData().parameters())
        values.insert(parameter->name(), parameter->value());
    return values;
}

void TestSrPersonalAccountReceipt::pack()
{
    const SrPersonalAccount account = sample();
    const QVariantList properties{QVariantMap{
        {QStringLiteral("tag"), 1196}, {QStringLiteral("value"), QStringLiteral("t=1&s=2")}}};
    const PayPack pack =
        account.createPack(*HostStation::provider(), properties, HostStation::roubles(),
                           basix::FixNumber(100, 6280), basix::FixNumber(100, 100000));
    QCOMPARE(pack.payments().size(), 1);
    const Payment payment = pack.payments().first();
    QCOMPARE(payment.account(), QStringLiteral("0012345"));
    QCOMPARE(payment.currencyId(), qint64(643));
    QCOMPARE(payment.summ().toString(), QStringLiteral("1062.80"));
    QCOMPARE(payment.created().date(), QDate::currentDate());
    QCOMPARE(payment.providerData().workProviderId(), qint64(18722));
    QCOMPARE(parametersOf(payment),
             (QMap<QString, QString>{{QStringLiteral("account"), QStringLiteral("0012345")},
                                     {QStringLiteral("Account"), QStringLiteral("before")},
                                     {QStringLiteral("period"), QStringLiteral("03-2024")},
                                     {QStringLiteral("paydata"), account.toJsonParamsList()},
                                     {QStringLiteral("qrcode"), QStringLiteral("t=1&s=2")},
                                     {QStringLiteral("numdoc"), QStringLiteral("before")}}));
    QCOMPARE(
        pack.operations(),
        (QList<PayPackOperation>{
            PayPackOperation(MoneyType::Card, basix::FixNumber(100, 6280), HostStation::roubles()),
            PayPackOperation(MoneyType::Cash, basix::FixNumber(100, 100000),
                             HostStation::roubles())}));
}

void TestSrPersonalAccountReceipt::packWithoutQrText()
{
    const PayPack pack = sample().createPack(*HostStation::provider(), {}, HostStation::roubles(),
                                             basix::FixNumber(), basix::FixNumber(100, 500));
    QCOMPARE(parametersOf(pack.payments().first()).value(QStringLiteral("qrcode")), QString());
}

void TestSrPersonalAccountReceipt::packLeavesTheProviderAlone()
{
    const QSharedPointer<Provider> provider = HostStation::provider();
    sample().createPack(*provider, {}, HostStation::roubles(), basix::FixNumber(),
                        basix::FixNumber(100, 500));
    QCOMPARE(*provider, *HostStation::provider());
}

QTEST_GUILESS_MAIN(TestSrPersonalAccountReceipt)
#include "tst_srpersonalaccountreceipt.moc"
