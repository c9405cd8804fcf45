#include <recovery/packrebuilder.h>

#include <recovery/receiptorigin.h>

#include <molvacore/payment.h>

#include <QCryptographicHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QVariantList>

#include <algorithm>

namespace {

const QString PARAMETER_ACCOUNT = QStringLiteral("account");
const QString PARAMETER_PERIOD = QStringLiteral("period");
const QString PARAMETER_PAY_DATA = QStringLiteral("paydata");
const QString PARAMETER_QR_CODE = QStringLiteral("qrcode");
/// Only the provider of legal entities is paid by document.
const QString PARAMETER_DOCUMENT = QStringLiteral("numdoc");

bool hasParameter(const Provider &provider, const QString &name)
{
    const auto parameters = provider.parameters();
    return std::any_of(parameters.cbegin(), parameters.cend(),
                       [&](const auto &parameter) { return parameter->name() == name; });
}

void setParameter(Provider *provider, const QString &name, const QString &value)
{
    const auto parameters = provider->parameters();
    for (const auto &parameter : parameters) {
        if (parameter->name() == name)
            parameter->setValue(value);
    }
}

std::optional<Provider> providerOf(const QVector<Provider> &providers, ReceiptOrigin::Payer payer)
{
    if (payer == ReceiptOrigin::Payer::Unknown)
        return std::nullopt;
    const bool legal = payer == ReceiptOrigin::Payer::Legal;
    const auto found =
        std::find_if(providers.cbegin(), providers.cend(), [legal](const Provider &each) {
            return hasParameter(each, PARAMETER_DOCUMENT) == legal;
        });
    return found == providers.cend() ? std::nullopt : std::make_optional(*found);
}

QVariantMap named(const QString &name, const QVariant &value)
{
    return {{QStringLiteral("name"), name}, {QStringLiteral("value"), value}};
}

QVariantMap listed(const QString &name, const QVariantList &list)
{
    return {{QStringLiteral("name"), name}, {QStringLiteral("paramList"), list}};
}

/// Services and readings in the form in which an account sends them, without the ids that the
/// receipt does not have.
QString payDataOf(const QVector<ReceiptOrigin::Item> &items,
                  const QVector<ReceiptOrigin::Reading> &readings)
{
    QVariantList services;
    for (const ReceiptOrigin::Item &item : items) {
        services.append(listed(
            QStringLiteral("service"),
            {named(QStringLiteral("name"), item.name),
             named(QStringLiteral("distributed"), basix::FixNumber(100, item.cost).toString())}));
    }
    QVariantList counters;
    for (const ReceiptOrigin::Reading &reading : readings) {
        counters.append(
            listed(QStringLiteral("counter"),
                   {named(QStringLiteral("name"), reading.meter),
                    named(QStringLiteral("lastvalue"), QString::number(reading.last)),
                    named(QStringLiteral("currvalue"), QString::number(reading.current))}));
    }
    QVariantList groups{listed(QStringLiteral("services"), services)};
    if (!counters.isEmpty())
        groups.append(listed(QStringLiteral("counters"), counters));
    return QString::fromUtf8(
        QJsonDocument(QJsonArray::fromVariantList(groups)).toJson(QJsonDocument::Compact));
}

/// Documents that the money can be told apart for: a single one, or as many as there are lines.
bool isPaidByDocument(const ReceiptOrigin &origin)
{
    const bool named = std::all_of(origin.items.cbegin(), origin.items.cend(),
                                   [](const auto &item) { return !item.name.isEmpty(); });
    return origin.documents.size() == 1
        || (!origin.documents.isEmpty() && named && origin.documents.size() == origin.items.size());
}

} // namespace

PackRebuilder::PackRebuilder(const QVector<Provider> &providers, const basix::Currency &currency)
    : m_providers(providers), m_currency(currency)
{
}

qint64 PackRebuilder::packIdOf(const FiscalRecord &receipt)
{
    const QString identity = QStringLiteral("recovered pack %1 %2")
                                 .arg(receipt.storage, QString::number(receipt.number));
    const QByteArray digest =
        QCryptographicHash::hash(identity.toUtf8(), QCryptographicHash::Sha256);
    quint64 id = 0;
    for (int i = 0; i < 8; ++i)
        id = (id << 8) | static_cast<unsigned char>(digest.at(i));
    id >>= 1;
    return id == 0 ? 1 : qint64(id);
}

std::optional<PackRebuilder::Rebuilt> PackRebuilder::rebuild(const FiscalRecord &receipt,
                                                             QString *error) const
{
    const ReceiptOrigin origin = ReceiptOrigin::of(receipt);
    const std::optional<Provider> provider = providerOf(m_providers, origin.payer);
    if (!provider || origin.account.isEmpty()) {
        *error = QStringLiteral("По чеку № ФД %1 не понять, за кого заплачено. Проведите платёж "
                                "в биллинге вручную.")
                     .arg(receipt.number);
        return std::nullopt;
    }

    Rebuilt rebuilt;
    PayPack &pack = rebuilt.pack;
    pack.setId(packIdOf(receipt));
    pack.setCreated(receipt.time);
    const auto addPayment = [&](const QString &document, const QVector<ReceiptOrigin::Item> &items,
                                const basix::FixNumber &sum) {
        Provider own = *provider;
        setParameter(&own, PARAMETER_ACCOUNT, origin.account);
        setParameter(&own, PARAMETER_PERIOD, origin.period);
        setParameter(&own, PARAMETER_DOCUMENT, document);
        setParameter(&own, PARAMETER_PAY_DATA, payDataOf(items, origin.readings));
        setParameter(&own, PARAMETER_QR_CODE, receipt.qr);
        Payment payment;
        payment.setCreated(receipt.time);
        payment.setProviderData(own, true);
        payment.setAccount(origin.account);
        payment.setCurrencyId(m_currency.number3());
        payment.setSumm(sum);
        pack.addPayment(payment);
    };
    if (!isPaidByDocument(origin)) {
        addPayment(QString(), origin.items, origin.total);
    } else if (origin.documents.size() == 1) {
        addPayment(origin.documents.constFirst(), origin.items, origin.total);
    } else {
        for (int i = 0; i < origin.documents.size(); ++i) {
            addPayment(origin.documents.at(i), {origin.items.at(i)},
                       basix::FixNumber(100, origin.items.at(i).cost));
        }
    }
    if (origin.cashless.value() > 0)
        pack.addCardOperations(origin.cashless, m_currency, QString());
    if (origin.cash.value() > 0)
        pack.addCashOperations(origin.cash, m_currency);
    pack.setFiscProps(receipt.result.value(QStringLiteral("fiscprops")).toList());
    pack.setFiscData(receipt.result.value(QStringLiteral("data")).toMap());
    pack.setFiscDocument(receipt.result.value(QStringLiteral("document")).toMap());
    rebuilt.note = {{QStringLiteral("documentNumber"), receipt.documentNumber},
                    {QStringLiteral("documents"), QVariant(origin.documents)}};
    error->clear();
    return rebuilt;
}
