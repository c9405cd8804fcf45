#include "generators.h"
#include "hoststation.h"
#include "property.h"

#include "individual/srpersonalaccount.h"
#include "legal/srlegalaccount.h"

#include <molvacore/dbconnector.h>
#include <molvacore/fiscaltag.h>
#include <molvacore/fiscaltypes.h>

#include <memory>
#include <numeric>

using basix::FixNumber;
using Generators::Service;
using Services = std::vector<Service>;

namespace {

qint64 total(const Services &services)
{
    return std::accumulate(services.begin(), services.end(), qint64(0),
                           [](qint64 sum, const Service &s) { return sum + s.distributed; });
}

QVariantMap remainderField(qint64 kopecks)
{
    return {{QStringLiteral("name"), QStringLiteral("remainder")},
            {QStringLiteral("value"), Generators::money(kopecks)}};
}

/// How an amount was taken; either part may be nothing or a single kopeck.
struct Taken
{
    qint64 card = 0;
    qint64 cash = 0;
};

Taken split(qint64 amount)
{
    const qint64 card = *rc::gen::weightedOneOf<qint64>(
        {{2, rc::gen::inRange<qint64>(0, amount + 1)},
         {1,
          rc::gen::elementOf(std::vector<qint64>{0, amount, qMin<qint64>(1, amount),
                                                 qMax<qint64>(0, amount - 1)})}});
    return {card, amount - card};
}

/// A part of one kopeck is left out, deliberately.
qint64 shown(qint64 part)
{
    return part > 1 ? part : 0;
}

qint64 kopecks(const QVariantMap &document, int tag)
{
    return document.value(FiscalTag::key(tag)).toLongLong();
}

/// The receipt of `services` and the remainder, paid as `taken`.
void assertReceipt(const Check &receipt, const Services &services, qint64 remainder,
                   const Taken &taken)
{
    const QList<CheckOperation> lines = receipt.operations();
    RC_ASSERT(lines.size() == static_cast<int>(services.size()) + (remainder > 0 ? 1 : 0));
    for (std::size_t i = 0; i < services.size(); ++i) {
        const CheckOperation &line = lines.at(static_cast<int>(i));
        RC_ASSERT(line.price().value() == services[i].distributed);
        RC_ASSERT(line.quantity().isIdentical(FixNumber(1000, 1000)));
        RC_ASSERT(static_cast<int>(line.itemType()) == (services[i].id == 3924990 ? 12 : 4));
    }
    if (remainder > 0) {
        RC_ASSERT(lines.last().price().value() == remainder);
        RC_ASSERT(static_cast<int>(lines.last().itemType()) == 10);
        RC_ASSERT(static_cast<int>(lines.last().method()) == 3);
    }

    qint64 card = 0;
    qint64 cash = 0;
    for (const CheckPayment &payment : receipt.payments())
        (payment.moneyType() == MoneyType::Card ? card : cash) += payment.sum().value();
    RC_ASSERT(card == shown(taken.card));
    RC_ASSERT(cash == shown(taken.cash));

    const qint64 amount = total(services) + remainder;
    const QVariantMap document = receipt.toDocument(false, MoneyType::Cash, true);
    RC_ASSERT(kopecks(document, FiscalTag::Total) == amount);
    RC_ASSERT(kopecks(document, FiscalTag::CashlessSum) == card);
    RC_ASSERT(kopecks(document, FiscalTag::CashSum) == amount - card);
}

void assertOperations(const PayPack &pack, const Taken &taken)
{
    qint64 card = 0;
    qint64 cash = 0;
    for (const PayPackOperation &operation : pack.operations())
        (operation.moneyType() == MoneyType::Card ? card : cash) += operation.sum().value();
    RC_ASSERT(card == shown(taken.card));
    RC_ASSERT(cash == shown(taken.cash));
    RC_ASSERT(pack.operations().size() == (card > 0 ? 1 : 0) + (cash > 0 ? 1 : 0));
    bool ok = false;
    RC_ASSERT(PayPack::packFromFullMap(PayPack::packToFullMap(pack), &ok).payments()
              == pack.payments());
    RC_ASSERT(ok);
}

FixNumber roubles(qint64 amount)
{
    return FixNumber(100, amount);
}

} // namespace

