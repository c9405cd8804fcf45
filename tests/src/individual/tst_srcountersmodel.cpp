#include "individual/srcountersmodel.h"

#include "flattableproxy.h"
#include "messagelog.h"
#include "tabletext.h"
#include "testrecords.h"

#include <QAbstractItemModelTester>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QTest>

#include <limits>
#include <memory>

using TestRecords::counter;

namespace {

constexpr qint64 beyondInt = 5000000000;

QList<SrCounter> threeCounters()
{
    return {counter(QStringLiteral("Кухня"), 100, 0), counter(QStringLiteral("Ванная"), 7, 7),
            counter(QStringLiteral("Ввод"), beyondInt, beyondInt + 1)};
}

} // namespace

class TestSrCountersModel : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void metaObject();
    void satisfiesTheModelTester();
    void emptyTable();
    void everyMeter();
    void readingsAre64BitIntegers();
    void otherRolesGiveNothing();
    void rowCountIsTheSameUnderEveryParent();
    void captionsAreThoseOfTheFirstMeter();
    void headersBeyondTheCaptionsAreTheBaseClasss();
    void editableWhereBillingSaysSo_data();
    void editableWhereBillingSaysSo();
    void readingsByIndex();
    void indexesOutsideTheTable();

    void setData_data();
    void setData();
    void setDataOfReadOnlyFieldChangesNothingButIsAnnounced();
    void setCountersIsNoChangeByTheCashier();

    void isReady_data();
    void isReady();
    void readinessAfterRandomEdits();

private:
    std::unique_ptr<MessageLog> m_log;
};

void TestSrCountersModel::init()
{
    m_log = std::make_unique<MessageLog>();
}

void TestSrCountersModel::cleanup()
{
    const QStringList unexpected = m_log->unexpectedWarnings({});
    m_log.reset();
    QCOMPARE(unexpected, QStringList());
}

void TestSrCountersModel::metaObject()
{
    const QMetaObject &meta = SrCountersModel::staticMetaObject;
    QCOMPARE(meta.className(), "SrCountersModel");
    QCOMPARE(meta.superClass(), &QAbstractTableModel::staticMetaObject);
    QCOMPARE(meta.propertyCount(), meta.propertyOffset());
    QCOMPARE(meta.methodCount(), meta.methodOffset() + 1);
    const QMetaMethod method = meta.method(meta.methodOffset());
    QCOMPARE(method.methodType(), QMetaMethod::Signal);
    QCOMPARE(method.methodSignature(), QByteArray("valueChanged()"));
}

void TestSrCountersModel::satisfiesTheModelTester()
{
    SrCountersModel model;
    FlatTableProxy proxy;
    proxy.setSourceModel(&model);
    QAbstractItemModelTester tester(&proxy, QAbstractItemModelTester::FailureReportingMode::QtTest);
    model.setCounters(threeCounters());
    model.setData(model.index(0, SrCountersModel::CurValueColumn), 120);
    model.setCounters({});
    model.setCounters(threeCounters().mid(1));
}

void TestSrCountersModel::emptyTable()
{
    SrCountersModel model;
    model.setCounters({});
    QCOMPARE(TableText::shown(model), QStringList({QStringLiteral(" |  | ")}));
    QVERIFY(model.isReady());
    QCOMPARE(model.counters().size(), 0);
}

void TestSrCountersModel::everyMeter()
{
    SrCountersModel model;
    model.setCounters(threeCounters());
    QCOMPARE(TableText::shown(model),
             QStringList({QStringLiteral("T:name | T:lastvalue | T:currvalue"),
                          QStringLiteral("Кухня | 100 | 0"), QStringLiteral("Ванная | 7 | 7"),
                          QStringLiteral("Ввод | 5000000000 | 5000000001")}));
}

