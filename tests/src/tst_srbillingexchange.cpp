#include "messagelog.h"
#include "srbillingexchange.h"

#include <QJsonDocument>
#include <QTest>

Q_DECLARE_METATYPE(SrAnswer::Outcome)

class TestSrBillingExchange : public QObject
{
    Q_OBJECT

private slots:
    void composesRequest();
    void composesRequestWithoutParameters();
    void composedRequestsStayPending();
    void accountData();
    void answer_data();
    void answer();
    void malformedTextIsLogged_data();
    void malformedTextIsLogged();
    void malformedTextLeavesTheRequestPending();
    void answerIsTakenOnce();
    void lateAnswerOfAnOlderRequest();
    void answerAfterClear();
    void uidAsNumber();
    void hostileText_data();
    void hostileText();
};

using Outcome = SrAnswer::Outcome;

static SrBillingExchange::Sender box()
{
    return {17, 643, 18722};
}

static QVariantMap replyHeaders()
{
    return {{QStringLiteral("msgType"), QStringLiteral("checkPayStatus")}};
}

static QString json(const QVariantMap &map)
{
    return QString::fromUtf8(QJsonDocument::fromVariant(map).toJson(QJsonDocument::Compact));
}

/// An answer to `uid` with `description`, and `more` keys beside it.
static QString envelope(const QString &uid, const QVariant &description, QVariantMap more = {})
{
    more.insert(QStringLiteral("uid"), uid);
    more.insert(QStringLiteral("description"), description);
    return json(more);
}

static QVariantMap inner()
{
    return {{QStringLiteral("payParamList"),
             QVariantList{QVariantMap{{QStringLiteral("name"), QStringLiteral("fio")},
                                      {QStringLiteral("value"), QStringLiteral("Иванова")}}}},
            {QStringLiteral("phone"), QStringLiteral("7912")}};
}

void TestSrBillingExchange::composesRequest()
{
    SrBillingExchange exchange;
    const SRRequest request =
        exchange.compose(box(),
                         {{QStringLiteral("account"), QStringLiteral("0012345")},
                          {QStringLiteral("period"), QStringLiteral("03-2024")}},
                         basix::FixNumber(100, 150050));
    QVERIFY(request.isValid());
    QCOMPARE(request.type(), SRRequest::AccountData);

    const QVariantMap params{
        {QStringLiteral("payParamList"),
         QVariantList{QVariantMap{{QStringLiteral("name"), QStringLiteral("account")},
                                  {QStringLiteral("value"), QStringLiteral("0012345")}},
                      QVariantMap{{QStringLiteral("name"), QStringLiteral("period")},
                                  {QStringLiteral("value"), QStringLiteral("03-2024")}}}}};
    const QByteArray checkdata = R"({"payParamList":[{"name":"account","value":"0012345"},)"
                                 R"({"name":"period","value":"03-2024"}]})";
    QCOMPARE(request.toMap(),
             (QVariantMap{{QStringLiteral("checkdata"), checkdata},
                          {QStringLiteral("params"), params},
                          {QStringLiteral("code"), QStringLiteral("check")},
                          {QStringLiteral("uid"), request.uid()},
                          {QStringLiteral("currencyId"), 643},
                          {QStringLiteral("providerId"), qint64(18722)},
                          {QStringLiteral("summ"), 1500.5}}));
    QCOMPARE(request.toMap().value(QStringLiteral("checkdata")).userType(),
             int(QMetaType::QByteArray));
}

void TestSrBillingExchange::composesRequestWithoutParameters()
{
    SrBillingExchange exchange;
    const SRRequest request = exchange.compose(box(), {});
    QCOMPARE(request.data().value(QStringLiteral("checkdata")),
             QVariant(QByteArray(R"({"payParamList":[]})")));
    QVERIFY(!request.toMap().contains(QStringLiteral("summ")));
}

void TestSrBillingExchange::composedRequestsStayPending()
{
    SrBillingExchange exchange;
    const SRRequest first = exchange.compose(box(), {});
    const SRRequest second = exchange.compose(box(), {});
    QVERIFY(first.uid() != second.uid());
    QCOMPARE(exchange.pending(),
             (QHash<QString, SRRequest>{{first.uid(), first}, {second.uid(), second}}));
}

