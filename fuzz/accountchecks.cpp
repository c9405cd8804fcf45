#include "accountchecks.h"

#include "exactmoney.h"
#include "fuzztarget.h"
#include "recordchecks.h"

#include <bus/wiretext.h>

#include <molvacore/fiscaltag.h>
#include <molvacore/fiscaltypes.h>

#include <QJsonDocument>

using basix::FixNumber;
using ExactMoney::Sum;

namespace {

constexpr qint64 leftOut = 1;

QVariant withoutMarkupIn(const QVariant &value)
{
    switch (value.userType()) {
    case QMetaType::QString: {
        QString text = value.toString();
        for (const QLatin1Char c : {QLatin1Char('<'), QLatin1Char('>'), QLatin1Char('&')})
            text.replace(c, QLatin1Char('_'));
        return text;
    }
    case QMetaType::QVariantList: {
        QVariantList list;
        for (const QVariant &element : value.toList())
            list.append(withoutMarkupIn(element));
        return list;
    }
    case QMetaType::QVariantMap: {
        QVariantMap map = value.toMap();
        for (auto it = map.begin(); it != map.end(); ++it)
            it.value() = withoutMarkupIn(it.value());
        return map;
    }
    }
    return value;
}

/// Qt's JSON takes an integer beyond 2^53 for a double; billing sends such ids as text, and text
/// that cannot be written as UTF-8 not at all. Nested values are not compared.
bool survivesJson(const QVariant &value)
{
    constexpr qint64 exact = Q_INT64_C(1) << 53;
    switch (value.userType()) {
    case QMetaType::LongLong:
        return value.toLongLong() >= -exact && value.toLongLong() <= exact;
    case QMetaType::QString:
        return value.toString().isValidUtf16();
    case QMetaType::QVariantList:
    case QMetaType::QVariantMap:
        return false;
    }
    return true;
}

QVariantList paramList(const QVariant &wrapper)
{
    return wrapper.toMap().value(QStringLiteral("paramList")).toList();
}

FixNumber tag(const QVariantMap &document, int number)
{
    return FixNumber(100, document.value(FiscalTag::key(number)).toLongLong());
}

Sum paidParts(const AccountChecks::Taken &taken)
{
    Sum paid;
    for (const FixNumber &part : {taken.card, taken.cash}) {
        if (part.value() > leftOut)
            paid.add(part);
    }
    return paid;
}

} // namespace

std::optional<int> AccountChecks::listed(const QVariantList &descriptors, const QString &field)
{
    std::optional<int> count;
    for (const QVariant &descriptor : descriptors) {
        if (descriptor.toMap().value(QStringLiteral("name")).toString() == field)
            count = paramList(descriptor).size();
    }
    return count;
}

void AccountChecks::header(const SRAccount &account)
{
    // The setters of an abstract record are reached through a copy of it.
    const QSharedPointer<SRAccount> copy = account.clone();
    FUZZ_REQUIRE(copy->getParams() == account.getParams() && copy->toHtml() == account.toHtml()
                     && copy->toJsonParamsList() == account.toJsonParamsList(),
                 QStringLiteral("a clone differs from its original"));
    const QVariantMap before = account.getParams();
    const QString htmlBefore = account.toHtml();
    copy->setFio(QStringLiteral("Другая"));
    copy->setAddress(QStringLiteral("Другой"));
    copy->setInn(QStringLiteral("0"));
    const FixNumber amount(100, 987654321);
    copy->setCharge(amount);
    copy->setDebt(amount);
    copy->setRemainder(amount);
    copy->setTax(amount);
    FUZZ_REQUIRE(copy->getParams().keys() == before.keys(),
                 QStringLiteral("an account grew or lost fields"));
    FUZZ_REQUIRE(account.getParams() == before && account.toHtml() == htmlBefore,
                 QStringLiteral("writing a clone changed its original"));
    FUZZ_REQUIRE(copy->isEditable(SRAccount::FIELD_REMAINDER)
                     ? copy->remainder() == amount
                     : copy->getField(SRAccount::FIELD_REMAINDER)
                         == account.getField(SRAccount::FIELD_REMAINDER),
                 QStringLiteral("the remainder does not follow its descriptor"));
    for (const auto &[name, read] :
         {std::make_pair(SRAccount::FIELD_CHARGE, account.charge()),
          std::make_pair(SRAccount::FIELD_DEBT, account.debt()),
          std::make_pair(SRAccount::FIELD_REMAINDER, account.remainder()),
          std::make_pair(SRAccount::FIELD_TAX, account.tax())}) {
        const QVariant sent = account.getValue(name);
        const auto written = sent.userType() == QMetaType::QString
            ? ExactMoney::canonical(sent.toString())
            : std::nullopt;
        FUZZ_REQUIRE(!written || *written == read.toString(),
                     QStringLiteral("\"%1\" sent as %2 reads as %3")
                         .arg(name, sent.toString(), read.toString()));
    }
}

