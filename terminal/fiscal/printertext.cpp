#include <fiscal/printertext.h>

#include <QSet>

namespace {

/// Everything CP866 has beyond ASCII that a Russian receipt can need: letters, "№" and the degree
/// sign.
bool inCp866(QChar c)
{
    const ushort code = c.unicode();
    if (code >= 0x20 && code < 0x7f)
        return true;
    if (code >= 0x0410 && code <= 0x044f)
        return true;
    static const QSet<ushort> others{0x0401, 0x0451, 0x0404, 0x0454, 0x0407, 0x0457, 0x040e,
                                     0x045e, 0x00b0, 0x00b7, 0x2116, 0x00a4, 0x2219, 0x221a};
    return others.contains(code);
}

QChar plain(QChar c)
{
    switch (c.unicode()) {
    case 0x00ab:
    case 0x00bb:
    case 0x201c:
    case 0x201d:
    case 0x201e:
        return QLatin1Char('"');
    case 0x2018:
    case 0x2019:
        return QLatin1Char('\'');
    case 0x2010:
    case 0x2011:
    case 0x2012:
    case 0x2013:
    case 0x2014:
    case 0x2212:
        return QLatin1Char('-');
    case 0x0009:
    case 0x000a:
    case 0x000d:
    case 0x00a0:
    case 0x2009:
    case 0x202f:
        return QLatin1Char(' ');
    default:
        return c;
    }
}

} // namespace

QString PrinterText::printed(const QString &text)
{
    // A letter followed by a combining mark ("и" with a breve) has one sign of its own in CP866.
    const QString composed = text.normalized(QString::NormalizationForm_C);
    QString result;
    result.reserve(composed.size());
    for (int i = 0; i < composed.size(); ++i) {
        const QChar c = plain(composed.at(i));
        if (c.isHighSurrogate() && i + 1 < composed.size() && composed.at(i + 1).isLowSurrogate())
            ++i;
        result.append(inCp866(c) ? c : QLatin1Char('?'));
    }
    return result;
}

bool PrinterText::losesCharacters(const QString &text)
{
    return printed(text).count(QLatin1Char('?')) != text.count(QLatin1Char('?'));
}
