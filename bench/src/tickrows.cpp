#include "benchrows.h"

#include "support/openpage.h"

#include <QCoreApplication>

namespace {

/// The document in the middle is ticked and unticked; the page is asked after each tick whether it
/// may be left, as the wizard does.
void tick(benchmark::State &state, int documents)
{
    DocumentsPage &open = DocumentsPage::of(documents);
    QAbstractItemModel &model = open.model();
    const int rowsOfADocument = (model.rowCount() - 1) / documents;
    const QModelIndex box = model.index(documents / 2 * rowsOfADocument, 0);
    constexpr int ticksPerRepaint = 50;
    bool ticked = false;
    int ticks = 0;
    for (auto _ : state) {
        if (++ticks % ticksPerRepaint == 0) {
            // The cashier's window repaints between two ticks; only the ticks are measured.
            state.PauseTiming();
            QCoreApplication::processEvents();
            state.ResumeTiming();
        }
        ticked = !ticked;
        model.setData(box, ticked ? Qt::Checked : Qt::Unchecked, Qt::CheckStateRole);
        benchmark::DoNotOptimize(open.page().isComplete());
    }
    model.setData(box, Qt::Unchecked, Qt::CheckStateRole);
}

} // namespace

QVector<BenchRow> tickRows()
{
    constexpr int few = 10;
    BenchRow row;
    row.id = QStringLiteral("tick");
    row.subject = QStringLiteral("Отметка одного документа с isReady() и isComplete()");
    row.floorText = QStringLiteral("то же с %1 документами").arg(few);
    row.sizeText = QStringLiteral("документов");
    row.atMost = 2;
    row.sizes = {few, 100, 1000, 10000, 100000};
    row.measured = tick;
    row.bare = [](benchmark::State &state, int) { tick(state, few); };
    return {row};
}
