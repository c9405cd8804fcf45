#include "packs.h"
#include "seededbilling.h"

#include <billing/billingdatabase.h>
#include <billing/billingservice.h>

#include <QTemporaryDir>
#include <QtTest>

namespace {

QVariantMap parse(const QByteArray &text)
{
    return QJsonDocument::fromJson(text).object().toVariantMap();
}

/// Value of the descriptor with this name; the descriptor itself for one that holds records.
QVariantMap descriptor(const QVariantList &list, const QString &name)
{
    for (const QVariant &entry : list) {
        if (entry.toMap().value(QStringLiteral("name")).toString() == name)
            return entry.toMap();
    }
    return {};
}

QString value(const QVariantList &list, const QString &name)
{
    return descriptor(list, name).value(QStringLiteral("value")).toString();
}

QVariantList records(const QVariantMap &descriptor)
{
    return descriptor.value(QStringLiteral("paramList")).toList();
}

QVariantList fieldsOf(const QVariant &record)
{
    return record.toMap().value(QStringLiteral("paramList")).toList();
}

QStringList distributed(const QVariantList &services)
{
    QStringList result;
    for (const QVariant &service : services)
        result.append(value(fieldsOf(service), QStringLiteral("distributed")));
    return result;
}

} // namespace

class tst_BillingService : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void ordinaryAccount();
    void parametersFromText();
    void behaviours_data();
    void behaviours();
    void forcedBehaviours_data();
    void forcedBehaviours();
    void forcedBehaviourGoesBeforeTheAccounts();
    void forcedBehaviourBendsRefusalsToo();
    void answersTwice();
    void answersLate();
    void packsAreTakenWhateverIsForced();
    void refusesRequests_data();
    void refusesRequests();
    void spreadsThePlannedSum_data();
    void spreadsThePlannedSum();
    void readOnlyComesReadyToPay();
    void documents_data();
    void documents();
    void plannedSumOfADocument();
    void plannedSumOfAContractIsNotSpread();
    void takesPacks();
    void asksAgainAfterAPayment();

private:
    QVariantMap request(qint64 provider, const QString &account,
                        const QString &document = QString(), double planned = 0) const;
    BillingAnswer ask(qint64 provider, const QString &account, const QString &document = QString(),
                      double planned = 0)
    {
        return m_service->answer(request(provider, account, document, planned));
    }
    QVariantList describe(qint64 provider, const QString &account,
                          const QString &document = QString(), double planned = 0)
    {
        const QVariantMap outer = parse(ask(provider, account, document, planned).body);
        const QVariantMap inner =
            parse(outer.value(QStringLiteral("description")).toString().toUtf8());
        return inner.value(QStringLiteral("payParamList")).toList();
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<BillingDatabase> m_database;
    std::unique_ptr<BillingService> m_service;
};

void tst_BillingService::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    const QString file = m_folder->filePath(QStringLiteral("billing.sqlite"));
    QVERIFY(copySeededBilling(file));
    m_database = std::make_unique<BillingDatabase>();
    QVERIFY(m_database->open(file));
    m_service = std::make_unique<BillingService>(*m_database);
}

void tst_BillingService::cleanup()
{
    m_service.reset();
    m_database.reset();
    m_folder.reset();
}

QVariantMap tst_BillingService::request(qint64 provider, const QString &account,
                                        const QString &document, double planned) const
{
    QVariantList list;
    if (!account.isEmpty())
        list.append(Packs::named(QStringLiteral("account"), account));
    if (!document.isEmpty())
        list.append(Packs::named(QStringLiteral("numdoc"), document));
    QVariantMap map{
        {QStringLiteral("code"), QStringLiteral("check")},
        {QStringLiteral("uid"), QStringLiteral("-42")},
        {QStringLiteral("providerId"), provider},
        {QStringLiteral("currencyId"), 643},
        {QStringLiteral("params"), QVariantMap{{QStringLiteral("payParamList"), list}}}};
    if (planned > 0)
        map.insert(QStringLiteral("summ"), planned);
    return map;
}

