#include "srreceipt.h"

#include <molvacore/appsession.h>
#include <molvacore/checkadditionalparameter.h>
#include <molvacore/checkpayment.h>
#include <molvacore/dbconnector.h>
#include <molvacore/fiscaltypes.h>
#include <molvacore/frsettings.h>
#include <molvacore/userscontroller.h>

#include <QVariantMap>

namespace {

// Numbers of the fiscal data format; how the host names its enumerators is the host's own affair.
constexpr auto moneyCash = static_cast<MoneyType>(1);
constexpr auto moneyCard = static_cast<MoneyType>(2);
constexpr auto paymentTypeIncome = static_cast<PaymentType>(1); // tag 1054
constexpr auto checkTypeSale = static_cast<CheckType>(1);
constexpr unsigned int tagQrText = 1196;

/// The raw value above 1, deliberately not above 0: a part of exactly one hundredth is not shown as
/// paid.
bool isPaidPart(const basix::FixNumber &amount)
{
    return amount.value() > 1;
}

void addPayment(Check &receipt, MoneyType type, const basix::FixNumber &sum)
{
    if (!isPaidPart(sum))
        return;
    CheckPayment payment;
    payment.setMoneyType(type);
    payment.setSum(sum);
    receipt.addPayment(payment);
}

} // namespace

Check SrReceipt::start(const OnlineKkmInfo &kkm)
{
    Check receipt;
    receipt.setAdditionalUserParameter(
        CheckAdditionalParameter(kkm.additionalProp(), kkm.additionalPropValue()));
    receipt.setTax(kkm.taxSystem());
    return receipt;
}

void SrReceipt::fillRegisterData(Check &receipt)
{
    receipt.setType(paymentTypeIncome);
    receipt.setCheckType(checkTypeSale);

    DbConnector db(basix::BaseSqliteDbConnector::SharedConnection);
    UsersController users(db);
    QString cashier;
    if (users.getUserFullName(AppSession::currentSession(), cashier))
        receipt.setCashier(cashier);

    const FrSettings fiscalRegister;
    receipt.setUserInn(fiscalRegister.cashboxInn());
    receipt.setRegNumber(fiscalRegister.cashboxRegNumber());
}

void SrReceipt::addPayments(Check &receipt, const basix::FixNumber &card,
                            const basix::FixNumber &cash)
{
    addPayment(receipt, moneyCard, card);
    addPayment(receipt, moneyCash, cash);
}

void SrReceipt::addOperations(PayPack &pack, const basix::Currency &currency,
                              const basix::FixNumber &card, const basix::FixNumber &cash)
{
    if (isPaidPart(card))
        pack.addCardOperations(card, currency, QString());
    if (isPaidPart(cash))
        pack.addCashOperations(cash, currency);
}

QString SrReceipt::qrText(const QVariantList &fiscalProperties)
{
    for (const QVariant &element : fiscalProperties) {
        const QVariantMap property = element.toMap();
        if (property.value(QStringLiteral("tag")).toUInt() == tagQrText)
            return property.value(QStringLiteral("value")).toString();
    }
    return {};
}
