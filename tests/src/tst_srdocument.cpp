#include "billingsamples.h"
#include "hoststation.h"
#include "messagelog.h"
#include "srdocument.h"

#include <molvacore/providerparameter.h>

#include <QJsonDocument>
#include <QLoggingCategory>
#include <QTest>

using namespace BillingSamples;

class TestSrDocument : public QObject
{
    Q_OBJECT

private slots:
    void singleDocFormat();
    void singleDocDescriptors();
    void laterOfTwoDebtsWins();
    void parsesServicesInOrder();
    void parsingIsLogged();
    void nothingIsLoggedForAHostThatTakesNoLines();
    void parsesOddServices_data();
    void parsesOddServices();
    void parsingAgainReplacesTheServices();
    void isValid_data();
    void isValid();
    void isReady_data();
    void isReady();
    void distribution();
    void distributionOnReadOnlyServices();
    void fieldsBehindTheDebtAreDroppedToo();
    void docNumberIsReadOnlyInSingleDocFormat();
    void docNumberIsStoredTrimmed();
    void moneySetters();
    void titles();
    void modelTitlesWithoutServices();
    void payParams();
    void payment();
    void severalPaymentsHaveTheirOwnParameters();
    void html();
    void htmlWithoutServices();
    void equality();
    void fieldNames();
};

static QVariantList service(qint64 id, const QString &topay, const QString &distributed)
{
    return BillingSamples::service(id, QStringLiteral("Вода"), QStringLiteral("1.00"), topay,
                                   distributed);
}

static SrDocument documentWith(const QVector<QVariantList> &services,
                               const QString &number = QStringLiteral("А-17"))
{
    SrDocument result;
    result.parseCheckList(document(501, number, services));
    return result;
}

static QVariantList shortFormat()
{
    return {field(QStringLiteral("address"), QStringLiteral("пр. Заводской, 1")),
            field(QStringLiteral("charge"), QStringLiteral("100.00"), Edit::Refused,
                  QStringLiteral("Начислено")),
            field(QStringLiteral("debt"), QStringLiteral("250.00"), Edit::Refused,
                  QStringLiteral("Долг")),
            field(QStringLiteral("tax"), QStringLiteral("20.00")),
            recordList(QStringLiteral("services"),
                       {service(1, QStringLiteral("5.00"), QStringLiteral("0.00"))})};
}

void TestSrDocument::singleDocFormat()
{
    SrDocument document;
    document.parseSingleDocFormat(QStringLiteral("А-17"), shortFormat());
    QCOMPARE(
        document.getParams().keys(),
        (QStringList{QStringLiteral("charge"), QStringLiteral("distributed"), QStringLiteral("id"),
                     QStringLiteral("num"), QStringLiteral("tax"), QStringLiteral("topay")}));
    QCOMPARE(document.services().size(), 1);
    QCOMPARE(document.docNumber(), QStringLiteral("А-17"));
    QCOMPARE(document.charge().toString(), QStringLiteral("100.00"));
    QCOMPARE(document.topay().toString(), QStringLiteral("250.00"));
    QCOMPARE(document.getTitle(SrDocument::FIELD_TOPAY), QStringLiteral("Долг"));
    QCOMPARE(document.getField(SrDocument::FIELD_TOPAY).value(QStringLiteral("name")),
             QVariant(QStringLiteral("topay")));
    QVERIFY(document.isValid());
}

