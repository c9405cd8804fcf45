#include "billinganswers.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace BillingAnswers {

QVariantMap field(const QString &name, const QVariant &value, const QString &title, bool editable)
{
    return {{QStringLiteral("name"), name},
            {QStringLiteral("value"), value},
            {QStringLiteral("title"), title},
            {QStringLiteral("isEditable"), editable}};
}

QVariantMap record(const QString &kind, const QVariantList &fields)
{
    return {{QStringLiteral("name"), kind}, {QStringLiteral("paramList"), fields}};
}

QVariantMap service(qint64 id, const QString &name, const QString &charge, const QString &topay,
                    const QString &distributed)
{
    return record(
        QStringLiteral("service"),
        {field(QStringLiteral("id"), QString::number(id), QStringLiteral("Код")),
         field(QStringLiteral("name"), name, QStringLiteral("Услуга")),
         field(QStringLiteral("charge"), charge, QStringLiteral("Начислено")),
         field(QStringLiteral("topay"), topay, QStringLiteral("Долг")),
         field(QStringLiteral("distributed"), distributed, QStringLiteral("К оплате"), true)});
}

QVariantMap counter(qint64 id, const QString &name, qint64 lastValue, qint64 currValue)
{
    return record(QStringLiteral("counter"),
                  {field(QStringLiteral("id"), QString::number(id), QStringLiteral("Код")),
                   field(QStringLiteral("name"), name, QStringLiteral("Счетчик")),
                   field(QStringLiteral("lastvalue"), QString::number(lastValue),
                         QStringLiteral("Предыдущее")),
                   field(QStringLiteral("currvalue"), QString::number(currValue),
                         QStringLiteral("Текущее"), true)});
}

QVariantMap document(qint64 id, const QString &number, const QVariantList &services)
{
    return record(QStringLiteral("document"),
                  {field(QStringLiteral("id"), QString::number(id), QStringLiteral("Код")),
                   field(QStringLiteral("num"), number, QStringLiteral("Документ")),
                   record(QStringLiteral("services"), services)});
}

QVariantList header()
{
    return {
        field(QStringLiteral("fio"), QStringLiteral("Иванов Пётр"), QStringLiteral("ФИО")),
        field(QStringLiteral("address"), QStringLiteral("ул. Речная, 5"), QStringLiteral("Адрес")),
        field(QStringLiteral("charge"), QStringLiteral("150.50"), QStringLiteral("Начислено")),
        field(QStringLiteral("debt"), QStringLiteral("150.50"), QStringLiteral("Долг")),
        field(QStringLiteral("remainder"), QStringLiteral("0.00"), QStringLiteral("Остаток"),
              true)};
}

QVariantList individual()
{
    return individual(
        {service(1, QStringLiteral("Вода"), QStringLiteral("100.00"), QStringLiteral("100.00")),
         service(2, QStringLiteral("Стоки"), QStringLiteral("50.50"), QStringLiteral("50.50"))},
        {counter(11, QStringLiteral("ХВС 0011"), 120, 120),
         counter(12, QStringLiteral("ГВС 0012"), 80, 80)});
}

QVariantList individual(const QVariantList &services, const QVariantList &counters)
{
    QVariantList list = header();
    list.append(record(QStringLiteral("services"), services));
    list.append(record(QStringLiteral("counters"), counters));
    return list;
}

QVariantList legalSingle()
{
    return legalSingle(
        {service(1, QStringLiteral("Вода"), QStringLiteral("100.00"), QStringLiteral("100.00")),
         service(2, QStringLiteral("Стоки"), QStringLiteral("50.50"), QStringLiteral("50.50"))});
}

QVariantList legalSingle(const QVariantList &services)
{
    QVariantList list = header();
    list.append(record(QStringLiteral("services"), services));
    return list;
}

QVariantList legal()
{
    return legal({document(1, QStringLiteral("ВК-1"),
                           {service(1, QStringLiteral("Вода"), QStringLiteral("100.00"),
                                    QStringLiteral("100.00")),
                            service(2, QStringLiteral("Стоки"), QStringLiteral("50.50"),
                                    QStringLiteral("50.50"))}),
                  document(2, QStringLiteral("ВК-2"),
                           {service(3, QStringLiteral("Ливнёвка"), QStringLiteral("20.00"),
                                    QStringLiteral("20.00"))})});
}

QVariantList legal(const QVariantList &documents)
{
    QVariantList list = header();
    list.append(record(QStringLiteral("documents"), documents));
    return list;
}

QVariantMap headers()
{
    return {{QStringLiteral("msgType"), QStringLiteral("checkPayStatus")}};
}

QString data(const QString &uid, const QVariantList &payParamList)
{
    return withDescription(
        uid,
        text({{QStringLiteral("isError"), false}, {QStringLiteral("payParamList"), payParamList}}));
}

QString withDescription(const QString &uid, const QString &description)
{
    return text({{QStringLiteral("uid"), uid},
                 {QStringLiteral("error"), false},
                 {QStringLiteral("result"), 0},
                 {QStringLiteral("description"), description}});
}

QString outerError(const QString &uid, const QString &description)
{
    return text({{QStringLiteral("uid"), uid},
                 {QStringLiteral("error"), true},
                 {QStringLiteral("description"), description}});
}

QString badResult(const QString &uid, int result, const QString &resultDescription)
{
    return text({{QStringLiteral("uid"), uid},
                 {QStringLiteral("error"), false},
                 {QStringLiteral("result"), result},
                 {QStringLiteral("resultDescription"), resultDescription}});
}

QString innerError(const QString &uid, const QString &statusDescription)
{
    return withDescription(uid,
                           text({{QStringLiteral("isError"), true},
                                 {QStringLiteral("statusDescription"), statusDescription}}));
}

QString text(const QVariantMap &object)
{
    return QString::fromUtf8(
        QJsonDocument(QJsonObject::fromVariantMap(object)).toJson(QJsonDocument::Compact));
}

} // namespace BillingAnswers
