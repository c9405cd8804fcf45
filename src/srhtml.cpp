#include "srhtml.h"

#include "sraccount.h"

namespace {

const QString tableStart = QStringLiteral(R"(<table width="90%" border=1 align="center"><tbody>)");
const QString tableEnd = QStringLiteral("</tbody></table>");

} // namespace

QString SrHtml::escaped(const QString &text)
{
    QString safe;
    safe.reserve(text.size());
    for (const QChar c : text) {
        if (c == QLatin1Char('<'))
            safe += QLatin1String("&lt;");
        else if (c == QLatin1Char('>'))
            safe += QLatin1String("&gt;");
        else if (c == QLatin1Char('&'))
            safe += QLatin1String("&amp;");
        else
            safe += c;
    }
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
    return QStringLiteral(R"(<H4 align="center">%1</H4>)").arg(escaped(text));
}

QString SrHtml::totals(const SRAccount &account)
{
    return QStringLiteral(
               R"(<table width="90%" align="center"><tbody><tr><td align="left">%1: %2</td>)"
               R"(<td align="center">%3: %4</td><td align="right">%5: %6</td></tr></tbody></table>)")
        .arg(escaped(account.getTitle(SRAccount::FIELD_CHARGE)), account.charge().toString(),
             escaped(account.getTitle(SRAccount::FIELD_DEBT)), account.debt().toString(),
             escaped(account.getTitle(SRAccount::FIELD_REMAINDER)), account.remainder().toString());
}

QString SrHtml::totalToPay(const QString &title, const basix::FixNumber &amount)
{
    return QStringLiteral(
               R"(<table width="90%" align="center"><tbody><tr><td align="left"><b>%1</b></td>)"
               R"(<td align="right"><b>%2</b></td></tr></tbody></table>)")
        .arg(escaped(title), amount.toString());
}

QStringList SrHtml::servicesTable(const QList<SrService> &services)
{
    if (services.isEmpty())
        return {};
    const QMap<QString, QString> titles = services.first().titles();
    QStringList lines{tableStart,
                      QStringLiteral(R"(<tr><th align="center">%1</th><th align="center">%2</th>)"
                                     R"(<th align="center">%3</th><th align="center">%4</th></tr>)")
                          .arg(escaped(titles.value(SrService::FIELD_NAME)),
                               escaped(titles.value(SrService::FIELD_CHARGE)),
                               escaped(titles.value(SrService::FIELD_TOPAY)),
                               escaped(titles.value(SrService::FIELD_DISTRIBUTED)))};
    lines.reserve(services.size() + 3);
    const QString row =
        QStringLiteral(R"(<tr><td align="left">%1</td><td align="right">%2</td>)"
                       R"(<td align="right">%3</td><td align="right">%4</td></tr>)");
    for (const SrService &service : services) {
        lines.append(row.arg(escaped(service.name()), service.charge().toString(),
                             service.topay().toString(), service.distributed().toString()));
    }
    lines.append(tableEnd);
    return lines;
}

QStringList SrHtml::countersTable(const QList<SrCounter> &counters)
{
    if (counters.isEmpty())
        return {};
    const QMap<QString, QString> titles = counters.first().titles();
    QStringList lines{tableStart,
                      QStringLiteral(R"(<tr><th align="center">%1</th><th align="center">%2</th>)"
                                     R"(<th align="center">%3</th></tr>)")
                          .arg(escaped(titles.value(SrCounter::FIELD_NAME)),
                               escaped(titles.value(SrCounter::FIELD_LAST_VALUE)),
                               escaped(titles.value(SrCounter::FIELD_CUR_VALUE)))};
    const QString row = QStringLiteral(R"(<tr><td align="left">%1</td><td align="right">%2</td>)"
                                       R"(<td align="right">%3</td></tr>)");
    for (const SrCounter &counter : counters) {
        lines.append(row.arg(escaped(counter.name()), QString::number(counter.lastValue()),
                             QString::number(counter.curValue())));
    }
    lines.append(tableEnd);
    return lines;
}