void tst_BillingService::ordinaryAccount()
{
    const BillingAnswer answer = ask(18722, SampleNumber::ORDINARY);
    QVERIFY(!answer.silent);
    QCOMPARE(answer.headers,
             (QVariantMap{{QStringLiteral("msgType"), QStringLiteral("checkPayStatus")}}));
    const QVariantMap outer = parse(answer.body);
    QCOMPARE(outer.keys(),
             (QStringList{QStringLiteral("description"), QStringLiteral("error"),
                          QStringLiteral("result"), QStringLiteral("resultDescription"),
                          QStringLiteral("uid")}));
    QCOMPARE(outer.value(QStringLiteral("uid")).toString(), QStringLiteral("-42"));
    QVERIFY(!outer.value(QStringLiteral("error")).toBool());
    QCOMPARE(outer.value(QStringLiteral("result")).toInt(), 0);
    const QVariantMap inner = parse(outer.value(QStringLiteral("description")).toString().toUtf8());
    QVERIFY(!inner.value(QStringLiteral("isError")).toBool());

    const QVariantList list = inner.value(QStringLiteral("payParamList")).toList();
    QCOMPARE(value(list, QStringLiteral("debt")), QStringLiteral("1500.50"));
    QCOMPARE(descriptor(list, QStringLiteral("debt")).value(QStringLiteral("title")).toString(),
             QStringLiteral("Задолженность"));
    const QVariantList services = records(descriptor(list, QStringLiteral("services")));
    QCOMPARE(services.size(), 4);
    const QVariantList service = fieldsOf(services.first());
    QCOMPARE(value(service, QStringLiteral("id")), QStringLiteral("3924901"));
    QCOMPARE(value(service, QStringLiteral("topay")), QStringLiteral("482.60"));
    QCOMPARE(value(service, QStringLiteral("distributed")), QStringLiteral("0.00"));
    QVERIFY(descriptor(service, QStringLiteral("distributed"))
                .value(QStringLiteral("isEditable"))
                .toBool());
    QVERIFY(
        !descriptor(service, QStringLiteral("topay")).value(QStringLiteral("isEditable")).toBool());
    const QVariantList meters = records(descriptor(list, QStringLiteral("counters")));
    QCOMPARE(meters.size(), 2);
    QCOMPARE(value(fieldsOf(meters.first()), QStringLiteral("lastvalue")), QStringLiteral("215"));
    QCOMPARE(value(fieldsOf(meters.first()), QStringLiteral("currvalue")), QStringLiteral("215"));
    const QVariantMap reading = descriptor(fieldsOf(meters.first()), QStringLiteral("currvalue"));
    for (const char *key :
         {"name", "value", "title", "isEditable", "type", "mask", "regexp", "isVisible"})
        QVERIFY2(reading.contains(QLatin1String(key)), key);
    QVERIFY(reading.value(QStringLiteral("isEditable")).toBool());
}

void tst_BillingService::parametersFromText()
{
    QVariantMap map = request(18722, SampleNumber::ORDINARY);
    const QVariantMap params = map.take(QStringLiteral("params")).toMap();
    map.insert(QStringLiteral("checkdata"),
               QString::fromUtf8(QJsonDocument(QJsonObject::fromVariantMap(params)).toJson()));
    const QVariantMap outer = parse(m_service->answer(map).body);
    QVERIFY(
        outer.value(QStringLiteral("description")).toString().contains(QStringLiteral("Кравцова")));
}

