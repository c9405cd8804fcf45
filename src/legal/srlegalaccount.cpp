#include "srlegalaccount.h"

#include "srhtml.h"
#include "srparamlist.h"
#include "srreceipt.h"
#include "srreceiptaddress.h"
#include "srreceiptline.h"

#include <QDebug>

const QString SrLegalAccount::FIELD_DOCUMENTS = QStringLiteral("documents");

namespace {

/// Billing puts the list of documents beside the descriptor's "value", like that of the services,
/// or inside it.
QVariantList documentList(const QVariantMap &descriptor)
{
    if (descriptor.contains(QStringLiteral("paramList")))
        return SrParamList::of(descriptor);
    return SrParamList::of(descriptor.value(QStringLiteral("value")));
}

QString totalsWithTax(const SRAccount &account)
{
    return SrHtml::totals(
        account, QStringLiteral(" (в т. ч. НДС: ") + account.tax().toString() + QLatin1Char(')'));
}

} // namespace

QVariantList SrLegalAccount::toPayParamsList() const
{
    return {};
}

void SrLegalAccount::parseCheckList(const QVariantList &list)
{
    SrObject::parseCheckList(list);
    m_documents.clear();
    if (hasField(FIELD_DOCUMENTS)) {
        m_documents = SrParamList::records<SrDocument>(documentList(getField(FIELD_DOCUMENTS)));
    } else if (hasField(FIELD_SERVICES)) {
        SrDocument document;
        document.parseSingleDocFormat(contract(), list);
        m_documents.append(document);
    }
}

bool SrLegalAccount::isValid() const
{
    for (const SrDocument &document : m_documents) {
        if (!document.isValid())
            return false;
    }
    return !m_documents.isEmpty();
}

bool SrLegalAccount::isLegal() const
{
    return true;
}

basix::FixNumber SrLegalAccount::amount() const
{
    basix::FixNumber total(100, 0);
    for (const SrDocument &document : m_documents)
        total += document.amount();
    total += remainder();
    return total;
}

QString SrLegalAccount::htmlHeader() const
{
    int length = SrHtml::usualHeaderLength;
    for (const SrDocument &each : m_documents)
        length += SrHtml::usualTableLength + each.services().size() * SrHtml::usualRowLength;
    QString document;
    document.reserve(length);
    document += SrHtml::documentStart();
    SrHtml::appendLine(document, SrHtml::payerName(fio()));
    SrHtml::appendLine(document, SrHtml::heading(address()));
    const QString taxpayer = inn();
    if (!taxpayer.isEmpty())
        SrHtml::appendLine(document, SrHtml::heading(QStringLiteral("ИНН № ") + taxpayer));
    // Deliberate pairing: a legal entity's account number is its contract, the contract member its
    // personal account.
    if (!m_contract.isEmpty()) {
        SrHtml::appendLine(document,
                           SrHtml::heading(QStringLiteral("Лицевой счет № ") + m_contract));
    }
    if (!accountNumber().isEmpty()) {
        SrHtml::appendLine(document,
                           SrHtml::heading(QStringLiteral("Договор № ") + accountNumber()));
    }
    SrHtml::appendLine(document, totalsWithTax(*this));
    return document;
}

QString SrLegalAccount::toHtml() const
{
    QString text = htmlHeader();
    for (const SrDocument &document : m_documents)
        document.appendHtml(text);
    SrHtml::appendLine(text, SrHtml::documentEnd());
    return text;
}

QString SrLegalAccount::toSummaryHtml() const
{
    QString text = htmlHeader();
    SrHtml::appendLine(text, SrHtml::totalToPay(tr("ИТОГО К ОПЛАТЕ"), amount()));
    // A document looks the same before and after the distribution.
    for (const SrDocument &document : m_documents)
        document.appendHtml(text);
    SrHtml::appendLine(text, SrHtml::documentEnd());
    return text;
}

QSharedPointer<SRAccount> SrLegalAccount::clone() const
{
    return QSharedPointer<SrLegalAccount>::create(*this);
}

