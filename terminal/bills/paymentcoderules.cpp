#include "paymentcoderules.h"

#include <QDate>
#include <QVector>

#include <algorithm>

namespace {

enum class Content {
    Text,          ///< up to `size` characters
    Digits,        ///< exactly `size` digits
    UpToDigits,    ///< one to `size` digits
    Inn,           ///< 10 or 12 digits
    Kopecks,       ///< one to `size` digits, more than zero
    Correspondent, ///< 20 digits, empty or 0
    Period,        ///< MM.YYYY
    Date           ///< dd.MM.yyyy
};

struct Rule
{
    QLatin1String name;
    const char16_t *title;
    Content content;
    int size; ///< 0: no limit of its own
};

const QVector<Rule> &rules()
{
    static const QVector<Rule> list{
        {QLatin1String("Name"), u"Получатель", Content::Text, 160},
        {QLatin1String("PersonalAcc"), u"Расчётный счёт получателя", Content::Digits, 20},
        {QLatin1String("BankName"), u"Банк получателя", Content::Text, 45},
        {QLatin1String("BIC"), u"БИК", Content::Digits, 9},
        {QLatin1String("CorrespAcc"), u"Корреспондентский счёт", Content::Correspondent, 20},
        {QLatin1String("Sum"), u"Сумма, коп.", Content::Kopecks, 18},
        {QLatin1String("Purpose"), u"Назначение платежа", Content::Text, 210},
        {QLatin1String("PayeeINN"), u"ИНН получателя", Content::Inn, 12},
        {QLatin1String("PayerINN"), u"ИНН плательщика", Content::Inn, 12},
        {QLatin1String("DrawerStatus"), u"Статус составителя", Content::Digits, 2},
        {QLatin1String("KPP"), u"КПП получателя", Content::Digits, 9},
        {QLatin1String("CBC"), u"КБК", Content::Digits, 20},
        {QLatin1String("OKTMO"), u"ОКТМО", Content::UpToDigits, 11},
        {QLatin1String("PaytReason"), u"Основание платежа", Content::Text, 2},
        {QLatin1String("TaxPeriod"), u"Налоговый период", Content::Text, 10},
        {QLatin1String("DocNo"), u"Номер документа", Content::Text, 15},
        {QLatin1String("DocDate"), u"Дата документа", Content::Date, 10},
        {QLatin1String("TaxPaytKind"), u"Тип платежа", Content::Text, 2},
        {QLatin1String("LastName"), u"Фамилия", Content::Text, 0},
        {QLatin1String("FirstName"), u"Имя", Content::Text, 0},
        {QLatin1String("MiddleName"), u"Отчество", Content::Text, 0},
        {QLatin1String("PayerAddress"), u"Адрес плательщика", Content::Text, 0},
        {QLatin1String("PersonalAccount"), u"Лицевой счёт бюджетного получателя", Content::Text, 0},
        {QLatin1String("DocIdx"), u"Индекс документа", Content::Text, 0},
        {QLatin1String("PensAcc"), u"Счёт в пенсионном фонде", Content::Text, 0},
        {QLatin1String("Contract"), u"Договор", Content::Text, 0},
        {QLatin1String("PersAcc"), u"Лицевой счёт плательщика", Content::Text, 0},
        {QLatin1String("Flat"), u"Квартира", Content::Text, 0},
        {QLatin1String("Phone"), u"Телефон", Content::Text, 0},
        {QLatin1String("PayerIdType"), u"Вид документа плательщика", Content::Text, 0},
        {QLatin1String("PayerIdNum"), u"Номер документа плательщика", Content::Text, 0},
        {QLatin1String("ChildFio"), u"ФИО ребёнка", Content::Text, 0},
        {QLatin1String("BirthDate"), u"Дата рождения", Content::Date, 10},
        {QLatin1String("PaymTerm"), u"Срок платежа", Content::Text, 0},
        {QLatin1String("PaymPeriod"), u"Период", Content::Period, 7},
        {QLatin1String("Category"), u"Вид платежа", Content::Text, 0},
        {QLatin1String("ServiceName"), u"Услуга", Content::Text, 0},
        {QLatin1String("CounterId"), u"Номер счётчика", Content::Text, 0},
        {QLatin1String("CounterVal"), u"Показание счётчика", Content::Text, 0},
        {QLatin1String("QuittId"), u"Номер извещения", Content::Text, 0},
        {QLatin1String("QuittDate"), u"Дата извещения", Content::Date, 10},
        {QLatin1String("InstNum"), u"Номер учреждения", Content::Text, 0},
        {QLatin1String("ClassNum"), u"Номер группы", Content::Text, 0},
        {QLatin1String("SpecFio"), u"ФИО специалиста", Content::Text, 0},
        {QLatin1String("AddAmount"), u"Страховка, пени, штраф, коп.", Content::Kopecks, 18},
        {QLatin1String("RuleId"), u"Номер постановления", Content::Text, 0},
        {QLatin1String("ExecId"), u"Номер исполнительного производства", Content::Text, 0},
        {QLatin1String("RegType"), u"Вид платежа (услуги)", Content::Text, 0},
        {QLatin1String("UIN"), u"УИН", Content::Text, 0},
        {QLatin1String("TechCode"), u"Технический код", Content::Digits, 2},
        // Not a name of the standard: utilities put the number of the billing document here.
        {QLatin1String("BarCode"), u"Номер документа биллинга", Content::Text, 0}};
    return list;
}

const Rule *rule(const QString &name)
{
    const auto found =
        std::find_if(rules().cbegin(), rules().cend(),
                     [&name](const Rule &candidate) { return candidate.name == name; });
    return found == rules().cend() ? nullptr : &*found;
}

/// QChar::isDigit would take the digits of every script.
bool isDigits(const QString &value)
{
    return !value.isEmpty() && std::all_of(value.cbegin(), value.cend(), [](QChar c) {
        return c >= QLatin1Char('0') && c <= QLatin1Char('9');
    });
}

QString described(const Rule &rule)
{
    return QStringLiteral("%1 (%2)").arg(QString::fromUtf16(rule.title), rule.name);
}

} // namespace