void tst_BillingService::behaviours_data()
{
    QTest::addColumn<qint64>("provider");
    QTest::addColumn<QString>("number");
    QTest::addColumn<bool>("silent");
    QTest::addColumn<bool>("outerReadable");
    QTest::addColumn<bool>("error");
    QTest::addColumn<int>("result");
    QTest::addColumn<bool>("innerReadable");
    QTest::addColumn<bool>("isError");
    using namespace SampleNumber;
    const qint64 person = 18722;
    const qint64 firm = 18723;
    QTest::newRow("outer error") << person << OUTER_ERROR << false << true << true << 0 << false
                                 << false;
    QTest::newRow("result") << person << NON_ZERO_RESULT << false << true << false << 17 << false
                            << false;
    QTest::newRow("inner error") << person << INNER_ERROR << false << true << false << 0 << true
                                 << true;
    QTest::newRow("broken outside")
        << person << BROKEN_OUTER << false << false << false << 0 << false << false;
    QTest::newRow("broken inside")
        << person << BROKEN_INNER << false << true << false << 0 << false << false;
    QTest::newRow("silence") << person << SILENCE << true << false << false << 0 << false << false;
    QTest::newRow("slow") << person << SLOW << false << true << false << 0 << true << false;
    QTest::newRow("unknown") << person << UNKNOWN << false << true << false << 0 << true << true;
    QTest::newRow("empty account")
        << person << QString() << false << true << false << 0 << true << true;
    QTest::newRow("legal outer error")
        << firm << LEGAL_OUTER_ERROR << false << true << true << 0 << false << false;
    QTest::newRow("legal result") << firm << LEGAL_NON_ZERO_RESULT << false << true << false << 17
                                  << false << false;
    QTest::newRow("legal inner error")
        << firm << LEGAL_INNER_ERROR << false << true << false << 0 << true << true;
    QTest::newRow("legal broken outside")
        << firm << LEGAL_BROKEN_OUTER << false << false << false << 0 << false << false;
    QTest::newRow("legal broken inside")
        << firm << LEGAL_BROKEN_INNER << false << true << false << 0 << false << false;
    QTest::newRow("legal silence")
        << firm << LEGAL_SILENCE << true << false << false << 0 << false << false;
    QTest::newRow("legal unknown")
        << firm << LEGAL_UNKNOWN << false << true << false << 0 << true << true;
}

void tst_BillingService::behaviours()
{
    QFETCH(qint64, provider);
    QFETCH(QString, number);
    QFETCH(bool, silent);
    QFETCH(bool, outerReadable);
    QFETCH(bool, error);
    QFETCH(int, result);
    QFETCH(bool, innerReadable);
    QFETCH(bool, isError);
    const BillingAnswer answer = ask(provider, number);
    QCOMPARE(answer.silent, silent);
    QCOMPARE(answer.delay > 0, number == SampleNumber::SLOW);
    if (silent)
        return;
    QJsonParseError parseError;
    const QVariantMap outer =
        QJsonDocument::fromJson(answer.body, &parseError).object().toVariantMap();
    QCOMPARE(parseError.error == QJsonParseError::NoError, outerReadable);
    QCOMPARE(outer.value(QStringLiteral("error")).toBool(), error);
    QCOMPARE(outer.value(QStringLiteral("result")).toInt(), result);
    QCOMPARE(outer.value(QStringLiteral("resultDescription")).toString().isEmpty(),
             !error && result == 0);
    const QByteArray text = outer.value(QStringLiteral("description")).toString().toUtf8();
    if (error)
        QVERIFY(!text.isEmpty());
    const QVariantMap inner = QJsonDocument::fromJson(text, &parseError).object().toVariantMap();
    QCOMPARE(parseError.error == QJsonParseError::NoError, innerReadable);
    QCOMPARE(inner.value(QStringLiteral("isError")).toBool(), isError);
    QCOMPARE(inner.value(QStringLiteral("statusDescription")).toString().isEmpty(), !isError);
}

