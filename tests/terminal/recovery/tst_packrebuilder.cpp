#include "workplace.h"

#include <recovery/receiptorigin.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QtTest>

using namespace Receipts;

class tst_PackRebuilder : public QObject
{
    Q_OBJECT

private slots:
    void readsTheReceipt();
    void accountFromTheDocumentNumber();
    void rebuildsAnIndividualsPack();
    void alwaysTheSame();
    void legalDocuments_data();
    void legalDocuments();
    void unknownPayer();

private:
    static FiscalRecord receipt(const QVariantList &lines, const QStringList &printable);
    static std::optional<PackRebuilder::Rebuilt> rebuild(const FiscalRecord &record, QString *error)
    {
        return PackRebuilder(Workplace::providers(), Workplace::rouble()).rebuild(record, error);
    }
    static QString parameter(const Payment &payment, const char *name)
    {
        const auto parameters = payment.providerData().parameters();
        for (const auto &each : parameters) {
            if (each->name() == QLatin1String(name))
                return each->value();
        }
        return QString();
    }
};

FiscalRecord tst_PackRebuilder::receipt(const QVariantList &lines, const QStringList &printable)
{
    FiscalRecord record;
    record.number = 42;
    record.storage = QStringLiteral("9960440300000001");
    record.time = QDateTime(QDate(2026, 11, 21), QTime(10, 30, 15));
    record.documentNumber = QStringLiteral("17000000007001000101");
    record.qr = QStringLiteral("t=20261121T1030");
    qint64 total = 0;
    for (const QVariant &line : lines)
        total += line.toMap().value(key(FiscalTag::ItemCost)).toLongLong();
    record.document = withLines(lines, total - 1000, 1000);
    record.document.insert(QStringLiteral("printable"), printable);
    record.total = total;
    record.result = {
        {QStringLiteral("fiscprops"), QVariantList{QVariantMap{{QStringLiteral("tag"), 1040}}}},
        {QStringLiteral("data"),
         QVariantMap{{FiscalData::STORAGE, record.storage}, {FiscalData::NUMBER, 42}}},
        {QStringLiteral("document"), record.document}};
    return record;
}

void tst_PackRebuilder::readsTheReceipt()
{
    const ReceiptOrigin origin = ReceiptOrigin::of(
        receipt({line(QStringLiteral("Водоотведение"), 5000)},
                {QStringLiteral("ул. Набережная, д. 12/1"), QStringLiteral("Лицевой счет\t0042"),
                 QStringLiteral("ПЕРИОД\t11.2026"), QStringLiteral("Показания счетчиков"),
                 QStringLiteral("ХВС кухня № 1\t214/221"), QStringLiteral("ХВС\tновый\t-5/10"),
                 QStringLiteral("без показаний\tнет/да"), QStringLiteral("одно\t5")}));
    QCOMPARE(origin.payer, ReceiptOrigin::Payer::Individual);
    QCOMPARE(origin.account, QStringLiteral("0042"));
    QCOMPARE(origin.period, QStringLiteral("11.2026"));
    QCOMPARE(origin.readings.size(), 2);
    QCOMPARE(origin.readings.at(0).meter, QStringLiteral("ХВС кухня № 1"));
    QCOMPARE(origin.readings.at(0).current, Q_INT64_C(221));
    QCOMPARE(origin.readings.at(1).meter, QStringLiteral("ХВС\tновый"));
    QCOMPARE(origin.readings.at(1).last, Q_INT64_C(-5));
    QCOMPARE(origin.cashless.value(), Q_INT64_C(1000));
    QCOMPARE(origin.cash.value(), Q_INT64_C(4000));
}

void tst_PackRebuilder::accountFromTheDocumentNumber()
{
    const ReceiptOrigin origin =
        ReceiptOrigin::of(receipt({line(QStringLiteral("Вода"), 5000)}, {}));
    QCOMPARE(origin.account, QStringLiteral("7001000101"));
    QCOMPARE(origin.payer, ReceiptOrigin::Payer::Unknown);
}

void tst_PackRebuilder::rebuildsAnIndividualsPack()
{
    QString error;
    const FiscalRecord record =
        receipt({line(QStringLiteral("Вода"), 5000), line(QStringLiteral("Стоки"), 2500)},
                {QStringLiteral("Лицевой счет\t7001000101"), QStringLiteral("ПЕРИОД\t11.2026"),
                 QStringLiteral("ХВС\t214/221")});
    const auto rebuilt = rebuild(record, &error);
    QVERIFY2(rebuilt, qPrintable(error));
    const PayPack &pack = rebuilt->pack;
    QCOMPARE(pack.created(), record.time);
    QCOMPARE(pack.payments().size(), 1);
    const Payment payment = pack.payments().constFirst();
    QCOMPARE(payment.account(), QStringLiteral("7001000101"));
    QCOMPARE(payment.summ().value(), Q_INT64_C(7500));
    QCOMPARE(payment.currencyId(), Q_INT64_C(643));
    QCOMPARE(payment.providerData().workProviderId(), HostDataSeeder::PROVIDER_INDIVIDUAL);
    QCOMPARE(parameter(payment, "period"), QStringLiteral("11.2026"));
    QCOMPARE(parameter(payment, "qrcode"), record.qr);
    const QJsonArray groups =
        QJsonDocument::fromJson(parameter(payment, "paydata").toUtf8()).array();
    QCOMPARE(groups.size(), 2);
    QVERIFY(parameter(payment, "paydata").contains(QStringLiteral("\"50.00\"")));
    QVERIFY(parameter(payment, "paydata").contains(QStringLiteral("\"221\"")));
    QCOMPARE(pack.operations().size(), 2);
    QCOMPARE(pack.operations().at(0).moneyType(), MoneyType::Card);
    QCOMPARE(pack.operations().at(0).sum().value(), Q_INT64_C(1000));
    QCOMPARE(pack.operations().at(1).sum().value(), Q_INT64_C(6500));
    QCOMPARE(pack.fiscData().value(FiscalData::NUMBER).toInt(), 42);
    QCOMPARE(pack.fiscDocument(), record.document);
}

