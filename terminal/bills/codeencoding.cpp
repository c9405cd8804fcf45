#include "codeencoding.h"

#include <QTextCodec>

namespace {

QTextCodec *codec(CodeEncoding encoding)
{
    switch (encoding) {
    case CodeEncoding::Windows1251:
        return QTextCodec::codecForName("windows-1251");
    case CodeEncoding::Utf8:
        break;
    case CodeEncoding::Koi8R:
        return QTextCodec::codecForName("KOI8-R");
    }
    return QTextCodec::codecForName("UTF-8");
}

struct Utf8Census
{
    int sequences = 0; ///< well-formed ones of two bytes and more
    int strayBytes = 0;
};

Utf8Census countUtf8(const QByteArray &bytes)
{
    Utf8Census census;
    int i = 0;
    while (i < bytes.size()) {
        const auto lead = static_cast<unsigned char>(bytes.at(i));
        ++i;
        if (lead < 0x80)
            continue;
        int trail = lead >= 0xf0 && lead < 0xf5 ? 3 : lead >= 0xe0 ? 2 : lead >= 0xc2 ? 1 : 0;
        if (lead >= 0xf5)
            trail = 0;
        int found = 0;
        while (found < trail && i + found < bytes.size()
               && (static_cast<unsigned char>(bytes.at(i + found)) & 0xc0) == 0x80)
            ++found;
        if (trail > 0 && found == trail) {
            ++census.sequences;
            i += trail;
        } else {
            ++census.strayBytes;
        }
    }
    return census;
}

bool isRussianLetter(QChar c)
{
    return (c.unicode() >= 0x0410 && c.unicode() <= 0x044f) || c.unicode() == 0x0401
        || c.unicode() == 0x0451;
}

/// How unlike Russian text this is: capitals behind small letters, and signs that no bill has. The
/// two sets of single bytes swap the cases of the alphabet, so the wrong one of them shows "оаО".
int oddity(const QString &text)
{
    static const QString usual = QStringLiteral("«»№—–°…\u00a0\u2018\u2019\u201c\u201d\u201e");
    int odd = 0;
    for (int i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (c.unicode() < 0x80 || usual.contains(c))
            continue;
        if (!isRussianLetter(c))
            odd += 2;
        else if (c.isUpper() && i > 0 && isRussianLetter(text.at(i - 1))
                 && text.at(i - 1).isLower())
            ++odd;
    }
    return odd;
}

} // namespace

QVector<CodeEncoding> CodeEncodings::all()
{
    return {CodeEncoding::Windows1251, CodeEncoding::Utf8, CodeEncoding::Koi8R};
}

QString CodeEncodings::name(CodeEncoding encoding)
{
    switch (encoding) {
    case CodeEncoding::Windows1251:
        return QStringLiteral("windows-1251");
    case CodeEncoding::Utf8:
        return QStringLiteral("UTF-8");
    case CodeEncoding::Koi8R:
        return QStringLiteral("KOI8-R");
    }
    return QString();
}

std::optional<CodeEncoding> CodeEncodings::fromName(const QString &name)
{
    QString plain = name.trimmed().toLower();
    plain.remove(QLatin1Char('-'));
    if (plain == QLatin1String("windows1251") || plain == QLatin1String("cp1251")
        || plain == QLatin1String("1251"))
        return CodeEncoding::Windows1251;
    if (plain == QLatin1String("utf8"))
        return CodeEncoding::Utf8;
    if (plain == QLatin1String("koi8r") || plain == QLatin1String("koi8"))
        return CodeEncoding::Koi8R;
    return plain.size() == 1 ? fromDigit(plain.at(0)) : std::nullopt;
}

std::optional<CodeEncoding> CodeEncodings::fromDigit(QChar digit)
{
    for (const CodeEncoding encoding : all()) {
        if (digit == QLatin1Char(static_cast<char>('0' + static_cast<int>(encoding))))
            return encoding;
    }
    return std::nullopt;
}

QString CodeEncodings::lacking(const QString &text, CodeEncoding encoding)
{
    QString result;
    for (int i = 0; i < text.size(); ++i) {
        const bool pair =
            text.at(i).isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate();
        const QString character = text.mid(i, pair ? 2 : 1);
        if (decode(encode(character, encoding), encoding) != character
            && !result.contains(character))
            result += character;
        if (pair)
            ++i;
    }
    return result;
}

QByteArray CodeEncodings::encode(const QString &text, CodeEncoding encoding)
{
    if (encoding == CodeEncoding::Utf8)
        return text.toUtf8();
    // A state of its own: the codec would otherwise put its byte order mark or keep half a
    // character.
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    return codec(encoding)->fromUnicode(text.constData(), text.size(), &state);
}

QString CodeEncodings::decode(const QByteArray &bytes, CodeEncoding encoding)
{
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    const QString text = codec(encoding)->toUnicode(bytes.constData(), bytes.size(), &state);
    // The codec would wait for the rest of a cut character.
    return state.remainingChars > 0 ? text + QChar(QChar::ReplacementCharacter) : text;
}

CodeEncoding CodeEncodings::detect(const QByteArray &bytes, std::optional<CodeEncoding> declared)
{
    const Utf8Census census = countUtf8(bytes);
    if (census.sequences == 0 && census.strayBytes == 0)
        return declared.value_or(CodeEncoding::Utf8);
    // A cut or damaged code has a few stray bytes in a text of many sequences.
    if (census.sequences > 4 * census.strayBytes)
        return CodeEncoding::Utf8;
    const int windows = oddity(decode(bytes, CodeEncoding::Windows1251));
    const int koi = oddity(decode(bytes, CodeEncoding::Koi8R));
    if (declared == CodeEncoding::Koi8R)
        return windows < koi ? CodeEncoding::Windows1251 : CodeEncoding::Koi8R;
    return koi < windows ? CodeEncoding::Koi8R : CodeEncoding::Windows1251;
}

std::optional<QString> CodeEncodings::repaired(const QString &text)
{
    const auto fromBytes = [&text](const QByteArray &bytes,
                                   const QString &back) -> std::optional<QString> {
        const Utf8Census census = countUtf8(bytes);
        if (back != text || census.sequences == 0 || census.strayBytes > 0)
            return std::nullopt;
        return decode(bytes, CodeEncoding::Utf8);
    };
    const QByteArray windows = encode(text, CodeEncoding::Windows1251);
    if (const auto repair = fromBytes(windows, decode(windows, CodeEncoding::Windows1251)))
        return repair;
    const QByteArray latin = text.toLatin1();
    return fromBytes(latin, QString::fromLatin1(latin.constData(), latin.size()));
}
