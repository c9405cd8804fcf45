#include "srdocument.h"

#include "srhtml.h"
#include "srjson.h"
#include "srparamlist.h"
#include "srpayment.h"
#include "srvalues.h"

#include <molvacore/logvariant.h>

#include <QDebug>
#include <QLoggingCategory>

const QString SrDocument::FIELD_SERVICES = QStringLiteral("services");
const QString SrDocument::FIELD_ID = QStringLiteral("id");
const QString SrDocument::FIELD_NUM = QStringLiteral("num");
const QString SrDocument::FIELD_CHARGE = QStringLiteral("charge");
const QString SrDocument::FIELD_TOPAY = QStringLiteral("topay");
const QString SrDocument::FIELD_DISTRIBUTED = QStringLiteral("distributed");
const QString SrDocument::FIELD_REMAINDER = QStringLiteral("remainder");

namespace {

struct OwnField
{
    QString name;
    QString title;
    bool isEditable = false;
    bool isVisible = false;
    QString mask;
    QVariant regexp;
};

QVariantMap descriptor(const OwnField &field)
{
    return {{QStringLiteral("name"), field.name},
            {QStringLiteral("isEditable"), field.isEditable},
            {QStringLiteral("isVisible"), field.isVisible},
            {QStringLiteral("selected"), false},
            {QStringLiteral("mask"), field.mask},
            {QStringLiteral("regexp"), field.regexp},
            {QStringLiteral("title"), field.title},
            {QStringLiteral("type"), QStringLiteral("string")}};
}

QVariantMap descriptor(const OwnField &field, const QString &value)
{
    QVariantMap map = descriptor(field);
    map.insert(QStringLiteral("value"), value);
    return map;
}

QStringList rendered(const QVariantList &list)
{
    QStringList texts;
    texts.reserve(list.size());
    for (const QVariant &element : list) {
        QString text;
        QDebug(&text).nospace() << logvariant(element);
        texts.append(text);
    }
    return texts;
}

/// The description as it came, but for the list inside the services' descriptor.
QVariantMap withoutServices(QVariantMap description)
{
    const auto found = description.find(SrDocument::FIELD_SERVICES);
    if (found != description.end()) {
        QVariantMap services = found->toMap();
        services.remove(QStringLiteral("paramList"));
        *found = services;
    }
    return description;
}

} // namespace

QVariantList SrDocument::toPayParamsList() const
{
    QVariantList services;
    services.reserve(m_services.size());
    for (const SrService &service : m_services)
        services.append(service.toParamMap());
    return {SrParamList::wrapped(FIELD_SERVICES, services)};
}

void SrDocument::parseCheckList(const QVariantList &list)
{
    SrObject::parseCheckList(list);
    const QVariantMap described = getParams();
    const QVariantList wrappers = SrParamList::of(takeField(FIELD_SERVICES));

    // Put together only for a host that takes the lines, and each service only once: it stands in
    // three of them.
    const QLoggingCategory &log = *QLoggingCategory::defaultCategory();
    const QStringList services = log.isWarningEnabled() ? rendered(wrappers) : QStringList();
    // In place: this is most of the answer's text again.
    QString all = services.join(QLatin1Char(','));
    all.prepend(QLatin1Char('[')).append(QLatin1Char(']'));
    qCWarning(log).noquote() << logvariant(withoutServices(described)) << all;
    qCWarning(log).noquote() << all;
    for (const QString &service : services)
        qCWarning(log).noquote() << service;
    m_services = SrParamList::records<SrService>(wrappers);
}

void SrDocument::parseSingleDocFormat(const QString &docNumber, const QVariantList &list)
{
    static const QString nameKey = QStringLiteral("name");
    static const QString debtName = QStringLiteral("debt");
    static const QString taxName = QStringLiteral("tax");

    QVariantList full{
        descriptor({FIELD_ID, tr("ID документа"), false, false, QLatin1String(""), {}},
                   QLatin1String("")),
        descriptor({FIELD_NUM, tr("Номер документа"), false, true, QLatin1String(""), {}},
                   docNumber),
        descriptor({FIELD_DISTRIBUTED, tr("К оплате"), true, true,
                    QStringLiteral("Cccccccccccccccc"), QStringLiteral("^\\d+(?:[\\.,]\\d+)?$")})};
    for (const QVariant &element : list) {
        const QVariantMap field = element.toMap();
        const QString name = field.value(nameKey).toString();
        if (name == FIELD_CHARGE || name == FIELD_SERVICES || name == taxName) {
            full.append(element);
        } else if (name == debtName) {
            QVariantMap due = field;
            due.insert(nameKey, FIELD_TOPAY);
            full.append(due);
        }
    }
    parseCheckList(full);
}

