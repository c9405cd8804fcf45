#include <molvacore/check.h>

#include <QTest>

using basix::FixNumber;

namespace {

QVariantMap document(const Check &check)
{
    return check.toDocument(false, MoneyType::Cash, false);
}

QVariant of(const QVariantMap &map, const char *tag)
{
    return map.value(QString::fromLatin1(tag));
}

QVariantMap firstLine(const QVariantMap &map)
{
    return of(map, "1059").toList().value(0).toMap();
}

CheckOperation line(qint64 kopecks)
{
    CheckOperation operation;
    operation.setItemName(QStringLiteral("Вода"));
    operation.setPrice(FixNumber(100, kopecks));
    operation.setTaxNumber(6);
    return operation;
}

} // namespace

class tst_Check : public QObject
{
    Q_OBJECT

private slots:
    void emptyCheck();
    void header();
    void flags();
    void printableData();
    void contact_data();
    void contact();
    void taxpayerNumbers_data();
    void taxpayerNumbers();
    void userAttribute_data();
    void userAttribute();
    void lineOfAService();
    void emptyValuesLeaveTheirTagsOut();
    void zeroPriceStays();
    void costIsRounded();
    void agentAndSupplier();
    void sums_data();
    void sums();
    void manyPaymentsOfOneKind();
};

void tst_Check::emptyCheck()
{
    const QVariantMap expected{{QStringLiteral("1054"), 1},
                               {QStringLiteral("1055"), 1},
                               {QStringLiteral("1059"), QVariantList()},
                               {QStringLiteral("1020"), qint64(0)},
                               {QStringLiteral("1031"), qint64(0)},
                               {QStringLiteral("1081"), qint64(0)},
                               {QStringLiteral("checkType"), 1},
                               {QStringLiteral("electronic"), false}};
    QCOMPARE(document(Check()), expected);
}

void tst_Check::header()
{
    Check check;
    check.setType(PaymentType::IncomeReturn);
    check.setCheckType(CheckType::SaleReturn);
    check.setTax(FDTax::Patent);
    check.setCashier(QStringLiteral("Кассир Иванова"));
    check.setRegNumber(QStringLiteral("0000000001012345"));
    check.setBuyer(QStringLiteral("ООО \"Ромашка\""));
    const QVariantMap map = document(check);
    QCOMPARE(of(map, "1054"), QVariant(2));
    QCOMPARE(of(map, "checkType"), QVariant(2));
    QCOMPARE(of(map, "1055"), QVariant(32));
    QCOMPARE(of(map, "1021"), QVariant(QStringLiteral("Кассир Иванова")));
    QCOMPARE(of(map, "1037"), QVariant(QStringLiteral("0000000001012345")));
    QCOMPARE(of(map, "1227"), QVariant(QStringLiteral("ООО \"Ромашка\"")));
}

void tst_Check::flags()
{
    QCOMPARE(of(Check().toDocument(true, MoneyType::Cash, false), "electronic"), QVariant(true));
    QCOMPARE(of(Check().toDocument(false, MoneyType::Cash, false), "electronic"), QVariant(false));
}

void tst_Check::printableData()
{
    Check check;
    check.setPrintableData({QStringLiteral("ПЕРИОД\t01.2026"), QString()});
    QVERIFY(!check.toDocument(false, MoneyType::Cash, false).contains(QStringLiteral("printable")));
    QCOMPARE(of(check.toDocument(false, MoneyType::Cash, true), "printable").toStringList(),
             check.printableData());
}

void tst_Check::contact_data()
{
    QTest::addColumn<QString>("given");
    QTest::addColumn<QVariant>("tag");
    const auto row = [](const char *name, const QString &given, const QVariant &tag) {
        QTest::newRow(name) << given << tag;
    };
    row("none", QString(), QVariant());
    row("e-mail as it is", QStringLiteral(" Ivan (home)@mail.ru"),
        QStringLiteral(" Ivan (home)@mail.ru"));
    row("digits", QStringLiteral("79123456789"), QStringLiteral("+79123456789"));
    row("leading 8", QStringLiteral("89123456789"), QStringLiteral("+79123456789"));
    row("national number", QStringLiteral("9123456789"), QStringLiteral("+79123456789"));
    row("plus", QStringLiteral("+375291234567"), QStringLiteral("+375291234567"));
    row("leading 8, but longer", QStringLiteral("8613800000000"), QStringLiteral("+8613800000000"));
    row("written with marks", QStringLiteral("+7 (912) 345-67-89"), QStringLiteral("+79123456789"));
    row("no phone at all", QStringLiteral("по требованию"), QStringLiteral("по требованию"));
}

void tst_Check::contact()
{
    QFETCH(QString, given);
    QFETCH(QVariant, tag);
    Check check;
    check.setClientPhone(given);
    QCOMPARE(of(document(check), "1008"), tag);
}