void TestSrDocument::singleDocDescriptors()
{
    SrDocument document;
    document.parseSingleDocFormat(QStringLiteral(" 5 "), {});
    const QString name = QStringLiteral("name");
    const QString isEditable = QStringLiteral("isEditable");
    const QString isVisible = QStringLiteral("isVisible");
    const QString selected = QStringLiteral("selected");
    const QString mask = QStringLiteral("mask");
    const QString regexp = QStringLiteral("regexp");
    const QString title = QStringLiteral("title");
    const QString type = QStringLiteral("type");
    const QString value = QStringLiteral("value");
    const QString text = QStringLiteral("string");
    QCOMPARE(document.getField(QStringLiteral("id")),
             (QVariantMap{{name, QStringLiteral("id")},
                          {isEditable, false},
                          {isVisible, false},
                          {selected, false},
                          {mask, QString()},
                          {regexp, QVariant()},
                          {title, QStringLiteral("ID документа")},
                          {type, text},
                          {value, QString()}}));
    QCOMPARE(document.getField(QStringLiteral("num")),
             (QVariantMap{{name, QStringLiteral("num")},
                          {isEditable, false},
                          {isVisible, true},
                          {selected, false},
                          {mask, QString()},
                          {regexp, QVariant()},
                          {title, QStringLiteral("Номер документа")},
                          {type, text},
                          {value, QStringLiteral(" 5 ")}}));
    QCOMPARE(document.getField(QStringLiteral("distributed")),
             (QVariantMap{{name, QStringLiteral("distributed")},
                          {isEditable, true},
                          {isVisible, true},
                          {selected, false},
                          {mask, QStringLiteral("Cccccccccccccccc")},
                          {regexp, QStringLiteral("^\\d+(?:[\\.,]\\d+)?$")},
                          {title, QStringLiteral("К оплате")},
                          {type, text}}));
}

void TestSrDocument::laterOfTwoDebtsWins()
{
    SrDocument document;
    document.parseSingleDocFormat(QStringLiteral("1"),
                                  {field(QStringLiteral("debt"), QStringLiteral("1.00")),
                                   field(QStringLiteral("debt"), QStringLiteral("2.00"))});
    QCOMPARE(document.topay().toString(), QStringLiteral("2.00"));
    QVERIFY(!document.getValue(QStringLiteral("debt")).isValid());
}

void TestSrDocument::parsesServicesInOrder()
{
    const SrDocument document =
        documentWith({service(3, QStringLiteral("1"), QStringLiteral("1")),
                      service(1, QStringLiteral("1"), QStringLiteral("1")),
                      service(2, QStringLiteral("1"), QStringLiteral("1"))});
    QCOMPARE(document.services().at(0).id(), qint64(3));
    QCOMPARE(document.services().at(1).id(), qint64(1));
    QCOMPARE(document.services().at(2).id(), qint64(2));
    QVERIFY(!document.getValue(SrDocument::FIELD_SERVICES).isValid());
    QVERIFY(document.getField(SrDocument::FIELD_SERVICES).isEmpty());
    QCOMPARE(document.id(), qint64(501));
}

void TestSrDocument::parsingIsLogged()
{
    MessageLog log;
    documentWith({service(1, QStringLiteral("1"), QStringLiteral("1")),
                  service(2, QStringLiteral("1"), QStringLiteral("1"))});
    // The whole map, the list of services, and each service.
    QCOMPARE(log.messages().size(), 4);
    for (const MessageLog::Message &line : log.messages()) {
        QCOMPARE(line.type, QtWarningMsg);
        QVERIFY(line.function.contains(QLatin1String("parseCheckList")));
    }
    const auto text = [&log](int line) { return log.messages().at(line).text; };
    QVERIFY(text(0).contains(QStringLiteral("А-17")));
    QCOMPARE(text(0).count(text(2)), 1);
    QCOMPARE(text(0).count(text(3)), 1);
    QCOMPARE(text(1), QStringLiteral("[%1,%2]").arg(text(2), text(3)));
    QVERIFY(text(2) != text(3));
    QVERIFY(text(2).contains(QStringLiteral("\"topay\"")));
}

void TestSrDocument::nothingIsLoggedForAHostThatTakesNoLines()
{
    MessageLog log;
    QLoggingCategory::setFilterRules(QStringLiteral("default.warning=false"));
    const SrDocument document =
        documentWith({service(1, QStringLiteral("1"), QStringLiteral("1"))});
    QLoggingCategory::setFilterRules(QString());
    QCOMPARE(log.messages().size(), 0);
    QCOMPARE(document.services().size(), 1);
}

void TestSrDocument::parsesOddServices_data()
{
    QTest::addColumn<QVariant>("services");
    QTest::addColumn<int>("count");
    QTest::newRow("text instead of a descriptor's list")
        << QVariant(QVariantMap{{QStringLiteral("name"), QStringLiteral("services")},
                                {QStringLiteral("paramList"), QStringLiteral("x")}})
        << 0;
    QTest::newRow("no list") << QVariant(
        QVariantMap{{QStringLiteral("name"), QStringLiteral("services")}})
                             << 0;
    QTest::newRow("empty list") << QVariant(recordList(QStringLiteral("services"), {})) << 0;
    QTest::newRow("elements that are no maps") << QVariant(QVariantMap{
        {QStringLiteral("name"), QStringLiteral("services")},
        {QStringLiteral("paramList"), QVariantList{5, QStringLiteral("x"), QVariant()}}})
                                               << 3;
}