void TestSrCountersModel::readingsAre64BitIntegers()
{
    SrCountersModel model;
    model.setCounters(threeCounters());
    const QStringList expected{
        QStringLiteral("QString Кухня | qlonglong 100 | qlonglong 0"),
        QStringLiteral("QString Ванная | qlonglong 7 | qlonglong 7"),
        QStringLiteral("QString Ввод | qlonglong 5000000000 | qlonglong 5000000001")};
    QCOMPARE(TableText::values(model, Qt::DisplayRole), expected);
    QCOMPARE(TableText::values(model, Qt::EditRole), expected);
}

void TestSrCountersModel::otherRolesGiveNothing()
{
    SrCountersModel model;
    model.setCounters(threeCounters());
    for (int role = 0; role <= Qt::UserRole + 1; ++role) {
        if (role == Qt::DisplayRole || role == Qt::EditRole)
            continue;
        for (const QString &line : TableText::values(model, role))
            QVERIFY2(line == QLatin1String("- | - | -"), qPrintable(QString::number(role)));
    }
}

void TestSrCountersModel::rowCountIsTheSameUnderEveryParent()
{
    SrCountersModel model;
    model.setCounters(threeCounters());
    QCOMPARE(model.rowCount(), 3);
    QCOMPARE(model.rowCount(model.index(0, 0)), 3);
    QCOMPARE(model.columnCount(), 3);
    QCOMPARE(model.columnCount(model.index(0, 0)), 3);
}

void TestSrCountersModel::captionsAreThoseOfTheFirstMeter()
{
    SrCounter untitled;
    untitled.parseCheckList({TestRecords::field(SrCounter::FIELD_LAST_VALUE, QStringLiteral("1"))});
    SrCountersModel model;
    model.setCounters({untitled, threeCounters().first()});
    QCOMPARE(TableText::shown(model).first(), QStringLiteral(" | T:lastvalue | "));
    model.setCounters({});
    QCOMPARE(TableText::shown(model).first(), QStringLiteral(" |  | "));
}

void TestSrCountersModel::headersBeyondTheCaptionsAreTheBaseClasss()
{
    SrCountersModel model;
    model.setCounters(threeCounters());
    QStandardItemModel plain(4, 4);
    const auto base = [&plain](int section, Qt::Orientation orientation, int role) {
        return plain.QAbstractItemModel::headerData(section, orientation, role);
    };
    QCOMPARE(model.headerData(0, Qt::Vertical), base(0, Qt::Vertical, Qt::DisplayRole));
    QCOMPARE(model.headerData(3, Qt::Horizontal), base(3, Qt::Horizontal, Qt::DisplayRole));
    QCOMPARE(model.headerData(-1, Qt::Horizontal), base(-1, Qt::Horizontal, Qt::DisplayRole));
    QCOMPARE(model.headerData(0, Qt::Horizontal, Qt::EditRole),
             base(0, Qt::Horizontal, Qt::EditRole));
    QCOMPARE(model.headerData(2, Qt::Horizontal).toString(), QStringLiteral("T:currvalue"));
}

void TestSrCountersModel::editableWhereBillingSaysSo_data()
{
    QTest::addColumn<QStringList>("readOnly");
    QTest::addColumn<QString>("flags");
    QTest::newRow("reading only") << QStringList{SrCounter::FIELD_NAME, SrCounter::FIELD_LAST_VALUE}
                                  << QStringLiteral("sn sn sne");
    QTest::newRow("everything") << QStringList() << QStringLiteral("sne sne sne");
    QTest::newRow("name only") << QStringList{SrCounter::FIELD_CUR_VALUE,
                                              SrCounter::FIELD_LAST_VALUE}
                               << QStringLiteral("sne sn sn");
    QTest::newRow("last reading only")
        << QStringList{SrCounter::FIELD_CUR_VALUE, SrCounter::FIELD_NAME}
        << QStringLiteral("sn sne sn");
    QTest::newRow("nothing") << QStringList{SrCounter::FIELD_NAME, SrCounter::FIELD_LAST_VALUE,
                                            SrCounter::FIELD_CUR_VALUE}
                             << QStringLiteral("sn sn sn");
}