void tst_BillingService::forcedBehaviours_data()
{
    QTest::addColumn<int>("behaviour");
    QTest::addColumn<bool>("silent");
    QTest::addColumn<bool>("object");
    QTest::addColumn<QString>("uid");
    QTest::addColumn<bool>("error");
    QTest::addColumn<int>("result");
    QTest::addColumn<bool>("innerObject");
    QTest::addColumn<bool>("isError");
    QTest::addColumn<bool>("fields");
    const QString own = QStringLiteral("-42");
    const auto row = [](const char *name, AnswerBehaviour behaviour, bool silent, bool object,
                        const QString &uid, bool error, int result, bool innerObject, bool isError,
                        bool fields) {
        QTest::newRow(name) << int(behaviour) << silent << object << uid << error << result
                            << innerObject << isError << fields;
    };
    using Behaviour = AnswerBehaviour;
    row("ordinary", Behaviour::Ordinary, false, true, own, false, 0, true, false, true);
    row("outer error", Behaviour::OuterError, false, true, own, true, 0, false, false, false);
    row("result", Behaviour::NonZeroResult, false, true, own, false, 17, false, false, false);
    row("inner error", Behaviour::InnerError, false, true, own, false, 0, true, true, false);
    row("cut", Behaviour::BrokenOuter, false, false, QString(), false, 0, false, false, false);
    row("cut inside", Behaviour::BrokenInner, false, true, own, false, 0, false, false, false);
    row("silence", Behaviour::Silence, true, false, QString(), false, 0, false, false, false);
    row("slow", Behaviour::Slow, false, true, own, false, 0, true, false, true);
    row("a list", Behaviour::EnvelopeNotObject, false, false, QString(), false, 0, false, false,
        false);
    row("a list inside", Behaviour::InnerNotObject, false, true, own, false, 0, false, false,
        false);
    row("fields are a text", Behaviour::FieldsNotList, false, true, own, false, 0, true, false,
        false);
    row("foreign uid", Behaviour::WrongUid, false, true, QStringLiteral("99999999999999999999"),
        false, 0, true, false, true);
    row("twice", Behaviour::Twice, false, true, own, false, 0, true, false, true);
    row("late", Behaviour::Late, true, false, QString(), false, 0, false, false, false);
}

void tst_BillingService::forcedBehaviours()
{
    QFETCH(int, behaviour);
    QFETCH(bool, silent);
    m_service->force(AnswerBehaviour(behaviour));
    QCOMPARE(int(m_service->forced()), behaviour);
    const BillingAnswer answer = ask(18722, SampleNumber::ORDINARY);
    QCOMPARE(answer.silent, silent);
    QCOMPARE(answer.delay > 0, behaviour == int(AnswerBehaviour::Slow));
    QCOMPARE(answer.body.isEmpty(), silent);
    const QJsonDocument document = QJsonDocument::fromJson(answer.body);
    QTEST(document.isObject(), "object");
    const QVariantMap outer = document.object().toVariantMap();
    QTEST(outer.value(QStringLiteral("uid")).toString(), "uid");
    QTEST(outer.value(QStringLiteral("error")).toBool(), "error");
    QTEST(outer.value(QStringLiteral("result")).toInt(), "result");
    const QJsonDocument inner =
        QJsonDocument::fromJson(outer.value(QStringLiteral("description")).toString().toUtf8());
    QTEST(inner.isObject(), "innerObject");
    QTEST(inner.object().value(QStringLiteral("isError")).toBool(), "isError");
    QTEST(!inner.object().value(QStringLiteral("payParamList")).toArray().isEmpty(), "fields");
    m_service->force(AnswerBehaviour::Ordinary);
    QVERIFY(!describe(18722, SampleNumber::ORDINARY).isEmpty());
}

void tst_BillingService::forcedBehaviourGoesBeforeTheAccounts()
{
    m_service->force(AnswerBehaviour::OuterError);
    QVERIFY(!ask(18722, SampleNumber::SILENCE).silent);
    m_service->force(AnswerBehaviour::Ordinary);
    QVERIFY(ask(18722, SampleNumber::SILENCE).silent);
}

