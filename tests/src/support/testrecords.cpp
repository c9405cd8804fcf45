#include "testrecords.h"

namespace TestRecords {

QVariantMap field(const QString &name, const QVariant &value, bool editable)
{
    return {{QStringLiteral("name"), name},
            {QStringLiteral("value"), value},
            {QStringLiteral("title"), QStringLiteral("T:") + name},
            {QStringLiteral("isEditable"), editable}};
}

QVariantMap wrapped(const QVariantList &list)
{
    return {{QStringLiteral("paramList"), list}};
}

QVariantList serviceFields(const QString &name, const QString &charge, const QString &topay,
                           const QString &distributed, const ReadOnly &readOnly, qint64 id)
{
    QVariantList fields;
    const QList<QPair<QString, QString>> values{{SrService::FIELD_ID, QString::number(id)},
                                                {SrService::FIELD_NAME, name},
                                                {SrService::FIELD_CHARGE, charge},
                                                {SrService::FIELD_TOPAY, topay},
                                                {SrService::FIELD_DISTRIBUTED, distributed}};
    for (const auto &value : values)
        fields.append(field(value.first, value.second, !readOnly.contains(value.first)));
    return fields;
}

SrService service(const QString &name, const QString &charge, const QString &topay,
                  const QString &distributed, const ReadOnly &readOnly, qint64 id)
{
    SrService record;
    record.parseCheckList(serviceFields(name, charge, topay, distributed, readOnly, id));
    return record;
}

SrCounter counter(const QString &name, qint64 last, qint64 current, const ReadOnly &readOnly)
{
    QVariantList fields;
    const QList<QPair<QString, QString>> values{
        {SrCounter::FIELD_ID, QStringLiteral("3")},
        {SrCounter::FIELD_NAME, name},
        {SrCounter::FIELD_LAST_VALUE, QString::number(last)},
        {SrCounter::FIELD_CUR_VALUE, QString::number(current)}};
    for (const auto &value : values)
        fields.append(field(value.first, value.second, !readOnly.contains(value.first)));
    SrCounter record;
    record.parseCheckList(fields);
    return record;
}

SrDocument document(const QString &number, const QString &charge, const QString &topay,
                    const QList<SrService> &services)
{
    SrDocument record;
    record.setParams({{SrDocument::FIELD_ID, field(SrDocument::FIELD_ID, QStringLiteral("1"))},
                      {SrDocument::FIELD_NUM, field(SrDocument::FIELD_NUM, number, false)},
                      {SrDocument::FIELD_CHARGE, field(SrDocument::FIELD_CHARGE, charge)},
                      {SrDocument::FIELD_TOPAY, field(SrDocument::FIELD_TOPAY, topay)}});
    record.setServices(services);
    return record;
}

QSharedPointer<SrPersonalAccount> personalAccount(const QList<SrService> &services,
                                                  const QList<SrCounter> &counters)
{
    auto account = QSharedPointer<SrPersonalAccount>::create();
    account->parseCheckList({field(SRAccount::FIELD_FIO, QStringLiteral("Иванов Иван Иванович")),
                             field(SRAccount::FIELD_ADDRESS, QStringLiteral("ул. Речная, 1")),
                             field(SRAccount::FIELD_CHARGE, QStringLiteral("500.00")),
                             field(SRAccount::FIELD_DEBT, QStringLiteral("900.00")),
                             field(SRAccount::FIELD_REMAINDER, QStringLiteral("0.00"))});
    account->setAccountNumber(QStringLiteral("4455"));
    account->setServices(services);
    account->setCounters(counters);
    return account;
}

QSharedPointer<SrLegalAccount> legalAccount(const QList<SrDocument> &documents)
{
    auto account = QSharedPointer<SrLegalAccount>::create();
    account->parseCheckList({field(SRAccount::FIELD_FIO, QStringLiteral("ООО «Ручей»")),
                             field(SRAccount::FIELD_ADDRESS, QStringLiteral("пер. Мостовой, 2")),
                             field(SRAccount::FIELD_CHARGE, QStringLiteral("1500.00")),
                             field(SRAccount::FIELD_DEBT, QStringLiteral("2500.00")),
                             field(SRAccount::FIELD_INN, QStringLiteral("7701000001")),
                             field(SRAccount::FIELD_REMAINDER, QStringLiteral("0.00"))});
    account->setAccountNumber(QStringLiteral("77/1"));
    account->setDocuments(documents);
    return account;
}

} // namespace TestRecords
