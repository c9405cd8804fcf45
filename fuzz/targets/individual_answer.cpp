// Billing's answer about a personal account, from the text on the bus to the pack that is posted.
#include "accountchecks.h"
#include "answerinput.h"
#include "exactmoney.h"
#include "fuzztarget.h"
#include "station.h"

#include "individual/srpersonalaccount.h"

using AccountChecks::Taken;

namespace {

SrPersonalAccount parsed(const QVariantList &descriptors, const QString &accountNumber)
{
    SrPersonalAccount account;
    account.parseCheckList(descriptors);
    account.setAccountNumber(accountNumber);
    account.setPeriod(QStringLiteral("03-2024"));
    account.setClientPhoneOrEmail(QStringLiteral("+7 (912) 345-67-89"));
    return account;
}

/// What the two buttons of the services page do.
void distribute(SrPersonalAccount &account, quint64 choice)
{
    QList<SrService> services = account.services();
    for (SrService &service : services) {
        if (choice % 3 == 1)
            service.setDistributed(service.charge());
        else if (choice % 3 == 2)
            service.setDistributed(service.topay());
    }
    account.setServices(services);
}

void checkReceiptAndPack(const SrPersonalAccount &account, quint64 choice)
{
    const QSharedPointer<Provider> provider = Station::provider();
    const Provider catalogue = *provider;
    const Taken taken = AccountChecks::split(account.amount(), choice >> 8);
    const OnlineKkmInfo profile = Station::profile(choice >> 4);
    AccountChecks::receipt(
        account.createCheck(provider, profile, taken.card, taken.cash, choice & 1),
        account.services(), account, taken);

    PayPack pack = account.createPack(*provider, Station::fiscalProperties(), Station::roubles(),
                                      taken.card, taken.cash);
    pack.setFiscDocument(account.createCheck(provider, profile, taken.card, taken.cash, true)
                             .toDocument(false, MoneyType::Cash, true));
    AccountChecks::pack(pack, account.amount(), taken);
    FUZZ_REQUIRE(pack.payments().size() == 1, QStringLiteral("more than one payment"));
    FUZZ_REQUIRE(*provider == catalogue, QStringLiteral("a pack changed the catalogue"));
    FUZZ_REQUIRE(Station::parameter(pack.payments().first(), QStringLiteral("paydata"))
                     == account.toJsonParamsList(),
                 QStringLiteral("the payment's data is not the account's"));
}

} // namespace

FUZZ_TARGET(individual_answer)
{
    const auto descriptors = AnswerInput::payParamList(input);
    if (!descriptors)
        return;
    const quint64 choice = AnswerInput::choice(input);

    SrPersonalAccount account = parsed(*descriptors, QStringLiteral("12<i>34 & %1"));
    FUZZ_REQUIRE(
        account.services().size()
                == AccountChecks::listed(*descriptors, SRAccount::FIELD_SERVICES).value_or(0)
            && account.counters().size()
                == AccountChecks::listed(*descriptors, SRAccount::FIELD_COUNTERS).value_or(0),
        QStringLiteral("services or meters were lost or made up"));
    FUZZ_REQUIRE(account.isValid() != account.services().isEmpty(),
                 QStringLiteral("an account without services is valid, or one with them is not"));
    AccountChecks::header(account);
    AccountChecks::services(account.services());

    const SrPersonalAccount untouched = account;
    distribute(account, choice);
    if (choice % 3 == 0)
        FUZZ_REQUIRE(account == untouched, QStringLiteral("nothing was distributed and it shows"));
    AccountChecks::readiness(account.services(), SrService::areReadyToPay(account.services()));
    ExactMoney::Sum sum;
    for (const SrService &service : account.services())
        sum.add(service.distributed());
    sum.add(account.remainder());
    FUZZ_REQUIRE(!sum.isComparable() || sum.equals(account.amount()),
                 QStringLiteral("the amount is %1").arg(account.amount().toString()));

    SrPersonalAccount plain =
        parsed(AccountChecks::withoutMarkup(*descriptors), QStringLiteral("12_i_34 _ %1"));
    distribute(plain, choice);
    AccountChecks::escaping(account.toHtml(), plain.toHtml());
    AccountChecks::escaping(account.toSummaryHtml(), plain.toSummaryHtml());
    AccountChecks::travels(account.toJsonParamsList(), SRAccount::FIELD_SERVICES,
                           account.services());
    if (sum.isComparable())
        checkReceiptAndPack(account, choice);
}
