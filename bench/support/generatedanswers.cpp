#include "generatedanswers.h"

#include <basixcore/fixnumber.h>

#include <QJsonDocument>
#include <QMap>
#include <QPair>
#include <QVariantMap>

namespace {

constexpr int servicesOfADocument = 5;
constexpr int servicesPerMeter = 4;

struct FieldText
{
    const char *name;
    const char *title;
    bool editable = false;
};

const FieldText serviceId{"id", "Код услуги"};
const FieldText serviceName{"name", "Услуга"};
const FieldText serviceCharge{"charge", "Начислено, руб."};
const FieldText serviceTopay{"topay", "К оплате с учётом долга"};
const FieldText serviceDistributed{"distributed", "Оплачивается", true};

QVariantMap field(const FieldText &text, const QString &value)
{
    const bool money = text.editable;
    return {
        {QStringLiteral("name"), QString::fromLatin1(text.name)},
        {QStringLiteral("value"), value},
        {QStringLiteral("title"), QString::fromUtf8(text.title)},
        {QStringLiteral("isEditable"), text.editable},
        {QStringLiteral("isVisible"), true},
        {QStringLiteral("type"), QStringLiteral("string")},
        {QStringLiteral("mask"), money ? QStringLiteral("Cccccccccccccccc") : QString()},
        {QStringLiteral("regexp"), money ? QStringLiteral("^\\d+(?:[\\.,]\\d+)?$") : QString()}};
}

QVariantMap record(const char *kind, const QVariantList &fields)
{
    return {{QStringLiteral("name"), QString::fromLatin1(kind)},
            {QStringLiteral("paramList"), fields}};
}

QString money(qint64 kopecks)
{
    return basix::FixNumber(100, kopecks).toString();
}

QString nameOfService(int number)
{
    static const QStringList names{
        QStringLiteral("Холодное водоснабжение"),
        QStringLiteral("Водоотведение"),
        QStringLiteral("Горячее водоснабжение (компонент на теплоноситель)"),
        QStringLiteral("Вода на общедомовые нужды"),
        QStringLiteral("Полив приусадебного участка «Ручей» & Ко"),
        QStringLiteral("Пени"),
        QStringLiteral("Плата за негативное воздействие на работу централизованной системы")};
    return QStringLiteral("%1, ввод № %2")
        .arg(names.at(number % names.size()), QString::number(number));
}

/// Spread without a random generator: the same for the same line in every run.
qint64 chargeOfService(int number)
{
    return 1 + (static_cast<qint64>(number) * 7919) % 512347;
}

QVariantMap service(int number)
{
    const qint64 charge = chargeOfService(number);
    const qint64 topay = number % 11 == 3 ? -charge / 2 : charge + charge % 1000;
    return record("service",
                  {field(serviceId, QString::number(1000 + number)),
                   field(serviceName, nameOfService(number)), field(serviceCharge, money(charge)),
                   field(serviceTopay, money(topay)),
                   field(serviceDistributed, money(number % 3 == 0 ? charge : 0))});
}

QVariantList services(int first, int count)
{
    QVariantList list;
    list.reserve(count);
    for (int number = first; number < first + count; ++number)
        list.append(service(number));
    return list;
}

QVariantList meters(int count)
{
    QVariantList list;
    for (int number = 0; number < count; ++number) {
        const QString reading = QString::number(120 + number);
        list.append(
            record("counter",
                   {field({"id", "Код счётчика"}, QString::number(number)),
                    field({"name", "Счётчик"}, QStringLiteral("ХВС № %1").arg(70210 + number)),
                    field({"lastvalue", "Предыдущее показание"}, reading),
                    field({"currvalue", "Текущее показание", true}, reading)}));
    }
    return list;
}

QVariantList header()
{
    return {field({"fio", "Плательщик"},
                  QStringLiteral("Общество с ограниченной ответственностью «Заречная слобода»")),
            field({"address", "Адрес"},
                  QStringLiteral("г. Ривенхолд, ул. Речная, д. 5, корп. 2, кв. 17")),
            field({"inn", "ИНН"}, QStringLiteral("7701000001")),
            field({"charge", "Начислено"}, QStringLiteral("150250.50")),
            field({"debt", "Долг"}, QStringLiteral("183020.75")),
            field({"remainder", "Остаток", true}, QStringLiteral("120.00")),
            field({"tax", "в т. ч. НДС"}, QStringLiteral("30503.46"))};
}

QVariantMap list(const char *name, const char *title, const QVariantList &records)
{
    QVariantMap map = field({name, title}, QString());
    map.remove(QStringLiteral("value"));
    map.insert(QStringLiteral("paramList"), records);
    return map;
}

QVariantMap document(int number, int firstService, int serviceCount)
{
    const qint64 charge = chargeOfService(number) * serviceCount;
    return record(
        "document",
        {field({"id", "ID документа"}, QString::number(500000 + number)),
         field({"num", "Документ"}, QStringLiteral("ВК-%1/2026").arg(number, 6, 10, QChar(u'0'))),
         field({"charge", "Начислено"}, money(charge)), field({"topay", "К оплате"}, money(charge)),
         field({"distributed", "Оплачивается", true}, money(0)),
         list("services", "Услуги", services(firstService, serviceCount))});
}

QString jsonText(const QVariantMap &map)
{
    return QString::fromUtf8(QJsonDocument::fromVariant(map).toJson(QJsonDocument::Compact));
}

QString descriptionText(const QVariantList &fields)
{
    return jsonText({{QStringLiteral("isError"), false},
                     {QStringLiteral("statusDescription"), QString()},
                     {QStringLiteral("payParamList"), fields}});
}

QVariantList fieldsOf(const QString &descriptionText)
{
    return QJsonDocument::fromJson(descriptionText.toUtf8())
        .toVariant()
        .toMap()
        .value(QStringLiteral("payParamList"))
        .toList();
}

using Key = QPair<int, int>;

QVariantList documentsOf(int documents, int serviceCount)
{
    QVariantList records;
    records.reserve(documents);
    for (int number = 0; number < documents; ++number)
        records.append(document(number, number * serviceCount, serviceCount));
    QVariantList result = header();
    result.append(list("documents", "Документы", records));
    return result;
}

QVariantList described(GeneratedAnswers::Form form, int lines)
{
    QVariantList result = header();
    switch (form) {
    case GeneratedAnswers::Form::Personal:
        result.append(list("services", "Услуги", services(0, lines)));
        result.append(list("counters", "Счётчики", meters(lines / servicesPerMeter)));
        break;
    case GeneratedAnswers::Form::Contract:
        result = documentsOf(qMax(1, lines / servicesOfADocument), servicesOfADocument);
        break;
    case GeneratedAnswers::Form::OneDocument:
        result.append(list("services", "Услуги", services(0, lines)));
        break;
    }
    return result;
}

} // namespace

