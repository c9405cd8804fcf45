#include "billingsamples.h"
#include "individual/srpersonalaccount.h"
#include "messagelog.h"

#include <QJsonDocument>
#include <QTest>

using namespace BillingSamples;

class TestSrPersonalAccount : public QObject
{
    Q_OBJECT

private slots:
    void parsesServicesAndCounters();
    void withoutServicesCountersAreStillParsed();
    void emptyServiceList();
    void oddServices_data();
    void oddServices();
    void servicesAndCountersLeaveTheMap();
    void parsingKeepsWhatWasEntered();
    void parsingAgainReplacesEverything();
    void amount_data();
    void amount();
    void payParamsOfEmptyAccount();
    void payParams();
    void receiptAddressIsNormalisedAndLogged();
    void equality();
    void receiptAddressTakesNoPartInEquality();
    void cloneIsIndependent();
    void isIndividual();
    void freshAccount();
    void parsesHugeAccountWhole();
};

static SrPersonalAccount sample()
{
    SrPersonalAccount account;
    account.parseCheckList(personalAccount());
    account.setAccountNumber(QStringLiteral("0012345"));
    account.setPeriod(QStringLiteral("03-2024"));
    account.setDocNumber(QStringLiteral("77"));
    account.setStartAmount(basix::FixNumber(100, 5000));
    account.setClientPhoneOrEmail(QStringLiteral("a@b.ru"));
    return account;
}

void TestSrPersonalAccount::freshAccount()
{
    const SrPersonalAccount account;
    QCOMPARE(account.startAmount().toString(), QStringLiteral("0.00"));
    QCOMPARE(account.amount().toString(), QStringLiteral("0.00"));
    QVERIFY(!account.isValid());
}

void TestSrPersonalAccount::parsesServicesAndCounters()
{
    const SrPersonalAccount account = sample();
    QVERIFY(account.isValid());
    QCOMPARE(account.fio(), QStringLiteral("Иванова Мария Петровна"));
    QCOMPARE(account.services().size(), 3);
    QCOMPARE(account.services().at(0).name(), QStringLiteral("Холодная вода"));
    QCOMPARE(account.services().at(1).charge().toString(), QStringLiteral("350.40"));
    QVERIFY(account.services().at(2).isPeni());
    QCOMPARE(account.counters().size(), 2);
    QCOMPARE(account.counters().at(0).curValue(), qint64(131));
    QCOMPARE(account.counters().at(1).name(), QStringLiteral("ХВС ванная"));
}

void TestSrPersonalAccount::withoutServicesCountersAreStillParsed()
{
    SrPersonalAccount account;
    account.parseCheckList({recordList(
        QStringLiteral("counters"),
        {counter(1, QStringLiteral("ХВС"), QStringLiteral("1"), QStringLiteral("2"))})});
    QVERIFY(!account.isValid());
    QCOMPARE(account.counters().size(), 1);
}

void TestSrPersonalAccount::emptyServiceList()
{
    SrPersonalAccount account;
    account.parseCheckList({recordList(QStringLiteral("services"), {})});
    QVERIFY(account.services().isEmpty());
    QVERIFY(!account.isValid());
}

void TestSrPersonalAccount::oddServices_data()
{
    QTest::addColumn<QVariant>("list");
    QTest::addColumn<int>("count");
    QTest::newRow("text") << QVariant(QStringLiteral("x")) << 0;
    QTest::newRow("map") << QVariant(QVariantMap{{QStringLiteral("a"), 1}}) << 0;
    QTest::newRow("null") << QVariant() << 0;
    QTest::newRow("elements that are no maps")
        << QVariant(QVariantList{1, QStringLiteral("x"), QVariant()}) << 3;
    QTest::newRow("elements without a list")
        << QVariant(QVariantList{QVariantMap(), QVariantMap()}) << 2;
}

