#include "paymentcode.h"

#include "paymentcoderules.h"

#include <algorithm>

namespace {

const QString separators = QStringLiteral("|#;:^_~{}!$%&()*+,/@");

} // namespace

void PaymentCode::setField(const QString &name, const QString &value)
{
    const auto same = [&name](const Field &field) { return field.name == name; };
    const auto found = std::find_if(m_fields.begin(), m_fields.end(), same);
    if (value.isEmpty())
        m_fields.erase(std::remove_if(m_fields.begin(), m_fields.end(), same), m_fields.end());
    else if (found == m_fields.end())
        m_fields.append({name, value});
    else
        found->value = value;
}

QString PaymentCode::field(const QString &name) const
{
    const auto found = std::find_if(m_fields.cbegin(), m_fields.cend(),
                                    [&name](const Field &field) { return field.name == name; });
    return found == m_fields.cend() ? QString() : found->value;
}

QVector<PaymentCode::Field> PaymentCode::fields() const
{
    const QStringList first = PaymentCodeRules::mandatoryNames();
    QVector<Field> result;
    for (const QString &name : first)
        result.append({name, field(name)});
    for (const Field &field : m_fields) {
        if (!first.contains(field.name))
            result.append(field);
    }
    return result;
}

std::optional<QChar> PaymentCode::usableSeparator() const
{
    const auto isFree = [this](QChar sign) {
        return std::none_of(m_fields.cbegin(), m_fields.cend(),
                            [sign](const Field &field) { return field.value.contains(sign); });
    };
    if (m_separator)
        return isFree(*m_separator) ? m_separator : std::nullopt;
    const auto found = std::find_if(separators.cbegin(), separators.cend(), isFree);
    return found == separators.cend() ? std::nullopt : std::optional<QChar>(*found);
}

QStringList PaymentCode::problems(CodeEncoding encoding) const
{
    QStringList result;
    const QStringList mandatory = PaymentCodeRules::mandatoryNames();
    int block = 0;
    for (const Field &field : fields()) {
        const bool first = mandatory.contains(field.name);
        if (first)
            block += CodeEncodings::encode(field.name + field.value, encoding).size() + 2;
        if (first && field.value.isEmpty() && field.name != QLatin1String("CorrespAcc")) {
            result.append(QStringLiteral("%1 (%2): не заполнено, а без этого код недействителен.")
                              .arg(PaymentCodeRules::title(field.name), field.name));
            continue;
        }
        if (const auto problem = PaymentCodeRules::nameProblem(field.name))
            result.append(*problem);
        if (const auto problem = PaymentCodeRules::problem(field.name, field.value))
            result.append(*problem);
        if (std::any_of(field.value.cbegin(), field.value.cend(),
                        [](QChar c) { return c.category() == QChar::Other_Control; }))
            result.append(
                QStringLiteral(
                    "%1: перевод строки или другой управляющий знак внутри значения. Уберите его.")
                    .arg(field.name));
        const QString lacking = CodeEncodings::lacking(field.value, encoding);
        if (!lacking.isEmpty())
            result.append(QStringLiteral(
                              "%1: в кодировке %2 нет знаков «%3». Замените их или выберите UTF-8.")
                              .arg(field.name, CodeEncodings::name(encoding), lacking));
    }
    if (!usableSeparator()) {
        result.append(
            m_separator
                ? QStringLiteral("Разделитель «%1» встречается внутри значений. Выберите другой: "
                                 "заменить его в значении нечем.")
                      .arg(*m_separator)
                : QStringLiteral("Все допустимые разделители встречаются внутри значений. "
                                 "Уберите из значений хотя бы один из них: %1")
                      .arg(separators));
    }
    if (block > PaymentCodeRules::MAXIMUM_BLOCK)
        result.append(
            QStringLiteral(
                "Обязательные реквизиты занимают %1 байт, а помещается %2. Сократите названия "
                "получателя и банка или выберите однобайтовую кодировку.")
                .arg(QString::number(block), QString::number(PaymentCodeRules::MAXIMUM_BLOCK)));
    const int size = CodeEncodings::encode(toText(encoding), encoding).size();
    if (size > MAXIMUM_BYTES)
        result.append(
            QStringLiteral(
                "Код занимает %1 байт, а на квитанции помещается %2. Уберите лишние поля.")
                .arg(QString::number(size), QString::number(MAXIMUM_BYTES)));
    return result;
}

QByteArray PaymentCode::toBytes(CodeEncoding encoding) const
{
    return problems(encoding).isEmpty() ? CodeEncodings::encode(toText(encoding), encoding)
                                        : QByteArray();
}

QString PaymentCode::toText(CodeEncoding encoding) const
{
    const QChar separator = usableSeparator().value_or(m_separator.value_or(separators.at(0)));
    QString text = QStringLiteral("ST0001%1").arg(static_cast<int>(encoding));
    for (const Field &field : fields())
        text += separator + field.name + QLatin1Char('=') + field.value;
    return text;
}