void tst_BillingService::forcedBehaviourBendsRefusalsToo()
{
    m_service->force(AnswerBehaviour::Silence);
    QVERIFY(ask(18722, SampleNumber::UNKNOWN).silent);
    QVERIFY(m_service->answer({}).silent);
    m_service->force(AnswerBehaviour::WrongUid);
    const QVariantMap outer = parse(ask(18722, SampleNumber::UNKNOWN).body);
    QVERIFY(outer.value(QStringLiteral("uid")).toString() != QStringLiteral("-42"));
    QVERIFY(outer.value(QStringLiteral("description")).toString().contains(SampleNumber::UNKNOWN));
}

void tst_BillingService::answersTwice()
{
    m_service->force(AnswerBehaviour::Twice);
    const BillingAnswer answer = ask(18722, SampleNumber::ORDINARY);
    QCOMPARE(answer.others.size(), std::size_t(1));
    QCOMPARE(answer.others.at(0).body, answer.body);
    QCOMPARE(answer.others.at(0).headers, answer.headers);
    QVERIFY(!answer.others.at(0).silent);
}

void tst_BillingService::answersLate()
{
    const QByteArray ordinary = ask(18722, SampleNumber::ORDINARY).body;
    const QByteArray penalty = ask(18722, SampleNumber::PENALTY).body;
    m_service->force(AnswerBehaviour::Late);
    const BillingAnswer first = ask(18722, SampleNumber::ORDINARY);
    QVERIFY(first.silent && first.others.empty());
    const BillingAnswer second = ask(18722, SampleNumber::PENALTY);
    QVERIFY(!second.silent);
    QCOMPARE(second.others.size(), std::size_t(1));
    QVERIFY(second.others.at(0).delay > 0);
    QCOMPARE(second.body, penalty);
    QCOMPARE(second.others.at(0).body, ordinary);
    QVERIFY(ask(18722, SampleNumber::ORDINARY).silent);
    // What is held belongs to the behaviour and goes with it.
    m_service->force(AnswerBehaviour::Late);
    QVERIFY(ask(18722, SampleNumber::ORDINARY).silent);
}

void tst_BillingService::packsAreTakenWhateverIsForced()
{
    for (const AnswerBehaviour behaviour :
         {AnswerBehaviour::Silence, AnswerBehaviour::OuterError}) {
        m_service->force(behaviour);
        QVERIFY(!m_service->takePayPack({}).silent);
    }
}

void tst_BillingService::refusesRequests_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QVariant>("value");
    QTest::newRow("another code") << QStringLiteral("code") << QVariant(QStringLiteral("pay"));
    QTest::newRow("another provider") << QStringLiteral("providerId") << QVariant(1);
    QTest::newRow("no provider") << QStringLiteral("providerId") << QVariant();
}

void tst_BillingService::refusesRequests()
{
    QFETCH(QString, key);
    QFETCH(QVariant, value);
    QVariantMap map = request(18722, SampleNumber::ORDINARY);
    map.insert(key, value);
    const QVariantMap outer = parse(m_service->answer(map).body);
    QVERIFY(outer.value(QStringLiteral("error")).toBool());
    QCOMPARE(outer.value(QStringLiteral("uid")).toString(), QStringLiteral("-42"));
}

void tst_BillingService::spreadsThePlannedSum_data()
{
    QTest::addColumn<QString>("number");
    QTest::addColumn<double>("planned");
    QTest::addColumn<QStringList>("parts");
    QTest::addColumn<QString>("remainder");
    const auto texts = [](std::initializer_list<const char *> list) {
        QStringList result;
        for (const char *text : list)
            result.append(QLatin1String(text));
        return result;
    };
    using namespace SampleNumber;
    QTest::newRow("none") << ORDINARY << 0.0 << texts({"0.00", "0.00", "0.00", "0.00"})
                          << QStringLiteral("0.00");
    QTest::newRow("one kopeck") << ORDINARY << 0.01 << texts({"0.01", "0.00", "0.00", "0.00"})
                                << QStringLiteral("0.00");
    QTest::newRow("part") << ORDINARY << 500.0 << texts({"482.60", "17.40", "0.00", "0.00"})
                          << QStringLiteral("0.00");
    QTest::newRow("exactly") << ORDINARY << 1500.5 << texts({"482.60", "611.90", "356.00", "50.00"})
                             << QStringLiteral("0.00");
    QTest::newRow("more") << ORDINARY << 2000.0 << texts({"482.60", "611.90", "356.00", "50.00"})
                          << QStringLiteral("499.50");
    QTest::newRow("overpaid") << OVERPAID << 10.0 << texts({"0.00", "0.00", "0.00", "0.00"})
                              << QStringLiteral("10.00");
    QTest::newRow("read-only") << READ_ONLY << 500.0 << texts({"482.60", "17.40", "0.00", "0.00"})
                               << QStringLiteral("0.00");
}

