#include "srhtml.h"

#include "sraccount.h"

#include <algorithm>

namespace {

const QString tableStart = QStringLiteral(R"(<table width="90%" border=1 align="center"><tbody>)");
const QString tableEnd = QStringLiteral("</tbody></table>");
constexpr QLatin1Char newLine('\n');

const QString titlesStart = QStringLiteral(R"(<tr><th align="center">)");
const QString nextTitle = QStringLiteral(R"(</th><th align="center">)");
const QString titlesEnd = QStringLiteral("</th></tr>");
const QString rowStart = QStringLiteral(R"(<tr><td align="left">)");
const QString nextCell = QStringLiteral(R"(</td><td align="right">)");
const QString rowEnd = QStringLiteral("</td></tr>");

constexpr int usualTotalsLength = 320;

/// What stands for a character of markup; empty for any other.
QLatin1String reference(QChar c)
{
    switch (c.unicode()) {
    case u'<':
        return QLatin1String("&lt;");
    case u'>':
        return QLatin1String("&gt;");
    case u'&':
        return QLatin1String("&amp;");
    }
    return QLatin1String();
}

void appendEscaped(QString &out, const QString &text)
{
    const auto isMarkup = [](QChar c) { return !reference(c).isEmpty(); };
    const auto end = text.cend();
    auto from = text.cbegin();
    while (from != end) {
        const auto markup = std::find_if(from, end, isMarkup);
        out.append(from, static_cast<int>(markup - from));
        if (markup == end)
            return;
        out += reference(*markup);
        from = markup + 1;
    }
}

void startLine(QString &document)
{
    if (!document.isEmpty())
        document += newLine;
}

void appendTableStart(QString &document, const QStringList &titles)
{
    startLine(document);
    document += tableStart;
    document += newLine;
    document += titlesStart;
    for (int i = 0; i < titles.size(); ++i) {
        if (i > 0)
            document += nextTitle;
        appendEscaped(document, titles.at(i));
    }
    document += titlesEnd;
}

} // namespace

QString SrHtml::escaped(const QString &text)
{
    QString safe;
    appendEscaped(safe, text);
    return safe;
}

QString SrHtml::documentStart()
{
    return QStringLiteral(
        R"(<html><title>account data</title><head><meta http-equiv="Content-Type" )"
        R"(content="text/html; charset=UTF-8"></head><body>)");
}

QString SrHtml::documentEnd()
{
    return QStringLiteral("</body></html>");
}

QString SrHtml::payerName(const QString &name)
{
    return QStringLiteral(R"(<H1 align="center">%1</H1>)").arg(escaped(name));
}

QString SrHtml::heading(const QString &text)
{
    static const QString start = QStringLiteral(R"(<H4 align="center">)");
    static const QString end = QStringLiteral("</H4>");
    QString line;
    line.reserve(start.size() + text.size() + end.size());
    line += start;
    appendEscaped(line, text);
    line += end;
    return line;
}

QString SrHtml::totals(const SRAccount &account, const QString &taxNote)
{
    static const QString left =
        QStringLiteral(R"(<table width="90%" align="center"><tbody><tr><td align="left">)");
    static const QString middle = QStringLiteral(R"(</td><td align="center">)");
    static const QString end = QStringLiteral("</td></tr></tbody></table>");
    static const QString colon = QStringLiteral(": ");

    QString line;
    line.reserve(usualTotalsLength);
    line += left;
    appendEscaped(line, account.getTitle(SRAccount::FIELD_CHARGE));
    line += colon;
    line += account.charge().toString();
    line += middle;
    appendEscaped(line, account.getTitle(SRAccount::FIELD_DEBT));
    line += colon;
    line += account.debt().toString();
    line += taxNote;
    line += nextCell;
    appendEscaped(line, account.getTitle(SRAccount::FIELD_REMAINDER));
    line += colon;
    line += account.remainder().toString();
    line += end;
    return line;
}

QString SrHtml::totalToPay(const QString &title, const basix::FixNumber &amount)
{
    return QStringLiteral(
               R"(<table width="90%" align="center"><tbody><tr><td align="left"><b>%1</b></td>)"
               R"(<td align="right"><b>%2</b></td></tr></tbody></table>)")
        .arg(escaped(title), amount.toString());
}

void SrHtml::appendLine(QString &document, const QString &line)
{
    startLine(document);
    document += line;
}

void SrHtml::appendServices(QString &document, const QList<SrService> &services)
{
    if (services.isEmpty())
        return;
    const SrService &first = services.constFirst();
    appendTableStart(
        document,
        {first.getTitle(SrService::FIELD_NAME), first.getTitle(SrService::FIELD_CHARGE),
         first.getTitle(SrService::FIELD_TOPAY), first.getTitle(SrService::FIELD_DISTRIBUTED)});
    for (const SrService &service : services) {
        document += newLine;
        document += rowStart;
        appendEscaped(document, service.name());
        document += nextCell;
        document += service.chargeText();
        document += nextCell;
        document += service.topayText();
        document += nextCell;
        document += service.distributedText();
        document += rowEnd;
    }
    document += newLine;
    document += tableEnd;
}

void SrHtml::appendCounters(QString &document, const QList<SrCounter> &counters)
{
    if (counters.isEmpty())
        return;
    const SrCounter &first = counters.constFirst();
    appendTableStart(document,
                     {first.getTitle(SrCounter::FIELD_NAME),
                      first.getTitle(SrCounter::FIELD_LAST_VALUE),
                      first.getTitle(SrCounter::FIELD_CUR_VALUE)});
    for (const SrCounter &counter : counters) {
        document += newLine;
        document += rowStart;
        appendEscaped(document, counter.name());
        document += nextCell;
        document += QString::number(counter.lastValue());
        document += nextCell;
        document += QString::number(counter.curValue());
        document += rowEnd;
    }
    document += newLine;
    document += tableEnd;
}