void tst_Check::taxpayerNumbers_data()
{
    QTest::addColumn<QString>("given");
    QTest::addColumn<QVariant>("tag");
    QTest::newRow("none") << QString() << QVariant();
    QTest::newRow("blank") << QStringLiteral("   ") << QVariant();
    QTest::newRow("organisation") << QStringLiteral("0712345678")
                                  << QVariant(QStringLiteral("0712345678  "));
    QTest::newRow("blanks around")
        << QStringLiteral(" 0712345678 ") << QVariant(QStringLiteral("0712345678  "));
    QTest::newRow("person") << QStringLiteral("071234567890")
                            << QVariant(QStringLiteral("071234567890"));
    QTest::newRow("wrong length stays")
        << QStringLiteral("12345") << QVariant(QStringLiteral("12345"));
}

void tst_Check::taxpayerNumbers()
{
    QFETCH(QString, given);
    QFETCH(QVariant, tag);
    AgentData agent;
    agent.setTransferOperatorInn(given);
    CheckOperation operation = line(100);
    operation.setProviderInn(given);
    operation.setAgent(agent);
    Check check;
    check.setUserInn(given);
    check.setBuyerInn(given);
    check.addOperation(operation);
    const QVariantMap map = document(check);
    QCOMPARE(of(map, "1018"), tag);
    QCOMPARE(of(map, "1228"), tag);
    QCOMPARE(of(firstLine(map), "1226"), tag);
    QCOMPARE(of(of(firstLine(map), "1223").toMap(), "1016"), tag);
}

void tst_Check::userAttribute_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QVariantMap>("tag");
    const QVariantMap name{{QStringLiteral("1085"), QStringLiteral("Участок")}};
    const QVariantMap value{{QStringLiteral("1086"), QStringLiteral("12")}};
    QVariantMap both = name;
    both.insert(QStringLiteral("1086"), QStringLiteral("12"));
    QTest::newRow("none") << QString() << QString() << QVariantMap();
    QTest::newRow("both") << QStringLiteral("Участок") << QStringLiteral("12") << both;
    QTest::newRow("name only") << QStringLiteral("Участок") << QString() << name;
    QTest::newRow("value only") << QString() << QStringLiteral("12") << value;
}

void tst_Check::userAttribute()
{
    QFETCH(QString, name);
    QFETCH(QString, value);
    QFETCH(QVariantMap, tag);
    Check check;
    check.setAdditionalUserParameter(CheckAdditionalParameter(name, value));
    QCOMPARE(document(check).contains(QStringLiteral("1084")), !tag.isEmpty());
    QCOMPARE(of(document(check), "1084").toMap(), tag);
}

void tst_Check::lineOfAService()
{
    CheckOperation operation = line(12345);
    operation.setMethod(PaymentMethod::FullPayment);
    operation.setItemType(PaymentItemType::Payout);
    Check check;
    check.addOperation(operation);
    const QVariantMap expected{{QStringLiteral("1030"), QStringLiteral("Вода")},
                               {QStringLiteral("1079"), qint64(12345)},
                               {QStringLiteral("1023"), QStringLiteral("1.000")},
                               {QStringLiteral("1043"), qint64(12345)},
                               {QStringLiteral("1199"), 6},
                               {QStringLiteral("1212"), 12},
                               {QStringLiteral("1214"), 4}};
    QCOMPARE(firstLine(document(check)), expected);
    QCOMPARE(of(firstLine(document(check)), "1079").userType(), int(QMetaType::LongLong));
    QCOMPARE(of(firstLine(document(check)), "1023").userType(), int(QMetaType::QString));
}

void tst_Check::emptyValuesLeaveTheirTagsOut()
{
    Check check;
    check.addOperation(CheckOperation());
    const QVariantMap first = firstLine(document(check));
    for (const char *tag : {"1030", "1199", "1222", "1223", "1224", "1226"})
        QVERIFY2(!first.contains(QString::fromLatin1(tag)), tag);
}

void tst_Check::zeroPriceStays()
{
    Check check;
    check.addOperation(line(0));
    QCOMPARE(of(firstLine(document(check)), "1079"), QVariant(0));
    QCOMPARE(of(firstLine(document(check)), "1043"), QVariant(0));
}

void tst_Check::costIsRounded()
{
    CheckOperation operation = line(5);
    operation.setQuantity(FixNumber(1000, 500));
    Check check;
    check.addOperation(operation);
    const QVariantMap map = document(check);
    QCOMPARE(of(firstLine(map), "1023"), QVariant(QStringLiteral("0.500")));
    QCOMPARE(of(firstLine(map), "1043"), QVariant(3));
    QCOMPARE(of(map, "1020"), QVariant(3));
}

