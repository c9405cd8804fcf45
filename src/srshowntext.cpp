#include "srshowntext.h"

#include "srhtml.h"

#include <QVector>

#include <algorithm>

namespace {

constexpr int longestText = 300; // UTF-16 units between two tags
constexpr int longestMessage = 600;
constexpr int mostMessageLines = 15;
constexpr int longestMessageWord = 36;
constexpr int mostMarksInARow = 3;
constexpr QChar ellipsis(0x2026);
constexpr QChar objectPlaceholder(QChar::ObjectReplacementCharacter);
constexpr QChar noCharacter(QChar::ReplacementCharacter);
constexpr QChar zeroWidthSpace(0x200b);

bool isAccent(uint code)
{
    const QChar::Category category = QChar::category(code);
    return category == QChar::Mark_NonSpacing || category == QChar::Mark_Enclosing;
}

bool isBlank(uint code)
{
    const QChar::Category category = QChar::category(code);
    return category == QChar::Other_Control || category == QChar::Separator_Line
        || category == QChar::Separator_Paragraph;
}

bool isReadable(uint code)
{
    return !QChar::isNonCharacter(code) && code != objectPlaceholder.unicode();
}

/// Shown as it is, whatever stands beside it.
bool isOrdinary(QChar c)
{
    const ushort code = c.unicode();
    return c.isPrint() && !c.isMark() && !isBlank(code) && isReadable(code);
}

QString readable(const QString &text)
{
    if (std::all_of(text.cbegin(), text.cend(), isOrdinary))
        return text;
    // Half characters become U+FFFD here already.
    const QVector<uint> codes = text.toUcs4();
    QVector<uint> shown;
    shown.reserve(codes.size());
    int marks = 0;
    for (const uint code : codes) {
        marks = isAccent(code) ? marks + 1 : 0;
        if (QChar::category(code) == QChar::Other_Format || marks > mostMarksInARow)
            continue;
        if (isBlank(code))
            shown.append(' ');
        else
            shown.append(isReadable(code) ? code : noCharacter.unicode());
    }
    return QString::fromUcs4(shown.constData(), shown.size());
}

QString withoutMiddle(const QString &text, int limit)
{
    if (text.size() <= limit)
        return text;
    int head = limit * 2 / 3;
    int tail = limit - head - 1;
    if (text.at(head - 1).isHighSurrogate())
        --head;
    if (text.at(text.size() - tail).isLowSurrogate())
        --tail;
    return text.left(head) + ellipsis + text.right(tail);
}

/// The opposite of SrHtml::escaped().
QString unescaped(const QString &html)
{
    if (!html.contains(QLatin1Char('&')))
        return html;
    QString text = html;
    return text.replace(QLatin1String("&lt;"), QLatin1String("<"))
        .replace(QLatin1String("&gt;"), QLatin1String(">"))
        .replace(QLatin1String("&amp;"), QLatin1String("&"));
}

} // namespace

QString SrShownText::line(const QString &text, int limit)
{
    return readable(withoutMiddle(text, limit));
}

QString SrShownText::message(const QString &text)
{
    QString shown;
    int line = 1;
    const QString bounded = withoutMiddle(text, longestMessage);
    for (const QChar c : bounded) {
        if (c == QLatin1Char('\n') || c == QChar::LineSeparator || c == QChar::ParagraphSeparator)
            ++line;
        if (line > mostMessageLines)
            return breakable(shown + ellipsis, longestMessageWord);
        shown += c;
    }
    return breakable(shown, longestMessageWord);
}

QString SrShownText::breakable(const QString &text, int longestWord)
{
    QString result;
    int letters = 0;
    for (const QChar c : text) {
        letters = c.isSpace() ? 0 : letters + 1;
        if (letters > longestWord && !c.isLowSurrogate()) {
            result += zeroWidthSpace;
            letters = 1;
        }
        result += c;
    }
    return result;
}

QString SrShownText::document(const QString &html)
{
    QString shown;
    int from = 0;
    while (from < html.size()) {
        int tag = html.indexOf(QLatin1Char('<'), from);
        if (tag == -1)
            tag = html.size();
        // Between the tags of two lines stands nothing but the line break.
        const QString text = unescaped(html.mid(from, tag - from));
        shown += text == QLatin1String("\n") ? text : SrHtml::escaped(line(text, longestText));
        const int end = html.indexOf(QLatin1Char('>'), tag);
        from = end == -1 ? html.size() : end + 1;
        shown += html.midRef(tag, from - tag);
    }
    return shown;
}
