#include <molvacore/logvariant.h>

#include <QDebugStateSaver>
#include <QLocale>
#include <QStringList>

namespace {

QString withoutControls(const QString &text)
{
    QString shown;
    shown.reserve(text.size());
    for (const QChar c : text) {
        const ushort code = c.unicode();
        if (c == QLatin1Char('\n'))
            shown += QLatin1String("\\n");
        else if (c == QLatin1Char('\t'))
            shown += QLatin1String("\\t");
        else if (c == QLatin1Char('\r'))
            shown += QLatin1String("\\r");
        else if (code < 0x20 || (code >= 0x7f && code < 0xa0) || code == 0x2028 || code == 0x2029)
            shown += QStringLiteral("\\u%1").arg(code, 4, 16, QLatin1Char('0'));
        else
            shown += c;
    }
    return shown;
}

QString quoted(QString text)
{
    text.replace(QLatin1Char('\\'), QLatin1String("\\\\"));
    text.replace(QLatin1Char('"'), QLatin1String("\\\""));
    return QLatin1Char('"') + withoutControls(text) + QLatin1Char('"');
}

void render(QString &out, const QVariant &value);

void renderMap(QString &out, const QVariantMap &map)
{
    out += QLatin1Char('{');
    for (auto it = map.cbegin(); it != map.cend(); ++it) {
        if (it != map.cbegin())
            out += QLatin1Char(',');
        out += quoted(it.key()) + QLatin1Char(':');
        render(out, it.value());
    }
    out += QLatin1Char('}');
}

void renderList(QString &out, const QVariantList &list)
{
    out += QLatin1Char('[');
    for (int i = 0; i < list.size(); ++i) {
        if (i > 0)
            out += QLatin1Char(',');
        render(out, list.at(i));
    }
    out += QLatin1Char(']');
}

void render(QString &out, const QVariant &value)
{
    switch (static_cast<QMetaType::Type>(value.userType())) {
    case QMetaType::UnknownType:
    case QMetaType::Nullptr:
        out += QLatin1String("null");
        return;
    case QMetaType::QVariantMap:
    case QMetaType::QVariantHash:
        renderMap(out, value.toMap());
        return;
    case QMetaType::QVariantList:
    case QMetaType::QStringList:
        renderList(out, value.toList());
        return;
    case QMetaType::Double:
        out += QString::number(value.toDouble(), 'g', QLocale::FloatingPointShortest);
        return;
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        out += value.toString();
        return;
    default: // a variant can hold any type there is
        out += value.canConvert<QString>()
            ? quoted(value.toString())
            : QStringLiteral("<%1>").arg(QLatin1String(value.typeName()));
    }
}

} // namespace

LogVariant::LogVariant(const QVariant &value) : m_value(value) {}

QString LogVariant::toString() const
{
    if (m_value.userType() == QMetaType::QString)
        return withoutControls(m_value.toString());
    QString out;
    render(out, m_value);
    return out;
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