void tst_Check::agentAndSupplier()
{
    AgentData agent;
    agent.setPaymentAgengOperation(QStringLiteral("Приём"));
    agent.setPaymentAgengPhone(QStringLiteral("84950000001,, 74950000002"));
    agent.setPaymentOperatorPhone(QStringLiteral("+74950000003"));
    agent.setTransferOperatorAddress(QStringLiteral("Москва"));
    agent.setTransferOperatorInn(QStringLiteral("7700000000"));
    agent.setTransferOperatorName(QStringLiteral("Банк"));
    agent.setTransferOperatorPhone(QStringLiteral("4950000004"));
    CheckOperation operation = line(100);
    operation.setAgentFlag(AgentFlag::BankPaySubagent);
    operation.setAgent(agent);
    operation.setProvider(
        ProviderData(QStringLiteral("АО «Водоканал»"), {QStringLiteral("84950000005"), QString()}));
    operation.setProviderInn(QStringLiteral("7700000001"));
    Check check;
    check.addOperation(operation);
    const QVariantMap first = firstLine(document(check));
    const auto phones = [](const QStringList &list) {
        QVariantList values;
        for (const QString &phone : list)
            values.append(phone);
        return values;
    };
    const QVariantMap expectedAgent{
        {QStringLiteral("1044"), QStringLiteral("Приём")},
        {QStringLiteral("1073"),
         phones({QStringLiteral("+74950000001"), QStringLiteral("+74950000002")})},
        {QStringLiteral("1074"), phones({QStringLiteral("+74950000003")})},
        {QStringLiteral("1005"), QStringLiteral("Москва")},
        {QStringLiteral("1016"), QStringLiteral("7700000000  ")},
        {QStringLiteral("1026"), QStringLiteral("Банк")},
        {QStringLiteral("1075"), phones({QStringLiteral("+74950000004")})}};
    const QVariantMap expectedSupplier{
        {QStringLiteral("1225"), QStringLiteral("АО «Водоканал»")},
        {QStringLiteral("1171"), phones({QStringLiteral("+74950000005")})}};
    QCOMPARE(of(first, "1222"), QVariant(2));
    QCOMPARE(of(first, "1223").toMap(), expectedAgent);
    QCOMPARE(of(first, "1224").toMap(), expectedSupplier);
    QCOMPARE(of(first, "1226"), QVariant(QStringLiteral("7700000001  ")));
}

void tst_Check::sums_data()
{
    QTest::addColumn<qint64>("total");
    QTest::addColumn<qint64>("cash");
    QTest::addColumn<qint64>("card");
    QTest::addColumn<int>("defaultType");
    QTest::addColumn<qint64>("documentCash");
    QTest::addColumn<qint64>("documentCard");
    const auto row = [](const char *name, qint64 total, qint64 cash, qint64 card, MoneyType type,
                        qint64 documentCash, qint64 documentCard) {
        QTest::newRow(name) << total << cash << card << static_cast<int>(type) << documentCash
                            << documentCard;
    };
    row("cash", 10000, 10000, 0, MoneyType::Cash, 10000, 0);
    row("both", 10000, 4000, 6000, MoneyType::Cash, 4000, 6000);
    row("one kopeck by card left out", 10001, 10000, 0, MoneyType::Cash, 10001, 0);
    row("two kopecks left out", 10002, 10000, 0, MoneyType::Cash, 10002, 0);
    row("left out, default card", 10001, 10000, 0, MoneyType::Card, 10000, 1);
    row("three kopecks are refused by the register", 10003, 10000, 0, MoneyType::Cash, 10000, 0);
    row("payments above the total", 10000, 10001, 0, MoneyType::Cash, 10001, 0);
    row("one kopeck in all", 1, 0, 0, MoneyType::Cash, 1, 0);
    row("two kopecks in all, default card", 2, 0, 0, MoneyType::Card, 0, 2);
    row("no payments for a larger total", 10000, 0, 0, MoneyType::Cash, 0, 0);
    row("nothing", 0, 0, 0, MoneyType::Cash, 0, 0);
    row("negative total", -1, 0, 0, MoneyType::Cash, 0, 0);
}

void tst_Check::sums()
{
    QFETCH(qint64, total);
    QFETCH(qint64, cash);
    QFETCH(qint64, card);
    QFETCH(int, defaultType);
    QFETCH(qint64, documentCash);
    QFETCH(qint64, documentCard);
    Check check;
    check.addOperation(line(total));
    if (card > 0)
        check.addPayment(CheckPayment(MoneyType::Card, FixNumber(100, card)));
    if (cash > 0)
        check.addPayment(CheckPayment(MoneyType::Cash, FixNumber(100, cash)));
    const QVariantMap map = check.toDocument(false, static_cast<MoneyType>(defaultType), true);
    QCOMPARE(of(map, "1020").toLongLong(), total);
    QCOMPARE(of(map, "1031").toLongLong(), documentCash);
    QCOMPARE(of(map, "1081").toLongLong(), documentCard);
}

void tst_Check::manyPaymentsOfOneKind()
{
    Check check;
    for (int i = 0; i < 3; ++i) {
        check.addOperation(line(1000));
        check.addPayment(CheckPayment(MoneyType::Card, FixNumber(100, 1000)));
    }
    const QVariantMap map = document(check);
    QCOMPARE(of(map, "1020"), QVariant(3000));
    QCOMPARE(of(map, "1081"), QVariant(3000));
    QCOMPARE(of(map, "1031"), QVariant(0));
}

QTEST_GUILESS_MAIN(tst_Check)
#include "tst_check.moc"
