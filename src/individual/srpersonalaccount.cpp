#include "srpersonalaccount.h"

#include "srhtml.h"
#include "srparamlist.h"
#include "srpayment.h"
#include "srreceipt.h"
#include "srreceiptaddress.h"
#include "srreceiptline.h"

#include <QDebug>

QVariantList SrPersonalAccount::toPayParamsList() const
{
    QVariantList services;
    services.reserve(m_services.size());
    for (const SrService &service : m_services)
        services.append(service.toParamMap());
    QVariantList counters;
    counters.reserve(m_counters.size());
    for (const SrCounter &counter : m_counters)
        counters.append(counter.toParamsMap());
    return {SrParamList::wrapped(FIELD_SERVICES, services),
            SrParamList::wrapped(FIELD_COUNTERS, counters)};
}

void SrPersonalAccount::parseCheckList(const QVariantList &list)
{
    SrObject::parseCheckList(list);
    m_services = SrParamList::records<SrService>(SrParamList::of(takeField(FIELD_SERVICES)));
    m_counters = SrParamList::records<SrCounter>(SrParamList::of(takeField(FIELD_COUNTERS)));
}

bool SrPersonalAccount::isValid() const
{
    return !m_services.isEmpty();
}

bool SrPersonalAccount::isLegal() const
{
    return false;
}

basix::FixNumber SrPersonalAccount::amount() const
{
    basix::FixNumber total(100, 0);
    for (const SrService &service : m_services)
        total += service.distributed();
    total += remainder();
    return total;
}

QString SrPersonalAccount::htmlHeader() const
{
    QString document;
    document.reserve(SrHtml::usualHeaderLength
                     + (m_services.size() + m_counters.size()) * SrHtml::usualRowLength);
    document += SrHtml::documentStart();
    SrHtml::appendLine(document, SrHtml::payerName(fio()));
    SrHtml::appendLine(document, SrHtml::heading(address()));
    if (!m_period.isEmpty())
        SrHtml::appendLine(document, SrHtml::heading(QStringLiteral("ПЕРИОД ") + m_period));
    if (!accountNumber().isEmpty()) {
        SrHtml::appendLine(document,
                           SrHtml::heading(QStringLiteral("Лицевой счет № ") + accountNumber()));
    }
    SrHtml::appendLine(document, SrHtml::totals(*this));
    return document;
}

QString SrPersonalAccount::toHtml() const
{
    QString document = htmlHeader();
    SrHtml::appendLine(document, SrHtml::heading(QStringLiteral("Услуги")));
    SrHtml::appendServices(document, m_services);
    SrHtml::appendLine(document, SrHtml::documentEnd());
    return document;
}

QString SrPersonalAccount::toSummaryHtml() const
{
    QString document = htmlHeader();
    SrHtml::appendLine(document, SrHtml::totalToPay(tr("ИТОГО К ОПЛАТЕ"), amount()));
    SrHtml::appendLine(document, SrHtml::heading(QStringLiteral("Услуги")));
    SrHtml::appendServices(document, m_services);
    SrHtml::appendLine(document, SrHtml::heading(QStringLiteral("Показания счетчиков")));
    SrHtml::appendCounters(document, m_counters);
    SrHtml::appendLine(document, SrHtml::documentEnd());
    return document;
}

QSharedPointer<SRAccount> SrPersonalAccount::clone() const
{
    return QSharedPointer<SrPersonalAccount>::create(*this);
}

Check SrPersonalAccount::createCheck(const QSharedPointer<Provider> &provider,
                                     const OnlineKkmInfo &kkm, const basix::FixNumber &card,
                                     const basix::FixNumber &cash, bool withBuyer) const
{
    Check receipt = SrReceipt::start(kkm);
    for (const SrService &service : m_services)
        receipt.addOperation(createOperation(provider, kkm, service));
    if (remainder().value() > 0)
        receipt.addOperation(createOperation(provider, kkm, remainder()));

    receipt.setClientPhone(m_clientPhoneOrEmail);
    if (withBuyer) {
        receipt.setBuyer(fio());
        const QString buyerInn = inn().trimmed();
        if (!buyerInn.isEmpty())
            receipt.setBuyerInn(buyerInn);
    }
    receipt.setPrintableData(printableLines());
    SrReceipt::fillRegisterData(receipt);
    SrReceipt::addPayments(receipt, card, cash);
    return receipt;
}

QStringList SrPersonalAccount::printableLines() const
{
    constexpr QLatin1Char tab('\t');
    QStringList lines;
    if (!address().isEmpty())
        lines.append(address());
    if (!accountNumber().isEmpty())
        lines.append(tr("Лицевой счет") + tab + accountNumber());
    if (!m_period.isEmpty())
        lines.append(tr("ПЕРИОД") + tab + m_period);
    if (!m_counters.isEmpty())
        lines.append(tr("Показания счетчиков"));
    for (const SrCounter &counter : m_counters) {
        lines.append(counter.name() + tab + QString::number(counter.lastValue()) + QLatin1Char('/')
                     + QString::number(counter.curValue()));
    }
    return lines;
}

CheckOperation SrPersonalAccount::createOperation(const QSharedPointer<Provider> &provider,
                                                  const OnlineKkmInfo &kkm,
                                                  const SrService &service) const
{
    CheckOperation operation = SrReceiptLine::forService(service.name(), service, kkm);
    return formatOperation(provider, kkm, operation);
}

CheckOperation SrPersonalAccount::createOperation(const QSharedPointer<Provider> &provider,
                                                  const OnlineKkmInfo &kkm,
                                                  const basix::FixNumber &amount) const
{
    CheckOperation operation = SrReceiptLine::forAmount(amount, kkm);
    return formatOperation(provider, kkm, operation);
}

CheckOperation SrPersonalAccount::formatOperation(const QSharedPointer<Provider> &provider,
                                                  const OnlineKkmInfo &kkm,
                                                  CheckOperation &operation) const
{
    // The register's profile decides whether an individual's payment is taken as an agent.
    operation.setAgentFlag(kkm.agentSign());
    SrReceiptLine::fillAgentAndSupplier(*provider, kkm, operation);
    return operation;
}

PayPack SrPersonalAccount::createPack(Provider provider, const QVariantList &fiscalProperties,
                                      const basix::Currency &currency, const basix::FixNumber &card,
                                      const basix::FixNumber &cash) const
{
    const QMap<QString, QString> values{
        {QStringLiteral("account"), accountNumber()},
        {QStringLiteral("period"), m_period},
        {QStringLiteral("paydata"), toJsonParamsList()},
        {QStringLiteral("qrcode"), SrReceipt::qrText(fiscalProperties)}};
    SrPayment::fillParameters(provider, values);

    PayPack pack;
    pack.addPayment(SrPayment::create(provider, accountNumber(), currency, amount()));
    SrReceipt::addOperations(pack, currency, card, cash);
    return pack;
}

void SrPersonalAccount::setClientPhoneOrEmail(const QString &phoneOrEmail)
{
    m_clientPhoneOrEmail = SrReceiptAddress::normalized(phoneOrEmail);
    qWarning() << phoneOrEmail << m_clientPhoneOrEmail;
}

bool SrPersonalAccount::operator==(const SrPersonalAccount &other) const
{
    return SRAccount::operator==(other) && m_services == other.m_services
        && m_period == other.m_period && m_docNumber == other.m_docNumber
        && m_startAmount == other.m_startAmount && m_counters == other.m_counters;
}
