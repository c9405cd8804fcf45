#include <billing/samplecatalogue.h>

namespace {

constexpr qint64 PENALTY_ID = 3924990;

using Lines = QVector<BillingServiceLine>;

qint64 chargeOf(const Lines &lines)
{
    qint64 sum = 0;
    for (const BillingServiceLine &line : lines)
        sum += line.charge;
    return sum;
}

qint64 dueOf(const Lines &lines)
{
    qint64 sum = 0;
    for (const BillingServiceLine &line : lines)
        sum += line.topay;
    return sum;
}

Lines usualLines()
{
    return {{3924901, QStringLiteral("Холодное водоснабжение"), 48260, 48260},
            {3924902, QStringLiteral("Водоотведение"), 61190, 61190},
            {3924903, QStringLiteral("Холодная вода для горячего водоснабжения"), 35600, 35600},
            {3924904, QStringLiteral("Холодная вода на содержание общего имущества"), 5000, 5000}};
}

QVector<BillingMeter> usualMeters(int seed)
{
    return {
        {810000 + seed * 10 + 1, QStringLiteral("ХВС кухня № %1").arg(18234500 + seed), 214 + seed},
        {810000 + seed * 10 + 2, QStringLiteral("ХВС санузел № %1").arg(18234600 + seed),
         387 + seed}};
}

BillingAccount person(const QString &number, const QString &fio, const QString &flat,
                      const Lines &lines, const QVector<BillingMeter> &meters)
{
    BillingAccount account;
    account.number = number;
    account.fio = fio;
    account.address = QStringLiteral("г. Приреченск, ул. Набережная, д. 12, кв. %1").arg(flat);
    account.services = lines;
    account.meters = meters;
    account.charge = chargeOf(lines);
    account.debt = dueOf(lines);
    return account;
}

BillingAccount firm(const QString &number, const QString &name, const QString &inn,
                    const QVector<BillingDocument> &documents)
{
    BillingAccount account;
    account.payer = SampleAccount::Payer::Legal;
    account.number = number;
    account.fio = name;
    account.inn = inn;
    account.address =
        QStringLiteral("г. Приреченск, Промышленный проезд, д. %1").arg(number.rightRef(2).toInt());
    account.documents = documents;
    for (const BillingDocument &document : documents) {
        account.charge += document.charge;
        account.debt += document.topay;
    }
    // VAT of 22 % stands inside the price.
    account.tax = account.debt > 0 ? (account.debt * 22 * 2 + 122) / (122 * 2) : 0;
    return account;
}

BillingDocument documentOf(qint64 id, const QString &number, const Lines &lines)
{
    BillingDocument document;
    document.documentId = id;
    document.number = number;
    document.services = lines;
    document.charge = chargeOf(lines);
    document.topay = dueOf(lines);
    return document;
}

Lines firmLines(qint64 water, qint64 sewage, bool paid = false)
{
    return {
        {3924911, QStringLiteral("Холодное водоснабжение по договору"), water, paid ? 0 : water},
        {3924912, QStringLiteral("Приём сточных вод по договору"), sewage, paid ? 0 : sewage}};
}

Lines manyLines()
{
    Lines lines;
    for (int i = 1; i <= 40; ++i) {
        const qint64 charge = 1000 + (i * 7919) % 90000;
        lines.append(
            {3925000 + i, QStringLiteral("Водоснабжение, точка учёта %1").arg(i), charge, charge});
    }
    return lines;
}

QVector<BillingMeter> manyMeters()
{
    QVector<BillingMeter> meters;
    for (int i = 1; i <= 8; ++i)
        meters.append({820000 + i, QStringLiteral("Прибор учёта № %1").arg(77120 + i), 100 * i});
    return meters;
}

QVector<BillingDocument> severalDocuments()
{
    return {documentOf(51021, QStringLiteral("2026/0201"), firmLines(1250000, 1480050)),
            documentOf(51022, QStringLiteral("2026/0202"), firmLines(990000, 870000, true)),
            documentOf(51023, QStringLiteral("2026/0203"), firmLines(1310020, 1502080)),
            documentOf(51024, QStringLiteral("2026/0204"), firmLines(760000, 640000, true)),
            documentOf(51025, QStringLiteral("2026/0205"), firmLines(1, 999))};
}

QVector<BillingDocument> manyDocuments()
{
    QVector<BillingDocument> documents;
    for (int i = 1; i <= 300; ++i) {
        const bool paid = i % 4 == 0;
        documents.append(
            documentOf(53000 + i, QStringLiteral("2026/%1").arg(3000 + i),
                       firmLines(10000 + (i * 7907) % 500000, 20000 + (i * 6007) % 300000, paid)));
    }
    return documents;
}

QVector<BillingAccount> people()
{
    using namespace SampleNumber;
    QVector<BillingAccount> result;
    result.append(person(ORDINARY, QStringLiteral("Кравцова Мария Петровна"), QStringLiteral("34"),
                         usualLines(), usualMeters(1)));

    Lines withPenalty = usualLines();
    withPenalty.append({PENALTY_ID, QStringLiteral("Пени за просрочку платежа"), 1234, 1234});
    result.append(person(PENALTY, QStringLiteral("Соловьёв Пётр Андреевич"), QStringLiteral("35"),
                         withPenalty, usualMeters(2)));

    Lines inDebt = usualLines();
    for (BillingServiceLine &line : inDebt)
        line.topay = line.charge * 6;
    result.append(person(DEBT, QStringLiteral("Журавлёва Ольга Николаевна"), QStringLiteral("36"),
                         inDebt, usualMeters(3)));

    Lines overpaid = usualLines();
    for (BillingServiceLine &line : overpaid)
        line.topay = -line.charge / 2;
    result.append(person(OVERPAID, QStringLiteral("Берёзкин Илья Сергеевич"), QStringLiteral("37"),
                         overpaid, usualMeters(4)));

    result.append(person(ADVANCE, QStringLiteral("Мельникова Анна Викторовна"),
                         QStringLiteral("38"), usualLines(), usualMeters(5)));
    result.last().remainder = 25000;
    result.append(person(NEGATIVE_REMAINDER, QStringLiteral("Дроздов Егор Максимович"),
                         QStringLiteral("39"), usualLines(), usualMeters(6)));
    result.last().remainder = -10000;
    result.append(person(NO_METERS, QStringLiteral("Тарасова Елена Игоревна"), QStringLiteral("40"),
                         usualLines(), {}));
    result.append(person(READ_ONLY, QStringLiteral("Зайцев Роман Павлович"), QStringLiteral("41"),
                         usualLines(), usualMeters(8)));
    result.last().distributedEditable = false;
    result.append(person(LARGE, QStringLiteral("Общежитие «Приречное»"), QStringLiteral("42"),
                         manyLines(), manyMeters()));
    return result;
}

QVector<BillingAccount> firms()
{
    using namespace SampleNumber;
    QVector<BillingAccount> result;
    result.append(
        firm(LEGAL_ONE_DOCUMENT, QStringLiteral("ООО «Приреченский хлебозавод»"),
             QStringLiteral("0012005010"),
             {documentOf(51011, LEGAL_ONE_DOCUMENT_NUMBER, firmLines(1845000, 2110050))}));
    result.append(firm(LEGAL_SEVERAL, QStringLiteral("АО «Речной порт»"),
                       QStringLiteral("0012005028"), severalDocuments()));
    result.append(firm(LEGAL_MANY, QStringLiteral("МУП «Жилсервис»"), QStringLiteral("0012005035"),
                       manyDocuments()));

    Lines withPenalty = firmLines(505000, 404000);
    withPenalty.append({PENALTY_ID, QStringLiteral("Пени по договору"), 7777, 7777});
    result.append(firm(LEGAL_PENALTY, QStringLiteral("ИП Лебедев Антон Олегович"),
                       QStringLiteral("001200450104"),
                       {documentOf(51041, QStringLiteral("2026/0401"), withPenalty)}));
    result.append(firm(LEGAL_SINGLE_FORMAT, QStringLiteral("ООО «Тепличный комбинат»"),
                       QStringLiteral("0012005042"),
                       {documentOf(51051, LEGAL_SINGLE_FORMAT_NUMBER, firmLines(330000, 220000)),
                        documentOf(51052, QStringLiteral("2026/0502"), firmLines(110000, 90000))}));
    result.last().documentsForm = BillingAccount::DocumentsForm::SingleWhenAsked;
    result.append(firm(LEGAL_UNDER_VALUE, QStringLiteral("ТСЖ «Набережная, 12»"),
                       QStringLiteral("0012005050"),
                       {documentOf(51061, QStringLiteral("2026/0601"), firmLines(410000, 515000)),
                        documentOf(51062, QStringLiteral("2026/0602"), firmLines(90000, 70000))}));
    result.last().documentsForm = BillingAccount::DocumentsForm::UnderValue;
    return result;
}

QVector<BillingAccount> troubled()
{
    QVector<BillingAccount> result;
    int flat = 90;
    for (const SampleAccount &sample : sampleAccounts()) {
        if (sample.behaviour == AnswerBehaviour::Ordinary)
            continue;
        ++flat;
        result.append(sample.payer == SampleAccount::Payer::Individual
                          ? person(sample.number, QStringLiteral("Проверочный Счёт Сбоев"),
                                   QString::number(flat), usualLines(), usualMeters(flat))
                          : firm(sample.number, QStringLiteral("ООО «Проверка сбоев»"),
                                 QStringLiteral("0012005067"),
                                 {documentOf(59000 + flat, QStringLiteral("2026/09%1").arg(flat),
                                             firmLines(100000, 200000))}));
        result.last().behaviour = sample.behaviour;
    }
    return result;
}

QPair<QString, BillingField> field(const char *record, const char *name, const QString &title,
                                   const char *type, bool editable = false, bool visible = true)
{
    BillingField result;
    result.name = QLatin1String(name);
    result.title = title;
    result.type = QLatin1String(type);
    result.editable = editable;
    result.visible = visible;
    if (result.type == QLatin1String("money"))
        result.regexp = QStringLiteral("^-?\\d+(?:[\\.,]\\d{1,2})?$");
    else if (result.type == QLatin1String("integer"))
        result.regexp = QStringLiteral("^-?\\d+$");
    return {QLatin1String(record), result};
}

} // namespace

