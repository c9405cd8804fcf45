#include <molvacore/logvariant.h>

#include <QDebugStateSaver>
#include <QLocale>
#include <QStringList>

#include <array>

namespace {

enum Special : quint8 { Control = 1, Quote = 2 };

constexpr int tableSize = 256;

constexpr std::array<quint8, tableSize> specials()
{
    std::array<quint8, tableSize> table{};
    for (int code = 0; code < tableSize; ++code) {
        if (code < 0x20 || (code >= 0x7f && code < 0xa0))
            table[std::size_t(code)] = Control;
    }
    table[u'"'] = Quote;
    table[u'\\'] = Quote;
    return table;
}

/// Whether the character is one of `kinds`. Most are in the table, and of the others only the two
/// separators of lines and paragraphs are not plain.
bool isOneOf(int kinds, ushort code)
{
    static constexpr std::array<quint8, tableSize> table = specials();
    return code < tableSize ? (table[code] & kinds) != 0 : (code | 1) == 0x2029;
}

/// A line of the log while it is written. Whole answers are logged, so a character costs no more
/// than a look at it.
class Line
{
public:
    void put(char c)
    {
        *room(1) = QLatin1Char(c);
        ++m_size;
    }
    void put(QLatin1String text)
    {
        QChar *at = room(text.size());
        for (int i = 0; i < text.size(); ++i)
            at[i] = QLatin1Char(text.at(i));
        m_size += text.size();
    }
    /// With its control characters escaped and, `inQuotes`, in quotes with those in it escaped.
    void put(const QString &text, bool inQuotes)
    {
        if (inQuotes)
            put('"');
        const int special = inQuotes ? Control | Quote : Control;
        QChar *at = room(text.size());
        for (const QChar c : text) {
            const ushort code = c.unicode();
            if (Q_UNLIKELY(isOneOf(special, code))) {
                m_size = static_cast<int>(at - m_text.constData());
                putEscaped(code);
                // The rest may be as long as the text, wherever it stands.
                at = room(text.size());
            } else {
                *at++ = c;
            }
        }
        m_size = static_cast<int>(at - m_text.constData());
        if (inQuotes)
            put('"');
    }
    QString taken()
    {
        m_text.truncate(m_size);
        return m_text;
    }

private:
    /// Where the next `length` characters go.
    QChar *room(int length)
    {
        if (m_text.size() - m_size < length)
            m_text.resize(qMax(2 * m_text.size(), m_size + length + usualLength));
        return m_text.data() + m_size;
    }
    void putEscaped(ushort code)
    {
        switch (code) {
        case u'"':
            put(QLatin1String("\\\""));
            return;
        case u'\\':
            put(QLatin1String("\\\\"));
            return;
        case u'\n':
            put(QLatin1String("\\n"));
            return;
        case u'\t':
            put(QLatin1String("\\t"));
            return;
        case u'\r':
            put(QLatin1String("\\r"));
            return;
        default: {
            const QByteArray hex = QByteArray::number(code, 16).rightJustified(4, '0');
            put(QLatin1String("\\u"));
            put(QLatin1String(hex));
        }
        }
    }

    static constexpr int usualLength = 256;

    QString m_text;
    int m_size = 0;
};

void render(Line &line, const QVariant &value);

void renderMap(Line &line, const QVariantMap &map)
{
    line.put('{');
    for (auto it = map.cbegin(); it != map.cend(); ++it) {
        if (it != map.cbegin())
            line.put(',');
        line.put(it.key(), true);
        line.put(':');
        render(line, it.value());
    }
    line.put('}');
}

void renderList(Line &line, const QVariantList &list)
{
    line.put('[');
    for (int i = 0; i < list.size(); ++i) {
        if (i > 0)
            line.put(',');
        render(line, list.at(i));
    }
    line.put(']');
}

void render(Line &line, const QVariant &value)
{
    switch (static_cast<QMetaType::Type>(value.userType())) {
    case QMetaType::UnknownType:
    case QMetaType::Nullptr:
        line.put(QLatin1String("null"));
        return;
    case QMetaType::QString:
        line.put(*static_cast<const QString *>(value.constData()), true);
        return;
    case QMetaType::QVariantMap:
        renderMap(line, *static_cast<const QVariantMap *>(value.constData()));
        return;
    case QMetaType::QVariantHash:
        renderMap(line, value.toMap());
        return;
    case QMetaType::QVariantList:
        renderList(line, *static_cast<const QVariantList *>(value.constData()));
        return;
    case QMetaType::QStringList:
        renderList(line, value.toList());
        return;
    case QMetaType::Bool:
        line.put(value.toBool() ? QLatin1String("true") : QLatin1String("false"));
        return;
    case QMetaType::Double:
        line.put(QString::number(value.toDouble(), 'g', QLocale::FloatingPointShortest), false);
        return;
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        line.put(value.toString(), false);
        return;
    default: // a variant can hold any type there is
        if (value.canConvert<QString>()) {
            line.put(value.toString(), true);
        } else {
            line.put('<');
            line.put(QLatin1String(value.typeName()));
            line.put('>');
        }
    }
}

} // namespace

LogVariant::LogVariant(const QVariant &value) : m_value(value) {}

QString LogVariant::toString() const
{
    Line line;
    if (m_value.userType() == QMetaType::QString)
        line.put(m_value.toString(), false);
    else
        render(line, m_value);
    return line.taken();
}

LogVariant logvariant(const QVariant &value)
{
    return LogVariant(value);
}

QDebug operator<<(QDebug debug, const LogVariant &value)
{
    const QDebugStateSaver saver(debug);
    debug.noquote() << value.toString();
    return debug;
}
