#include "srtablecolumns.h"

#include "countingproxy.h"
#include "messagelog.h"
#include "srtextitemdelegate.h"

#include <QDoubleSpinBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QStandardItemModel>
#include <QTableView>
#include <QTest>
#include <QVBoxLayout>

#include <memory>

class TestSrTableColumns : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_log = std::make_unique<MessageLog>(); }
    void cleanup()
    {
        const QStringList unexpected =
            m_log->unexpectedWarnings({QStringLiteral("propagateSizeHints")});
        m_log.reset();
        QCOMPARE(unexpected, QStringList());
    }

    void lastColumnStretchesAndRowsHaveNoNumbers();
    void textsAreShownCleaned();
    void rowsHoldTheirText();
    void captionsAreMeasuredWhenTheTableIsShown();
    void tabLeavesTheTable();
    void everyColumnButTheLastFitsItsContents();
    void longTextIsCutOffAndLeavesRoomForTheAmounts();
    void manyLongTextsLeaveRoomForTheLastColumn_data();
    void manyLongTextsLeaveRoomForTheLastColumn();
    void columnsThatJustFitKeepTheirWidth_data();
    void columnsThatJustFitKeepTheirWidth();
    void columnsShrinkAgain();
    void thousandsOfRowsAreNotAllMeasured();
    void tableWithoutRows();

private:
    std::unique_ptr<MessageLog> m_log;
};

void TestSrTableColumns::lastColumnStretchesAndRowsHaveNoNumbers()
{
    QTableView table;
    srPrepareTable(&table);
    QVERIFY(table.horizontalHeader()->stretchLastSection());
    QVERIFY(table.verticalHeader()->isHidden());
    QCOMPARE(table.textElideMode(), Qt::ElideRight);
}

void TestSrTableColumns::textsAreShownCleaned()
{
    QTableView table;
    srPrepareTable(&table);
    QVERIFY(qobject_cast<SrTextItemDelegate *>(table.itemDelegate()));
}

void TestSrTableColumns::rowsHoldTheirText()
{
    QTableView table;
    QFont large = table.font();
    large.setPixelSize(60);
    table.setFont(large);
    srPrepareTable(&table);
    const int row = table.verticalHeader()->defaultSectionSize();
    QDoubleSpinBox editor;
    editor.setFont(large);
    QVERIFY2(row >= editor.sizeHint().height(), "an editor would be cut off");
}

void TestSrTableColumns::captionsAreMeasuredWhenTheTableIsShown()
{
    class Model final : public QStandardItemModel
    {
    public:
        using QStandardItemModel::QStandardItemModel;
        QVariant headerData(int section, Qt::Orientation orientation, int role) const override
        {
            ++asked;
            return QStandardItemModel::headerData(section, orientation, role);
        }
        mutable int asked = 0;
    };
    Model model(3, 2);
    model.setHorizontalHeaderLabels(
        {QStringLiteral("first\nand its second line"), QStringLiteral("second")});
    QTableView plain;
    plain.setModel(&model);
    srPrepareTable(&plain);
    plain.show();
    QVERIFY(QTest::qWaitForWindowExposed(&plain));

    QTableView table;
    model.asked = 0;
    srSetTableModel(&table, &model);
    srPrepareTable(&table);
    QCOMPARE(model.asked, 0);
    table.show();
    QVERIFY(QTest::qWaitForWindowExposed(&table));
    QVERIFY(model.asked > 0);
    QCOMPARE(table.horizontalHeader()->count(), 2);
    QCOMPARE(table.horizontalHeader()->geometry(), plain.horizontalHeader()->geometry());
    QCOMPARE(table.viewport()->geometry(), plain.viewport()->geometry());
    model.insertColumn(2);
    QCOMPARE(table.horizontalHeader()->count(), 3);
}

void TestSrTableColumns::tabLeavesTheTable()
{
    QWidget window;
    QVBoxLayout layout(&window);
    QTableView table;
    QLineEdit behind;
    layout.addWidget(&table);
    layout.addWidget(&behind);
    QStandardItemModel model(2, 2);
    table.setModel(&model);
    srPrepareTable(&table);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    table.setFocus();
    QTest::keyClick(&table, Qt::Key_Tab);
    QVERIFY(behind.hasFocus());
}

void TestSrTableColumns::everyColumnButTheLastFitsItsContents()
{
    QStandardItemModel model(2, 3);
    model.setData(model.index(0, 0), QStringLiteral("w"));
    model.setData(model.index(1, 1), QString(20, QLatin1Char('w')));
    model.setData(model.index(1, 2), QString(60, QLatin1Char('w')));
    QTableView table;
    table.setModel(&model);
    srPrepareTable(&table);
    table.resize(700, 200);
    table.setColumnWidth(0, 300);
    table.setColumnWidth(1, 5);
    srFitColumnsButLast(&table);
    QVERIFY(table.columnWidth(0) < 100);
    QVERIFY(table.columnWidth(1) > 100);
    const int needed = QFontMetrics(table.font()).horizontalAdvance(QString(20, QLatin1Char('w')));
    QVERIFY(table.columnWidth(1) >= needed);
    QVERIFY(table.columnWidth(1) < needed + 40);
}