void AccountChecks::services(const QList<SrService> &services)
{
    const QVector<RecordChecks::MoneyField<SrService>> fields{
        {SrService::FIELD_CHARGE, &SrService::charge, &SrService::setCharge},
        {SrService::FIELD_TOPAY, &SrService::topay, &SrService::setTopay},
        {SrService::FIELD_DISTRIBUTED, &SrService::distributed, &SrService::setDistributed}};
    for (const SrService &service : services) {
        RecordChecks::checkMoney(service, fields);
        FUZZ_REQUIRE(service.isPeni() == (service.id() == 3924990),
                     QStringLiteral("a service is taken for a penalty, or a penalty is not"));
    }
}

void AccountChecks::readiness(const QList<SrService> &services, bool ready)
{
    int negative = 0;
    int distributed = 0;
    int due = 0;
    for (const SrService &service : services) {
        negative += service.distributed() < FixNumber(100, 0) ? 1 : 0;
        distributed += service.distributed() > FixNumber(100, 0) ? 1 : 0;
        due += service.topay() != FixNumber(100, 0) ? 1 : 0;
    }
    FUZZ_REQUIRE(ready == (negative == 0 && (distributed > 0 || due == 0)),
                 QStringLiteral("ready to pay: %1 with %2 negative, %3 distributed, %4 due")
                     .arg(QString::number(ready), QString::number(negative),
                          QString::number(distributed), QString::number(due)));
}

QVariantList AccountChecks::withoutMarkup(const QVariantList &descriptors)
{
    return withoutMarkupIn(descriptors).toList();
}

void AccountChecks::escaping(const QString &html, const QString &plain)
{
    for (const QLatin1Char mark : {QLatin1Char('<'), QLatin1Char('>')}) {
        FUZZ_REQUIRE(html.count(mark) == plain.count(mark),
                     QStringLiteral("billing's text became markup in: %1").arg(html));
    }
    for (int at = html.indexOf(QLatin1Char('&')); at >= 0;
         at = html.indexOf(QLatin1Char('&'), at + 1)) {
        const QStringRef entity = html.midRef(at, 5);
        FUZZ_REQUIRE(entity.startsWith(QLatin1String("&lt;"))
                         || entity.startsWith(QLatin1String("&gt;"))
                         || entity == QLatin1String("&amp;"),
                     QStringLiteral("billing's text became an entity in: %1").arg(html));
    }
}

void AccountChecks::travels(const QString &json, const QString &name,
                            const QList<SrService> &records)
{
    QJsonParseError error;
    const QVariantList groups = QJsonDocument::fromJson(json.toUtf8(), &error).toVariant().toList();
    FUZZ_REQUIRE(error.error == QJsonParseError::NoError, QStringLiteral("no JSON: %1").arg(json));
    QVariantList sent;
    for (const QVariant &group : groups) {
        if (group.toMap().value(QStringLiteral("name")).toString() == name)
            sent = paramList(group);
    }
    FUZZ_REQUIRE(sent.size() == records.size(),
                 QStringLiteral("%1 records of %2 travel")
                     .arg(QString::number(sent.size()), QString::number(records.size())));
    for (int i = 0; i < records.size(); ++i) {
        SrService back;
        back.parseCheckList(paramList(sent.at(i)));
        const QStringList names = records.at(i).getParams().keys();
        for (const QString &field : names) {
            const QVariant value = records.at(i).getValue(field);
            if (!field.isValidUtf16() || !survivesJson(value))
                continue;
            const QVariant expected = value.isNull() ? QVariant() : value;
            const QVariant found = back.getValue(field);
            FUZZ_REQUIRE(expected.isNull() ? found.isNull() : expected == found,
                         QStringLiteral("field \"%1\" travels as \"%2\" instead of \"%3\"")
                             .arg(field, found.toString(), value.toString()));
        }
        FUZZ_REQUIRE(!survivesJson(records.at(i).getValue(SrService::FIELD_ID))
                         || back.id() == records.at(i).id(),
                     QStringLiteral("service %1 travels as %2")
                         .arg(QString::number(records.at(i).id()), QString::number(back.id())));
        FUZZ_REQUIRE(!survivesJson(records.at(i).getValue(SrService::FIELD_DISTRIBUTED))
                         || back.distributed() == records.at(i).distributed(),
                     QStringLiteral("an amount travels as %1").arg(back.distributed().toString()));
    }
}

AccountChecks::Taken AccountChecks::split(const FixNumber &amount, quint64 choice)
{
    const qint64 whole = qMax<qint64>(amount.value(), 0);
    qint64 card = 0;
    switch (choice % 4) {
    case 0:
        break;
    case 1:
        card = whole;
        break;
    case 2:
        card = qMin<qint64>(whole, 1);
        break;
    case 3:
        card = static_cast<qint64>((choice >> 2) % (static_cast<quint64>(whole) + 1));
        break;
    }
    return {FixNumber(100, card), FixNumber(100, whole - card)};
}