void TestSrDocument::parsesOddServices()
{
    QFETCH(QVariant, services);
    QFETCH(int, count);
    SrDocument document;
    document.parseCheckList({services});
    QCOMPARE(document.services().size(), count);
    for (const SrService &service : document.services())
        QCOMPARE(service, SrService());
}

void TestSrDocument::parsingAgainReplacesTheServices()
{
    SrDocument document = documentWith({service(1, QStringLiteral("1"), QStringLiteral("1"))});
    document.parseCheckList({});
    QCOMPARE(document, SrDocument());
}

void TestSrDocument::isValid_data()
{
    QTest::addColumn<QString>("number");
    QTest::addColumn<bool>("hasServices");
    QTest::addColumn<bool>("valid");
    QTest::newRow("number and services") << QStringLiteral("5") << true << true;
    QTest::newRow("blank number") << QStringLiteral(" \t") << true << false;
    QTest::newRow("empty number") << QString() << true << false;
    QTest::newRow("no services") << QStringLiteral("5") << false << false;
}

void TestSrDocument::isValid()
{
    QFETCH(QString, number);
    QFETCH(bool, hasServices);
    QVector<QVariantList> services;
    if (hasServices)
        services.append(service(1, QStringLiteral("1"), QStringLiteral("1")));
    QTEST(documentWith(services, number).isValid(), "valid");
}

void TestSrDocument::isReady_data()
{
    QTest::addColumn<QVector<QVariantList>>("services");
    QTest::addColumn<bool>("ready");
    const QString zero = QStringLiteral("0.00");
    const QString some = QStringLiteral("0.01");
    const QString negative = QStringLiteral("-0.01");
    using Services = QVector<QVariantList>;
    QTest::newRow("no services") << Services() << true;
    QTest::newRow("nothing due, nothing distributed")
        << Services{service(1, zero, zero), service(2, zero, zero)} << true;
    QTest::newRow("due, nothing distributed")
        << Services{service(1, zero, zero), service(2, some, zero)} << false;
    QTest::newRow("due before nothing due, nothing distributed")
        << Services{service(1, some, zero), service(2, zero, zero)} << false;
    QTest::newRow("overpaid, nothing distributed") << Services{service(1, negative, zero)} << false;
    QTest::newRow("something distributed")
        << Services{service(1, some, some), service(2, some, zero)} << true;
    QTest::newRow("distributed without a due") << Services{service(1, zero, some)} << true;
    QTest::newRow("one negative") << Services{service(1, some, some), service(2, some, negative)}
                                  << false;
    QTest::newRow("negative before another")
        << Services{service(1, some, negative), service(2, some, some)} << false;
    QTest::newRow("negative, nothing due") << Services{service(1, zero, negative)} << false;
}

void TestSrDocument::isReady()
{
    QFETCH(QVector<QVariantList>, services);
    QTEST(documentWith(services).isReady(), "ready");
}

void TestSrDocument::distribution()
{
    SrDocument document =
        documentWith({service(1, QStringLiteral("5.10"), QStringLiteral("0.00")),
                      service(2, QStringLiteral("7.25"), QStringLiteral("1.00"))});
    const SrDocument before = document;
    QCOMPARE(document.amount().toString(), QStringLiteral("1.00"));
    document.calcByDebt();
    QCOMPARE(document.amount().toString(), QStringLiteral("12.35"));
    document.cleanDebt();
    QCOMPARE(document.amount().toString(), QStringLiteral("0.00"));
    // As it travels to billing.
    QCOMPARE(document.services().first().getValue(SrService::FIELD_DISTRIBUTED),
             QVariant(QStringLiteral("0.00")));
    QCOMPARE(before.amount().toString(), QStringLiteral("1.00"));
}

void TestSrDocument::distributionOnReadOnlyServices()
{
    SrDocument document = documentWith(
        {{field(SrService::FIELD_TOPAY, QStringLiteral("5.00")),
          field(SrService::FIELD_DISTRIBUTED, QStringLiteral("2.00"), Edit::Refused)}});
    document.calcByDebt();
    QCOMPARE(document.amount().toString(), QStringLiteral("2.00"));
    document.cleanDebt();
    QCOMPARE(document.amount().toString(), QStringLiteral("2.00"));
}

