#include "stationpayment.h"

#include <app/terminalcontext.h>
#include <payments/payscontrollerwrapper.h>
#include <plugin/frhandlerlink.h>

#include <molvacore/check.h>
#include <molvacore/frsettings.h>
#include <molvacore/payment.h>
#include <molvacore/paypack.h>
#include <molvacore/sberposlibhandler.h>

#include <QDateTime>
#include <QRandomGenerator>

#include <cstdio>
#include <utility>

namespace {

basix::FixNumber money(qint64 kopecks)
{
    return basix::FixNumber(100, kopecks);
}

Check checkFor(const StationPayment::Plan &plan)
{
    CheckOperation line;
    line.setItemName(QStringLiteral("Холодное водоснабжение"));
    line.setQuantity(basix::FixNumber(1000, 1000));
    line.setPrice(money(plan.cash + plan.card));
    line.setTaxNumber(6);
    line.setMethod(PaymentMethod::FullPayment);
    line.setItemType(PaymentItemType::Service);
    Check check;
    check.addOperation(line);
    check.setTax(FDTax::General);
    check.setType(PaymentType::Income);
    check.setCheckType(CheckType::Sale);
    check.setCashier(QStringLiteral("Фёдорова Вера Ильинична"));
    const FrSettings settings;
    check.setUserInn(settings.cashboxInn());
    check.setRegNumber(settings.cashboxRegNumber());
    check.setPrintableData({QStringLiteral("г. Приреченск, ул. Набережная, д. 12, кв. 34"),
                            QStringLiteral("Лицевой счет\t%1").arg(plan.account),
                            QStringLiteral("ПЕРИОД\t11.2026")});
    const auto pay = [&check](MoneyType type, qint64 sum) {
        CheckPayment payment;
        payment.setMoneyType(type);
        payment.setSum(money(sum));
        if (sum > 0)
            check.addPayment(payment);
    };
    pay(MoneyType::Card, plan.card);
    pay(MoneyType::Cash, plan.cash);
    return check;
}

} // namespace

StationPayment::StationPayment(TerminalContext &context, const Plan &plan, Teller teller)
    : m_context(context), m_plan(plan), m_teller(std::move(teller))
{
}

void StationPayment::tell(const char *what, const QString &which)
{
    const QByteArray line = QByteArray(what) + ' ' + which.toUtf8();
    if (m_teller) {
        m_teller(line);
        return;
    }
    std::printf("%s\n", line.constData());
    std::fflush(stdout);
}

bool StationPayment::make()
{
    if (!charge() || !print() || !save())
        return false;
    post();
    return true;
}

bool StationPayment::charge()
{
    if (m_plan.card == 0)
        return true;
    SberPosLibHandler terminal(nullptr);
    QString error;
    QStringList slip;
    if (!terminal.init(error) || !terminal.pay(money(m_plan.card), error, slip)) {
        tell("refused-charge", error);
        return false;
    }
    for (const QString &line : qAsConst(slip)) {
        if (line.startsWith(QLatin1String("RRN: ")))
            tell("charged", line.mid(5));
    }
    return true;
}

bool StationPayment::print()
{
    // Payments follow each other within one second here, which a cashier's never do.
    static qint64 seconds = 1000000000 + QRandomGenerator::system()->bounded(1000000000);
    FrHandlerLink fiscalRegister(m_context.fiscalRegister());
    const QVariantMap document = checkFor(m_plan).toDocument(false, MoneyType::Cash, true);
    const QString number = QString::number(seconds++) + m_plan.account;
    if (m_plan.answerLost)
        m_context.fiscalRegister().setCondition(EmulatedRegister::Condition::FailsAfterPrinting,
                                                true);
    QString error;
    bool printed = fiscalRegister.doReceipt(document, number, m_result, error);
    if (!printed && m_plan.answerLost)
        printed = fiscalRegister.doReceipt(document, number, m_result, error);
    if (!printed) {
        tell("refused-receipt", error);
        return false;
    }
    tell("printed",
         m_result.value(QStringLiteral("data")).toMap().value(FiscalData::NUMBER).toString());
    return true;
}

bool StationPayment::save()
{
    Payment payment;
    payment.setCreated(QDateTime::currentDateTime());
    payment.setProviderData(m_context.providers().constFirst(), true);
    payment.setAccount(m_plan.account);
    payment.setCurrencyId(m_context.box().currency().number3());
    payment.setSumm(money(m_plan.cash + m_plan.card));
    PayPack pack;
    pack.addPayment(payment);
    if (m_plan.card > 0)
        pack.addCardOperations(money(m_plan.card), m_context.box().currency(), QString());
    if (m_plan.cash > 0)
        pack.addCashOperations(money(m_plan.cash), m_context.box().currency());
    pack.setFiscProps(m_result.value(QStringLiteral("fiscprops")).toList());
    pack.setFiscData(m_result.value(QStringLiteral("data")).toMap());
    pack.setFiscDocument(m_result.value(QStringLiteral("document")).toMap());
    m_packId = pack.id();
    PaysControllerWrapper wrapper(&m_context.paysController());
    if (!wrapper.savePack(pack, true)) {
        tell("refused-pack", m_context.paysController().lastError());
        return false;
    }
    tell("saved", QString::number(m_packId));
    return true;
}

void StationPayment::post()
{
    PaysControllerWrapper wrapper(&m_context.paysController());
    if (!wrapper.handOnAtOnce())
        return;
    QVariantMap message = m_result;
    QString error;
    if (wrapper.handOn(m_packId, message, error))
        m_context.bus().sendMessage(PaysController::PACK_DESTINATION, message);
    else
        tell("refused-post", error);
}