void AccountChecks::receipt(const Check &receipt, const QList<SrService> &services,
                            const SRAccount &account, const Taken &taken)
{
    const QList<CheckOperation> lines = receipt.operations();
    const bool withRemainder = account.remainder().value() > 0;
    FUZZ_REQUIRE(lines.size() == services.size() + (withRemainder ? 1 : 0),
                 QStringLiteral("a receipt of %1 lines for %2 services")
                     .arg(QString::number(lines.size()), QString::number(services.size())));
    Sum total;
    for (int i = 0; i < lines.size(); ++i) {
        const FixNumber price =
            i < services.size() ? services.at(i).distributed() : account.remainder();
        FUZZ_REQUIRE(lines.at(i).price() == price
                         && lines.at(i).quantity().isIdentical({1000, 1000})
                         && lines.at(i).cost() == price,
                     QStringLiteral("line %1 is not one piece of %2")
                         .arg(QString::number(i), price.toString()));
        total.add(price);
    }
    if (!total.isComparable())
        return;
    FUZZ_REQUIRE(account.remainder().value() < 0 || total.equals(account.amount()),
                 QStringLiteral("the lines are not %1 in all").arg(account.amount().toString()));

    const Sum paid = paidParts(taken);
    Sum paymentRecords;
    for (const CheckPayment &payment : receipt.payments()) {
        FUZZ_REQUIRE(payment.sum()
                         == (payment.moneyType() == MoneyType::Card ? taken.card : taken.cash),
                     QStringLiteral("a payment of %1 was not taken").arg(payment.sum().toString()));
        paymentRecords.add(payment.sum());
    }
    const QVariantMap document = receipt.toDocument(false, MoneyType::Cash, true);
    FixNumber recorded = tag(document, FiscalTag::CashSum) + tag(document, FiscalTag::CashlessSum);
    FUZZ_REQUIRE(paymentRecords.equals(recorded) == paid.equals(recorded),
                 QStringLiteral("the receipt's payments are not those taken"));
    FUZZ_REQUIRE(total.equals(tag(document, FiscalTag::Total))
                     && document.value(FiscalTag::key(FiscalTag::Item)).toList().size()
                         == lines.size(),
                 QStringLiteral("the register's document is not the receipt"));
    if (account.remainder().value() >= 0 && account.amount().value() >= 0) {
        FUZZ_REQUIRE(total.equals(recorded),
                     QStringLiteral("the register would refuse: %1 paid").arg(recorded.toString()));
    }
}

void AccountChecks::pack(const PayPack &pack, const FixNumber &sum, const Taken &taken)
{
    Sum payments;
    for (const Payment &payment : pack.payments())
        payments.add(payment.summ());
    FUZZ_REQUIRE(!payments.isComparable() || payments.equals(sum),
                 QStringLiteral("the payments are not %1 in all").arg(sum.toString()));

    for (const PayPackOperation &operation : pack.operations()) {
        const FixNumber part = operation.moneyType() == MoneyType::Card ? taken.card : taken.cash;
        FUZZ_REQUIRE(operation.sum() == part && part.value() > leftOut,
                     QStringLiteral("money of %1 was not taken").arg(operation.sum().toString()));
    }
    const int parts =
        (taken.card.value() > leftOut ? 1 : 0) + (taken.cash.value() > leftOut ? 1 : 0);
    FUZZ_REQUIRE(pack.operations().size() == parts,
                 QStringLiteral("money that was taken is missing"));

    const QVariantMap map = PayPack::packToFullMap(pack);
    bool ok = false;
    const PayPack back = PayPack::packFromFullMap(map, &ok);
    FUZZ_REQUIRE(ok && PayPack::packToFullMap(back) == map && back.operations() == pack.operations()
                     && back.id() == pack.id(),
                 QStringLiteral("a pack does not come back as it was kept"));

    QString error;
    const auto sent = WireText::encode(map, &error);
    FUZZ_REQUIRE(sent, QStringLiteral("a pack cannot be sent: %1").arg(error));
    const auto received = WireText::decode(*sent, &error);
    FUZZ_REQUIRE(received, QStringLiteral("a sent pack cannot be read: %1").arg(error));
    const PayPack arrived = PayPack::packFromFullMap(*received, &ok);
    FUZZ_REQUIRE(ok && arrived.id() == pack.id() && arrived.operations() == pack.operations()
                     && arrived.payments().size() == pack.payments().size(),
                 QStringLiteral("a pack arrives as another one"));
    for (int i = 0; i < arrived.payments().size(); ++i) {
        FUZZ_REQUIRE(arrived.payments().at(i).summ() == pack.payments().at(i).summ(),
                     QStringLiteral("a payment arrives with another sum"));
    }
}
