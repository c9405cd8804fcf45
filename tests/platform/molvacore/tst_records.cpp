#include "sampleinfo.h"

#include <molvacore/agentdata.h>
#include <molvacore/basecheck.h>
#include <molvacore/boxinfo.h>
#include <molvacore/check.h>
#include <molvacore/fsstatus.h>

#include <QTest>

#include <functional>
#include <vector>

namespace {

template<typename Record>
using Change = std::function<void(Record &)>;

/// Every change makes the record unequal to a fresh one and leaves the copy it was made from alone.
template<typename Record>
void checkSetters(const std::vector<Change<Record>> &changes)
{
    const Record original;
    for (const Change<Record> &change : changes) {
        Record copy = original;
        QVERIFY(copy == original);
        change(copy);
        QVERIFY(copy != original);
        QVERIFY(!(copy == original));
        QVERIFY(original == Record());
        Record same;
        change(same);
        QVERIFY(copy == same);
    }
}

const QString text = QStringLiteral("текст");

} // namespace

class tst_Records : public QObject
{
    Q_OBJECT

private slots:
    void boxInfo();
    void onlineKkmInfo();
    void agentData();
    void checkOperation();
    void freshCheckOperation();
    void costOfALine();
    void baseCheck();
    void check();
    void providerData();
    void fsStatus();
};

void tst_Records::boxInfo()
{
    checkSetters<BoxInfo>({
        [](BoxInfo &r) { r.setBoxId(1); },
        [](BoxInfo &r) { r.setName(text); },
        [](BoxInfo &r) { r.setAddress(text); },
        [](BoxInfo &r) { r.setCurrency(basix::Currency(643, QString(), QString())); },
    });
    BoxInfo info;
    QVERIFY(!info.isValid());
    info.setBoxId(-1);
    QVERIFY(!info.isValid());
    info.setBoxId(1);
    QVERIFY(info.isValid());
}

void tst_Records::onlineKkmInfo()
{
    checkSetters<OnlineKkmInfo>({
        [](OnlineKkmInfo &r) { r.setAdditionalProp(text); },
        [](OnlineKkmInfo &r) { r.setAdditionalPropValue(text); },
        [](OnlineKkmInfo &r) { r.setTaxSystem(FDTax::Patent); },
        [](OnlineKkmInfo &r) { r.setTaxRate(6); },
        [](OnlineKkmInfo &r) { r.setDefaultCalcType(PaymentMethod::Credit); },
        [](OnlineKkmInfo &r) { r.setAgentSign(AgentFlag::Attorney); },
        [](OnlineKkmInfo &r) { r.setPayAgentOp(text); },
        [](OnlineKkmInfo &r) { r.setPayAgentPhone(text); },
        [](OnlineKkmInfo &r) { r.setPayOperatorPhone(text); },
        [](OnlineKkmInfo &r) { r.setTransferOperatorAddress(text); },
        [](OnlineKkmInfo &r) { r.setTransferOperatorInn(text); },
        [](OnlineKkmInfo &r) { r.setTransferOperatorName(text); },
        [](OnlineKkmInfo &r) { r.setTransferOperatorPhone(text); },
    });
    const OnlineKkmInfo info = sampleInfo();
    QCOMPARE(info.taxSystem(), FDTax::SimplifiedIncome);
    QCOMPARE(info.taxRate(), static_cast<unsigned char>(6));
    QCOMPARE(info.transferOperatorName(), QStringLiteral("Банк"));
}

void tst_Records::agentData()
{
    const std::vector<Change<AgentData>> changes{
        [](AgentData &r) { r.setPaymentAgengOperation(text); },
        [](AgentData &r) { r.setPaymentAgengPhone(text); },
        [](AgentData &r) { r.setPaymentOperatorPhone(text); },
        [](AgentData &r) { r.setTransferOperatorAddress(text); },
        [](AgentData &r) { r.setTransferOperatorInn(text); },
        [](AgentData &r) { r.setTransferOperatorName(text); },
        [](AgentData &r) { r.setTransferOperatorPhone(text); },
    };
    checkSetters<AgentData>(changes);
    QVERIFY(AgentData().isEmpty());
    for (const Change<AgentData> &change : changes) {
        AgentData agent;
        change(agent);
        QVERIFY(!agent.isEmpty());
    }
    AgentData emptied;
    emptied.setPaymentAgengPhone(QStringLiteral(""));
    QVERIFY(emptied.isEmpty());
}