void TestSrDocument::fieldsBehindTheDebtAreDroppedToo()
{
    QVariantList fields = shortFormat();
    fields.append(field(QStringLiteral("remainder"), QStringLiteral("7.00")));
    fields.append(field(QStringLiteral("fio"), QStringLiteral("ООО «Ручей»")));
    SrDocument document;
    document.parseSingleDocFormat(QStringLiteral("А-17"), fields);
    QCOMPARE(document.topay().toString(), QStringLiteral("250.00"));
    QVERIFY(document.getField(QStringLiteral("fio")).isEmpty());
    QVERIFY(document.getField(QStringLiteral("remainder")).isEmpty());
}

void TestSrDocument::docNumberIsReadOnlyInSingleDocFormat()
{
    SrDocument document;
    document.parseSingleDocFormat(QStringLiteral("А-17"), shortFormat());
    document.setDocNumber(QStringLiteral("другой"));
    QCOMPARE(document.docNumber(), QStringLiteral("А-17"));
    document.setDistributed(basix::FixNumber(100, 500));
    QCOMPARE(document.distributed().toString(), QStringLiteral("5.00"));
}

void TestSrDocument::docNumberIsStoredTrimmed()
{
    SrDocument document = documentWith({});
    document.setDocNumber(QStringLiteral(" 12 "));
    QCOMPARE(document.getValue(SrDocument::FIELD_NUM), QVariant(QStringLiteral("12")));
}

void TestSrDocument::moneySetters()
{
    SrDocument document = documentWith({});
    document.setId(9);
    document.setCharge(basix::FixNumber(100, 1));
    document.setTopay(basix::FixNumber(100, 2));
    document.setDistributed(basix::FixNumber(100, 3));
    QCOMPARE(document.id(), qint64(9));
    QCOMPARE(document.getValue(SrDocument::FIELD_CHARGE), QVariant(QStringLiteral("0.01")));
    QCOMPARE(document.topay(), basix::FixNumber(100, 2));
    QCOMPARE(document.distributed(), basix::FixNumber(100, 3));
}

void TestSrDocument::titles()
{
    const SrDocument document =
        documentWith({service(1, QStringLiteral("1"), QStringLiteral("1"))});
    QCOMPARE(document.titles(),
             (QMap<QString, QString>{{QStringLiteral("id"), QString()},
                                     {QStringLiteral("num"), QStringLiteral("Номер")},
                                     {QStringLiteral("charge"), QString()},
                                     {QStringLiteral("topay"), QString()},
                                     {QStringLiteral("distributed"), QString()}}));
    QMap<QString, QString> columns = document.services().first().titles();
    columns.insert(QStringLiteral("num"), QStringLiteral("Номер"));
    QCOMPARE(document.modelTitles(), columns);
}

void TestSrDocument::modelTitlesWithoutServices()
{
    QCOMPARE(documentWith({}).modelTitles(),
             (QMap<QString, QString>{{QStringLiteral("num"), QStringLiteral("Номер")}}));
}

void TestSrDocument::payParams()
{
    const SrDocument document =
        documentWith({service(1, QStringLiteral("1"), QStringLiteral("1"))});
    const QVariantList services{document.services().first().toParamMap()};
    const QVariantList expected{QVariantMap{{QStringLiteral("name"), QStringLiteral("services")},
                                            {QStringLiteral("paramList"), QVariant(services)}}};
    QCOMPARE(document.toPayParamsList(), expected);
    QCOMPARE(QJsonDocument::fromJson(document.toJsonParamsList().toUtf8()).toVariant(),
             QVariant(expected));
    QCOMPARE(SrDocument().toJsonParamsList(),
             QStringLiteral("[{\"name\":\"services\",\"paramList\":[]}]"));
}

static QMap<QString, QString> parametersOf(const Payment &payment)
{
    QMap<QString, QString> values;
    for (const QSharedPointer<ProviderParameter> &parameter : payment.providerData().parameters())
        values.insert(parameter->name(), parameter->value());
    return values;
}

