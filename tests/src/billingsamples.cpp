#include "billingsamples.h"

QVariantMap BillingSamples::field(const QString &name, const QVariant &value, Edit edit,
                                  const QString &title)
{
    return {{QStringLiteral("name"), name},
            {QStringLiteral("value"), value},
            {QStringLiteral("title"), title},
            {QStringLiteral("isEditable"), edit == Edit::Allowed}};
}

QVariantList BillingSamples::service(qint64 id, const QString &name, const QString &charge,
                                     const QString &topay, const QString &distributed)
{
    return {field(QStringLiteral("id"), QString::number(id), Edit::Allowed, QStringLiteral("Код")),
            field(QStringLiteral("name"), name, Edit::Allowed, QStringLiteral("Услуга")),
            field(QStringLiteral("charge"), charge, Edit::Allowed, QStringLiteral("Начислено")),
            field(QStringLiteral("topay"), topay, Edit::Allowed, QStringLiteral("К оплате")),
            field(QStringLiteral("distributed"), distributed, Edit::Allowed,
                  QStringLiteral("Распределено"))};
}

QVariantList BillingSamples::counter(qint64 id, const QString &name, const QString &last,
                                     const QString &current)
{
    return {field(QStringLiteral("id"), QString::number(id), Edit::Allowed, QStringLiteral("Код")),
            field(QStringLiteral("name"), name, Edit::Allowed, QStringLiteral("Счетчик")),
            field(QStringLiteral("lastvalue"), last, Edit::Allowed, QStringLiteral("Предыдущее")),
            field(QStringLiteral("currvalue"), current, Edit::Allowed, QStringLiteral("Текущее"))};
}

QVariantList BillingSamples::document(qint64 id, const QString &number,
                                      const QVector<QVariantList> &services)
{
    return {field(QStringLiteral("id"), QString::number(id)),
            field(QStringLiteral("num"), number, Edit::Allowed, QStringLiteral("Номер")),
            field(QStringLiteral("charge"), QStringLiteral("100.00")),
            field(QStringLiteral("topay"), QStringLiteral("100.00")),
            field(QStringLiteral("distributed"), QStringLiteral("0.00")),
            recordList(QStringLiteral("services"), services)};
}

QVariantMap BillingSamples::recordList(const QString &name, const QVector<QVariantList> &records)
{
    QVariantList wrapped;
    for (const QVariantList &record : records)
        wrapped.append(QVariantMap{{QStringLiteral("paramList"), QVariant(record)}});
    return {{QStringLiteral("name"), name}, {QStringLiteral("paramList"), QVariant(wrapped)}};
}

QVariantList BillingSamples::header(const QString &fio, const QString &address)
{
    return {field(QStringLiteral("fio"), fio),
            field(QStringLiteral("address"), address),
            field(QStringLiteral("charge"), QStringLiteral("1350.40"), Edit::Allowed,
                  QStringLiteral("Начислено")),
            field(QStringLiteral("debt"), QStringLiteral("250.00"), Edit::Allowed,
                  QStringLiteral("Долг")),
            field(QStringLiteral("remainder"), QStringLiteral("12.30"), Edit::Allowed,
                  QStringLiteral("Аванс")),
            field(QStringLiteral("tax"), QStringLiteral("225.07"), Edit::Allowed,
                  QStringLiteral("НДС")),
            field(QStringLiteral("inn"), QStringLiteral(" 770712345678 "))};
}

QVariantList BillingSamples::personalAccount()
{
    QVariantList list = header(QStringLiteral("Иванова Мария Петровна"),
                               QStringLiteral("ул. Речная, д. 5, кв. 12"));
    list.append(recordList(QStringLiteral("services"),
                           {service(1, QStringLiteral("Холодная вода"), QStringLiteral("1000.00"),
                                    QStringLiteral("1200.00"), QStringLiteral("1000.00")),
                            service(2, QStringLiteral("Водоотведение"), QStringLiteral("350.40"),
                                    QStringLiteral("350.40"), QStringLiteral("0.00")),
                            service(3924990, QStringLiteral("Пени"), QStringLiteral("0"),
                                    QStringLiteral("50"), QStringLiteral("50.5"))}));
    list.append(recordList(
        QStringLiteral("counters"),
        {counter(11, QStringLiteral("ХВС кухня"), QStringLiteral("120"), QStringLiteral("131")),
         counter(12, QStringLiteral("ХВС ванная"), QStringLiteral("7"), QStringLiteral("7"))}));
    return list;
}

QVariantList BillingSamples::legalAccount()
{
    QVariantList list =
        header(QStringLiteral("ООО \"Ромашка\""), QStringLiteral("пр. Заводской, 1"));
    list.append(
        recordList(QStringLiteral("documents"),
                   {document(501, QStringLiteral("А-17"),
                             {service(1, QStringLiteral("Холодная вода"), QStringLiteral("700.00"),
                                      QStringLiteral("800.00"), QStringLiteral("800.00")),
                              service(3924990, QStringLiteral("Пени"), QStringLiteral("0.00"),
                                      QStringLiteral("20.10"), QStringLiteral("20.10"))}),
                    document(502, QStringLiteral("А-18"),
                             {service(2, QStringLiteral("  "), QStringLiteral("100.00"),
                                      QStringLiteral("100.00"), QStringLiteral("0.00"))})}));
    return list;
}

QVariantList BillingSamples::hugeAccount(int count)
{
    QVector<QVariantList> services;
    services.reserve(count);
    for (int i = 0; i < count; ++i) {
        services.append(service(i, QStringLiteral("Услуга %1").arg(i), QStringLiteral("10.25"),
                                QStringLiteral("10.25"), QStringLiteral("10.25")));
    }
    return {recordList(QStringLiteral("services"), services)};
}
