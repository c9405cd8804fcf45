#include "srreceiptline.h"

#include <molvacore/agentdata.h>
#include <molvacore/fiscaltypes.h>
#include <molvacore/providerdata.h>

#include <QStringList>

namespace {

// Numbers of the fiscal data format; how the host names its enumerators is the host's own affair.
constexpr auto itemTypeService = static_cast<PaymentItemType>(4);  // tag 1212
constexpr auto itemTypePayment = static_cast<PaymentItemType>(10); // tag 1212
constexpr auto itemTypePenalty = static_cast<PaymentItemType>(12); // tag 1212
constexpr auto methodAdvance = static_cast<PaymentMethod>(3);      // tag 1214

// Bits of tag 1222.
constexpr int bankPaymentAgent = 1;
constexpr int bankPaymentSubagent = 2;
constexpr int paymentAgent = 4;
constexpr int paymentSubagent = 8;
constexpr int attorney = 16;
constexpr int commissionAgent = 32;
constexpr int otherAgent = 64;

CheckOperation onePiece(const QString &itemName, const basix::FixNumber &price,
                        const OnlineKkmInfo &kkm)
{
    CheckOperation line;
    line.setItemName(itemName);
    line.setQuantity(basix::FixNumber(1000, 1000));
    line.setPrice(price);
    line.setTaxNumber(kkm.taxRate());
    return line;
}

void fillSupplier(const Provider &provider, CheckOperation &line)
{
    const QString name = provider.legalName().isEmpty() ? provider.name() : provider.legalName();
    const QStringList phones = provider.phones().remove(QLatin1Char(' ')).split(QLatin1Char(','));
    line.setProvider(ProviderData(name, phones));
    line.setProviderInn(provider.inn());
}

AgentData agentPhones(const OnlineKkmInfo &kkm)
{
    AgentData agent;
    agent.setPaymentAgengPhone(kkm.payAgentPhone());
    agent.setPaymentOperatorPhone(kkm.payOperatorPhone());
    return agent;
}

AgentData bankAgent(const OnlineKkmInfo &kkm)
{
    AgentData agent = agentPhones(kkm);
    agent.setPaymentAgengOperation(kkm.payAgentOp());
    agent.setTransferOperatorAddress(kkm.transferOperatorAddress());
    agent.setTransferOperatorInn(kkm.transferOperatorInn());
    agent.setTransferOperatorName(kkm.transferOperatorName());
    agent.setTransferOperatorPhone(kkm.transferOperatorPhone());
    return agent;
}

} // namespace

CheckOperation SrReceiptLine::forService(const QString &itemName, const SrService &service,
                                         const OnlineKkmInfo &kkm)
{
    CheckOperation line = onePiece(itemName, service.distributed(), kkm);
    line.setMethod(kkm.defaultCalcType());
    line.setItemType(service.isPeni() ? itemTypePenalty : itemTypeService);
    return line;
}

CheckOperation SrReceiptLine::forAmount(const basix::FixNumber &amount, const OnlineKkmInfo &kkm)
{
    CheckOperation line = onePiece(QString(), amount, kkm);
    line.setMethod(methodAdvance);
    line.setItemType(itemTypePayment);
    return line;
}

void SrReceiptLine::fillAgentAndSupplier(const Provider &provider, const OnlineKkmInfo &kkm,
                                         CheckOperation &line)
{
    switch (static_cast<int>(line.agentFlag())) {
    case bankPaymentAgent:
    case bankPaymentSubagent:
        line.setAgent(bankAgent(kkm));
        fillSupplier(provider, line);
        break;
    case paymentAgent:
    case paymentSubagent:
    case attorney:
    case commissionAgent:
    case otherAgent:
        fillSupplier(provider, line);
        line.setAgent(agentPhones(kkm));
        break;
    }
}
