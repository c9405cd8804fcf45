#include "benchrows.h"

#include "support/askedcells.h"
#include "support/atend.h"
#include "support/openpage.h"
#include "support/standardtable.h"

#include <map>
#include <memory>

namespace {

/// The same cells in a QStandardItemModel, and a view of them.
struct Floor
{
    std::unique_ptr<StandardTable::Cells> cells;
    std::unique_ptr<QStandardItemModel> model;
    std::unique_ptr<QTableView> view;
};

template<class Open>
Floor &floorOf(int size)
{
    static std::map<int, Floor> floors;
    if (floors.empty())
        AtEnd::call([] { floors.clear(); });
    Floor &floor = floors[size];
    if (!floor.model) {
        floor.cells = std::make_unique<StandardTable::Cells>(Open::of(size).model());
        floor.model = floor.cells->fill();
        floor.view = StandardTable::viewOf(floor.model.get(), Open::of(size).table());
    }
    return floor;
}

void paintFrames(benchmark::State &state, QTableView &view)
{
    int step = 0;
    for (auto _ : state) {
        StandardTable::scroll(view, step++);
        StandardTable::paint(view);
    }
}

void ask(benchmark::State &state, QTableView &view)
{
    StandardTable::scroll(view, 5);
    const AskedCells frame = AskedCells::ofFrame(view);
    const QAbstractItemModel &model = *view.model();
    for (auto _ : state) {
        for (const auto &cell : frame.asked)
            benchmark::DoNotOptimize(model.data(cell.first, cell.second).isValid());
    }
    state.counters["asked"] = frame.asked.size();
}

template<class Open>
BenchRow paintRow(const QString &id, const QString &subject, const QString &sizeText)
{
    BenchRow row;
    row.id = id;
    row.subject = subject;
    row.floorText = QStringLiteral("то же представление над QStandardItemModel с теми же ячейками");
    row.sizeText = sizeText;
    row.atMost = 1.2;
    row.sizes = {10, 100, 1000, 10000, 100000};
    row.measured = [](benchmark::State &state, int size) {
        paintFrames(state, Open::of(size).table());
    };
    row.bare = [](benchmark::State &state, int size) {
        paintFrames(state, *floorOf<Open>(size).view);
    };
    return row;
}

template<class Open>
BenchRow askRow(const QString &id, const QString &subject, const QString &sizeText)
{
    BenchRow row = paintRow<Open>(id, subject, sizeText);
    row.floorText = QStringLiteral("то же у QStandardItemModel с теми же ячейками");
    row.atMost = 3;
    row.measured = [](benchmark::State &state, int size) { ask(state, Open::of(size).table()); };
    row.bare = [](benchmark::State &state, int size) { ask(state, *floorOf<Open>(size).view); };
    return row;
}

void openDocuments(benchmark::State &state, int documents)
{
    DocumentsPage &open = DocumentsPage::of(documents);
    for (auto _ : state) {
        state.PauseTiming();
        open.leave();
        state.ResumeTiming();
        open.enter();
        StandardTable::paint(open.table());
    }
}

void fillStandardModel(benchmark::State &state, int documents)
{
    const Floor &floor = floorOf<DocumentsPage>(documents);
    const std::unique_ptr<QTableView> view =
        StandardTable::viewOf(floor.model.get(), DocumentsPage::of(documents).table());
    for (auto _ : state) {
        std::unique_ptr<QStandardItemModel> model = floor.cells->fill();
        view->setModel(model.get());
        StandardTable::paint(*view);
        state.PauseTiming();
        model.reset();
        state.ResumeTiming();
    }
}

BenchRow openRow()
{
    BenchRow row;
    row.id = QStringLiteral("open-documents");
    row.subject = QStringLiteral("Открытие страницы документов");
    row.floorText =
        QStringLiteral("заполнение QStandardItemModel теми же ячейками и показ одного кадра");
    row.sizeText = QStringLiteral("документов");
    row.atMost = 0.5;
    row.sizes = {10, 100, 1000, 10000, 100000};
    row.measured = openDocuments;
    row.bare = fillStandardModel;
    return row;
}

} // namespace

QVector<BenchRow> tableRows()
{
    const QString documents = QStringLiteral("документов");
    const QString services = QStringLiteral("услуг");
    return {paintRow<DocumentsPage>(QStringLiteral("paint-documents"),
                                    QStringLiteral("Кадр таблицы документов"), documents),
            paintRow<ServicesPage>(QStringLiteral("paint-services"),
                                   QStringLiteral("Кадр таблицы услуг"), services),
            askRow<DocumentsPage>(QStringLiteral("cells-documents"),
                                  QStringLiteral("Ячейки и роли кадра таблицы документов"),
                                  documents),
            askRow<ServicesPage>(QStringLiteral("cells-services"),
                                 QStringLiteral("Ячейки и роли кадра таблицы услуг"), services),
            openRow()};
}
