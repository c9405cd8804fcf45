#include <storage/jsontext.h>

#include <QJsonDocument>
#include <QJsonObject>
#include <QStringView>
#include <QVariantList>

namespace {

/// Every function answers false for what Qt's own writer has to write.
class Writer
{
public:
    bool map(const QVariantMap &map);
    QString text;

private:
    bool value(const QVariant &value);
    bool list(const QVariantList &list);
    bool integer(qint64 number);
    bool quoted(const QString &string);
    void escaped(ushort character);

    int m_depth = 0;
};

/// Deeper ones are left to Qt, whose reader has a limit of its own.
constexpr int DEEPEST = 64;

/// Characters of a small payment.
constexpr int USUAL = 4096;

constexpr qint64 EXACT_IN_DOUBLE = Q_INT64_C(1) << 53;

bool Writer::map(const QVariantMap &map)
{
    const QString *before = nullptr;
    text += QLatin1Char('{');
    for (auto it = map.cbegin(); it != map.cend(); ++it) {
        if (before && *before == it.key())
            return false;
        if (before)
            text += QLatin1Char(',');
        before = &it.key();
        if (!quoted(it.key()))
            return false;
        text += QLatin1Char(':');
        if (!value(it.value()))
            return false;
    }
    text += QLatin1Char('}');
    return true;
}

bool Writer::list(const QVariantList &list)
{
    text += QLatin1Char('[');
    for (int i = 0; i < list.size(); ++i) {
        if (i > 0)
            text += QLatin1Char(',');
        if (!value(list.at(i)))
            return false;
    }
    text += QLatin1Char(']');
    return true;
}

bool Writer::value(const QVariant &value)
{
    switch (value.userType()) {
    case QMetaType::Bool:
        text += value.toBool() ? QLatin1String("true") : QLatin1String("false");
        return true;
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
        return integer(value.toLongLong());
    case QMetaType::QString:
        return quoted(value.toString());
    case QMetaType::QVariantMap:
    case QMetaType::QVariantList: {
        if (++m_depth > DEEPEST)
            return false;
        const bool isMap = value.userType() == QMetaType::QVariantMap;
        const bool written = isMap ? map(value.toMap()) : list(value.toList());
        --m_depth;
        return written;
    }
    default:
        return false;
    }
}

bool Writer::integer(qint64 number)
{
    // Qt writes a number beyond by way of a floating point one.
    if (number < -EXACT_IN_DOUBLE || number > EXACT_IN_DOUBLE)
        return false;
    text += QString::number(number);
    return true;
}

bool Writer::quoted(const QString &string)
{
    if (!string.isValidUtf16())
        return false;
    text += QLatin1Char('"');
    int from = 0;
    for (int i = 0; i < string.size(); ++i) {
        const ushort character = string.at(i).unicode();
        if (character >= 0x20 && character != '"' && character != '\\')
            continue;
        text += QStringView(string).mid(from, i - from);
        escaped(character);
        from = i + 1;
    }
    text += QStringView(string).mid(from);
    text += QLatin1Char('"');
    return true;
}

void Writer::escaped(ushort character)
{
    switch (character) {
    case '"':
        text += QLatin1String("\\\"");
        return;
    case '\\':
        text += QLatin1String("\\\\");
        return;
    case '\b':
        text += QLatin1String("\\b");
        return;
    case '\f':
        text += QLatin1String("\\f");
        return;
    case '\n':
        text += QLatin1String("\\n");
        return;
    case '\r':
        text += QLatin1String("\\r");
        return;
    case '\t':
        text += QLatin1String("\\t");
        return;
    default:
        text += QStringLiteral("\\u%1").arg(character, 4, 16, QLatin1Char('0'));
    }
}

} // namespace

QString JsonText::compact(const QVariantMap &map)
{
    Writer writer;
    writer.text.reserve(USUAL);
    if (writer.map(map))
        return writer.text;
    return QString::fromUtf8(
        QJsonDocument(QJsonObject::fromVariantMap(map)).toJson(QJsonDocument::Compact));
}