void tst_BillingService::spreadsThePlannedSum()
{
    QFETCH(QString, number);
    QFETCH(double, planned);
    QFETCH(QStringList, parts);
    QFETCH(QString, remainder);
    const QVariantList list = describe(18722, number, QString(), planned);
    QCOMPARE(distributed(records(descriptor(list, QStringLiteral("services")))), parts);
    QCOMPARE(value(list, QStringLiteral("remainder")), remainder);
}

void tst_BillingService::readOnlyComesReadyToPay()
{
    const QVariantList list = describe(18722, SampleNumber::READ_ONLY);
    const QVariantList services = records(descriptor(list, QStringLiteral("services")));
    for (const QVariant &service : services) {
        const QVariantMap field = descriptor(fieldsOf(service), QStringLiteral("distributed"));
        QVERIFY(!field.value(QStringLiteral("isEditable")).toBool());
        QCOMPARE(field.value(QStringLiteral("value")).toString(),
                 value(fieldsOf(service), QStringLiteral("topay")));
    }
    const QVariantList meters = records(descriptor(list, QStringLiteral("counters")));
    QVERIFY(!descriptor(fieldsOf(meters.first()), QStringLiteral("currvalue"))
                 .value(QStringLiteral("isEditable"))
                 .toBool());
}

void tst_BillingService::documents_data()
{
    QTest::addColumn<QString>("contract");
    QTest::addColumn<QString>("document");
    QTest::addColumn<bool>("underValue");
    QTest::addColumn<int>("count");
    using namespace SampleNumber;
    QTest::newRow("one") << LEGAL_ONE_DOCUMENT << QString() << false << 1;
    QTest::newRow("several") << LEGAL_SEVERAL << QString() << false << 5;
    QTest::newRow("one of several") << LEGAL_SEVERAL << QStringLiteral("2026/0203") << false << 1;
    QTest::newRow("many") << LEGAL_MANY << QString() << false << 300;
    QTest::newRow("under value") << LEGAL_UNDER_VALUE << QString() << true << 2;
    QTest::newRow("single format")
        << LEGAL_SINGLE_FORMAT << LEGAL_SINGLE_FORMAT_NUMBER << false << -1;
    QTest::newRow("single format, no document") << LEGAL_SINGLE_FORMAT << QString() << false << 2;
    QTest::newRow("unknown document") << LEGAL_SEVERAL << QStringLiteral("0") << false << -2;
}

