#include "paymentcodereader.h"

#include "paymentcoderules.h"

#include <QRegularExpression>
#include <QSet>

#include <algorithm>

namespace {

constexpr QChar byteOrderMark(0xfeff);
constexpr QChar groupSeparator(0x1d);
/// Bytes that may stand before a header, such as a scanner's own prefix or a byte order mark. A
/// text that holds "ST00012" somewhere else is no payment code.
constexpr int longestPrefix = 8;
constexpr int longestPrefixOfMistyped = 3;

/// Latin letters in place of the Russian ones that look the same.
QString latinized(const QString &name)
{
    static const QString russian = QStringLiteral("АВЕКМНОРСТУХаеорсух");
    static const QString latin = QStringLiteral("ABEKMHOPCTYXaeopcyx");
    QString result = name;
    for (QChar &c : result) {
        const int index = russian.indexOf(c);
        if (index >= 0)
            c = latin.at(index);
    }
    return result;
}

QString standardSpelling(const QString &name)
{
    const QStringList known = PaymentCodeRules::knownNames();
    const auto found =
        std::find_if(known.cbegin(), known.cend(), [&name](const QString &candidate) {
            return candidate.compare(name, Qt::CaseInsensitive) == 0;
        });
    return found == known.cend() ? name : *found;
}

ReadCode::Kind kindWithoutHeader(const QString &text)
{
    static const QRegularExpression receipt(QStringLiteral("(^|&)t=\\d{8}T\\d{4,6}(&|$)"));
    static const QRegularExpression link(QStringLiteral("^[a-z][a-z0-9+.-]*://"),
                                         QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression mark(QStringLiteral("^01\\d{14}21."));
    static const QRegularExpression digits(QStringLiteral("^[0-9]+$"));
    if (text.isEmpty())
        return ReadCode::Kind::Empty;
    if (receipt.match(text).hasMatch())
        return ReadCode::Kind::Receipt;
    if (link.match(text).hasMatch())
        return ReadCode::Kind::Link;
    if (text.contains(groupSeparator) || mark.match(text).hasMatch())
        return ReadCode::Kind::GoodsMark;
    return digits.match(text).hasMatch() ? ReadCode::Kind::Number : ReadCode::Kind::Unknown;
}

/// Where the bytes are plain ASCII anyway: the header, and nothing else of the code.
struct Header
{
    int start = -1;
    int length = 0; ///< with the separator
    std::optional<CodeEncoding> encoding;
    QChar separator;
    bool exact = false;
};

Header findHeader(const QString &latin)
{
    static const QRegularExpression exact(QStringLiteral("ST0001([0-9])([^0-9A-Za-z])"));
    static const QRegularExpression mistyped(QStringLiteral("ST[0-9]{3,6}([^0-9A-Za-z])"),
                                             QRegularExpression::CaseInsensitiveOption);
    Header header;
    QRegularExpressionMatch match = exact.match(latin);
    header.exact = match.hasMatch() && match.capturedStart() <= longestPrefix;
    if (header.exact) {
        header.encoding = CodeEncodings::fromDigit(match.captured(1).at(0));
        header.separator = match.captured(2).at(0);
    } else {
        match = mistyped.match(latin);
        if (!match.hasMatch() || match.capturedStart() > longestPrefixOfMistyped)
            return header;
        header.separator = match.captured(1).at(0);
    }
    header.start = match.capturedStart();
    header.length = match.capturedLength();
    return header;
}

class Reading
{
public:
    explicit Reading(const QByteArray &bytes)
    {
        const Header header = findHeader(QString::fromLatin1(bytes.constData(), bytes.size()));
        m_code.declared = header.encoding;
        m_code.encoding = CodeEncodings::detect(bytes, header.encoding);
        m_code.text = CodeEncodings::decode(bytes, m_code.encoding);
        if (header.start < 0) {
            m_code.kind = kindWithoutHeader(m_code.text);
            return;
        }
        m_code.kind = ReadCode::Kind::Payment;
        m_code.separator = header.separator;
        tellHeader(header);
        tellEncoding(bytes);
        readFields(header);
        tellContent();
    }

    ReadCode code() const { return m_code; }

private:
    void warn(const QString &text)
    {
        if (!m_code.warnings.contains(text))
            m_code.warnings.append(text);
    }

    void tellHeader(const Header &header)
    {
        if (!header.exact)
            warn(QStringLiteral("Заголовок с ошибкой: вместо ST0001 и цифры кодировки стоит «%1». "
                                "Программы, которые "
                                "проверяют заголовок, такой код не примут.")
                     .arg(m_code.text.mid(header.start, header.length - 1)));
        else if (!header.encoding)
            warn(QStringLiteral("Цифра кодировки в заголовке не 1, 2 и не 3."));
        if (header.start > 0)
            warn(QStringLiteral("Перед заголовком ST0001 стоят лишние знаки (%1).")
                     .arg(header.start));
        if (header.separator != QLatin1Char('|'))
            warn(QStringLiteral("Поля разделены знаком «%1», а не «|». Это по стандарту, но читают "
                                "такой код не все.")
                     .arg(header.separator));
    }

    void tellEncoding(const QByteArray &bytes)
    {
        if (m_code.declared && *m_code.declared != m_code.encoding)
            warn(QStringLiteral("Заголовок обещает %1, а текст записан в %2.")
                     .arg(CodeEncodings::name(*m_code.declared),
                          CodeEncodings::name(m_code.encoding)));
        if (m_code.encoding == CodeEncoding::Utf8
            && CodeEncodings::encode(m_code.text, m_code.encoding) != bytes)
            warn(QStringLiteral(
                "Часть знаков повреждена, вместо них стоит «\ufffd». Сверьте поля с квитанцией."));
        if (const auto repaired = CodeEncodings::repaired(m_code.text)) {
            warn(QStringLiteral(
                "Русский текст закодирован дважды («кракозябры»); поля ниже исправлены."));
            m_readable = *repaired;
        } else {
            m_readable = m_code.text;
        }
    }

    void readFields(const Header &header)
    {
        // Stray bytes before the header may decode to fewer characters than bytes.
        const int start = m_readable.indexOf(QLatin1String("ST"), 0, Qt::CaseInsensitive);
        const QStringList blocks =
            m_readable.mid(qMax(0, start) + header.length).split(m_code.separator);
        for (int i = 0; i < blocks.size(); ++i) {
            const bool trailing = i == blocks.size() - 1 && blocks.at(i).trimmed().isEmpty();
            if (!trailing)
                readBlock(blocks.at(i));
        }
    }

    void readBlock(const QString &block)
    {
        const int equals = block.indexOf(QLatin1Char('='));
        if (equals < 0) {
            warn(QStringLiteral("Кусок «%1» без знака «=» пропущен.").arg(block));
            return;
        }
        const QString value = block.mid(equals + 1);
        // Some generators take another separator for the mandatory block only.
        static const QRegularExpression hidden(QStringLiteral("\\|([A-Za-z]+)="));
        const QRegularExpressionMatch next = hidden.match(value);
        if (m_code.separator != QLatin1Char('|') && next.hasMatch()
            && PaymentCodeRules::knownNames().contains(next.captured(1))) {
            warn(QStringLiteral("Часть полей разделена знаком «|» вместо объявленного «%1».")
                     .arg(m_code.separator));
            addField(block.left(equals), value.left(next.capturedStart()));
            for (const QString &rest : value.mid(next.capturedStart() + 1).split(QLatin1Char('|')))
                readBlock(rest);
            return;
        }
        addField(block.left(equals), value);
    }

    void addField(const QString &written, const QString &value)
    {
        QString name = written;
        name.remove(byteOrderMark);
        name = name.trimmed();
        if (name.isEmpty()) {
            warn(QStringLiteral("Поле без имени пропущено, его значение: «%1».").arg(value));
            return;
        }
        const QString latin = latinized(name);
        if (latin != name)
            warn(QStringLiteral("В имени поля «%1» русские буквы вместо латинских.").arg(name));
        const QString spelling = standardSpelling(latin);
        if (spelling != latin)
            warn(QStringLiteral("Имя поля «%1» пишется %2.").arg(latin, spelling));

        QString clean = value;
        clean.remove(byteOrderMark);
        if (clean.size() != value.size())
            warn(QStringLiteral("%1: внутри значения стоит невидимая метка порядка байтов.")
                     .arg(spelling));
        if (std::any_of(clean.cbegin(), clean.cend(),
                        [](QChar c) { return c.category() == QChar::Other_Control; }))
            warn(QStringLiteral("%1: внутри значения перевод строки или другой управляющий знак.")
                     .arg(spelling));
        if (clean.contains(QLatin1Char('=')))
            warn(QStringLiteral(
                     "%1: внутри значения есть «=»; некоторые программы такое поле пропускают.")
                     .arg(spelling));
        clean = clean.trimmed().normalized(QString::NormalizationForm_C);
        if (clean.compare(QLatin1String("null"), Qt::CaseInsensitive) == 0) {
            warn(QStringLiteral("%1: записано слово null, поле считается пустым.").arg(spelling));
            clean.clear();
        }
        m_code.fields.append({spelling, clean});
    }

    void tellContent()
    {
        QSet<QString> seen;
        for (const PaymentCode::Field &field : qAsConst(m_code.fields)) {
            if (seen.contains(field.name))
                warn(QStringLiteral("Поле %1 повторяется.").arg(field.name));
            seen.insert(field.name);
            if (field.value.isEmpty())
                continue;
            if (const auto problem = PaymentCodeRules::problem(field.name, field.value))
                warn(*problem);
        }
        for (const QString &name : PaymentCodeRules::mandatoryNames()) {
            if (m_code.field(name).isEmpty() && name != QLatin1String("CorrespAcc"))
                warn(QStringLiteral("Нет обязательного поля %1 (%2).")
                         .arg(PaymentCodeRules::title(name), name));
        }
        if (m_code.field(QStringLiteral("PersAcc")).isEmpty()) {
            warn(m_code.field(QStringLiteral("PersonalAccount")).isEmpty()
                     ? QStringLiteral(
                         "Нет лицевого счёта плательщика (PersAcc): его придётся набрать.")
                     : QStringLiteral("Лицевой счёт записан в PersonalAccount, а ищут его в "
                                      "PersAcc: придётся набрать."));
        }
    }

    ReadCode m_code;
    QString m_readable;
};

} // namespace

QString ReadCode::field(const QString &name) const
{
    const auto found =
        std::find_if(fields.cbegin(), fields.cend(), [&name](const PaymentCode::Field &candidate) {
            return candidate.name == name;
        });
    return found == fields.cend() ? QString() : found->value;
}

QString ReadCode::kindText(Kind kind)
{
    switch (kind) {
    case Kind::Payment:
        return QStringLiteral("Платёжный код квитанции");
    case Kind::Receipt:
        return QStringLiteral("Код кассового чека, а не квитанции");
    case Kind::Link:
        return QStringLiteral("Ссылка, а не платёжный код");
    case Kind::GoodsMark:
        return QStringLiteral("Код маркировки товара, а не платёжный код");
    case Kind::Number:
        return QStringLiteral("Штриховой код с номером, а не платёжный код");
    case Kind::Unknown:
        return QStringLiteral("Неизвестный код: заголовка ST0001 в нём нет");
    case Kind::Empty:
        break;
    }
    return QStringLiteral("Код пустой");
}

ReadCode PaymentCodeReader::read(const QByteArray &bytes)
{
    return Reading(bytes).code();
}