void TestSrTableColumns::longTextIsCutOffAndLeavesRoomForTheAmounts()
{
    QStandardItemModel model(1, 4);
    model.setData(model.index(0, 0), QString(500, QChar(u'Ш')));
    for (int column = 1; column < 4; ++column)
        model.setData(model.index(0, column), QStringLiteral("123456.78"));
    QTableView table;
    table.setModel(&model);
    srPrepareTable(&table);
    table.resize(700, 200);
    srFitColumnsButLast(&table);
    QCOMPARE(table.columnWidth(0), 360);
    QVERIFY(table.columnViewportPosition(3) < 690);
}

void TestSrTableColumns::manyLongTextsLeaveRoomForTheLastColumn_data()
{
    QTest::addColumn<int>("columns");
    QTest::addColumn<int>("longOnes");
    QTest::addColumn<int>("widest");
    QTest::newRow("meters") << 3 << 1 << 360;
    QTest::newRow("two long") << 5 << 2 << 240;
    QTest::newRow("services, all long") << 4 << 4 << 160;
    QTest::newRow("documents, all long") << 5 << 5 << 160;
}

void TestSrTableColumns::manyLongTextsLeaveRoomForTheLastColumn()
{
    QFETCH(const int, columns);
    QFETCH(const int, longOnes);
    QFETCH(const int, widest);
    QStandardItemModel model(1, columns);
    for (int column = 0; column < columns; ++column) {
        const bool isLong = column < longOnes;
        model.setHeaderData(column, Qt::Horizontal,
                            isLong ? QString(300, QChar(u'Ш')) : QStringLiteral("Долг"));
        model.setData(model.index(0, column), QStringLiteral("123456.78"));
    }
    QTableView table;
    table.setModel(&model);
    srPrepareTable(&table);
    table.resize(770, 200);
    srFitColumnsButLast(&table);
    QCOMPARE(table.columnWidth(0), widest);
    QVERIFY(table.columnViewportPosition(columns - 1) < 690);
}

void TestSrTableColumns::columnsThatJustFitKeepTheirWidth_data()
{
    QTest::addColumn<int>("together");
    QTest::addColumn<bool>("kept");
    QTest::newRow("as much as there is room") << 680 << true;
    QTest::newRow("a pixel too much") << 681 << false;
}

void TestSrTableColumns::columnsThatJustFitKeepTheirWidth()
{
    QFETCH(const int, together);
    QFETCH(const bool, kept);
    QStandardItemModel model(1, 3);
    QTableView table;
    table.setModel(&model);
    srPrepareTable(&table);
    table.setShowGrid(false);
    const int widths[] = {together / 2, together - together / 2};
    for (const int column : {0, 1})
        model.setData(model.index(0, column), QSize(widths[column], 10), Qt::SizeHintRole);
    srFitColumnsButLast(&table);
    QCOMPARE(table.columnWidth(0) == widths[0] && table.columnWidth(1) == widths[1], kept);
}

void TestSrTableColumns::columnsShrinkAgain()
{
    QStandardItemModel model(1, 2);
    model.setData(model.index(0, 0), QString(500, QLatin1Char('w')));
    QTableView table;
    table.setModel(&model);
    srPrepareTable(&table);
    srFitColumnsButLast(&table);
    model.setData(model.index(0, 0), QStringLiteral("w"));
    srFitColumnsButLast(&table);
    QVERIFY(table.columnWidth(0) < 100);
}

void TestSrTableColumns::thousandsOfRowsAreNotAllMeasured()
{
    QStandardItemModel model(12000, 3);
    CountingProxy counting;
    counting.setSourceModel(&model);
    QTableView table;
    table.setModel(&counting);
    srPrepareTable(&table);
    table.resize(700, 300);
    counting.forget();
    srFitColumnsButLast(&table);
    QVERIFY2(counting.highestRow < 200, qPrintable(QString::number(counting.highestRow)));
    QVERIFY(counting.calls > 0);
}

void TestSrTableColumns::tableWithoutRows()
{
    QStandardItemModel model(0, 4);
    model.setHorizontalHeaderLabels(
        {QStringLiteral("a"), QString(200, QLatin1Char('w')), QString(), QString()});
    QTableView table;
    table.setModel(&model);
    srPrepareTable(&table);
    srFitColumnsButLast(&table);
    QVERIFY(table.columnWidth(1) <= 360);
    QStandardItemModel nothing;
    table.setModel(&nothing);
    srFitColumnsButLast(&table);
}

QTEST_MAIN(TestSrTableColumns)
#include "tst_srtablecolumns.moc"
