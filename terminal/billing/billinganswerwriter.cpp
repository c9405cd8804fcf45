#include <billing/billinganswerwriter.h>

#include <billing/billingdatabase.h>

#include <basixcore/fixnumber.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

QString money(qint64 kopecks)
{
    return basix::FixNumber(100, kopecks).toString();
}

QVariantMap list(const QString &name, const QString &title, const QVariantList &records)
{
    return {{QStringLiteral("name"), name},
            {QStringLiteral("title"), title},
            {QStringLiteral("isEditable"), false},
            {QStringLiteral("isVisible"), true},
            {QStringLiteral("paramList"), records}};
}

QVariantMap entry(const QString &name, const QVariantList &descriptors)
{
    return {{QStringLiteral("name"), name}, {QStringLiteral("paramList"), descriptors}};
}

QByteArray json(const QVariantMap &map)
{
    return QJsonDocument(QJsonObject::fromVariantMap(map)).toJson(QJsonDocument::Compact);
}

QByteArray envelope(const QString &uid, bool error, int result, const QString &resultDescription,
                    const QString &description)
{
    return json({{QStringLiteral("uid"), uid},
                 {QStringLiteral("error"), error},
                 {QStringLiteral("result"), result},
                 {QStringLiteral("resultDescription"), resultDescription},
                 {QStringLiteral("description"), description}});
}

QByteArray inner(bool isError, const QString &status, const QVariantList &payParamList)
{
    return json({{QStringLiteral("isError"), isError},
                 {QStringLiteral("statusDescription"), status},
                 {QStringLiteral("payParamList"), payParamList}});
}

/// Takes what is due of what is planned; nothing for a line that owes nothing.
qint64 share(qint64 due, qint64 *planned)
{
    const qint64 part = qBound<qint64>(0, due, *planned);
    *planned -= part;
    return part;
}

} // namespace

BillingAnswerWriter::BillingAnswerWriter(BillingDatabase &database) : m_database(database) {}

QVariantMap BillingAnswerWriter::descriptor(const BillingField &field, const QString &value,
                                            bool editable) const
{
    return {{QStringLiteral("name"), field.name},     {QStringLiteral("value"), value},
            {QStringLiteral("title"), field.title},   {QStringLiteral("isEditable"), editable},
            {QStringLiteral("type"), field.type},     {QStringLiteral("mask"), field.mask},
            {QStringLiteral("regexp"), field.regexp}, {QStringLiteral("isVisible"), field.visible}};
}

QVariantList BillingAnswerWriter::record(const QString &kind, const QVariantMap &values,
                                         bool valuesEditable)
{
    QVariantList result;
    if (!m_fields.contains(kind))
        m_fields.insert(kind, m_database.fields(kind));
    const QVector<BillingField> fields = m_fields.value(kind);
    for (const BillingField &field : fields)
        result.append(descriptor(field, values.value(field.name).toString(),
                                 field.editable && valuesEditable));
    return result;
}

QVariantMap BillingAnswerWriter::services(const QVector<BillingServiceLine> &lines, bool editable,
                                          qint64 *planned, qint64 *distributed)
{
    const bool spreading = *planned > 0;
    QVariantList records;
    for (const BillingServiceLine &line : lines) {
        // What the cashier cannot change must come ready to pay.
        const qint64 ready = editable ? 0 : qMax<qint64>(0, line.topay);
        const qint64 part = spreading ? share(line.topay, planned) : ready;
        *distributed += part;
        const QVariantMap values{{QStringLiteral("id"), QString::number(line.serviceId)},
                                 {QStringLiteral("name"), line.name},
                                 {QStringLiteral("charge"), money(line.charge)},
                                 {QStringLiteral("topay"), money(line.topay)},
                                 {QStringLiteral("distributed"), money(part)}};
        records.append(
            entry(QStringLiteral("service"), record(QStringLiteral("service"), values, editable)));
    }
    return list(QStringLiteral("services"), QStringLiteral("Услуги"), records);
}

QVariantMap BillingAnswerWriter::meters(const BillingAccount &account)
{
    QVariantList records;
    for (const BillingMeter &meter : account.meters) {
        const QString last = QString::number(meter.lastValue);
        const QVariantMap values{{QStringLiteral("id"), QString::number(meter.meterId)},
                                 {QStringLiteral("name"), meter.name},
                                 {QStringLiteral("lastvalue"), last},
                                 {QStringLiteral("currvalue"), last}};
        records.append(
            entry(QStringLiteral("counter"),
                  record(QStringLiteral("counter"), values, account.distributedEditable)));
    }
    return list(QStringLiteral("counters"), QStringLiteral("Счётчики"), records);
}

