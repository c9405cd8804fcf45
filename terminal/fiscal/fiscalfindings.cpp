#include <fiscal/fiscalfindings.h>

#include <fiscal/printertext.h>

#include <basixcore/fixnumber.h>

#include <molvacore/fiscaltag.h>

#include <QStringList>

#include <algorithm>

namespace {

constexpr qint64 SIX_BYTES = (Q_INT64_C(1) << 48) - 1;
constexpr int TAG_HEADER_BYTES = 4;
constexpr int NUMBER_BYTES = 6;

bool checkDigitHolds(const QString &inn, std::initializer_list<int> weights, int position)
{
    int sum = 0;
    int i = 0;
    for (int weight : weights)
        sum += weight * inn.at(i++).digitValue();
    return sum % 11 % 10 == inn.at(position).digitValue();
}

bool innHolds(const QString &inn)
{
    if (inn.size() == 10)
        return checkDigitHolds(inn, {2, 4, 10, 3, 5, 9, 4, 6, 8}, 9);
    return checkDigitHolds(inn, {7, 2, 4, 10, 3, 5, 9, 4, 6, 8}, 10) &&
           checkDigitHolds(inn, {3, 7, 2, 4, 10, 3, 5, 9, 4, 6, 8}, 11);
}

bool isWholeNumber(const QVariant &value)
{
    switch (value.userType()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Long:
    case QMetaType::LongLong:
    case QMetaType::UChar:
    case QMetaType::Short:
    case QMetaType::UShort:
        return true;
    default:
        return false;
    }
}

int bytesOfValue(const QVariant &value)
{
    switch (value.userType()) {
    case QMetaType::QVariantMap:
        return FiscalFindings::bytesOf(value.toMap());
    case QMetaType::QString:
        return PrinterText::length(value.toString());
    default:
        return NUMBER_BYTES;
    }
}

} // namespace

void FiscalFindings::add(FiscalFinding::Severity severity, int tag, const QString &text)
{
    QString whole = m_place.isEmpty() ? text : m_place + QStringLiteral(": ") + text;
    whole[0] = whole.at(0).toUpper();
    if (tag != 0)
        whole += QStringLiteral(" (тег %1)").arg(tag);
    m_list.append({severity, tag, whole + QLatin1Char('.')});
}

void FiscalFindings::error(int tag, const QString &text)
{
    add(FiscalFinding::Severity::Error, tag, text);
}

void FiscalFindings::warning(int tag, const QString &text)
{
    add(FiscalFinding::Severity::Warning, tag, text);
}

bool FiscalFindings::required(const QVariantMap &map, int tag, const QString &what)
{
    const QVariant value = map.value(FiscalTag::key(tag));
    const bool blank =
        value.userType() == QMetaType::QString && value.toString().trimmed().isEmpty();
    if (value.isValid() && !blank)
        return true;
    error(tag, QStringLiteral("нет обязательного реквизита «%1»").arg(what));
    return false;
}

void FiscalFindings::text(const QVariantMap &map, int tag, int limit, const QString &what)
{
    const QVariant value = map.value(FiscalTag::key(tag));
    if (!value.isValid())
        return;
    const QString content = value.toString();
    const int length = PrinterText::length(content);
    if (length > limit) {
        error(tag, QStringLiteral("реквизит «%1» длиннее %2 знаков: %3")
                       .arg(what, QString::number(limit), QString::number(length)));
    }
    if (PrinterText::losesCharacters(content))
        warning(tag,
                QStringLiteral("в реквизите «%1» есть знаки, которых нет у принтера").arg(what));
}

void FiscalFindings::inn(const QVariantMap &map, int tag, const QString &what)
{
    const QVariant value = map.value(FiscalTag::key(tag));
    if (!value.isValid())
        return;
    const QString inn = value.toString();
    const QString digits = inn.endsWith(QLatin1String("  ")) ? inn.left(inn.size() - 2) : inn;
    const bool shape =
        inn.size() == 12 && (digits.size() == 12 || digits.size() == 10) && isDigits(digits);
    if (!shape) {
        error(tag, QStringLiteral("%1 «%2» не из 12 знаков: 12 цифр или 10 цифр и два пробела")
                       .arg(what, inn.left(40)));
        return;
    }
    if (digits != QLatin1String("000000000000") && !innHolds(digits))
        warning(tag, QStringLiteral("%1 %2: не сходится контрольная цифра").arg(what, digits));
}

void FiscalFindings::integerOf(const QVariantMap &map, int tag, std::initializer_list<int> allowed,
                               const QString &what)
{
    if (!required(map, tag, what))
        return;
    const QVariant value = map.value(FiscalTag::key(tag));
    const qint64 number = value.toLongLong();
    const bool known =
        std::any_of(allowed.begin(), allowed.end(), [number](int one) { return one == number; });
    if (!isWholeNumber(value) || !known)
        error(tag, QStringLiteral("недопустимое значение реквизита «%1»: %2")
                       .arg(what, value.toString().left(40)));
}

bool FiscalFindings::money(const QVariantMap &map, int tag, const QString &what, qint64 *value)
{
    const QVariant content = map.value(FiscalTag::key(tag));
    if (!content.isValid())
        return false;
    if (!isWholeNumber(content)) {
        error(tag, QStringLiteral("реквизит «%1» не является целым числом копеек").arg(what));
        return false;
    }
    *value = content.toLongLong();
    if (*value < 0) {
        error(tag,
              QStringLiteral("отрицательная сумма в реквизите «%1»: %2").arg(what, rubles(*value)));
        return false;
    }
    if (*value > SIX_BYTES) {
        error(
            tag,
            QStringLiteral("слишком большая сумма в реквизите «%1»: %2").arg(what, rubles(*value)));
        return false;
    }
    return true;
}

void FiscalFindings::phones(const QVariantMap &map, int tag, const QString &what)
{
    const QVariant value = map.value(FiscalTag::key(tag));
    const QVariantList list =
        value.userType() == QMetaType::QString ? QVariantList{value} : value.toList();
    for (const QVariant &phone : list) {
        if (!isPhone(phone.toString()))
            error(tag, QStringLiteral("%1 «%2» не вида +74951234567")
                           .arg(what, phone.toString().left(40)));
    }
}

bool FiscalFindings::isDigits(const QString &text)
{
    return !text.isEmpty() && std::all_of(text.begin(), text.end(), [](QChar c) {
        return c >= QLatin1Char('0') && c <= QLatin1Char('9');
    });
}

bool FiscalFindings::isPhone(const QString &text)
{
    return text.size() <= 19 && text.startsWith(QLatin1Char('+')) && isDigits(text.mid(1));
}

QString FiscalFindings::rubles(qint64 kopecks)
{
    return basix::FixNumber(100, kopecks).toString();
}

int FiscalFindings::bytesOf(const QVariantMap &map)
{
    int bytes = 0;
    for (auto it = map.cbegin(); it != map.cend(); ++it) {
        bool isTag = false;
        it.key().toInt(&isTag);
        if (!isTag)
            continue;
        const bool list = it.value().userType() == QMetaType::QVariantList ||
                          it.value().userType() == QMetaType::QStringList;
        const QVariantList values = list ? it.value().toList() : QVariantList{it.value()};
        for (const QVariant &value : values)
            bytes += TAG_HEADER_BYTES + bytesOfValue(value);
    }
    return bytes;
}
