#include <molvacore/paypackmap.h>

#include <molvacore/paypack.h>

#include <cmath>

namespace {

/// Whole numbers up to here survive a JSON parser that keeps numbers as double.
constexpr qint64 largestJsonInteger = Q_INT64_C(9007199254740992);
constexpr int hundredths = 100;

QVariant jsonInteger(qint64 value)
{
    if (value >= -largestJsonInteger && value <= largestJsonInteger)
        return value;
    return QString::number(value);
}

QString timeText(const QDateTime &time)
{
    return time.isValid() ? time.toOffsetFromUtc(time.offsetFromUtc()).toString(Qt::ISODateWithMs)
                          : QString();
}

/// Half of a character, which no UTF-8 text can hold, becomes "?": one broken name from billing
/// must not keep a pack that was paid for from being posted.
QString jsonText(const QString &text)
{
    return text.isValidUtf16() ? text : QString::fromUtf8(text.toUtf8());
}

QVariant jsonValue(const QVariant &value);

QVariantList jsonList(const QVariantList &list)
{
    QVariantList values;
    values.reserve(list.size());
    for (const QVariant &value : list)
        values.append(jsonValue(value));
    return values;
}

QVariantMap jsonMap(const QVariantMap &map)
{
    QVariantMap values;
    for (auto it = map.cbegin(); it != map.cend(); ++it)
        values.insert(jsonText(it.key()), jsonValue(it.value()));
    return values;
}

QVariant jsonValue(const QVariant &value)
{
    switch (static_cast<QMetaType::Type>(value.userType())) {
    case QMetaType::UnknownType:
        return QVariant::fromValue(nullptr);
    case QMetaType::Nullptr:
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::UInt:
        return value;
    case QMetaType::QString:
        return jsonText(value.toString());
    case QMetaType::LongLong:
    case QMetaType::Long:
        return jsonInteger(value.toLongLong());
    case QMetaType::Double:
        return std::isfinite(value.toDouble()) ? value : QVariant(value.toString());
    case QMetaType::QDateTime:
        return timeText(value.toDateTime());
    case QMetaType::QVariantMap:
    case QMetaType::QVariantHash:
        return jsonMap(value.toMap());
    case QMetaType::QVariantList:
    case QMetaType::QStringList:
        return jsonList(value.toList());
    default: // a variant can hold any type there is
        return jsonText(value.toString());
    }
}

QVariantMap paymentMap(const Payment &payment)
{
    const Provider provider = payment.providerData();
    QVariantList parameters;
    const auto described = provider.parameters();
    for (const QSharedPointer<ProviderParameter> &parameter : described) {
        parameters.append(QVariantMap{{QStringLiteral("name"), parameter->name()},
                                      {QStringLiteral("title"), parameter->title()},
                                      {QStringLiteral("value"), parameter->value()}});
    }
    return {{QStringLiteral("created"), timeText(payment.created())},
            {QStringLiteral("providerId"), QString::number(provider.id())},
            {QStringLiteral("workProviderId"), QString::number(provider.workProviderId())},
            {QStringLiteral("groupId"), QString::number(provider.groupId())},
            {QStringLiteral("providerName"), provider.name()},
            {QStringLiteral("checkName"), provider.checkName()},
            {QStringLiteral("legalName"), provider.legalName()},
            {QStringLiteral("inn"), provider.inn()},
            {QStringLiteral("phones"), provider.phones()},
            {QStringLiteral("account"), payment.account()},
            {QStringLiteral("summ"), jsonInteger(payment.summ().rescaled(hundredths).value())},
            {QStringLiteral("currencyId"), jsonInteger(payment.currencyId())},
            {QStringLiteral("parameters"), parameters}};
}

QVariantMap operationMap(const PayPackOperation &operation)
{
    const basix::Currency currency = operation.currency();
    return {{QStringLiteral("moneyType"), static_cast<int>(operation.moneyType())},
            {QStringLiteral("sum"), jsonInteger(operation.sum().rescaled(hundredths).value())},
            {QStringLiteral("currency"),
             QVariantMap{{QStringLiteral("number3"), currency.number3()},
                         {QStringLiteral("code3"), currency.code3()},
                         {QStringLiteral("name"), currency.name()}}},
            {QStringLiteral("details"), operation.details()}};
}

/// Takes a map apart and remembers whether everything that had to be there was.
class Reader
{
public:
    explicit Reader(const QVariantMap &map) : m_map(map) {}

    bool ok() const { return m_ok; }

    QString text(const char *key) const { return value(key).toString(); }

    qint64 integer(const char *key)
    {
        const QVariant found = value(key);
        bool ok = false;
        qint64 number = 0;
        if (found.userType() == QMetaType::Double) {
            const double whole = found.toDouble();
            ok = std::trunc(whole) == whole
                && std::fabs(whole) <= static_cast<double>(largestJsonInteger);
            number = ok ? static_cast<qint64>(whole) : 0;
        } else if (found.userType() != QMetaType::Bool) {
            number = found.toLongLong(&ok);
        }
        m_ok = m_ok && ok;
        return number;
    }