QVariantMap BillingAnswerWriter::documents(const BillingAccount &account, const QString &number,
                                           qint64 *planned)
{
    QVariantList records;
    for (const BillingDocument &document : account.documents) {
        if (!number.isEmpty() && document.number != number)
            continue;
        qint64 distributed = 0;
        const QVariantMap lines =
            services(document.services, account.distributedEditable, planned, &distributed);
        const QVariantMap values{{QStringLiteral("id"), QString::number(document.documentId)},
                                 {QStringLiteral("num"), document.number},
                                 {QStringLiteral("charge"), money(document.charge)},
                                 {QStringLiteral("topay"), money(document.topay)},
                                 {QStringLiteral("distributed"), money(distributed)}};
        QVariantList fields =
            record(QStringLiteral("document"), values, account.distributedEditable);
        fields.append(lines);
        records.append(entry(QStringLiteral("document"), fields));
    }
    QVariantMap result = list(QStringLiteral("documents"), QStringLiteral("Документы"), records);
    if (account.documentsForm == BillingAccount::DocumentsForm::UnderValue)
        result.insert(
            QStringLiteral("value"),
            QVariantMap{{QStringLiteral("paramList"), result.take(QStringLiteral("paramList"))}});
    return result;
}

QVariantList BillingAnswerWriter::header(const BillingAccount &account, qint64 charge, qint64 debt,
                                         qint64 remainder)
{
    const bool person = account.payer == SampleAccount::Payer::Individual;
    const QVariantMap values{
        {QStringLiteral("fio"), account.fio},       {QStringLiteral("address"), account.address},
        {QStringLiteral("inn"), account.inn},       {QStringLiteral("charge"), money(charge)},
        {QStringLiteral("debt"), money(debt)},      {QStringLiteral("remainder"), money(remainder)},
        {QStringLiteral("tax"), money(account.tax)}};
    return record(person ? QStringLiteral("account") : QStringLiteral("contract"), values, true);
}

QVariantList BillingAnswerWriter::describe(const BillingAccount &account, qint64 planned,
                                           const QString &document)
{
    qint64 left = qMax<qint64>(0, planned);
    if (account.payer == SampleAccount::Payer::Individual) {
        qint64 distributed = 0;
        const QVariantMap lines =
            services(account.services, account.distributedEditable, &left, &distributed);
        QVariantList result =
            header(account, account.charge, account.debt, account.remainder + left);
        result.append(lines);
        result.append(meters(account));
        return result;
    }
    if (document.isEmpty())
        left = 0;
    const bool single = account.documentsForm == BillingAccount::DocumentsForm::SingleWhenAsked
        && !document.isEmpty();
    if (!single) {
        const QVariantMap list = documents(account, document, &left);
        QVariantList result =
            header(account, account.charge, account.debt, account.remainder + left);
        result.append(list);
        return result;
    }
    for (const BillingDocument &one : account.documents) {
        if (one.number != document)
            continue;
        qint64 distributed = 0;
        const QVariantMap lines =
            services(one.services, account.distributedEditable, &left, &distributed);
        QVariantList result = header(account, one.charge, one.topay, account.remainder + left);
        result.append(lines);
        return result;
    }
    return {};
}

QByteArray BillingAnswerWriter::success(const QString &uid, const QVariantList &payParamList)
{
    return envelope(uid, false, 0, QString(),
                    QString::fromUtf8(inner(false, QString(), payParamList)));
}

QByteArray BillingAnswerWriter::innerError(const QString &uid, const QString &text)
{
    return envelope(uid, false, 0, QString(), QString::fromUtf8(inner(true, text, {})));
}

QByteArray BillingAnswerWriter::outerError(const QString &uid, const QString &text)
{
    return envelope(uid, true, 0, text, text);
}

QByteArray BillingAnswerWriter::nonZeroResult(const QString &uid, int result, const QString &text)
{
    return envelope(uid, false, result, text, QString());
}

QByteArray BillingAnswerWriter::brokenInner(const QString &uid, const QVariantList &payParamList)
{
    const QString whole = QString::fromUtf8(inner(false, QString(), payParamList));
    return envelope(uid, false, 0, QString(), whole.left(whole.size() / 2));
}

QByteArray BillingAnswerWriter::innerNotObject(const QString &uid, const QVariantList &payParamList)
{
    const QJsonDocument list(QJsonArray::fromVariantList(payParamList));
    return envelope(uid, false, 0, QString(),
                    QString::fromUtf8(list.toJson(QJsonDocument::Compact)));
}

QByteArray BillingAnswerWriter::fieldsNotList(const QString &uid)
{
    const QByteArray text =
        json({{QStringLiteral("isError"), false},
              {QStringLiteral("statusDescription"), QString()},
              {QStringLiteral("payParamList"), QStringLiteral("список не получен")}});
    return envelope(uid, false, 0, QString(), QString::fromUtf8(text));
}
