#include <billing/paypackreader.h>

#include <basixcore/fixnumber.h>

#include <QJsonArray>
#include <QJsonDocument>

namespace {

QVariantMap valuesByName(const QVariant &list)
{
    QVariantMap values;
    const QVariantList entries = list.toList();
    for (const QVariant &entry : entries) {
        const QVariantMap map = entry.toMap();
        values.insert(map.value(QStringLiteral("name")).toString(),
                      map.value(QStringLiteral("value")));
    }
    return values;
}

/// Services and meters as the account sends them: [{"name": "services", "paramList": [{"name",
/// "paramList": [...]}]}, ...].
void readPayData(const QString &text, ReceivedPack::Payment *payment)
{
    const QVariantList groups = QJsonDocument::fromJson(text.toUtf8()).array().toVariantList();
    for (const QVariant &entry : groups) {
        const QVariantMap group = entry.toMap();
        const QString name = group.value(QStringLiteral("name")).toString();
        const QVariantList records = group.value(QStringLiteral("paramList")).toList();
        for (const QVariant &record : records) {
            const QVariantMap values =
                valuesByName(record.toMap().value(QStringLiteral("paramList")));
            const qint64 id = values.value(QStringLiteral("id")).toLongLong();
            if (name == QLatin1String("services")) {
                const QString distributed = values.value(QStringLiteral("distributed")).toString();
                payment->lines.append({id, basix::FixNumber(100, distributed).value()});
            } else if (name == QLatin1String("counters")) {
                payment->readings.append(
                    {id, values.value(QStringLiteral("currvalue")).toLongLong()});
            }
        }
    }
}

std::optional<ReceivedPack::Payment> readPayment(const QVariantMap &map)
{
    ReceivedPack::Payment payment;
    bool providerRead = false;
    bool sumRead = false;
    payment.providerId = map.value(QStringLiteral("workProviderId")).toLongLong(&providerRead);
    payment.account = map.value(QStringLiteral("account")).toString().trimmed();
    payment.sum = map.value(QStringLiteral("summ")).toLongLong(&sumRead);
    if (!providerRead || !sumRead || payment.sum < 0)
        return std::nullopt;
    const QVariantMap parameters = valuesByName(map.value(QStringLiteral("parameters")));
    payment.document = parameters.value(QStringLiteral("numdoc")).toString().trimmed();
    readPayData(parameters.value(QStringLiteral("paydata")).toString(), &payment);
    return payment;
}

} // namespace

std::optional<ReceivedPack> ReceivedPack::read(const QVariantMap &pack, QString *error)
{
    ReceivedPack result;
    bool idRead = false;
    const QString id = pack.value(QStringLiteral("id")).toString();
    if (id.toLongLong(&idRead) <= 0 || !idRead) {
        *error = QStringLiteral("Пачка платежей не принята: нет номера пачки.");
        return std::nullopt;
    }
    result.id = QString::number(id.toLongLong());
    const QVariantList payments = pack.value(QStringLiteral("payments")).toList();
    if (payments.isEmpty()) {
        *error = QStringLiteral("Пачка № %1 не принята: в ней нет платежей.").arg(result.id);
        return std::nullopt;
    }
    for (const QVariant &entry : payments) {
        const std::optional<Payment> payment = readPayment(entry.toMap());
        if (!payment) {
            *error =
                QStringLiteral("Пачка № %1 не принята: у платежа не читается поставщик или сумма.")
                    .arg(result.id);
            return std::nullopt;
        }
        result.payments.append(*payment);
    }
    error->clear();
    return result;
}