qint64 SrDocument::id() const
{
    return valueRead(FIELD_ID, SrValues::integer);
}

void SrDocument::setId(qint64 id)
{
    setValue(FIELD_ID, QString::number(id));
}

QString SrDocument::docNumber() const
{
    return valueRead(FIELD_NUM, SrValues::text);
}

void SrDocument::setDocNumber(const QString &docNumber)
{
    setValue(FIELD_NUM, docNumber.trimmed());
}

basix::FixNumber SrDocument::charge() const
{
    return valueRead(FIELD_CHARGE, SrValues::money);
}

void SrDocument::setCharge(const basix::FixNumber &charge)
{
    setValue(FIELD_CHARGE, charge.toString());
}

basix::FixNumber SrDocument::topay() const
{
    return valueRead(FIELD_TOPAY, SrValues::money);
}

void SrDocument::setTopay(const basix::FixNumber &topay)
{
    setValue(FIELD_TOPAY, topay.toString());
}

basix::FixNumber SrDocument::distributed() const
{
    return valueRead(FIELD_DISTRIBUTED, SrValues::money);
}

void SrDocument::setDistributed(const basix::FixNumber &distributed)
{
    setValue(FIELD_DISTRIBUTED, distributed.toString());
}

bool SrDocument::isValid() const
{
    return !m_services.isEmpty() && !docNumber().trimmed().isEmpty();
}

bool SrDocument::isReady() const
{
    return SrService::areReadyToPay(m_services);
}

basix::FixNumber SrDocument::amount() const
{
    basix::FixNumber total(100, 0);
    for (const SrService &service : m_services)
        total += service.distributed();
    return total;
}

void SrDocument::calcByDebt()
{
    for (SrService &service : m_services)
        service.setDistributed(service.topay());
}

void SrDocument::cleanDebt()
{
    for (SrService &service : m_services)
        service.setDistributed(basix::FixNumber(100, 0));
}

QMap<QString, QString> SrDocument::titles() const
{
    return {{FIELD_ID, getTitle(FIELD_ID)},
            {FIELD_NUM, getTitle(FIELD_NUM)},
            {FIELD_CHARGE, getTitle(FIELD_CHARGE)},
            {FIELD_TOPAY, getTitle(FIELD_TOPAY)},
            {FIELD_DISTRIBUTED, getTitle(FIELD_DISTRIBUTED)}};
}

QMap<QString, QString> SrDocument::modelTitles() const
{
    QMap<QString, QString> columns;
    if (!m_services.isEmpty())
        columns = m_services.first().titles();
    columns.insert(FIELD_NUM, getTitle(FIELD_NUM));
    return columns;
}

QString SrDocument::toJsonParamsList() const
{
    return QString::fromUtf8(SrJson::compact(toPayParamsList()));
}

Payment SrDocument::createPay(Provider provider, const QString &account, const QString &qrcode,
                              const basix::Currency &currency) const
{
    const QMap<QString, QString> values{{QStringLiteral("account"), account},
                                        {QStringLiteral("paydata"), toJsonParamsList()},
                                        {QStringLiteral("qrcode"), qrcode},
                                        {QStringLiteral("numdoc"), docNumber()}};
    SrPayment::fillParameters(provider, values);
    return SrPayment::create(provider, account, currency, amount());
}

void SrDocument::appendHtml(QString &document) const
{
    SrHtml::appendLine(
        document, SrHtml::heading(QStringLiteral("Услуги [") + docNumber() + QLatin1Char(']')));
    SrHtml::appendServices(document, m_services);
}

QString SrDocument::toHtml() const
{
    QString document;
    appendHtml(document);
    return document;
}

QString SrDocument::toSummaryHtml() const
{
    return toHtml();
}

bool SrDocument::operator==(const SrDocument &other) const
{
    return SrObject::operator==(other) && m_services == other.m_services;
}