    basix::FixNumber sum(const char *key) { return basix::FixNumber(hundredths, integer(key)); }

    QDateTime time(const char *key)
    {
        const QString written = text(key);
        if (written.isEmpty())
            return QDateTime();
        const QDateTime parsed = QDateTime::fromString(written, Qt::ISODateWithMs);
        m_ok = m_ok && parsed.isValid();
        return parsed;
    }

    QVariantMap map(const char *key)
    {
        const QVariant found = value(key);
        m_ok = m_ok && found.userType() == QMetaType::QVariantMap;
        return found.toMap();
    }

    QVariantList list(const char *key)
    {
        const QVariant found = value(key);
        m_ok = m_ok && found.userType() == QMetaType::QVariantList;
        return found.toList();
    }

    /// Runs `element` on every element of a list of maps; it says whether the element was in order.
    template<typename Element>
    void forEach(const char *key, Element element)
    {
        const QVariantList items = list(key);
        for (const QVariant &item : items)
            m_ok = m_ok && item.userType() == QMetaType::QVariantMap && element(item.toMap());
    }

    void require(bool condition) { m_ok = m_ok && condition; }

private:
    QVariant value(const char *key) const { return m_map.value(QLatin1String(key)); }

    const QVariantMap m_map;
    bool m_ok = true;
};

bool readPayment(const QVariantMap &map, PayPack &pack)
{
    Reader reader(map);
    Provider provider;
    provider.setId(reader.integer("providerId"));
    provider.setWorkProviderId(reader.integer("workProviderId"));
    provider.setGroupId(reader.integer("groupId"));
    provider.setName(reader.text("providerName"));
    provider.setCheckName(reader.text("checkName"));
    provider.setLegalName(reader.text("legalName"));
    provider.setInn(reader.text("inn"));
    provider.setPhones(reader.text("phones"));
    reader.forEach("parameters", [&provider](const QVariantMap &item) {
        const Reader parameter(item);
        provider.addParameter(ProviderParameter(parameter.text("name"), parameter.text("title"),
                                                parameter.text("value")));
        return true;
    });
    Payment payment;
    payment.setCreated(reader.time("created"));
    payment.setProviderData(provider, true);
    payment.setAccount(reader.text("account"));
    payment.setSumm(reader.sum("summ"));
    payment.setCurrencyId(reader.integer("currencyId"));
    pack.addPayment(payment);
    return reader.ok();
}

bool readOperation(const QVariantMap &map, PayPack &pack)
{
    Reader reader(map);
    Reader currency(reader.map("currency"));
    const qint64 number = currency.integer("number3");
    currency.require(number == static_cast<int>(number));
    const basix::Currency money(static_cast<int>(number), currency.text("code3"),
                                currency.text("name"));
    const basix::FixNumber sum = reader.sum("sum");
    const qint64 moneyType = reader.integer("moneyType");
    if (moneyType == static_cast<int>(MoneyType::Card))
        pack.addCardOperations(sum, money, reader.text("details"));
    else if (moneyType == static_cast<int>(MoneyType::Cash))
        pack.addCashOperations(sum, money);
    else
        reader.require(false);
    return reader.ok() && currency.ok();
}

} // namespace

namespace PayPackMap {

QVariantMap write(const PayPack &pack)
{
    QVariantList payments;
    const QList<Payment> paid = pack.payments();
    for (const Payment &payment : paid)
        payments.append(paymentMap(payment));
    QVariantList operations;
    const QList<PayPackOperation> taken = pack.operations();
    for (const PayPackOperation &operation : taken)
        operations.append(operationMap(operation));
    return jsonMap({{QStringLiteral("id"), QString::number(pack.id())},
                    {QStringLiteral("created"), timeText(pack.created())},
                    {QStringLiteral("payments"), payments},
                    {QStringLiteral("operations"), operations},
                    {QStringLiteral("fiscProps"), pack.fiscProps()},
                    {QStringLiteral("fiscData"), pack.fiscData()},
                    {QStringLiteral("fiscDocument"), pack.fiscDocument()}});
}

bool read(const QVariantMap &map, PayPack &pack)
{
    Reader reader(map);
    pack.setId(reader.integer("id"));
    reader.require(pack.id() > 0);
    pack.setCreated(reader.time("created"));
    reader.forEach("payments",
                   [&pack](const QVariantMap &item) { return readPayment(item, pack); });
    reader.forEach("operations",
                   [&pack](const QVariantMap &item) { return readOperation(item, pack); });
    pack.setFiscProps(reader.list("fiscProps"));
    pack.setFiscData(reader.map("fiscData"));
    pack.setFiscDocument(reader.map("fiscDocument"));
    return reader.ok();
}

} // namespace PayPackMap