void tst_Records::checkOperation()
{
    AgentData agent;
    agent.setPaymentAgengPhone(text);
    checkSetters<CheckOperation>({
        [](CheckOperation &r) { r.setItemName(text); },
        [](CheckOperation &r) { r.setQuantity(basix::FixNumber(1000, 2000)); },
        [](CheckOperation &r) { r.setQuantity(basix::FixNumber(100, 1000)); },
        [](CheckOperation &r) { r.setPrice(basix::FixNumber(100, 1)); },
        [](CheckOperation &r) { r.setTaxNumber(6); },
        [](CheckOperation &r) { r.setMethod(PaymentMethod::Advance); },
        [](CheckOperation &r) { r.setItemType(PaymentItemType::Payment); },
        [](CheckOperation &r) { r.setAgentFlag(AgentFlag::PayAgent); },
        [](CheckOperation &r) { r.setProvider(ProviderData(text, {})); },
        [](CheckOperation &r) { r.setProviderInn(text); },
        [agent](CheckOperation &r) { r.setAgent(agent); },
    });
}

void tst_Records::freshCheckOperation()
{
    const CheckOperation operation;
    QCOMPARE(operation.agentFlag(), AgentFlag::None);
    QCOMPARE(operation.quantity().toString(), QStringLiteral("1.000"));
    QCOMPARE(operation.price().toString(), QStringLiteral("0.00"));
    QVERIFY(operation.agent().isEmpty());
    QVERIFY(operation.provider().isEmpty());
}

void tst_Records::costOfALine()
{
    CheckOperation operation;
    operation.setPrice(basix::FixNumber(100, 4217));
    operation.setQuantity(basix::FixNumber(1000, 12345));
    QCOMPARE(operation.cost().toString(), QStringLiteral("520.59"));
}

void tst_Records::baseCheck()
{
    checkSetters<BaseCheck>({
        [](BaseCheck &r) { r.setTax(FDTax::Patent); },
        [](BaseCheck &r) { r.addOperation(CheckOperation()); },
        [](BaseCheck &r) {
            r.setOperations({CheckOperation(), CheckOperation()});
        },
        [](BaseCheck &r) { r.setPrintableData({text}); },
        [](BaseCheck &r) { r.setType(PaymentType::Expense); },
        [](BaseCheck &r) { r.setCheckType(CheckType::Purchase); },
        [](BaseCheck &r) { r.setCashier(text); },
        [](BaseCheck &r) { r.setUserInn(text); },
        [](BaseCheck &r) { r.setRegNumber(text); },
        [](BaseCheck &r) { r.addPayment(CheckPayment(MoneyType::Card, basix::FixNumber(100, 1))); },
        [](BaseCheck &r) { r.setPayments({CheckPayment()}); },
    });
    BaseCheck check;
    check.addPayment(CheckPayment(MoneyType::Card, basix::FixNumber(100, 1)));
    check.addPayment(CheckPayment(MoneyType::Cash, basix::FixNumber(100, 2)));
    QCOMPARE(check.payments().size(), 2);
    QCOMPARE(check.payments().first().moneyType(), MoneyType::Card);
}

void tst_Records::check()
{
    checkSetters<Check>({
        [](Check &r) { r.setAdditionalUserParameter(CheckAdditionalParameter(text, QString())); },
        [](Check &r) { r.setAdditionalUserParameter(CheckAdditionalParameter(QString(), text)); },
        [](Check &r) { r.setClientPhone(text); },
        [](Check &r) { r.setBuyer(text); },
        [](Check &r) { r.setBuyerInn(text); },
        [](Check &r) { r.setCashier(text); },
        [](Check &r) { r.addOperation(CheckOperation()); },
    });
}

void tst_Records::providerData()
{
    checkSetters<ProviderData>({
        [](ProviderData &r) { r.setName(text); },
        [](ProviderData &r) { r.setPhones({text}); },
    });
    QVERIFY(ProviderData().isEmpty());
    QVERIFY(ProviderData(QString(), {QString(), QString()}).isEmpty());
    QVERIFY(!ProviderData(QString(), {QString(), text}).isEmpty());
    QVERIFY(!ProviderData(text, {}).isEmpty());
}

void tst_Records::fsStatus()
{
    checkSetters<FsStatus>({[](FsStatus &r) { r.setReadyForReceipts(true); }});
    QVERIFY(!FsStatus().readyForReceipts());
    QVERIFY(FsStatus(true).readyForReceipts());
}

QTEST_GUILESS_MAIN(tst_Records)
#include "tst_records.moc"