void TestSrCountersModel::editableWhereBillingSaysSo()
{
    QFETCH(QStringList, readOnly);
    QFETCH(QString, flags);
    SrCountersModel model;
    model.setCounters({counter(QStringLiteral("а"), 1, 2, readOnly)});
    QCOMPARE(TableText::flags(model), QStringList({flags}));
}

void TestSrCountersModel::readingsByIndex()
{
    SrCountersModel model;
    model.setCounters(threeCounters());
    for (int column = 0; column < 3; ++column) {
        QCOMPARE(model.lastCounterValue(model.index(0, column)), qint64(100));
        QCOMPARE(model.curCounterValue(model.index(0, column)), qint64(0));
        QCOMPARE(model.lastCounterValue(model.index(2, column)), beyondInt);
        QCOMPARE(model.curCounterValue(model.index(2, column)), beyondInt + 1);
    }
}

void TestSrCountersModel::indexesOutsideTheTable()
{
    SrCountersModel model;
    model.setCounters(threeCounters());
    const QModelIndex stale = model.index(2, SrCountersModel::CurValueColumn);
    model.setCounters(threeCounters().mid(0, 2));
    for (const QModelIndex &index : {stale, QModelIndex()}) {
        QCOMPARE(model.lastCounterValue(index), qint64(0));
        QCOMPARE(model.curCounterValue(index), qint64(0));
        QCOMPARE(model.data(index, Qt::DisplayRole), QVariant());
        QCOMPARE(model.flags(index), model.QAbstractTableModel::flags(index));
    }
    QStandardItemModel wider(3, 6);
    QCOMPARE(model.data(wider.index(0, 3), Qt::DisplayRole), QVariant());
    QVERIFY(!(model.flags(wider.index(0, 3)) & Qt::ItemIsEditable));
}

void TestSrCountersModel::setData_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("column");
    QTest::addColumn<int>("role");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("changed");

    const int edit = Qt::EditRole;
    QTest::newRow("name") << 1 << 0 << edit << QVariant(QStringLiteral("Душ"))
                          << QStringLiteral("Душ | 7 | 7");
    QTest::newRow("last reading") << 1 << 1 << edit << QVariant(5)
                                  << QStringLiteral("Ванная | 5 | 7");
    QTest::newRow("current reading")
        << 1 << 2 << edit << QVariant(9) << QStringLiteral("Ванная | 7 | 9");
    QTest::newRow("below the last one")
        << 1 << 2 << edit << QVariant(-3) << QStringLiteral("Ванная | 7 | -3");
    QTest::newRow("text") << 1 << 2 << edit << QVariant(QStringLiteral("12"))
                          << QStringLiteral("Ванная | 7 | 12");
    QTest::newRow("no number counts as zero")
        << 1 << 2 << edit << QVariant(QStringLiteral("много")) << QStringLiteral("Ванная | 7 | 0");
    QTest::newRow("largest that the editor gives")
        << 1 << 2 << edit << QVariant(std::numeric_limits<int>::max())
        << QStringLiteral("Ванная | 7 | 2147483647");
    QTest::newRow("display role") << 1 << 2 << int(Qt::DisplayRole) << QVariant(9) << QString();
    QTest::newRow("row behind the last") << 3 << 2 << edit << QVariant(9) << QString();
    QTest::newRow("column outside") << 1 << 3 << edit << QVariant(9) << QString();
    QTest::newRow("row far outside") << 40 << 2 << edit << QVariant(9) << QString();
    QTest::newRow("invalid index") << -1 << -1 << edit << QVariant(9) << QString();
}