Check SrLegalAccount::createCheck(const QSharedPointer<Provider> &provider,
                                  const OnlineKkmInfo &kkm, const basix::FixNumber &card,
                                  const basix::FixNumber &cash, bool withBuyer) const
{
    Check receipt = SrReceipt::start(kkm);
    for (const SrDocument &document : m_documents) {
        const QList<SrService> services = document.services();
        for (const SrService &service : services)
            receipt.addOperation(createOperation(provider, kkm, service));
    }
    if (remainder().value() > 0)
        receipt.addOperation(createOperation(provider, kkm, remainder()));

    receipt.setClientPhone(m_clientPhoneOrEmail);
    if (withBuyer) {
        receipt.setBuyer(fio());
        receipt.setBuyerInn(inn());
    }
    receipt.setPrintableData(printableLines());
    SrReceipt::fillRegisterData(receipt);
    SrReceipt::addPayments(receipt, card, cash);
    return receipt;
}

QStringList SrLegalAccount::printableLines() const
{
    constexpr QLatin1Char tab('\t');
    QStringList lines;
    if (!address().isEmpty())
        lines.append(address());
    if (!accountNumber().isEmpty())
        lines.append(tr("Договор №") + tab + accountNumber());
    for (const SrDocument &document : m_documents)
        lines.append(tr("Документ №") + tab + document.docNumber());
    return lines;
}

CheckOperation SrLegalAccount::createOperation(const QSharedPointer<Provider> &provider,
                                               const OnlineKkmInfo &kkm,
                                               const SrService &service) const
{
    const QString name = service.name();
    // Only a blank name is replaced; any other is printed as billing wrote it, surrounding blanks
    // included.
    CheckOperation operation =
        SrReceiptLine::forService(name.trimmed().isEmpty() ? tr("Услуга") : name, service, kkm);
    return formatOperation(provider, kkm, operation);
}

CheckOperation SrLegalAccount::createOperation(const QSharedPointer<Provider> &provider,
                                               const OnlineKkmInfo &kkm,
                                               const basix::FixNumber &amount) const
{
    CheckOperation operation = SrReceiptLine::forAmount(amount, kkm);
    return formatOperation(provider, kkm, operation);
}

CheckOperation SrLegalAccount::formatOperation(const QSharedPointer<Provider> &provider,
                                               const OnlineKkmInfo &kkm,
                                               CheckOperation &operation) const
{
    // The profile's agent sign is deliberately not copied into the line: a legal entity's line
    // keeps the flag it has.
    SrReceiptLine::fillAgentAndSupplier(*provider, kkm, operation);
    return operation;
}

PayPack SrLegalAccount::createPack(Provider provider, const QVariantList &fiscalProperties,
                                   const basix::Currency &currency, const basix::FixNumber &card,
                                   const basix::FixNumber &cash) const
{
    const QString qrcode = SrReceipt::qrText(fiscalProperties);
    const bool takesRemainder = m_startAmount.value() > 0 && m_documents.size() == 1;

    PayPack pack;
    for (const SrDocument &document : m_documents) {
        Payment payment = document.createPay(provider, accountNumber(), qrcode, currency);
        if (takesRemainder && remainder().value() > 0)
            payment.setSumm(payment.summ() + remainder());
        pack.addPayment(payment);
    }
    SrReceipt::addOperations(pack, currency, card, cash);
    return pack;
}

void SrLegalAccount::setClientPhoneOrEmail(const QString &phoneOrEmail)
{
    m_clientPhoneOrEmail = SrReceiptAddress::normalized(phoneOrEmail);
    qWarning() << Q_FUNC_INFO << phoneOrEmail << m_clientPhoneOrEmail;
}

bool SrLegalAccount::operator==(const SrLegalAccount &other) const
{
    return SRAccount::operator==(other) && m_contract == other.m_contract
        && m_documents == other.m_documents && m_startAmount == other.m_startAmount
        && m_clientPhoneOrEmail == other.m_clientPhoneOrEmail;
}