void TestSrBillingExchange::accountData()
{
    SrBillingExchange exchange;
    const QString uid = exchange.compose(box(), {}).uid();
    const SrAnswer answer =
        exchange.read(replyHeaders(),
                      envelope(uid, json(inner()),
                               {{QStringLiteral("error"), false}, {QStringLiteral("result"), 0}}));
    QCOMPARE(answer.outcome, Outcome::Data);
    QVERIFY(answer.matched);
    QCOMPARE(answer.data, inner());
    QCOMPARE(answer.payParamList, inner().value(QStringLiteral("payParamList")).toList());
    QVERIFY(exchange.pending().isEmpty());
}

void TestSrBillingExchange::answer_data()
{
    QTest::addColumn<QVariantMap>("headers");
    QTest::addColumn<QVariantMap>("body"); // "uid" is added unless it is there
    QTest::addColumn<Outcome>("outcome");
    QTest::addColumn<bool>("matched");
    QTest::addColumn<QString>("failure");
    const QString msgType = QStringLiteral("msgType");
    const QString uid = QStringLiteral("uid");
    const QString error = QStringLiteral("error");
    const QString result = QStringLiteral("result");
    const QString description = QStringLiteral("description");
    const QString resultDescription = QStringLiteral("resultDescription");
    const QString isError = QStringLiteral("isError");
    const QString statusDescription = QStringLiteral("statusDescription");
    const QString text = QStringLiteral("Счёт не найден");
    const QString later = QStringLiteral("не это");
    const QString refused = json({{isError, true}, {statusDescription, text}});
    const QString good = json(inner());

    QTest::newRow("without msgType") << QVariantMap() << QVariantMap{{description, good}}
                                     << Outcome::NotForUs << false << QString();
    QTest::newRow("other msgType")
        << QVariantMap{{msgType, QStringLiteral("payStatus")}} << QVariantMap{{description, good}}
        << Outcome::NotForUs << false << QString();
    QTest::newRow("unknown uid") << replyHeaders()
                                 << QVariantMap{{uid, QStringLiteral("1")}, {error, true}}
                                 << Outcome::NotForUs << false << QString();
    QTest::newRow("empty uid") << replyHeaders()
                               << QVariantMap{{uid, QString()}, {description, good}}
                               << Outcome::NotForUs << false << QString();
    QTest::newRow("error") << replyHeaders() << QVariantMap{{error, true}, {description, text}}
                           << Outcome::Failure << true << text;
    QTest::newRow("error as text")
        << replyHeaders() << QVariantMap{{error, QStringLiteral("true")}, {description, text}}
        << Outcome::Failure << true << text;
    QTest::newRow("error as number")
        << replyHeaders() << QVariantMap{{error, 1}, {description, text}} << Outcome::Failure
        << true << text;
    QTest::newRow("error false as text")
        << replyHeaders() << QVariantMap{{error, QStringLiteral("false")}, {description, good}}
        << Outcome::Data << true << QString();
    QTest::newRow("error before result")
        << replyHeaders()
        << QVariantMap{{error, true}, {description, text}, {result, 5}, {resultDescription, later}}
        << Outcome::Failure << true << text;
    QTest::newRow("result") << replyHeaders()
                            << QVariantMap{{result, 5},
                                           {resultDescription, text},
                                           {description, good}}
                            << Outcome::Failure << true << text;
    QTest::newRow("negative result")
        << replyHeaders() << QVariantMap{{result, -1}, {resultDescription, text}}
        << Outcome::Failure << true << text;
    QTest::newRow("result as text")
        << replyHeaders() << QVariantMap{{result, QStringLiteral("12")}, {resultDescription, text}}
        << Outcome::Failure << true << text;
    QTest::newRow("result below one as text")
        << replyHeaders() << QVariantMap{{result, QStringLiteral("0.5")}, {resultDescription, text}}
        << Outcome::Failure << true << text;
    QTest::newRow("result beyond 32 bits")
        << replyHeaders() << QVariantMap{{result, qint64(4294967296)}, {resultDescription, text}}
        << Outcome::Failure << true << text;
    QTest::newRow("result beyond 64 bits")
        << replyHeaders() << QVariantMap{{result, 1e30}, {resultDescription, text}}
        << Outcome::Failure << true << text;
    QTest::newRow("result 0 as text")
        << replyHeaders() << QVariantMap{{result, QStringLiteral("0")}, {description, good}}
        << Outcome::Data << true << QString();
    QTest::newRow("result before isError")
        << replyHeaders()
        << QVariantMap{{result, 1}, {resultDescription, text}, {description, refused}}
        << Outcome::Failure << true << text;
    QTest::newRow("isError") << replyHeaders() << QVariantMap{{description, refused}}
                             << Outcome::Failure << true << text;
    QTest::newRow("isError without text")
        << replyHeaders() << QVariantMap{{description, json({{isError, true}})}} << Outcome::Failure
        << true << QString();
    QTest::newRow("isError false")
        << replyHeaders() << QVariantMap{{description, json({{isError, false}})}} << Outcome::Data
        << true << QString();
    QTest::newRow("description without status keys")
        << replyHeaders() << QVariantMap{{description, good}} << Outcome::Data << true << QString();
    QTest::newRow("description is an empty object")
        << replyHeaders() << QVariantMap{{description, QStringLiteral("{}")}} << Outcome::Data
        << true << QString();
    QTest::newRow("description is an array")
        << replyHeaders() << QVariantMap{{description, QStringLiteral("[1]")}} << Outcome::Data
        << true << QString();
    QTest::newRow("description missing")
        << replyHeaders() << QVariantMap() << Outcome::Malformed << true << QString();
    QTest::newRow("description not JSON") << replyHeaders() << QVariantMap{{description, text}}
                                          << Outcome::Malformed << true << QString();
    QTest::newRow("description as object") << replyHeaders() << QVariantMap{{description, inner()}}
                                           << Outcome::Malformed << true << QString();
    QTest::newRow("description as number") << replyHeaders() << QVariantMap{{description, 5}}
                                           << Outcome::Malformed << true << QString();
    QTest::newRow("payParamList not a list")
        << replyHeaders()
        << QVariantMap{{description, QStringLiteral(R"({"payParamList":{"name":"fio"}})")}}
        << Outcome::Data << true << QString();
}

