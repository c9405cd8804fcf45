#include "benchrows.h"

#include "support/journalfile.h"

#include <payments/journalquery.h>
#include <payments/paymentsstore.h>
#include <ui/journalmodel.h>

#include <QSqlQuery>
#include <QVariant>

namespace {

constexpr int pagesToScroll = 10;

enum class Hands { Open, Search, Scroll };

PaymentFilter filterOf(Hands hands)
{
    PaymentFilter filter;
    if (hands == Hands::Search)
        filter.account = JournalFile::searchedAccount();
    return filter;
}

int pagesOf(Hands hands)
{
    return hands == Hands::Scroll ? pagesToScroll : 1;
}

void useModel(benchmark::State &state, Hands hands, int payments)
{
    PaymentsStore store;
    if (!store.open(JournalFile::of(payments)))
        state.SkipWithError(qPrintable(store.lastError()));
    JournalModel model(store);
    for (auto _ : state) {
        if (hands == Hands::Search)
            model.setFilter(filterOf(hands));
        else
            model.reload();
        for (int page = 1; page < pagesOf(hands) && model.canFetchMore({}); ++page)
            model.fetchMore({});
        benchmark::DoNotOptimize(model.rowCount());
        if (hands == Hands::Search) {
            state.PauseTiming();
            model.setFilter(PaymentFilter());
            state.ResumeTiming();
        }
    }
}

/// The rows that the model shows, read as one query.
void bareQuery(benchmark::State &state, Hands hands, int payments)
{
    const JournalFile::Connection file(payments);
    const JournalQuery query(filterOf(hands), PaymentOrder::NewestFirst, JournalQuery::Matches::One,
                             nullptr, JournalModel::pageSize * pagesOf(hands));
    for (auto _ : state) {
        QSqlQuery rows(file.connection());
        rows.setForwardOnly(true);
        rows.prepare(query.sql());
        for (const QVariant &value : query.values())
            rows.addBindValue(value);
        if (!rows.exec())
            state.SkipWithError("the query failed");
        const int columns = 18;
        while (rows.next()) {
            for (int column = 0; column < columns; ++column)
                benchmark::DoNotOptimize(rows.value(column).isNull());
        }
    }
}

BenchRow journalRow(const QString &id, const QString &subject, Hands hands)
{
    BenchRow row;
    row.id = id;
    row.subject = subject;
    row.floorText = QStringLiteral("один запрос SQL тех же строк");
    row.sizeText = QStringLiteral("платежей");
    row.atMost = 2;
    row.sizes = {100, 1000, 10000, 100000, 1000000};
    row.measured = [hands](benchmark::State &state, int size) { useModel(state, hands, size); };
    row.bare = [hands](benchmark::State &state, int size) { bareQuery(state, hands, size); };
    return row;
}

} // namespace

QVector<BenchRow> journalRows()
{
    return {
        journalRow(QStringLiteral("journal-open"), QStringLiteral("Журнал: открыть"), Hands::Open),
        journalRow(QStringLiteral("journal-search"), QStringLiteral("Журнал: найти счёт"),
                   Hands::Search),
        journalRow(QStringLiteral("journal-scroll"),
                   QStringLiteral("Журнал: прокрутить тысячу платежей"), Hands::Scroll)};
}