void TestSrDocument::payment()
{
    const SrDocument document =
        documentWith({service(1, QStringLiteral("1"), QStringLiteral("12.34"))});
    const QSharedPointer<Provider> provider = HostStation::provider();
    const Payment payment = document.createPay(*provider, QStringLiteral("Д-5"),
                                               QStringLiteral("qr"), HostStation::roubles());
    QCOMPARE(payment.account(), QStringLiteral("Д-5"));
    QCOMPARE(payment.currencyId(), qint64(643));
    QCOMPARE(payment.summ().toString(), QStringLiteral("12.34"));
    QCOMPARE(payment.created().date(), QDate::currentDate());
    QCOMPARE(parametersOf(payment),
             (QMap<QString, QString>{{QStringLiteral("account"), QStringLiteral("Д-5")},
                                     {QStringLiteral("Account"), QStringLiteral("before")},
                                     {QStringLiteral("period"), QStringLiteral("before")},
                                     {QStringLiteral("paydata"), document.toJsonParamsList()},
                                     {QStringLiteral("qrcode"), QStringLiteral("qr")},
                                     {QStringLiteral("numdoc"), QStringLiteral("А-17")}}));
    QCOMPARE(*provider, *HostStation::provider());
}

void TestSrDocument::severalPaymentsHaveTheirOwnParameters()
{
    const QSharedPointer<Provider> provider = HostStation::provider();
    const Payment first =
        documentWith({}, QStringLiteral("1"))
            .createPay(*provider, QStringLiteral("a"), QString(), HostStation::roubles());
    const Payment second =
        documentWith({}, QStringLiteral("2"))
            .createPay(*provider, QStringLiteral("b"), QString(), HostStation::roubles());
    QCOMPARE(parametersOf(first).value(QStringLiteral("numdoc")), QStringLiteral("1"));
    QCOMPARE(parametersOf(second).value(QStringLiteral("numdoc")), QStringLiteral("2"));
}

void TestSrDocument::html()
{
    const SrDocument document = documentWith({service(1, QStringLiteral("5"), QStringLiteral("6"))},
                                             QStringLiteral("<7> %1"));
    QCOMPARE(document.toHtml(),
             QStringLiteral(
                 "<H4 align=\"center\">Услуги [&lt;7&gt; %1]</H4>\n"
                 "<table width=\"90%\" border=1 align=\"center\"><tbody>\n"
                 "<tr><th align=\"center\">Услуга</th><th align=\"center\">Начислено</th>"
                 "<th align=\"center\">К оплате</th><th align=\"center\">Распределено</th></tr>\n"
                 "<tr><td align=\"left\">Вода</td><td align=\"right\">1.00</td>"
                 "<td align=\"right\">5.00</td><td align=\"right\">6.00</td></tr>\n"
                 "</tbody></table>"));
    QCOMPARE(document.toSummaryHtml(), document.toHtml());
}

void TestSrDocument::htmlWithoutServices()
{
    QCOMPARE(documentWith({}).toHtml(), QStringLiteral("<H4 align=\"center\">Услуги [А-17]</H4>"));
}

void TestSrDocument::equality()
{
    const SrDocument document =
        documentWith({service(1, QStringLiteral("5"), QStringLiteral("6"))});
    SrDocument other = document;
    QVERIFY(other == document);
    other.calcByDebt();
    QVERIFY(other != document);
    other = document;
    other.setDocNumber(QStringLiteral("другой"));
    QVERIFY(other != document);
    other = document;
    other.setServices({});
    QVERIFY(other != document);
}

void TestSrDocument::fieldNames()
{
    QCOMPARE(SrDocument::FIELD_SERVICES, QStringLiteral("services"));
    QCOMPARE(SrDocument::FIELD_ID, QStringLiteral("id"));
    QCOMPARE(SrDocument::FIELD_NUM, QStringLiteral("num"));
    QCOMPARE(SrDocument::FIELD_CHARGE, QStringLiteral("charge"));
    QCOMPARE(SrDocument::FIELD_TOPAY, QStringLiteral("topay"));
    QCOMPARE(SrDocument::FIELD_DISTRIBUTED, QStringLiteral("distributed"));
    QCOMPARE(SrDocument::FIELD_REMAINDER, QStringLiteral("remainder"));
}

QTEST_GUILESS_MAIN(TestSrDocument)
#include "tst_srdocument.moc"