QStringList PaymentCodeRules::mandatoryNames()
{
    return {QStringLiteral("Name"), QStringLiteral("PersonalAcc"), QStringLiteral("BankName"),
            QStringLiteral("BIC"), QStringLiteral("CorrespAcc")};
}

QStringList PaymentCodeRules::knownNames()
{
    QStringList names;
    for (const Rule &known : rules())
        names.append(known.name);
    return names;
}

QString PaymentCodeRules::title(const QString &name)
{
    const Rule *known = rule(name);
    return known ? QString::fromUtf16(known->title) : QString();
}

std::optional<QString> PaymentCodeRules::problem(const QString &name, const QString &value)
{
    const Rule *known = rule(name);
    if (!known)
        return std::nullopt;
    const QString size = QString::number(known->size);
    const QString actual = QString::number(value.size());
    switch (known->content) {
    case Content::Text:
        if (known->size > 0 && value.size() > known->size)
            return QStringLiteral("%1: %2 знаков, а помещается %3. Сократите.")
                .arg(described(*known), actual, size);
        break;
    case Content::Digits:
        if (!isDigits(value) || value.size() != known->size)
            return QStringLiteral("%1: нужно ровно %2 цифр, а записано «%3».")
                .arg(described(*known), size, value);
        break;
    case Content::UpToDigits:
        if (!isDigits(value) || value.size() > known->size)
            return QStringLiteral("%1: нужны цифры, не больше %2, а записано «%3».")
                .arg(described(*known), size, value);
        break;
    case Content::Inn:
        if (!isDigits(value) || (value.size() != 10 && value.size() != 12))
            return QStringLiteral("%1: нужно 10 или 12 цифр, а записано «%2».")
                .arg(described(*known), value);
        break;
    case Content::Kopecks:
        if (!isDigits(value) || value.size() > known->size)
            return QStringLiteral("%1: нужно целое число копеек без точки, запятой и пробелов, не "
                                  "больше %2 цифр, "
                                  "а записано «%3».")
                .arg(described(*known), size, value);
        if (value.count(QLatin1Char('0')) == value.size())
            return QStringLiteral("%1: ноль. Чтобы сумму набрал кассир, уберите её из кода.")
                .arg(described(*known));
        break;
    case Content::Correspondent:
        if (value != QLatin1String("0") && !value.isEmpty()
            && (!isDigits(value) || value.size() != known->size))
            return QStringLiteral(
                       "%1: нужно ровно %2 цифр, либо 0, когда счёта нет, а записано «%3».")
                .arg(described(*known), size, value);
        break;
    case Content::Period:
        if (!isPeriod(value))
            return QStringLiteral("%1: нужны месяц и год, например 03.2026, а записано «%2».")
                .arg(described(*known), value);
        break;
    case Content::Date:
        if (!QDate::fromString(value, QStringLiteral("dd.MM.yyyy")).isValid())
            return QStringLiteral("%1: нужна дата, например 31.03.2026, а записано «%2».")
                .arg(described(*known), value);
        break;
    }
    return std::nullopt;
}

std::optional<QString> PaymentCodeRules::nameProblem(const QString &name)
{
    const bool latin = !name.isEmpty() && std::all_of(name.cbegin(), name.cend(), [](QChar c) {
        return c.unicode() < 0x80 && (c.isLetterOrNumber() || c == QLatin1Char('_'));
    });
    if (latin)
        return std::nullopt;
    return QStringLiteral(
               "Имя поля «%1»: нужны латинские буквы и цифры. Похожие русские буквы не годятся.")
        .arg(name);
}

bool PaymentCodeRules::isPeriod(const QString &value)
{
    if (value.size() != 7 || value.at(2) != QLatin1Char('.') || !isDigits(value.left(2))
        || !isDigits(value.mid(3)))
        return false;
    const int month = value.leftRef(2).toInt();
    return month >= 1 && month <= 12 && value.at(3) != QLatin1Char('0');
}