void TestSrCountersModel::setData()
{
    QFETCH(int, row);
    QFETCH(int, column);
    QFETCH(int, role);
    QFETCH(QVariant, value);
    QFETCH(QString, changed);

    SrCountersModel model;
    QList<SrCounter> counters = threeCounters();
    counters[1] = counter(QStringLiteral("Ванная"), 7, 7, {});
    model.setCounters(counters);
    QStringList expected = TableText::shown(model);
    QSignalSpy valueChanged(&model, &SrCountersModel::valueChanged);
    QSignalSpy dataChanged(&model, &QAbstractItemModel::dataChanged);
    QStandardItemModel larger(60, 6);

    QCOMPARE(model.setData(larger.index(row, column), value, role), !changed.isEmpty());
    QCOMPARE(valueChanged.count(), changed.isEmpty() ? 0 : 1);
    QCOMPARE(dataChanged.count(), 0);
    if (!changed.isEmpty())
        expected[2] = changed;
    QCOMPARE(TableText::shown(model), expected);
}

void TestSrCountersModel::setDataOfReadOnlyFieldChangesNothingButIsAnnounced()
{
    SrCountersModel model;
    model.setCounters(threeCounters());
    QSignalSpy valueChanged(&model, &SrCountersModel::valueChanged);
    QVERIFY(model.setData(model.index(0, SrCountersModel::LastValueColumn), 1));
    QCOMPARE(valueChanged.count(), 1);
    QCOMPARE(model.counters().first().lastValue(), qint64(100));
}

void TestSrCountersModel::setCountersIsNoChangeByTheCashier()
{
    SrCountersModel model;
    QSignalSpy aboutToBeReset(&model, &QAbstractItemModel::modelAboutToBeReset);
    QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
    QSignalSpy valueChanged(&model, &SrCountersModel::valueChanged);
    const QList<SrCounter> given = threeCounters();
    model.setCounters(given);
    QCOMPARE(aboutToBeReset.count(), 1);
    QCOMPARE(reset.count(), 1);
    QCOMPARE(valueChanged.count(), 0);
    model.setData(model.index(0, SrCountersModel::CurValueColumn), 150);
    QCOMPARE(given.first().curValue(), qint64(0));
    QCOMPARE(model.counters().first().curValue(), qint64(150));
}

void TestSrCountersModel::isReady_data()
{
    QTest::addColumn<qint64>("last");
    QTest::addColumn<qint64>("current");
    QTest::addColumn<bool>("ready");
    QTest::newRow("nothing entered") << qint64(5) << qint64(0) << false;
    QTest::newRow("one below") << qint64(5) << qint64(4) << false;
    QTest::newRow("equal") << qint64(5) << qint64(5) << true;
    QTest::newRow("above") << qint64(5) << qint64(6) << true;
    QTest::newRow("both zero") << qint64(0) << qint64(0) << true;
    QTest::newRow("negative last") << qint64(-5) << qint64(-5) << true;
    QTest::newRow("beyond int, below") << beyondInt << qint64(1) << false;
    QTest::newRow("beyond int, equal") << beyondInt << beyondInt << true;
}

void TestSrCountersModel::isReady()
{
    QFETCH(qint64, last);
    QFETCH(qint64, current);
    QFETCH(bool, ready);
    SrCountersModel model;
    model.setCounters(
        {counter(QStringLiteral("а"), 1, 1), counter(QStringLiteral("б"), last, current)});
    QCOMPARE(model.isReady(), ready);
}

void TestSrCountersModel::readinessAfterRandomEdits()
{
    QRandomGenerator random(4711);
    int readySeen = 0;
    SrCountersModel model;
    QList<SrCounter> counters;
    for (int i = 0; i < 3; ++i)
        counters << counter(QString::number(i), 0, 0, {});
    model.setCounters(counters);
    for (int step = 0; step < 500; ++step) {
        model.setData(model.index(random.bounded(3), random.bounded(3)), random.bounded(4));
        bool ready = true;
        for (const SrCounter &c : model.counters())
            ready = ready && c.curValue() >= c.lastValue();
        QCOMPARE(model.isReady(), ready);
        readySeen += ready ? 1 : 0;
    }
    QVERIFY(readySeen > 20 && readySeen < 480);
}

QTEST_GUILESS_MAIN(TestSrCountersModel)
#include "tst_srcountersmodel.moc"