void TestSrBillingExchange::answer()
{
    QFETCH(QVariantMap, headers);
    QFETCH(QVariantMap, body);
    QFETCH(bool, matched);
    SrBillingExchange exchange;
    const QString uid = exchange.compose(box(), {}).uid();
    if (!body.contains(QStringLiteral("uid")))
        body.insert(QStringLiteral("uid"), uid);

    MessageLog log;
    const SrAnswer answer = exchange.read(headers, json(body));
    QTEST(answer.outcome, "outcome");
    QCOMPARE(answer.matched, matched);
    QTEST(answer.failureText, "failure");
    QCOMPARE(exchange.pending().isEmpty(), matched);
    QCOMPARE(log.messages().size(), answer.outcome == Outcome::Malformed ? 1 : 0);
    if (answer.outcome != Outcome::Data)
        QVERIFY(answer.data.isEmpty());
    if (answer.data != inner())
        QVERIFY(answer.payParamList.isEmpty());
}

void TestSrBillingExchange::malformedTextIsLogged_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << QString();
    QTest::newRow("cut off") << QStringLiteral("{\"uid\":\"1\"");
    QTest::newRow("no JSON") << QStringLiteral("Внутренняя ошибка");
    QTest::newRow("text beside the object") << QStringLiteral("{} tail");
    QTest::newRow("bare text") << QStringLiteral("\"text\"");
}

void TestSrBillingExchange::malformedTextIsLogged()
{
    QFETCH(QString, text);
    QJsonParseError error;
    QJsonDocument::fromJson(text.toUtf8(), &error);

    SrBillingExchange exchange;
    MessageLog log;
    const SrAnswer answer = exchange.read(replyHeaders(), text);
    QCOMPARE(answer.outcome, Outcome::Malformed);
    QVERIFY(!answer.matched);
    QCOMPARE(log.messages().size(), 1);
    const MessageLog::Message line = log.messages().constFirst();
    QCOMPARE(line.type, QtWarningMsg);
    QVERIFY(line.text.contains(error.errorString()));
    if (text == QStringLiteral("Внутренняя ошибка"))
        QVERIFY(line.text.contains(text));
}

