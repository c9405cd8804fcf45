#include <molvacore/paypack.h>

#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>
#include <QTest>
#include <QTimeZone>

#include <functional>

namespace {

const basix::Currency rouble(643, QStringLiteral("RUB"), QStringLiteral("Российский рубль"));

Payment payment(const QString &account, qint64 kopecks)
{
    Provider provider;
    provider.setId(18722);
    provider.setWorkProviderId(Q_INT64_C(9007199254740993));
    provider.setGroupId(5);
    provider.setName(QStringLiteral("Водоканал"));
    provider.setCheckName(QStringLiteral("Водоканал чек"));
    provider.setLegalName(QStringLiteral("АО \"Водоканал\""));
    provider.setInn(QStringLiteral("0700000000"));
    provider.setPhones(QStringLiteral("84950000001"));
    provider.addParameter(
        ProviderParameter(QStringLiteral("account"), QStringLiteral("Счёт"), account));
    provider.addParameter(
        ProviderParameter(QStringLiteral("paydata"), QString(), QStringLiteral("[{\"a\":1}]")));
    Payment made;
    made.setCreated(QDateTime(QDate(2026, 1, 15), QTime(10, 30, 15, 123), QTimeZone(3 * 3600)));
    made.setProviderData(provider, true);
    made.setAccount(account);
    made.setCurrencyId(643);
    made.setSumm(basix::FixNumber(100, kopecks));
    return made;
}

PayPack sample()
{
    PayPack pack;
    pack.setId(Q_INT64_C(9223372036854775806));
    pack.setCreated(QDateTime(QDate(2026, 1, 15), QTime(23, 59, 59, 999), Qt::UTC));
    pack.addPayment(payment(QStringLiteral("0012345"), 123456));
    pack.addPayment(payment(QStringLiteral("0067890"), Q_INT64_C(9007199254740993)));
    pack.addCardOperations(basix::FixNumber(100, 23456), rouble, QStringLiteral("RRN 1"));
    pack.addCashOperations(basix::FixNumber(100, 100000), rouble);
    pack.setFiscProps({QVariantMap{{QStringLiteral("tag"), 1196},
                                   {QStringLiteral("value"), QStringLiteral("t=1&s=2")}}});
    pack.setFiscData(
        {{QStringLiteral("number"), 42}, {QStringLiteral("sign"), QStringLiteral("1234567890")}});
    pack.setFiscDocument(
        {{QStringLiteral("1020"), qint64(123456)},
         {QStringLiteral("1059"), QVariantList{QVariantMap{{QStringLiteral("1079"), 5}}}},
         {QStringLiteral("electronic"), false}});
    return pack;
}

QVariantMap throughJson(const QVariantMap &map)
{
    const QByteArray text = QJsonDocument(QJsonObject::fromVariantMap(map)).toJson();
    return QJsonDocument::fromJson(text).object().toVariantMap();
}

} // namespace

class tst_PayPack : public QObject
{
    Q_OBJECT

private slots:
    void freshPack();
    void copiesKeepTheId();
    void changedCopyLeavesTheOriginal();
    void operations();
    void fullMap();
    void fullMapHoldsOnlyWhatJsonHolds();
    void halfACharacterDoesNotStopThePack();
    void sumsAreHundredths();
    void timesKeepTheirOffset();
    void roundTrip_data();
    void roundTrip();
    void malformedMap_data();
    void malformedMap();
};

void tst_PayPack::freshPack()
{
    QSet<qint64> ids;
    for (int i = 0; i < 1000; ++i) {
        const PayPack pack;
        QVERIFY(pack.id() > 0);
        ids.insert(pack.id());
    }
    QCOMPARE(ids.size(), 1000);
    QVERIFY(qAbs(PayPack().created().msecsTo(QDateTime::currentDateTime())) < 60000);
    QVERIFY(PayPack().payments().isEmpty());
    QVERIFY(PayPack().operations().isEmpty());
}

void tst_PayPack::copiesKeepTheId()
{
    const PayPack pack;
    PayPack copy(pack);
    QCOMPARE(copy.id(), pack.id());
    copy.addPayment(payment(QStringLiteral("1"), 1));
    QCOMPARE(copy.id(), pack.id());
    PayPack assigned;
    assigned = pack;
    QCOMPARE(assigned, pack);
}

void tst_PayPack::changedCopyLeavesTheOriginal()
{
    const PayPack pack = sample();
    PayPack copy = pack;
    copy.addCashOperations(basix::FixNumber(100, 1), rouble);
    copy.setFiscData({});
    copy.setPayments({});
    QCOMPARE(pack, sample());
    QVERIFY(copy != pack);
}

void tst_PayPack::operations()
{
    const QList<PayPackOperation> list = sample().operations();
    QCOMPARE(list.size(), 2);
    QCOMPARE(list.at(0),
             PayPackOperation(MoneyType::Card, basix::FixNumber(100, 23456), rouble,
                              QStringLiteral("RRN 1")));
    QCOMPARE(list.at(1), PayPackOperation(MoneyType::Cash, basix::FixNumber(100, 100000), rouble));
}

