#include <molvacore/basecheck.h>

#include <tuple>

class BaseCheck::Data : public QSharedData
{
public:
    FDTax tax = FDTax::General;
    QList<CheckOperation> operations;
    QStringList printableData;
    PaymentType type = PaymentType::Income;
    CheckType checkType = CheckType::Sale;
    QString cashier;
    QString userInn;
    QString regNumber;
    QList<CheckPayment> payments;

    auto tied() const
    {
        return std::tie(tax, operations, printableData, type, checkType, cashier, userInn,
                        regNumber, payments);
    }
};

BaseCheck::BaseCheck() : m_data(new Data) {}

BaseCheck::BaseCheck(const BaseCheck &other) = default;
BaseCheck &BaseCheck::operator=(const BaseCheck &other) = default;
BaseCheck::~BaseCheck() = default;

FDTax BaseCheck::tax() const
{
    return m_data->tax;
}

void BaseCheck::setTax(FDTax tax)
{
    m_data->tax = tax;
}

QList<CheckOperation> BaseCheck::operations() const
{
    return m_data->operations;
}

void BaseCheck::setOperations(const QList<CheckOperation> &operations)
{
    m_data->operations = operations;
}

QStringList BaseCheck::printableData() const
{
    return m_data->printableData;
}

void BaseCheck::setPrintableData(const QStringList &printableData)
{
    m_data->printableData = printableData;
}

PaymentType BaseCheck::type() const
{
    return m_data->type;
}

void BaseCheck::setType(PaymentType type)
{
    m_data->type = type;
}

CheckType BaseCheck::checkType() const
{
    return m_data->checkType;
}

void BaseCheck::setCheckType(CheckType checkType)
{
    m_data->checkType = checkType;
}

QString BaseCheck::cashier() const
{
    return m_data->cashier;
}

void BaseCheck::setCashier(const QString &cashier)
{
    m_data->cashier = cashier;
}

QString BaseCheck::userInn() const
{
    return m_data->userInn;
}

void BaseCheck::setUserInn(const QString &userInn)
{
    m_data->userInn = userInn;
}

QString BaseCheck::regNumber() const
{
    return m_data->regNumber;
}

void BaseCheck::setRegNumber(const QString &regNumber)
{
    m_data->regNumber = regNumber;
}

QList<CheckPayment> BaseCheck::payments() const
{
    return m_data->payments;
}

void BaseCheck::setPayments(const QList<CheckPayment> &payments)
{
    m_data->payments = payments;
}

void BaseCheck::addOperation(const CheckOperation &operation)
{
    m_data->operations.append(operation);
}

void BaseCheck::addPayment(const CheckPayment &payment)
{
    m_data->payments.append(payment);
}

bool BaseCheck::operator==(const BaseCheck &other) const
{
    return m_data == other.m_data || m_data->tied() == other.m_data->tied();
}