void TestSrBillingExchange::malformedTextLeavesTheRequestPending()
{
    SrBillingExchange exchange;
    const QString uid = exchange.compose(box(), {}).uid();
    exchange.read(replyHeaders(), QStringLiteral("{\"uid\":\"%1\"").arg(uid));
    QVERIFY(exchange.pending().contains(uid));
    QCOMPARE(exchange.read(replyHeaders(), envelope(uid, json(inner()))).outcome, Outcome::Data);
}

void TestSrBillingExchange::answerIsTakenOnce()
{
    SrBillingExchange exchange;
    const QString text = envelope(exchange.compose(box(), {}).uid(), json(inner()));
    QCOMPARE(exchange.read(replyHeaders(), text).outcome, Outcome::Data);
    QCOMPARE(exchange.read(replyHeaders(), text).outcome, Outcome::NotForUs);
}

void TestSrBillingExchange::lateAnswerOfAnOlderRequest()
{
    SrBillingExchange exchange;
    const QString older = exchange.compose(box(), {}).uid();
    const QString newer = exchange.compose(box(), {}).uid();
    QCOMPARE(exchange.read(replyHeaders(), envelope(newer, json(inner()))).outcome, Outcome::Data);
    QCOMPARE(exchange.read(replyHeaders(), envelope(older, json(inner()))).outcome, Outcome::Data);
}

void TestSrBillingExchange::answerAfterClear()
{
    SrBillingExchange exchange;
    const QString uid = exchange.compose(box(), {}).uid();
    exchange.clear();
    QCOMPARE(exchange.read(replyHeaders(), envelope(uid, json(inner()))).outcome,
             Outcome::NotForUs);
}

void TestSrBillingExchange::uidAsNumber()
{
    SrBillingExchange exchange;
    const QString uid = exchange.compose(box(), {}).uid();
    const QString text = QStringLiteral(R"({"uid":%1,"description":"{}"})").arg(uid);
    QCOMPARE(exchange.read(replyHeaders(), text).outcome, Outcome::Data);
}

void TestSrBillingExchange::hostileText_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("array") << QStringLiteral("[{\"uid\":\"1\"}]");
    QTest::newRow("empty array") << QStringLiteral("[]");
    QTest::newRow("empty object") << QStringLiteral("{}");
    QTest::newRow("null uid") << QStringLiteral("{\"uid\":null}");
    QTest::newRow("uid as object") << QStringLiteral("{\"uid\":{\"a\":[1]}}");
    QTest::newRow("deep nesting") << QString(100000, QLatin1Char('['));
    QTest::newRow("deep but closed")
        << QString(5000, QLatin1Char('[')) + QString(5000, QLatin1Char(']'));
    QTest::newRow("zero character") << QStringLiteral("{\"uid\":\"1\"}") + QChar(0);
    QTest::newRow("lone surrogate")
        << QStringLiteral("{\"uid\":\"") + QChar(0xD800) + QStringLiteral("\"}");
    QTest::newRow("byte order mark") << QChar(0xFEFF) + QStringLiteral("{}");
    QTest::newRow("huge text") << QStringLiteral("{\"uid\":\"1\",\"description\":\"%1\"}")
                                      .arg(QString(4000000, QLatin1Char('x')));
}

void TestSrBillingExchange::hostileText()
{
    QFETCH(QString, text);
    SrBillingExchange exchange;
    exchange.compose(box(), {});
    const SrAnswer answer = exchange.read(replyHeaders(), text);
    QVERIFY(answer.outcome == Outcome::NotForUs || answer.outcome == Outcome::Malformed);
    QVERIFY(!answer.matched);
    QCOMPARE(exchange.pending().size(), 1);
}

QTEST_GUILESS_MAIN(TestSrBillingExchange)
#include "tst_srbillingexchange.moc"
