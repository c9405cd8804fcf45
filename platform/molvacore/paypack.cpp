#include <molvacore/paypack.h>

#include <molvacore/paymenti64idgenerator.h>
#include <molvacore/paypackmap.h>

#include <tuple>

class PayPack::Data : public QSharedData
{
public:
    qint64 id = 0;
    QDateTime created;
    QList<Payment> payments;
    QList<PayPackOperation> operations;
    QVariantList fiscProps;
    QVariantMap fiscData;
    QVariantMap fiscDocument;

    auto tied() const
    {
        return std::tie(id, created, payments, operations, fiscProps, fiscData, fiscDocument);
    }
};

PayPack::PayPack() : m_data(new Data)
{
    m_data->id = PaymentI64IdGenerator::generate(0, QByteArray());
    m_data->created = QDateTime::currentDateTime();
}

PayPack::PayPack(const PayPack &other) = default;
PayPack &PayPack::operator=(const PayPack &other) = default;
PayPack::~PayPack() = default;

qint64 PayPack::id() const
{
    return m_data->id;
}

void PayPack::setId(qint64 id)
{
    m_data->id = id;
}

QDateTime PayPack::created() const
{
    return m_data->created;
}

void PayPack::setCreated(const QDateTime &created)
{
    m_data->created = created;
}

QList<Payment> PayPack::payments() const
{
    return m_data->payments;
}

void PayPack::setPayments(const QList<Payment> &payments)
{
    m_data->payments = payments;
}

QList<PayPackOperation> PayPack::operations() const
{
    return m_data->operations;
}

void PayPack::setOperations(const QList<PayPackOperation> &operations)
{
    m_data->operations = operations;
}

QVariantList PayPack::fiscProps() const
{
    return m_data->fiscProps;
}

void PayPack::setFiscProps(const QVariantList &fiscProps)
{
    m_data->fiscProps = fiscProps;
}

QVariantMap PayPack::fiscData() const
{
    return m_data->fiscData;
}

void PayPack::setFiscData(const QVariantMap &fiscData)
{
    m_data->fiscData = fiscData;
}

QVariantMap PayPack::fiscDocument() const
{
    return m_data->fiscDocument;
}

void PayPack::setFiscDocument(const QVariantMap &fiscDocument)
{
    m_data->fiscDocument = fiscDocument;
}

void PayPack::addPayment(const Payment &payment)
{
    m_data->payments.append(payment);
}

void PayPack::addCardOperations(const basix::FixNumber &sum, const basix::Currency &currency,
                                const QString &details)
{
    m_data->operations.append(PayPackOperation(MoneyType::Card, sum, currency, details));
}

void PayPack::addCashOperations(const basix::FixNumber &sum, const basix::Currency &currency)
{
    m_data->operations.append(PayPackOperation(MoneyType::Cash, sum, currency));
}

QVariantMap PayPack::packToFullMap(const PayPack &pack)
{
    return PayPackMap::write(pack);
}

PayPack PayPack::packFromFullMap(const QVariantMap &map, bool *ok)
{
    PayPack pack;
    const bool done = PayPackMap::read(map, pack);
    if (ok)
        *ok = done;
    return pack;
}

bool PayPack::operator==(const PayPack &other) const
{
    return m_data == other.m_data || m_data->tied() == other.m_data->tied();
}