void tst_BillingService::documents()
{
    QFETCH(QString, contract);
    QFETCH(QString, document);
    QFETCH(bool, underValue);
    QFETCH(int, count);
    const QVariantList list = describe(18723, contract, document);
    const QVariantMap documents = descriptor(list, QStringLiteral("documents"));
    if (count == -2) {
        QVERIFY(list.isEmpty());
        return;
    }
    if (count == -1) {
        QVERIFY(documents.isEmpty());
        QCOMPARE(records(descriptor(list, QStringLiteral("services"))).size(), 2);
        QCOMPARE(value(list, QStringLiteral("debt")), QStringLiteral("5500.00"));
        return;
    }
    QVERIFY(!descriptor(list, QStringLiteral("inn")).isEmpty());
    QVERIFY(descriptor(list, QStringLiteral("services")).isEmpty());
    const QVariantMap value_ = documents.value(QStringLiteral("value")).toMap();
    const QVariantList found = underValue ? records(value_) : records(documents);
    QCOMPARE(documents.contains(QStringLiteral("paramList")), !underValue);
    QCOMPARE(found.size(), count);
    for (const QVariant &entry : found) {
        const QVariantList fields = fieldsOf(entry);
        QVERIFY(!value(fields, QStringLiteral("num")).isEmpty());
        QVERIFY(descriptor(fields, QStringLiteral("distributed"))
                    .value(QStringLiteral("isEditable"))
                    .toBool());
        QCOMPARE(records(descriptor(fields, QStringLiteral("services"))).size(), 2);
    }
    if (!document.isEmpty())
        QCOMPARE(value(fieldsOf(found.first()), QStringLiteral("num")), document);
}

void tst_BillingService::plannedSumOfADocument()
{
    const QVariantList list =
        describe(18723, SampleNumber::LEGAL_SEVERAL, QStringLiteral("2026/0201"), 12600);
    const QVariantList document =
        fieldsOf(records(descriptor(list, QStringLiteral("documents"))).first());
    QCOMPARE(distributed(records(descriptor(document, QStringLiteral("services")))),
             (QStringList{QStringLiteral("12500.00"), QStringLiteral("100.00")}));
    QCOMPARE(value(document, QStringLiteral("distributed")), QStringLiteral("12600.00"));
}

void tst_BillingService::plannedSumOfAContractIsNotSpread()
{
    const QVariantList list = describe(18723, SampleNumber::LEGAL_SEVERAL, QString(), 100);
    QCOMPARE(value(list, QStringLiteral("remainder")), QStringLiteral("0.00"));
    const QVariantList first =
        fieldsOf(records(descriptor(list, QStringLiteral("documents"))).first());
    QCOMPARE(distributed(records(descriptor(first, QStringLiteral("services")))),
             (QStringList{QStringLiteral("0.00"), QStringLiteral("0.00")}));
}

void tst_BillingService::takesPacks()
{
    const QVariantMap pack = Packs::pack(31, {Packs::payment(18722, SampleNumber::ORDINARY, 100)});
    const BillingAnswer first = m_service->takePayPack(pack);
    QCOMPARE(first.headers.value(QStringLiteral("msgType")).toString(),
             QStringLiteral("payPackStatus"));
    QCOMPARE(parse(first.body).value(QStringLiteral("packId")).toString(), QStringLiteral("31"));
    QVERIFY(!parse(first.body).value(QStringLiteral("error")).toBool());
    QVERIFY(!parse(first.body).value(QStringLiteral("repeated")).toBool());
    const QVariantMap again = parse(m_service->takePayPack(pack).body);
    QVERIFY(!again.value(QStringLiteral("error")).toBool());
    QVERIFY(again.value(QStringLiteral("repeated")).toBool());
    const QVariantMap bad = parse(m_service->takePayPack(Packs::pack(32, {})).body);
    QVERIFY(bad.value(QStringLiteral("error")).toBool());
    QVERIFY(!bad.value(QStringLiteral("description")).toString().isEmpty());
}

void tst_BillingService::asksAgainAfterAPayment()
{
    const QString data = Packs::payData({{3924901, QStringLiteral("482.60")}});
    m_service->takePayPack(
        Packs::pack(33, {Packs::payment(18722, SampleNumber::ORDINARY, 48260, data)}));
    const QVariantList list = describe(18722, SampleNumber::ORDINARY);
    QCOMPARE(value(list, QStringLiteral("debt")), QStringLiteral("1017.90"));
    const QVariantList services = records(descriptor(list, QStringLiteral("services")));
    QCOMPARE(value(fieldsOf(services.first()), QStringLiteral("topay")), QStringLiteral("0.00"));
}

QTEST_GUILESS_MAIN(tst_BillingService)
#include "tst_billingservice.moc"