void tst_PayPack::fullMap()
{
    const QVariantMap map = PayPack::packToFullMap(sample());
    QCOMPARE(map.keys(),
             (QStringList{QStringLiteral("created"), QStringLiteral("fiscData"),
                          QStringLiteral("fiscDocument"), QStringLiteral("fiscProps"),
                          QStringLiteral("id"), QStringLiteral("operations"),
                          QStringLiteral("payments")}));
    QCOMPARE(map.value(QStringLiteral("id")), QVariant(QStringLiteral("9223372036854775806")));
    QCOMPARE(map.value(QStringLiteral("created")),
             QVariant(QStringLiteral("2026-01-15T23:59:59.999Z")));
    const QVariantMap first = map.value(QStringLiteral("payments")).toList().first().toMap();
    QCOMPARE(first.value(QStringLiteral("providerId")), QVariant(QStringLiteral("18722")));
    QCOMPARE(first.value(QStringLiteral("workProviderId")),
             QVariant(QStringLiteral("9007199254740993")));
    QCOMPARE(first.value(QStringLiteral("account")), QVariant(QStringLiteral("0012345")));
    QCOMPARE(first.value(QStringLiteral("summ")), QVariant(123456));
    QCOMPARE(first.value(QStringLiteral("currencyId")), QVariant(643));
    QCOMPARE(first.value(QStringLiteral("created")),
             QVariant(QStringLiteral("2026-01-15T10:30:15.123+03:00")));
    QCOMPARE(first.value(QStringLiteral("parameters"))
                 .toList()
                 .first()
                 .toMap()
                 .value(QStringLiteral("value")),
             QVariant(QStringLiteral("0012345")));
    const QVariantMap card = map.value(QStringLiteral("operations")).toList().first().toMap();
    QCOMPARE(card.value(QStringLiteral("moneyType")), QVariant(2));
    QCOMPARE(card.value(QStringLiteral("sum")), QVariant(23456));
    QCOMPARE(card.value(QStringLiteral("currency")).toMap().value(QStringLiteral("number3")),
             QVariant(643));
    QCOMPARE(map.value(QStringLiteral("fiscProps")).toList(), sample().fiscProps());
}

void tst_PayPack::fullMapHoldsOnlyWhatJsonHolds()
{
    PayPack pack;
    pack.setFiscData(
        {{QStringLiteral("time"), QDateTime(QDate(2026, 1, 2), QTime(3, 4, 5), Qt::UTC)},
         {QStringLiteral("large"), Q_INT64_C(9007199254740993)},
         {QStringLiteral("bytes"), QByteArray("abc")},
         {QStringLiteral("lines"), QStringList{QStringLiteral("a"), QStringLiteral("b")}},
         {QStringLiteral("infinite"), qInf()},
         {QStringLiteral("nothing"), QVariant()}});
    const QVariantMap data = PayPack::packToFullMap(pack).value(QStringLiteral("fiscData")).toMap();
    QCOMPARE(data.value(QStringLiteral("time")),
             QVariant(QStringLiteral("2026-01-02T03:04:05.000Z")));
    QCOMPARE(data.value(QStringLiteral("large")), QVariant(QStringLiteral("9007199254740993")));
    QCOMPARE(data.value(QStringLiteral("bytes")), QVariant(QStringLiteral("abc")));
    QCOMPARE(data.value(QStringLiteral("lines")).userType(), int(QMetaType::QVariantList));
    QCOMPARE(data.value(QStringLiteral("infinite")).userType(), int(QMetaType::QString));
    QCOMPARE(throughJson(data), data);
}

void tst_PayPack::halfACharacterDoesNotStopThePack()
{
    const QString broken = QStringLiteral("имя") + QChar(0xd83d);
    Provider provider;
    provider.setName(broken);
    provider.addParameter(ProviderParameter(broken, broken, broken));
    Payment made = payment(broken, 100);
    made.setProviderData(provider, true);
    PayPack pack;
    pack.addPayment(made);
    pack.addCardOperations(basix::FixNumber(100, 100), rouble, broken);
    pack.setFiscDocument({{broken, broken}});
    const QVariantMap map = PayPack::packToFullMap(pack);
    QCOMPARE(throughJson(map), map);
    const QVariantMap written = map.value(QStringLiteral("payments")).toList().first().toMap();
    QVERIFY(written.value(QStringLiteral("account")).toString().isValidUtf16());
    QVERIFY(written.value(QStringLiteral("account")).toString().startsWith(QStringLiteral("имя")));
    bool ok = false;
    PayPack::packFromFullMap(throughJson(map), &ok);
    QVERIFY(ok);
}

void tst_PayPack::sumsAreHundredths()
{
    PayPack pack;
    pack.addCashOperations(basix::FixNumber(1000, 12345), rouble);
    const QVariantMap map = PayPack::packToFullMap(pack);
    QCOMPARE(map.value(QStringLiteral("operations"))
                 .toList()
                 .first()
                 .toMap()
                 .value(QStringLiteral("sum")),
             QVariant(1235));
}

