#include "hostiletexts.h"

#include <QStringList>

namespace {

constexpr int megabyte = 1024 * 1024;
/// Of many fields, each this long, one page gets more than a megabyte.
constexpr int longText = 64 * 1024;

QString characters(std::initializer_list<ushort> codes)
{
    QString text;
    for (const ushort code : codes)
        text += QChar(code);
    return text;
}

} // namespace

QVector<HostileTexts::Named> HostileTexts::all()
{
    return {
        {"markup", QStringLiteral("</td></tr></table><h1>ОПЛАЧЕНО</h1><!-- & &lt;b&gt; -->")},
        {"script", QStringLiteral("<script src=\"CANARY\">alert(1)</script>")},
        {"link", QStringLiteral("<a href=\"CANARY\">Вода</a>")},
        {"picture", QStringLiteral("<img src=\"CANARY\">")},
        {"background", QStringLiteral("<table background=\"CANARY\"><tr><td>Вода</table>")},
        {"style sheet", QStringLiteral("<style>@import url(CANARY); *{color:white}</style>")},
        {"placeholders", QStringLiteral("%1 %2 %3 %4 %5 %6 %7 %L1 %% %n %99")},
        {"direction", characters({'V', 0x202e, 0x200f, 0x200e, 0x061c, 0x202b, 0x2067, 0x05d0})},
        {"controls", characters({'V', 0, 1, 7, 0x1b, '[', '2', 'J', 8, 0x7f, 0x85, '\r'})},
        {"line ends", QStringLiteral("Вода\n\n\n\t\t\u2028\u2029холодная")},
        {"a viewer's own characters", characters({'V', 0xfdd0, 0xfdd1, 0xfffc, 0xfffe, 0xffff})},
        {"heaped accents", QStringLiteral("o") + QString(2000, QChar(0x0336))},
        {"a long text in words", QStringLiteral("Вода и стоки. ").repeated(longText / 14)},
        {"a word of a megabyte", QString(megabyte, QChar(0x0429))},
        {"a long text of lines", QString(longText, QLatin1Char('\n')) + QLatin1Char('V')},
        {"a long text of markup", QStringLiteral("<p>&<b>").repeated(longText / 7)},
    };
}

QString HostileTexts::pointingAt(const Canary &canary, const QString &text)
{
    const QString place = QStringLiteral("CANARY");
    if (!text.contains(place))
        return text;
    QString pointing;
    const QStringList addresses = canary.addresses();
    for (const QString &address : addresses)
        pointing += QString(text).replace(place, address);
    return pointing;
}
