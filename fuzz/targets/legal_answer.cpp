// Billing's answer about a contract, from the text on the bus to the pack that is posted.
#include "accountchecks.h"
#include "answerinput.h"
#include "exactmoney.h"
#include "fuzztarget.h"
#include "recordchecks.h"
#include "station.h"

#include "legal/srlegalaccount.h"

using AccountChecks::Taken;
using basix::FixNumber;

namespace {

SrLegalAccount parsed(const QVariantList &descriptors, const QString &contract)
{
    SrLegalAccount account;
    account.setContract(contract);
    account.parseCheckList(descriptors);
    account.setAccountNumber(QStringLiteral(" Д-77/2024 "));
    account.setClientPhoneOrEmail(QStringLiteral("buh@romashka.example"));
    return account;
}

/// Ticks some documents of the documents page; only those are paid.
void distribute(SrLegalAccount &account, quint64 choice)
{
    QList<SrDocument> ticked;
    const QList<SrDocument> documents = account.documents();
    for (int i = 0; i < documents.size(); ++i) {
        if ((choice >> (i % 32)) % 4 == 0)
            continue;
        SrDocument document = documents.at(i);
        if (choice % 2 == 0)
            document.calcByDebt();
        ticked.append(document);
    }
    account.setDocuments(ticked);
    account.setStartAmount(FixNumber(100, static_cast<qint64>(choice % 3)));
}

QList<SrService> allServices(const SrLegalAccount &account)
{
    QList<SrService> services;
    for (const SrDocument &document : account.documents())
        services += document.services();
    return services;
}

void checkDocument(const SrDocument &document)
{
    RecordChecks::checkMoney(
        document,
        QVector<RecordChecks::MoneyField<SrDocument>>{
            {SrDocument::FIELD_CHARGE, &SrDocument::charge, &SrDocument::setCharge},
            {SrDocument::FIELD_TOPAY, &SrDocument::topay, &SrDocument::setTopay},
            {SrDocument::FIELD_DISTRIBUTED, &SrDocument::distributed,
             &SrDocument::setDistributed}});
    AccountChecks::services(document.services());
    AccountChecks::readiness(document.services(), document.isReady());
    AccountChecks::travels(document.toJsonParamsList(), SrDocument::FIELD_SERVICES,
                           document.services());

    SrDocument paid = document;
    paid.calcByDebt();
    SrDocument cleared = paid;
    cleared.cleanDebt();
    for (int i = 0; i < document.services().size(); ++i) {
        SrService service = document.services().at(i);
        const bool editable = service.isEditable(SrService::FIELD_DISTRIBUTED);
        FUZZ_REQUIRE(paid.services().at(i).distributed()
                             == (editable ? service.topay() : service.distributed())
                         && cleared.services().at(i).distributed()
                             == (editable ? FixNumber(100, 0) : service.distributed()),
                     QStringLiteral("service %1 does not follow its debt").arg(i));
    }
}

void checkReceiptAndPack(const SrLegalAccount &account, quint64 choice)
{
    const QSharedPointer<Provider> provider = Station::provider();
    const Provider catalogue = *provider;
    const Taken taken = AccountChecks::split(account.amount(), choice >> 8);
    const OnlineKkmInfo profile = Station::profile(choice >> 4);
    const Check receipt =
        account.createCheck(provider, profile, taken.card, taken.cash, choice & 1);
    AccountChecks::receipt(receipt, allServices(account), account, taken);

    PayPack pack = account.createPack(*provider, Station::fiscalProperties(), Station::roubles(),
                                      taken.card, taken.cash);
    pack.setFiscDocument(receipt.toDocument(false, MoneyType::Cash, true));
    const bool takesRemainder = account.startAmount().value() > 0 && account.documents().size() == 1
        && account.remainder().value() > 0;
    AccountChecks::pack(
        pack, takesRemainder ? account.amount() : account.amount() - account.remainder(), taken);
    FUZZ_REQUIRE(pack.payments().size() == account.documents().size(),
                 QStringLiteral("not one payment per document"));
    FUZZ_REQUIRE(*provider == catalogue, QStringLiteral("a pack changed the catalogue"));
    for (int i = 0; i < account.documents().size(); ++i) {
        FUZZ_REQUIRE(Station::parameter(pack.payments().at(i), QStringLiteral("numdoc"))
                         == account.documents().at(i).docNumber(),
                     QStringLiteral("payment %1 is for another document").arg(i));
    }
}

} // namespace

FUZZ_TARGET(legal_answer)
{
    const auto descriptors = AnswerInput::payParamList(input);
    if (!descriptors)
        return;
    const quint64 choice = AnswerInput::choice(input);

    SrLegalAccount account = parsed(*descriptors, QStringLiteral(" 501 <b>&amp;</b> "));
    AccountChecks::header(account);
    const bool several =
        AccountChecks::listed(*descriptors, SrLegalAccount::FIELD_DOCUMENTS).has_value();
    const bool single =
        !several && AccountChecks::listed(*descriptors, SRAccount::FIELD_SERVICES).has_value();
    FUZZ_REQUIRE(several || account.documents().size() == (single ? 1 : 0),
                 QStringLiteral("documents were made up"));
    if (single) {
        FUZZ_REQUIRE(account.documents().first().docNumber() == account.contract(),
                     QStringLiteral("the only document has another number than the contract"));
    }
    bool valid = !account.documents().isEmpty();
    for (const SrDocument &document : account.documents()) {
        checkDocument(document);
        valid = valid && document.isValid();
    }
    FUZZ_REQUIRE(account.isValid() == valid,
                 QStringLiteral("the account's validity is not that of its documents"));

    distribute(account, choice);
    ExactMoney::Sum sum;
    for (const SrService &service : allServices(account))
        sum.add(service.distributed());
    sum.add(account.remainder());
    FUZZ_REQUIRE(!sum.isComparable() || sum.equals(account.amount()),
                 QStringLiteral("the amount is %1").arg(account.amount().toString()));

    SrLegalAccount plain =
        parsed(AccountChecks::withoutMarkup(*descriptors), QStringLiteral(" 501 _b__amp;__b_ "));
    distribute(plain, choice);
    AccountChecks::escaping(account.toHtml(), plain.toHtml());
    AccountChecks::escaping(account.toSummaryHtml(), plain.toSummaryHtml());
    if (sum.isComparable())
        checkReceiptAndPack(account, choice);
}
