#include "hostileanswers.h"

#include "billinganswers.h"

namespace {

const QString uid = QStringLiteral("UID");

QString envelope(const QString &rest)
{
    return QStringLiteral("{\"uid\":\"UID\",\"error\":false,\"result\":0,%1}").arg(rest);
}

QString described(const QString &inner)
{
    return BillingAnswers::withDescription(uid, inner);
}

QString nested(int depth)
{
    return QString(depth, QLatin1Char('[')) + QString(depth, QLatin1Char(']'));
}

} // namespace

QVector<HostileAnswers::Row> HostileAnswers::all()
{
    using namespace BillingAnswers;
    QVariantList withHugeField = individual();
    withHugeField.append(
        field(QStringLiteral("unknown"), QString(5 * 1024 * 1024, QLatin1Char('x')), QString()));
    return {
        {"empty text", QString(), false},
        {"null", QStringLiteral("null"), false},
        {"number", QStringLiteral("42"), false},
        {"array at top level", QStringLiteral("[{\"uid\":\"UID\"}]"), false},
        {"nothing but the uid", QStringLiteral("{\"uid\":\"UID\"}"), true},
        {"cut off", QStringLiteral("{\"uid\":\"UID\",\"error\":false,\"descr"), false},
        {"rubbish behind the object", QStringLiteral("{\"uid\":\"UID\"}{"), false},
        {"uid as number", QStringLiteral("{\"uid\":17,\"error\":false}"), false},
        {"uid as object", QStringLiteral("{\"uid\":{\"UID\":1},\"error\":false}"), false},
        {"types swapped",
         QStringLiteral("{\"uid\":\"UID\",\"error\":{},\"result\":[],\"description\":7}"), true},
        {"flags null",
         QStringLiteral("{\"uid\":\"UID\",\"error\":null,\"result\":null,\"description\":null}"),
         true},
        {"description as object", envelope(QStringLiteral("\"description\":{\"payParamList\":[]}")),
         true},
        {"description as array", envelope(QStringLiteral("\"description\":[1,2]")), true},
        {"description is an array's text", described(QStringLiteral("[1,2]")), true},
        {"payParamList as text", described(QStringLiteral("{\"payParamList\":\"services\"}")),
         true},
        {"payParamList as object",
         described(QStringLiteral("{\"payParamList\":{\"services\":[]}}")), true},
        {"payParamList of numbers",
         described(QStringLiteral("{\"payParamList\":[1,2.5,null,true,\"x\"]}")), true},
        {"services as text",
         described(
             QStringLiteral("{\"payParamList\":[{\"name\":\"services\",\"paramList\":\"x\"}]}")),
         true},
        {"services of numbers",
         described(QStringLiteral(
             "{\"payParamList\":[{\"name\":\"services\",\"paramList\":[1,[],{}]}]}")),
         true},
        {"documents as text",
         described(
             QStringLiteral("{\"payParamList\":[{\"name\":\"documents\",\"paramList\":\"x\"}]}")),
         true},
        {"amounts as rubbish",
         data(uid,
              individual({service(1, QStringLiteral("Вода"), QStringLiteral("abc"),
                                  QStringLiteral("1e400"))},
                         {})),
         true},
        {"amounts beyond 64 bits",
         data(uid,
              individual({service(1, QStringLiteral("Вода"), QString(40, QLatin1Char('9')),
                                  QString(400, QLatin1Char('9')))},
                         {})),
         true},
        {"five megabytes", data(uid, withHugeField), true},
        {"outer depth of 600", QStringLiteral("{\"uid\":\"UID\",\"x\":%1}").arg(nested(600)), true},
        {"outer depth of 100000", QStringLiteral("{\"uid\":\"UID\",\"x\":%1}").arg(nested(100000)),
         false},
        {"inner depth of 600", described(QStringLiteral("{\"payParamList\":%1}").arg(nested(600))),
         true},
        {"duplicate keys",
         QStringLiteral("{\"uid\":\"0\",\"uid\":\"UID\",\"error\":false,\"error\":false}"), true},
        {"NUL",
         described(
             QStringLiteral("{\"payParamList\":[{\"name\":\"fio\",\"value\":\"a\\u0000b\"}]}")),
         true},
        {"raw NUL", QStringLiteral("{\"uid\":\"UID\",\"x\":\"a%1b\"}").arg(QChar(0)), true},
        {"lone surrogate",
         described(QStringLiteral("{\"payParamList\":[{\"name\":\"fio\",\"value\":\"\\ud800\"}]}")),
         true},
        {"raw lone surrogate", QStringLiteral("{\"uid\":\"UID\",\"x\":\"%1\"}").arg(QChar(0xd800)),
         true},
    };
}