void TestSrPersonalAccount::oddServices()
{
    QFETCH(QVariant, list);
    QFETCH(int, count);
    SrPersonalAccount account;
    account.parseCheckList({QVariantMap{{QStringLiteral("name"), QStringLiteral("services")},
                                        {QStringLiteral("paramList"), list}}});
    QCOMPARE(account.services().size(), count);
    QCOMPARE(account.amount().toString(), QStringLiteral("0.00"));
}

void TestSrPersonalAccount::servicesAndCountersLeaveTheMap()
{
    const SrPersonalAccount account = sample();
    QVERIFY(!account.getValue(SRAccount::FIELD_SERVICES).isValid());
    QVERIFY(!account.getValue(SRAccount::FIELD_COUNTERS).isValid());
    QVERIFY(!account.getParams().contains(SRAccount::FIELD_SERVICES));
    QVERIFY(!account.getParams().contains(SRAccount::FIELD_COUNTERS));
    QCOMPARE(account.getParams().size(), 7);
}

void TestSrPersonalAccount::parsingKeepsWhatWasEntered()
{
    SrPersonalAccount account = sample();
    account.parseCheckList({});
    QCOMPARE(account.accountNumber(), QStringLiteral("0012345"));
    QCOMPARE(account.period(), QStringLiteral("03-2024"));
    QCOMPARE(account.docNumber(), QStringLiteral("77"));
    QCOMPARE(account.startAmount().toString(), QStringLiteral("50.00"));
    QCOMPARE(account.period(), QStringLiteral("03-2024"));
    QCOMPARE(account.docNumber(), QStringLiteral("77"));
    QCOMPARE(account.clientPhoneOrEmail(), QStringLiteral("a@b.ru"));
}

void TestSrPersonalAccount::parsingAgainReplacesEverything()
{
    SrPersonalAccount account;
    account.parseCheckList(personalAccount());
    account.parseCheckList({});
    QVERIFY(account == SrPersonalAccount());
}

void TestSrPersonalAccount::amount_data()
{
    QTest::addColumn<QStringList>("distributed");
    QTest::addColumn<QString>("remainder");
    QTest::addColumn<QString>("expected");
    QTest::newRow("services only") << QStringList{QStringLiteral("100.00"), QStringLiteral("50.50")}
                                   << QStringLiteral("0.00") << QStringLiteral("150.50");
    QTest::newRow("remainder only")
        << QStringList() << QStringLiteral("12.30") << QStringLiteral("12.30");
    QTest::newRow("both") << QStringList{QStringLiteral("0.01")} << QStringLiteral("0.02")
                          << QStringLiteral("0.03");
    QTest::newRow("negative part") << QStringList{QStringLiteral("10"), QStringLiteral("-2.5")}
                                   << QStringLiteral("0") << QStringLiteral("7.50");
    QTest::newRow("nothing") << QStringList() << QString() << QStringLiteral("0.00");
}

void TestSrPersonalAccount::amount()
{
    QFETCH(QStringList, distributed);
    QFETCH(QString, remainder);
    QVector<QVariantList> services;
    for (const QString &value : distributed)
        services.append(
            service(1, QStringLiteral("Вода"), QStringLiteral("1"), QStringLiteral("1"), value));
    SrPersonalAccount account;
    account.parseCheckList({recordList(QStringLiteral("services"), services),
                            field(SRAccount::FIELD_REMAINDER, remainder)});
    QTEST(account.amount().toString(), "expected");
    QCOMPARE(account.amount().multiplier(), 100);
}

void TestSrPersonalAccount::payParamsOfEmptyAccount()
{
    QCOMPARE(
        SrPersonalAccount().toJsonParamsList(),
        QStringLiteral(
            "[{\"name\":\"services\",\"paramList\":[]},{\"name\":\"counters\",\"paramList\":[]}]"));
}

