// A pay pack as it is kept and posted: what is read as a pack is written back as the same pack.
#include "fuzztarget.h"

#include <billing/paypackreader.h>
#include <bus/wiretext.h>

#include <molvacore/paypack.h>

#include <QJsonDocument>
#include <QJsonObject>

namespace {

/// What a pack in order says about money, read from the map by hand.
void checkMoney(const QVariantMap &map, const PayPack &pack)
{
    const QVariantList payments = map.value(QStringLiteral("payments")).toList();
    const QVariantList operations = map.value(QStringLiteral("operations")).toList();
    FUZZ_REQUIRE(payments.size() == pack.payments().size()
                     && operations.size() == pack.operations().size(),
                 QStringLiteral("payments or operations were lost"));
    for (int i = 0; i < payments.size(); ++i) {
        const QVariantMap payment = payments.at(i).toMap();
        FUZZ_REQUIRE(payment.value(QStringLiteral("summ")).toLongLong()
                         == pack.payments().at(i).summ().value(),
                     QStringLiteral("payment %1 has another sum").arg(i));
    }
    for (int i = 0; i < operations.size(); ++i) {
        const QVariantMap operation = operations.at(i).toMap();
        const QVariantMap currency = operation.value(QStringLiteral("currency")).toMap();
        const PayPackOperation read = pack.operations().at(i);
        FUZZ_REQUIRE(operation.value(QStringLiteral("sum")).toLongLong() == read.sum().value()
                         && operation.value(QStringLiteral("moneyType")).toLongLong()
                             == static_cast<int>(read.moneyType())
                         && currency.value(QStringLiteral("number3")).toLongLong()
                             == read.currency().number3(),
                     QStringLiteral("operation %1 is of other money").arg(i));
    }
}

void checkBillingReadsTheSame(const QVariantMap &posted, const PayPack &pack)
{
    QString error;
    const auto received = ReceivedPack::read(posted, &error);
    FUZZ_REQUIRE(received.has_value() == error.isEmpty(),
                 QStringLiteral("billing refuses a pack without a reason, or takes it with one"));
    if (!received)
        return;
    FUZZ_REQUIRE(received->id == QString::number(pack.id())
                     && received->payments.size() == pack.payments().size(),
                 QStringLiteral("billing reads another pack"));
    for (int i = 0; i < pack.payments().size(); ++i) {
        const Payment payment = pack.payments().at(i);
        FUZZ_REQUIRE(received->payments.at(i).sum == payment.summ().value()
                         && received->payments.at(i).account == payment.account().trimmed()
                         && received->payments.at(i).providerId
                             == payment.providerData().workProviderId(),
                     QStringLiteral("billing reads another payment %1").arg(i));
    }
}

} // namespace

FUZZ_TARGET(pay_pack)
{
    QString error;
    const auto map = WireText::decode(input, &error);
    if (!map)
        return;
    // Whatever was sent, billing answers and does not fall over.
    const auto received = ReceivedPack::read(*map, &error);
    FUZZ_REQUIRE(received || !error.isEmpty(), QStringLiteral("refused without a reason"));

    bool ok = false;
    const PayPack pack = PayPack::packFromFullMap(*map, &ok);
    if (!ok)
        return;
    FUZZ_REQUIRE(pack.id() > 0, QStringLiteral("a pack without an id is in order"));
    const QVariantMap kept = PayPack::packToFullMap(pack);
    const PayPack back = PayPack::packFromFullMap(kept, &ok);
    FUZZ_REQUIRE(ok && back.id() == pack.id() && PayPack::packToFullMap(back) == kept,
                 QStringLiteral("a pack does not come back as it was kept"));
    checkMoney(*map, pack);

    const QByteArray json = QJsonDocument(QJsonObject::fromVariantMap(kept)).toJson();
    bool okFromJson = false;
    const PayPack stored = PayPack::packFromFullMap(
        QJsonDocument::fromJson(json).object().toVariantMap(), &okFromJson);
    FUZZ_REQUIRE(okFromJson && stored.id() == pack.id(),
                 QStringLiteral("a pack does not come back from JSON"));
    checkMoney(kept, stored);

    const auto body = WireText::encode(kept, &error);
    FUZZ_REQUIRE(body, QStringLiteral("a pack cannot be sent: %1").arg(error));
    const auto posted = WireText::decode(*body, &error);
    FUZZ_REQUIRE(posted, QStringLiteral("a sent pack cannot be read: %1").arg(error));
    const PayPack arrived = PayPack::packFromFullMap(*posted, &ok);
    FUZZ_REQUIRE(ok && arrived.id() == pack.id() && PayPack::packToFullMap(arrived) == kept,
                 QStringLiteral("a pack arrives as another one"));
    checkBillingReadsTheSame(*posted, arrived);
}