void tst_PayPack::timesKeepTheirOffset()
{
    PayPack pack;
    pack.setCreated(QDateTime());
    QCOMPARE(PayPack::packToFullMap(pack).value(QStringLiteral("created")), QVariant(QString()));
    const QDateTime local = QDateTime::currentDateTime();
    pack.setCreated(local);
    const QString text = PayPack::packToFullMap(pack).value(QStringLiteral("created")).toString();
    QCOMPARE(QDateTime::fromString(text, Qt::ISODateWithMs).toMSecsSinceEpoch(),
             local.toMSecsSinceEpoch());
    QVERIFY(text.endsWith(QLatin1Char('Z')) || text.mid(23, 1) == QLatin1String("+")
            || text.mid(23, 1) == QLatin1String("-"));
}

void tst_PayPack::roundTrip_data()
{
    QTest::addColumn<PayPack>("pack");
    QTest::newRow("everything") << sample();
    QTest::newRow("fresh") << PayPack();
    PayPack timeless;
    timeless.setCreated(QDateTime());
    QTest::newRow("no time") << timeless;
    PayPack negative;
    negative.addPayment(payment(QStringLiteral("1"), -5));
    QTest::newRow("negative sum") << negative;
}

void tst_PayPack::roundTrip()
{
    QFETCH(PayPack, pack);
    bool ok = false;
    QCOMPARE(PayPack::packFromFullMap(PayPack::packToFullMap(pack), &ok), pack);
    QVERIFY(ok);
    ok = false;
    const PayPack read = PayPack::packFromFullMap(throughJson(PayPack::packToFullMap(pack)), &ok);
    QVERIFY(ok);
    QCOMPARE(read.id(), pack.id());
    QCOMPARE(read.payments(), pack.payments());
    QCOMPARE(read.operations(), pack.operations());
    QCOMPARE(read, pack);
    QCOMPARE(PayPack::packFromFullMap(PayPack::packToFullMap(pack), nullptr), pack);
}

void tst_PayPack::malformedMap_data()
{
    QTest::addColumn<QString>("list");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QVariant>("value");
    const auto row = [](const char *name, const char *list, const char *key,
                        const QVariant &value) {
        QTest::newRow(name) << QString::fromLatin1(list) << QString::fromLatin1(key) << value;
    };
    row("no id", "", "id", QVariant());
    row("id zero", "", "id", QStringLiteral("0"));
    row("id negative", "", "id", QStringLiteral("-5"));
    row("id not a number", "", "id", QStringLiteral("12a"));
    row("id too long", "", "id", QStringLiteral("9223372036854775808"));
    row("id as a rounded number", "", "id", 9223372036854775807.0);
    row("id with a fraction", "", "id", 12.5);
    row("id true", "", "id", true);
    row("time malformed", "", "created", QStringLiteral("yesterday"));
    row("payments missing", "", "payments", QVariant());
    row("payments text", "", "payments", QStringLiteral("none"));
    row("payments hold text", "", "payments", QVariantList{QStringLiteral("x")});
    row("document text", "", "fiscDocument", QStringLiteral("x"));
    row("sum missing", "payments", "summ", QVariant());
    row("sum with a fraction", "payments", "summ", 1.5);
    row("sum text", "payments", "summ", QStringLiteral("1.50"));
    row("sum infinite", "payments", "summ", qInf());
    row("sum true", "payments", "summ", true);
    row("provider missing", "payments", "providerId", QVariant());
    row("parameters map", "payments", "parameters", QVariantMap());
    row("operation sum missing", "operations", "sum", QVariant());
    row("operation type unknown", "operations", "moneyType", 3);
    row("operation currency missing", "operations", "currency", QVariant());
    row("operation currency beyond int", "operations", "currency",
        QVariantMap{{QStringLiteral("number3"), Q_INT64_C(4294967939)},
                    {QStringLiteral("code3"), QStringLiteral("RUB")},
                    {QStringLiteral("name"), QString()}});
}

void tst_PayPack::malformedMap()
{
    QFETCH(QString, list);
    QFETCH(QString, key);
    QFETCH(QVariant, value);
    QVariantMap map = PayPack::packToFullMap(sample());
    const auto replace = [&](QVariantMap &target) {
        if (value.isValid())
            target.insert(key, value);
        else
            target.remove(key);
    };
    if (list.isEmpty()) {
        replace(map);
    } else {
        QVariantList items = map.value(list).toList();
        QVariantMap item = items.first().toMap();
        replace(item);
        items[0] = item;
        map.insert(list, items);
    }
    bool ok = true;
    PayPack::packFromFullMap(map, &ok);
    QVERIFY(!ok);
    PayPack::packFromFullMap(map, nullptr);
}

QTEST_GUILESS_MAIN(tst_PayPack)
#include "tst_paypack.moc"