void TestSrPersonalAccount::payParams()
{
    const SrPersonalAccount account = sample();
    const QVariantList list = account.toPayParamsList();
    QCOMPARE(list.size(), 2);
    const QVariantMap services = list.at(0).toMap();
    QCOMPARE(services.value(QStringLiteral("name")), QVariant(QStringLiteral("services")));
    const QVariantList serviceList = services.value(QStringLiteral("paramList")).toList();
    QCOMPARE(serviceList.size(), 3);
    for (int i = 0; i < serviceList.size(); ++i)
        QCOMPARE(serviceList.at(i).toMap(), account.services().at(i).toParamMap());
    const QVariantMap counters = list.at(1).toMap();
    QCOMPARE(counters.value(QStringLiteral("name")), QVariant(QStringLiteral("counters")));
    QCOMPARE(counters.value(QStringLiteral("paramList")).toList().at(1).toMap(),
             account.counters().at(1).toParamsMap());

    const QJsonDocument json = QJsonDocument::fromJson(account.toJsonParamsList().toUtf8());
    QCOMPARE(json.toVariant().toList(), list);
    QCOMPARE(QString::fromUtf8(json.toJson(QJsonDocument::Compact)), account.toJsonParamsList());
}

void TestSrPersonalAccount::receiptAddressIsNormalisedAndLogged()
{
    SrPersonalAccount account;
    MessageLog log;
    account.setClientPhoneOrEmail(QStringLiteral("+7 (912) 345-67-89"));
    QCOMPARE(account.clientPhoneOrEmail(), QStringLiteral("79123456789"));
    QCOMPARE(log.messages().size(), 1);
    const MessageLog::Message line = log.messages().constFirst();
    QCOMPARE(line.type, QtWarningMsg);
    QCOMPARE(line.category, QStringLiteral("default"));
    QVERIFY(line.function.contains(QLatin1String("SrPersonalAccount::setClientPhoneOrEmail")));
    QVERIFY(line.text.indexOf(QStringLiteral("79123456789"))
            > line.text.indexOf(QStringLiteral("+7 (912) 345-67-89")));
}

void TestSrPersonalAccount::equality()
{
    const SrPersonalAccount account = sample();
    QVERIFY(account == sample());
    SrPersonalAccount other = account;
    other.setPeriod(QString());
    QVERIFY(other != account);
    other = account;
    other.setDocNumber(QString());
    QVERIFY(other != account);
    other = account;
    other.setStartAmount(basix::FixNumber(100, 1));
    QVERIFY(other != account);
    other = account;
    other.setAccountNumber(QString());
    QVERIFY(other != account);
    other = account;
    other.setServices(account.services().mid(1));
    QVERIFY(other != account);
    other = account;
    QList<SrCounter> counters = account.counters();
    counters[1].setCurValue(8);
    other.setCounters(counters);
    QVERIFY(other != account);
}

void TestSrPersonalAccount::receiptAddressTakesNoPartInEquality()
{
    SrPersonalAccount other = sample();
    other.setClientPhoneOrEmail(QStringLiteral("other@b.ru"));
    QVERIFY(other == sample());
}

void TestSrPersonalAccount::cloneIsIndependent()
{
    const SrPersonalAccount account = sample();
    const auto copy = account.clone().dynamicCast<SrPersonalAccount>();
    QVERIFY(copy);
    QVERIFY(*copy == account);
    QCOMPARE(copy->clientPhoneOrEmail(), account.clientPhoneOrEmail());
    QList<SrService> services = copy->services();
    services[0].setDistributed(basix::FixNumber(100, 1));
    copy->setServices(services);
    QVERIFY(*copy != account);
    QCOMPARE(account.services().at(0).distributed().toString(), QStringLiteral("1000.00"));
}

void TestSrPersonalAccount::isIndividual()
{
    QVERIFY(!SrPersonalAccount().isLegal());
}

void TestSrPersonalAccount::parsesHugeAccountWhole()
{
    constexpr int lines = 10000;
    SrPersonalAccount account;
    account.parseCheckList(hugeAccount(lines));
    QCOMPARE(account.services().size(), lines);
    for (int line : {0, 1, lines / 2, lines - 1})
        QCOMPARE(account.services().at(line).id(), qint64(line));
}

QTEST_GUILESS_MAIN(TestSrPersonalAccount)
#include "tst_srpersonalaccount.moc"