QString GeneratedAnswers::uid()
{
    return QStringLiteral("7300000000000000123");
}

QVariantList GeneratedAnswers::contract(int documents, int serviceCount)
{
    static QMap<Key, QVariantList> made;
    QVariantList &fields = made[{documents, serviceCount}];
    if (fields.isEmpty())
        fields = fieldsOf(descriptionText(documentsOf(documents, serviceCount)));
    return fields;
}

const QString &GeneratedAnswers::innerText(Form form, int lines)
{
    static QMap<Key, QString> made;
    QString &text = made[{static_cast<int>(form), lines}];
    if (text.isEmpty())
        text = descriptionText(described(form, lines));
    return text;
}

QVariantList GeneratedAnswers::description(Form form, int lines)
{
    return fieldsOf(innerText(form, lines));
}

const QString &GeneratedAnswers::message(Form form, int lines)
{
    static QMap<Key, QString> made;
    QString &text = made[{static_cast<int>(form), lines}];
    if (text.isEmpty())
        text = jsonText({{QStringLiteral("uid"), uid()},
                         {QStringLiteral("error"), false},
                         {QStringLiteral("result"), 0},
                         {QStringLiteral("resultDescription"), QString()},
                         {QStringLiteral("description"), innerText(form, lines)}});
    return text;
}