class TestReceiptProperties : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void personalAccount();
    void legalAccount();
    void packsNeverShareAnId();

private:
    std::unique_ptr<HostStation> m_station;
    std::unique_ptr<DbConnector> m_database; ///< kept open: a receipt reads it
};

void TestReceiptProperties::initTestCase()
{
    m_station = std::make_unique<HostStation>();
    m_database = std::make_unique<DbConnector>();
}

void TestReceiptProperties::cleanupTestCase()
{
    m_database.reset();
    m_station.reset();
}

void TestReceiptProperties::personalAccount()
{
    CHECK_PROPERTY("receipt and pack of a personal account come to what was paid", [] {
        const Services services = *Generators::payableServices();
        const qint64 remainder = *Generators::amountNotBelowZero();
        const qint64 amount = total(services) + remainder;
        const Taken taken = split(amount);
        SrPersonalAccount account;
        account.parseCheckList(
            {remainderField(remainder), Generators::listed(QStringLiteral("services"), services)});
        account.setAccountNumber(QStringLiteral("0012345"));
        RC_ASSERT(account.amount().value() == amount);

        const QSharedPointer<Provider> provider = HostStation::provider();
        assertReceipt(account.createCheck(provider, HostStation::profile(), roubles(taken.card),
                                          roubles(taken.cash), false),
                      services, remainder, taken);
        const PayPack pack = account.createPack(*provider, {}, HostStation::roubles(),
                                                roubles(taken.card), roubles(taken.cash));
        RC_ASSERT(pack.payments().size() == 1);
        RC_ASSERT(pack.payments().first().summ().value() == amount);
        assertOperations(pack, taken);
    });
}

void TestReceiptProperties::legalAccount()
{
    CHECK_PROPERTY("receipt and pack of a contract come to what was paid", [] {
        std::vector<Services> documents;
        Services all;
        QVector<QVariantList> descriptions;
        const int count = *rc::gen::inRange(0, 4);
        for (int i = 0; i < count; ++i) {
            documents.push_back(*Generators::payableServices());
            all.insert(all.end(), documents.back().begin(), documents.back().end());
            descriptions.append({QVariantMap{{QStringLiteral("name"), QStringLiteral("num")},
                                             {QStringLiteral("value"), QString::number(i)}},
                                 Generators::listed(QStringLiteral("services"), documents.back())});
        }
        const qint64 remainder = *Generators::amountNotBelowZero();
        const qint64 amount = total(all) + remainder;
        const Taken taken = split(amount);
        const qint64 startAmount = *rc::gen::inRange<qint64>(0, 2);

        SrLegalAccount account;
        account.parseCheckList({remainderField(remainder),
                                Generators::listed(QStringLiteral("documents"), descriptions)});
        account.setStartAmount(roubles(startAmount));
        RC_ASSERT(account.amount().value() == amount);

        const QSharedPointer<Provider> provider = HostStation::provider();
        assertReceipt(account.createCheck(provider, HostStation::profile(), roubles(taken.card),
                                          roubles(taken.cash), false),
                      all, remainder, taken);
        const PayPack pack = account.createPack(*provider, {}, HostStation::roubles(),
                                                roubles(taken.card), roubles(taken.cash));
        RC_ASSERT(pack.payments().size() == count);
        // Only a single document that was asked for with an amount carries the remainder.
        const qint64 carried = startAmount > 0 && count == 1 ? remainder : 0;
        for (int i = 0; i < count; ++i) {
            RC_ASSERT(pack.payments().at(i).summ().value()
                      == total(documents.at(static_cast<std::size_t>(i))) + carried);
        }
        assertOperations(pack, taken);
    });
}

void TestReceiptProperties::packsNeverShareAnId()
{
    QSet<qint64> ids;
    constexpr int count = 20000;
    for (int i = 0; i < count; ++i)
        ids.insert(PayPack().id());
    QCOMPARE(ids.size(), count);
    QVERIFY(!ids.contains(0));
}

QTEST_GUILESS_MAIN(TestReceiptProperties)
#include "tst_receiptproperties.moc"
