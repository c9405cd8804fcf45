#include "individual/srcounteritemdelegate.h"

#include "individual/srcountersmodel.h"
#include "testrecords.h"

#include <QSpinBox>
#include <QStandardItemModel>
#include <QTest>

#include <limits>
#include <memory>

namespace {

constexpr qint64 intMin = std::numeric_limits<int>::min();
constexpr qint64 intMax = std::numeric_limits<int>::max();

} // namespace

class TestSrCounterItemDelegate : public QObject
{
    Q_OBJECT

private slots:
    void isAStyledDelegate();
    void editor_data();
    void editor();
    void editorOverAnotherModelHasNoLowerEndOfItsOwn();
    void editorWithoutAModel();
    void editorIsTheParents();

private:
    std::unique_ptr<QSpinBox> editorOf(QWidget *parent, const QModelIndex &index) const;
};

std::unique_ptr<QSpinBox> TestSrCounterItemDelegate::editorOf(QWidget *parent,
                                                              const QModelIndex &index) const
{
    const SrCounterItemDelegate delegate;
    return std::unique_ptr<QSpinBox>(
        qobject_cast<QSpinBox *>(delegate.createEditor(parent, {}, index)));
}

void TestSrCounterItemDelegate::isAStyledDelegate()
{
    QCOMPARE(SrCounterItemDelegate::staticMetaObject.superClass(),
             &QStyledItemDelegate::staticMetaObject);
    QCOMPARE(SrCounterItemDelegate::staticMetaObject.className(), "SrCounterItemDelegate");
}

void TestSrCounterItemDelegate::editor_data()
{
    QTest::addColumn<qint64>("last");
    QTest::addColumn<qint64>("current");
    QTest::addColumn<int>("column");
    QTest::addColumn<int>("minimum");
    QTest::addColumn<int>("value");

    const int current = SrCountersModel::CurValueColumn;
    const int last = SrCountersModel::LastValueColumn;
    QTest::newRow("current above last") << qint64(100) << qint64(150) << current << 100 << 150;
    QTest::newRow("current equal to last") << qint64(100) << qint64(100) << current << 100 << 100;
    QTest::newRow("nothing entered yet starts at last")
        << qint64(100) << qint64(0) << current << 100 << 100;
    QTest::newRow("column of the last reading") << qint64(100) << qint64(150) << last << 100 << 100;
    QTest::newRow("new meter") << qint64(0) << qint64(0) << current << 0 << 0;
    QTest::newRow("negative last") << qint64(-5) << qint64(-2) << current << -5 << -2;
    QTest::newRow("last is the largest int")
        << intMax << intMax << current << int(intMax) << int(intMax);
    QTest::newRow("last beyond int does not wrap")
        << intMax + 1 << intMax + 7 << current << int(intMax) << int(intMax);
    QTest::newRow("last far beyond int")
        << qint64(5000000000) << qint64(0) << current << int(intMax) << int(intMax);
    QTest::newRow("current beyond int, last not")
        << qint64(3) << qint64(4294967299) << current << 3 << int(intMax);
    QTest::newRow("last below int") << intMin - 1 << qint64(4) << current << int(intMin) << 4;
}

void TestSrCounterItemDelegate::editor()
{
    QFETCH(qint64, last);
    QFETCH(qint64, current);
    QFETCH(int, column);
    QFETCH(int, minimum);
    QFETCH(int, value);
    SrCountersModel model;
    model.setCounters({TestRecords::counter(QStringLiteral("другой"), 1, 2),
                       TestRecords::counter(QStringLiteral("этот"), last, current)});
    const auto editor = editorOf(nullptr, model.index(1, column));
    QVERIFY(editor);
    QCOMPARE(editor->minimum(), minimum);
    QCOMPARE(editor->maximum(), int(intMax));
    QCOMPARE(editor->value(), value);
}

void TestSrCounterItemDelegate::editorOverAnotherModelHasNoLowerEndOfItsOwn()
{
    QStandardItemModel model(1, 1);
    model.setData(model.index(0, 0), 42);
    const auto editor = editorOf(nullptr, model.index(0, 0));
    QVERIFY(editor);
    QCOMPARE(editor->minimum(), QSpinBox().minimum());
    QCOMPARE(editor->maximum(), int(intMax));
    QCOMPARE(editor->value(), 42);
}

void TestSrCounterItemDelegate::editorWithoutAModel()
{
    const auto editor = editorOf(nullptr, QModelIndex());
    QVERIFY(editor);
    QCOMPARE(editor->value(), 0);
    QCOMPARE(editor->maximum(), int(intMax));
}

void TestSrCounterItemDelegate::editorIsTheParents()
{
    QWidget parent;
    const auto editor = editorOf(&parent, QModelIndex());
    QCOMPARE(editor->parentWidget(), &parent);
}

QTEST_MAIN(TestSrCounterItemDelegate)
#include "tst_srcounteritemdelegate.moc"
