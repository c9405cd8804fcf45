#include <fiscal/fiscaldocumentchecker.h>

#include <fiscal/fiscalfindings.h>
#include <fiscal/fiscallinechecker.h>

#include <molvacore/fiscaltag.h>

#include <QStringList>

namespace {

/// Tags of payment kinds that the format knows besides cash and cashless: prepayment, credit,
/// other.
constexpr int PREPAID_SUM = 1215;
constexpr int CREDIT_SUM = 1216;
constexpr int BARTER_SUM = 1217;

/// Bytes of the tags that the register adds itself, with their headers.
constexpr int OWN_TAGS_BYTES = 300;

void checkKinds(const QVariantMap &document, FiscalFindings *found)
{
    found->integerOf(document, FiscalTag::SettlementSign, {1, 2, 3, 4},
                     QStringLiteral("признак расчёта"));
    found->integerOf(document, FiscalTag::TaxSystem, {1, 2, 4, 8, 16, 32},
                     QStringLiteral("система налогообложения"));
}

void checkPeople(const QVariantMap &document, FiscalFindings *found)
{
    found->required(document, FiscalTag::UserInn, QStringLiteral("ИНН пользователя"));
    found->inn(document, FiscalTag::UserInn, QStringLiteral("ИНН пользователя"));
    found->inn(document, FiscalTag::BuyerInn, QStringLiteral("ИНН покупателя"));
    found->text(document, FiscalTag::Cashier, 64, QStringLiteral("кассир"));
    found->text(document, FiscalTag::Buyer, 256, QStringLiteral("покупатель"));
    found->text(document, FiscalTag::ClientContact, 64,
                QStringLiteral("телефон или почта покупателя"));

    const QString contact = document.value(FiscalTag::key(FiscalTag::ClientContact)).toString();
    if (!contact.isEmpty() && !contact.contains(QLatin1Char('@')) &&
        !FiscalFindings::isPhone(contact)) {
        found->error(FiscalTag::ClientContact,
                     QStringLiteral("«%1» не телефон вида +79991234567 и не адрес почты")
                         .arg(contact.left(70)));
    }
}

void checkRegisterNumber(const QVariantMap &document, FiscalFindings *found)
{
    if (!found->required(document, FiscalTag::RegisterNumber,
                         QStringLiteral("регистрационный номер кассы")))
        return;
    const QString number =
        document.value(FiscalTag::key(FiscalTag::RegisterNumber)).toString().trimmed();
    if (number.size() != 16 || !FiscalFindings::isDigits(number)) {
        found->error(
            FiscalTag::RegisterNumber,
            QStringLiteral("регистрационный номер кассы «%1» не из 16 цифр").arg(number.left(40)));
    }
}

void checkUserAttribute(const QVariantMap &document, FiscalFindings *found)
{
    const QString key = FiscalTag::key(FiscalTag::UserAttribute);
    if (!document.contains(key))
        return;
    const QVariantMap attribute = document.value(key).toMap();
    found->required(attribute, FiscalTag::UserAttributeName,
                    QStringLiteral("имя дополнительного реквизита"));
    found->required(attribute, FiscalTag::UserAttributeValue,
                    QStringLiteral("значение дополнительного реквизита"));
    found->text(attribute, FiscalTag::UserAttributeName, 64,
                QStringLiteral("имя дополнительного реквизита"));
    found->text(attribute, FiscalTag::UserAttributeValue, 256,
                QStringLiteral("значение дополнительного реквизита"));
}

qint64 checkLines(const QVariantMap &document, FiscalFindings *found)
{
    const QVariantList items = document.value(FiscalTag::key(FiscalTag::Item)).toList();
    if (items.isEmpty())
        found->error(FiscalTag::Item, QStringLiteral("в чеке нет ни одной строки"));
    qint64 sum = 0;
    for (int i = 0; i < items.size(); ++i) {
        FiscalLineChecker line(items.at(i).toMap(), i + 1);
        line.check(found);
        sum += line.cost();
    }
    return sum;
}

void checkSums(const QVariantMap &document, qint64 lines, FiscalFindings *found)
{
    qint64 total = 0;
    if (!found->required(document, FiscalTag::Total, QStringLiteral("итог")) ||
        !found->money(document, FiscalTag::Total, QStringLiteral("итог"), &total))
        return;
    qint64 paid = 0;
    for (int tag :
         {FiscalTag::CashSum, FiscalTag::CashlessSum, PREPAID_SUM, CREDIT_SUM, BARTER_SUM}) {
        qint64 part = 0;
        if (found->money(document, tag, QStringLiteral("оплата"), &part))
            paid += part;
    }
    if (total != lines) {
        found->error(FiscalTag::Total,
                     QStringLiteral("итог %1 не равен сумме строк %2")
                         .arg(FiscalFindings::rubles(total), FiscalFindings::rubles(lines)));
    }
    if (total != paid) {
        found->error(FiscalTag::Total,
                     QStringLiteral("итог %1 не равен сумме оплат %2")
                         .arg(FiscalFindings::rubles(total), FiscalFindings::rubles(paid)));
    }
}

void checkSize(const QVariantMap &document, FiscalFindings *found)
{
    const int bytes = OWN_TAGS_BYTES + FiscalFindings::bytesOf(document);
    if (bytes > FiscalDocumentChecker::MAX_DOCUMENT_BYTES) {
        found->error(
            0, QStringLiteral(
                   "чек слишком велик: около %1 байт при допустимых %2; разбейте платёж на части")
                   .arg(QString::number(bytes),
                        QString::number(FiscalDocumentChecker::MAX_DOCUMENT_BYTES)));
    }
}

} // namespace

QVector<FiscalFinding> FiscalDocumentChecker::check(const QVariantMap &document) const
{
    FiscalFindings found;
    checkKinds(document, &found);
    checkPeople(document, &found);
    checkRegisterNumber(document, &found);
    checkUserAttribute(document, &found);
    checkSums(document, checkLines(document, &found), &found);
    checkSize(document, &found);
    return found.list();
}

bool FiscalDocumentChecker::printable(const QVector<FiscalFinding> &findings)
{
    for (const FiscalFinding &finding : findings) {
        if (finding.severity == FiscalFinding::Severity::Error)
            return false;
    }
    return true;
}

QString FiscalDocumentChecker::errorText(const QVector<FiscalFinding> &findings)
{
    QStringList texts;
    for (const FiscalFinding &finding : findings) {
        if (finding.severity == FiscalFinding::Severity::Error)
            texts.append(finding.text);
    }
    return texts.join(QLatin1Char('\n'));
}
