#include "benchrows.h"

#include "support/generatedanswers.h"

#include "individual/srpersonalaccount.h"
#include "legal/srlegalaccount.h"

#include <QRegularExpression>
#include <QStringList>

#include <map>

namespace {

using GeneratedAnswers::Form;

/// Made once per size.
template<class Account>
const Account &account(Form form, int lines)
{
    static std::map<int, Account> made;
    Account &parsed = made[lines];
    if (!parsed.isValid())
        parsed.parseCheckList(GeneratedAnswers::description(form, lines));
    return parsed;
}

/// The document cut into what it is put together from: markup and texts, each a string of its own.
QStringList pieces(const QString &html)
{
    static const QRegularExpression border(QStringLiteral("(?<=>)|(?=<)"));
    return html.split(border, Qt::SkipEmptyParts);
}

template<class Account>
void render(benchmark::State &state, Form form, int lines)
{
    const Account &rendered = account<Account>(form, lines);
    for (auto _ : state)
        benchmark::DoNotOptimize(rendered.toHtml().size());
}

template<class Account>
void join(benchmark::State &state, Form form, int lines)
{
    const QString html = account<Account>(form, lines).toHtml();
    const QStringList strings = pieces(html);
    for (auto _ : state)
        benchmark::DoNotOptimize(strings.join(QString()).size());
}

template<class Account>
BenchRow htmlRow(const QString &id, const QString &subject, Form form)
{
    BenchRow row;
    row.id = id;
    row.subject = subject;
    row.floorText = QStringLiteral("соединение готовых строк той же общей длины");
    row.sizeText = QStringLiteral("услуг");
    row.atMost = 3;
    row.sizes = {10, 100, 1000, 10000, 50000};
    row.measured = [form](benchmark::State &state, int size) {
        render<Account>(state, form, size);
    };
    row.bare = [form](benchmark::State &state, int size) { join<Account>(state, form, size); };
    return row;
}

} // namespace

QVector<BenchRow> htmlRows()
{
    return {htmlRow<SrPersonalAccount>(QStringLiteral("html-personal"),
                                       QStringLiteral("toHtml() лицевого счёта"), Form::Personal),
            htmlRow<SrLegalAccount>(QStringLiteral("html-contract"),
                                    QStringLiteral("toHtml() договора"), Form::Contract)};
}
