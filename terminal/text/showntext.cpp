#include "showntext.h"

#include <QCoreApplication>
#include <QStringList>

namespace {

constexpr int longestReason = 600;
constexpr int longestCell = 200;
constexpr int mostLines = 12;
/// A label breaks its text between words only.
constexpr int longestWord = 36;
/// A viewer lays out a line as a whole, however little of it is seen.
constexpr int longestLine = 4000;
constexpr QChar ellipsis(0x2026);
constexpr QChar zeroWidthSpace(0x200b);

bool acts(QChar c)
{
    return c.category() == QChar::Other_Format
        || (c.category() == QChar::Other_Control && c != QLatin1Char('\n'))
        || c == QChar::LineSeparator || c == QChar::ParagraphSeparator
        || c == QChar::ObjectReplacementCharacter || QChar::isNonCharacter(uint(c.unicode()));
}

} // namespace

QString shownReason(const QString &text)
{
    QString shown;
    int lines = 1;
    int letters = 0;
    for (const QChar c : text) {
        lines += c == QLatin1Char('\n') ? 1 : 0;
        if (shown.size() >= longestReason || lines > mostLines)
            return shown + ellipsis;
        letters = c.isSpace() ? 0 : letters + 1;
        if (letters > longestWord && !c.isLowSurrogate()) {
            shown += zeroWidthSpace;
            letters = 1;
        }
        shown += acts(c) ? QLatin1Char(' ') : c;
    }
    return shown;
}

QString shownCell(const QString &text)
{
    QString shown = text.left(longestCell);
    for (QChar &c : shown) {
        if (acts(c) || c == QLatin1Char('\n'))
            c = QLatin1Char(' ');
    }
    return shown.size() < text.size() ? shown + ellipsis : shown;
}

QString shownLines(const QString &text)
{
    QStringList lines = text.split(QLatin1Char('\n'));
    for (QString &line : lines) {
        if (line.size() > longestLine)
            line = line.left(longestLine)
                + QCoreApplication::translate("shownLines", "… (всего знаков в строке: %1)")
                      .arg(line.size());
    }
    return lines.join(QLatin1Char('\n'));
}