void tst_PackRebuilder::alwaysTheSame()
{
    QString error;
    FiscalRecord record =
        receipt({line(QStringLiteral("Вода"), 5000)}, {QStringLiteral("Лицевой счет\t1")});
    const auto first = rebuild(record, &error);
    const auto second = rebuild(record, &error);
    QVERIFY(first && second);
    QCOMPARE(PayPack::packToFullMap(first->pack), PayPack::packToFullMap(second->pack));
    QCOMPARE(first->note, second->note);
    QVERIFY(first->pack.id() > 0);
    record.number = 43;
    QVERIFY(rebuild(record, &error)->pack.id() != first->pack.id());
    record.number = 42;
    record.storage = QStringLiteral("9960440300000002");
    QVERIFY(rebuild(record, &error)->pack.id() != first->pack.id());
}

void tst_PackRebuilder::legalDocuments_data()
{
    QTest::addColumn<QStringList>("documents");
    QTest::addColumn<QStringList>("items");
    QTest::addColumn<QStringList>("paid");
    QTest::newRow("one") << QStringList{QStringLiteral("А-1")}
                         << QStringList{QStringLiteral("Вода"), QStringLiteral("Стоки")}
                         << QStringList{QStringLiteral("А-1 10000")};
    QTest::newRow("a line each") << QStringList{QStringLiteral("А-1"), QStringLiteral("А-2")}
                                 << QStringList{QStringLiteral("Вода"), QStringLiteral("Вода")}
                                 << QStringList{QStringLiteral("А-1 5000"),
                                                QStringLiteral("А-2 5000")};
    QTest::newRow("cannot be told apart")
        << QStringList{QStringLiteral("А-1"), QStringLiteral("А-2")}
        << QStringList{QStringLiteral("Вода"), QStringLiteral("Стоки"), QStringLiteral("Вода")}
        << QStringList{QStringLiteral(" 15000")};
    QTest::newRow("an advance among them")
        << QStringList{QStringLiteral("А-1"), QStringLiteral("А-2")}
        << QStringList{QStringLiteral("Вода"), QString()} << QStringList{QStringLiteral(" 10000")};
    QTest::newRow("none") << QStringList() << QStringList{QStringLiteral("Вода")}
                          << QStringList{QStringLiteral(" 5000")};
}

void tst_PackRebuilder::legalDocuments()
{
    QFETCH(QStringList, documents);
    QFETCH(QStringList, items);
    QFETCH(QStringList, paid);
    QStringList printable{QStringLiteral("Договор №\tД-500")};
    for (const QString &document : qAsConst(documents))
        printable.append(QStringLiteral("Документ №\t") + document);
    QVariantList lines;
    for (const QString &item : qAsConst(items))
        lines.append(line(item, 5000));
    QString error;
    const auto rebuilt = rebuild(receipt(lines, printable), &error);
    QVERIFY2(rebuilt, qPrintable(error));
    QStringList found;
    basix::FixNumber total;
    const auto payments = rebuilt->pack.payments();
    for (const Payment &payment : payments) {
        QCOMPARE(payment.account(), QStringLiteral("Д-500"));
        QCOMPARE(payment.providerData().workProviderId(), HostDataSeeder::PROVIDER_LEGAL);
        total += payment.summ();
        found.append(QStringLiteral("%1 %2").arg(parameter(payment, "numdoc"),
                                                 QString::number(payment.summ().value())));
    }
    QCOMPARE(found, paid);
    QCOMPARE(total.value(), Q_INT64_C(5000) * items.size());
    QCOMPARE(rebuilt->note.value(QStringLiteral("documents")).toStringList(), documents);
}

void tst_PackRebuilder::unknownPayer()
{
    QString error;
    QVERIFY(!rebuild(receipt({line(QStringLiteral("Вода"), 5000)}, {}), &error));
    QVERIFY2(error.contains(QStringLiteral("№ ФД 42")), qPrintable(error));
}

QTEST_GUILESS_MAIN(tst_PackRebuilder)
#include "tst_packrebuilder.moc"