QVector<BillingAccount> SampleCatalogue::accounts()
{
    return people() + firms() + troubled();
}

QVector<QPair<QString, BillingField>> SampleCatalogue::fields()
{
    QVector<QPair<QString, BillingField>> result;
    for (const char *header : {"account", "contract"}) {
        const bool person = QLatin1String(header) == QLatin1String("account");
        result +=
            {field(header, "fio",
                   person ? QStringLiteral("Абонент") : QStringLiteral("Организация"), "string"),
             field(header, "address", QStringLiteral("Адрес"), "string"),
             field(header, "inn", QStringLiteral("ИНН"), "string"),
             field(header, "charge", QStringLiteral("Начислено"), "money"),
             field(header, "debt", QStringLiteral("Задолженность"), "money"),
             field(header, "remainder", QStringLiteral("Аванс"), "money"),
             field(header, "tax", QStringLiteral("НДС"), "money")};
    }
    result += {field("service", "id", QStringLiteral("Код услуги"), "integer", false, false),
               field("service", "name", QStringLiteral("Услуга"), "string"),
               field("service", "charge", QStringLiteral("Начислено"), "money"),
               field("service", "topay", QStringLiteral("Долг"), "money"),
               field("service", "distributed", QStringLiteral("К оплате"), "money", true),
               field("counter", "id", QStringLiteral("Код счётчика"), "integer", false, false),
               field("counter", "name", QStringLiteral("Счётчик"), "string"),
               field("counter", "lastvalue", QStringLiteral("Предыдущее показание"), "integer"),
               field("counter", "currvalue", QStringLiteral("Текущее показание"), "integer", true),
               field("document", "id", QStringLiteral("ID документа"), "string", false, false),
               field("document", "num", QStringLiteral("Номер документа"), "string"),
               field("document", "charge", QStringLiteral("Начислено"), "money"),
               field("document", "topay", QStringLiteral("Долг"), "money"),
               field("document", "distributed", QStringLiteral("К оплате"), "money", true)};
    return result;
}
