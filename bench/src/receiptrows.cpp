#include "benchrows.h"

#include "support/generatedanswers.h"
#include "support/openhostdatabase.h"

#include "individual/srpersonalaccount.h"
#include "legal/srlegalaccount.h"

#include <molvacore/fiscaltypes.h>

namespace {

using GeneratedAnswers::Form;

OnlineKkmInfo profile()
{
    OnlineKkmInfo info;
    info.setAdditionalProp(QStringLiteral("Участок"));
    info.setAdditionalPropValue(QStringLiteral("Северный"));
    info.setTaxSystem(FDTax::General);
    info.setTaxRate(1);
    info.setDefaultCalcType(PaymentMethod::FullPayment);
    info.setAgentSign(AgentFlag::BankPayAgent);
    info.setPayAgentOp(QStringLiteral("Приём платежа"));
    info.setPayAgentPhone(QStringLiteral("+79120000001"));
    info.setPayOperatorPhone(QStringLiteral("+79120000002"));
    info.setTransferOperatorAddress(QStringLiteral("г. Ривенхолд, ул. Переводная, 3"));
    info.setTransferOperatorInn(QStringLiteral("7701112223"));
    info.setTransferOperatorName(QStringLiteral("ПАО «Перевод»"));
    info.setTransferOperatorPhone(QStringLiteral("+79120000003"));
    return info;
}

QSharedPointer<Provider> provider()
{
    auto record = QSharedPointer<Provider>::create();
    record->setId(18722);
    record->setWorkProviderId(18722);
    record->setName(QStringLiteral("Селмар Ривенхолд"));
    record->setLegalName(QStringLiteral("АО «Селмар Ривенхолд»"));
    record->setInn(QStringLiteral("7701000002"));
    record->setPhones(QStringLiteral("+7 912 000-00-04, +7 912 000-00-05"));
    return record;
}

template<class Account>
QVariantMap receipt(const Account &account)
{
    static const QSharedPointer<Provider> supplier = provider();
    static const OnlineKkmInfo kkm = profile();
    keepHostDatabaseOpen();
    const basix::FixNumber cash = account.amount();
    return account.createCheck(supplier, kkm, basix::FixNumber(100, 0), cash, true)
        .toDocument(false, MoneyType::Cash, true);
}

template<class Account>
Account payable(Form form, int lines)
{
    Account account;
    account.parseCheckList(GeneratedAnswers::description(form, lines));
    account.setAccountNumber(QStringLiteral("4455001"));
    account.setClientPhoneOrEmail(QStringLiteral("+7 (912) 345-67-89"));
    return account;
}

/// A copy that shares no map and no list with the original: every entry is put in anew.
QVariant builtAnew(const QVariant &value)
{
    switch (static_cast<QMetaType::Type>(value.userType())) {
    case QMetaType::QVariantMap: {
        const QVariantMap constants = value.toMap();
        QVariantMap map;
        for (auto entry = constants.cbegin(); entry != constants.cend(); ++entry)
            map.insert(entry.key(), builtAnew(entry.value()));
        return map;
    }
    case QMetaType::QVariantList: {
        const QVariantList constants = value.toList();
        QVariantList list;
        list.reserve(constants.size());
        for (const QVariant &element : constants)
            list.append(builtAnew(element));
        return list;
    }
    default:
        return value;
    }
}

template<class Account>
BenchRow receiptRow(const QString &id, const QString &subject, Form form)
{
    BenchRow row;
    row.id = id;
    row.subject = subject;
    row.floorText = QStringLiteral("построение тех же QVariantMap из констант");
    row.sizeText = QStringLiteral("строк");
    row.atMost = 2;
    row.sizes = {1, 10, 100, 1000, 5000};
    row.measured = [form](benchmark::State &state, int size) {
        const Account account = payable<Account>(form, size);
        for (auto _ : state)
            benchmark::DoNotOptimize(receipt(account).size());
    };
    row.bare = [form](benchmark::State &state, int size) {
        const QVariant document = receipt(payable<Account>(form, size));
        for (auto _ : state)
            benchmark::DoNotOptimize(builtAnew(document).isNull());
    };
    return row;
}

} // namespace

QVector<BenchRow> receiptRows()
{
    return {receiptRow<SrPersonalAccount>(
                QStringLiteral("receipt-personal"),
                QStringLiteral("Чек лицевого счёта: createCheck() и toDocument()"), Form::Personal),
            receiptRow<SrLegalAccount>(QStringLiteral("receipt-legal"),
                                       QStringLiteral("Чек договора: createCheck() и toDocument()"),
                                       Form::OneDocument)};
}
