#include "legal/srdocumentsmodel.h"

#include "flattableproxy.h"
#include "messagelog.h"
#include "tabletext.h"
#include "testrecords.h"

#include <QAbstractItemModelTester>
#include <QColor>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QTest>

#include <memory>

using basix::FixNumber;
using TestRecords::document;
using TestRecords::service;

namespace {

FixNumber money(const char *text)
{
    return FixNumber(100, QString::fromLatin1(text));
}

QString latin(const char *text)
{
    return QString::fromLatin1(text);
}

QList<SrDocument> twoDocuments()
{
    return {document(latin("D-1"), latin("100"), latin("110"),
                     {service(QStringLiteral("Вода"), latin("60"), latin("65.5"), latin("1.00")),
                      service(QStringLiteral("Стоки"), latin("40"), latin("44.5"), latin("2.00"))}),
            document(latin("D-2"), latin("7"), latin("8"),
                     {service(QStringLiteral("Пени"), latin("7"), latin("8"), latin("0.25"))})};
}

/// Rows of twoDocuments().
enum Row { First, FirstWater, FirstDrain, Second, SecondPenalty, Total };

QString totalOf(const QList<SrDocument> &documents)
{
    FixNumber total(100, 0);
    for (const SrDocument &d : documents) {
        for (const SrService &s : d.services())
            total += s.distributed();
    }
    return total.toString();
}

/// What the table should hold, recomputed from nothing at every step.
struct Expected
{
    QList<SrDocument> documents;
    QVector<bool> ticked;

    bool ready() const
    {
        bool any = false;
        for (int d = 0; d < documents.size(); ++d) {
            if (!ticked.at(d))
                continue;
            any = true;
            int positive = 0;
            int negative = 0;
            int due = 0;
            for (const SrService &s : documents.at(d).services()) {
                positive += s.distributed().value() > 0 ? 1 : 0;
                negative += s.distributed().value() < 0 ? 1 : 0;
                due += s.topay().value() != 0 ? 1 : 0;
            }
            if (negative > 0 || (positive == 0 && due > 0))
                return false;
        }
        return any;
    }

    QList<SrDocument> handedOn() const
    {
        QList<SrDocument> list;
        for (int d = 0; d < documents.size(); ++d) {
            if (ticked.at(d))
                list << documents.at(d);
        }
        return list;
    }

    QStringList lines(const QString &charge, const QString &debt) const
    {
        QStringList lines;
        for (int d = 0; d < documents.size(); ++d) {
            const SrDocument &of = documents.at(d);
            const QString box = ticked.at(d) ? latin("[x] ") : latin("[ ] ");
            lines << box + of.docNumber() + QStringLiteral(" | ПОДИТОГ | ") + of.charge().toString()
                    + latin(" | ") + of.topay().toString() + latin(" | ") + totalOf({of});
            for (const SrService &s : of.services())
                lines << of.docNumber() + latin(" | ") + s.name() + latin(" | ")
                        + s.charge().toString() + latin(" | ") + s.topay().toString() + latin(" | ")
                        + s.distributed().toString();
        }
        lines << QStringLiteral(" | ИТОГО | ") + charge + latin(" | ") + debt + latin(" | ")
                + totalOf(documents);
        return lines;
    }
};

/// The rows with the state of their box, without the captions.
QStringList rowsWithBoxes(const SRDocumentsModel &model)
{
    QStringList lines = TableText::shown(model).mid(1);
    for (int row = 0; row < model.rowCount(); ++row) {
        const QVariant state = model.index(row, 0).data(Qt::CheckStateRole);
        if (state.isValid())
            lines[row].prepend(state.toInt() == Qt::Checked ? latin("[x] ") : latin("[ ] "));
    }
    return lines;
}

void tick(SRDocumentsModel &model, int row, Qt::CheckState state)
{
    model.setData(model.index(row, 0), state, Qt::CheckStateRole);
}

} // namespace

class TestSRDocumentsModel : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void metaObject();
    void satisfiesTheModelTester();
    void beforeTheFirstDocumentsOnlyTheTotalRow();
    void contractWithoutDocumentsIsNeverReady();
    void documentRowStandsAboveItsServices();
    void totalShowsParsedAmountsOfUntickedDocuments();
    void singleDocumentStartsTickedAsParsed();
    void singleDocumentThatIsNotReady();
    void documentWithoutServices();
    void captionsAreThoseOfTheFirstDocument();
    void headersBeyondTheCaptionsAreTheBaseClasss();
    void editValuesOfServicesOnly();
    void backgrounds();
    void onlyDocumentRowsHaveABox();
    void otherRolesGiveNothing();
    void rowCountIsTheSameUnderEveryParent();
    void onlyBoxesAreCheckableAndNothingIsEditable();
    void rowsAndColumnsOutsideTheTable();

    void tickTakesEffectAlthoughSetDataIsFalse();
    void untickClearsTheDocument();
    void everyValueButCheckedUnticks_data();
    void everyValueButCheckedUnticks();
    void tickInAnyColumnOfTheDocumentRow();
    void tickOfOtherRowsChangesNothing_data();
    void tickOfOtherRowsChangesNothing();
    void tickIsLogged();
    void tickSkipsReadOnlyServices();
    void tickOfAnOverpaidDocumentIsNotReady();
    void readinessWantsEveryTickedDocumentReady();

    void setDataOfServices_data();
    void setDataOfServices();
    void calcByDebtRecomputesTickedAndClearsUnticked();
    void calcByDebtIsAnnouncedAfterTheReset();
    void setDocumentsIsNoChangeByTheCashier();
    void ticksLeaveTheDocumentsHandedOverAlone();
    void newDocumentsForgetTheTicks();
    void documentsAreCopies();
    void runningTotalsAfterRandomOperations();

private:
    std::unique_ptr<MessageLog> m_log;
};

void TestSRDocumentsModel::init()
{
    m_log = std::make_unique<MessageLog>();
}

void TestSRDocumentsModel::cleanup()
{
    // Every tick leaves its trace.
    const QStringList unexpected = m_log->unexpectedWarnings({latin("QVariant(")});
    m_log.reset();
    QCOMPARE(unexpected, QStringList());
}

void TestSRDocumentsModel::metaObject()
{
    const QMetaObject &meta = SRDocumentsModel::staticMetaObject;
    QCOMPARE(meta.className(), "SRDocumentsModel");
    QCOMPARE(meta.superClass(), &QAbstractTableModel::staticMetaObject);
    QCOMPARE(meta.propertyCount(), meta.propertyOffset());
    QCOMPARE(meta.methodCount(), meta.methodOffset() + 2);
    QCOMPARE(meta.method(meta.indexOfSignal("valueChanged()")).methodType(), QMetaMethod::Signal);
    QCOMPARE(meta.method(meta.indexOfSlot("calcByDebt()")).access(), QMetaMethod::Public);
}

void TestSRDocumentsModel::satisfiesTheModelTester()
{
    SRDocumentsModel model;
    FlatTableProxy proxy;
    proxy.setSourceModel(&model);
    QAbstractItemModelTester tester(&proxy, QAbstractItemModelTester::FailureReportingMode::QtTest);
    model.setDocuments(twoDocuments(), money("1"), money("2"));
    tick(model, First, Qt::Checked);
    model.calcByDebt();
    model.setData(model.index(FirstWater, SRDocumentsModel::DistributedColumn), 3.0);
    model.setDocuments({}, money("0"), money("0"));
    model.setDocuments(twoDocuments().mid(1), money("0"), money("0"));
}

void TestSRDocumentsModel::beforeTheFirstDocumentsOnlyTheTotalRow()
{
    const SRDocumentsModel model;
    QCOMPARE(TableText::shown(model),
             QStringList({latin(" |  |  |  | "), QStringLiteral(" | ИТОГО | 0.00 | 0.00 | 0.00")}));
    QVERIFY(!model.isReady());
}

void TestSRDocumentsModel::contractWithoutDocumentsIsNeverReady()
{
    SRDocumentsModel model;
    model.setDocuments({}, money("1500.00"), money("2500.00"));
    model.calcByDebt();
    QCOMPARE(TableText::shown(model),
             QStringList(
                 {latin(" |  |  |  | "), QStringLiteral(" | ИТОГО | 1500.00 | 2500.00 | 0.00")}));
    QCOMPARE(TableText::values(model, Qt::DisplayRole).last().left(3), latin("- |"));
    QVERIFY(!model.isReady());
    QVERIFY(model.documents().isEmpty());
}

void TestSRDocumentsModel::documentRowStandsAboveItsServices()
{
    SRDocumentsModel model;
    model.setDocuments(twoDocuments(), money("1500.00"), money("2500.00"));
    QCOMPARE(TableText::shown(model).first(),
             latin("T:num | T:name | T:charge | T:topay | T:distributed"));
    QCOMPARE(rowsWithBoxes(model),
             QStringList({QStringLiteral("[ ] D-1 | ПОДИТОГ | 100.00 | 110.00 | 3.00"),
                          QStringLiteral("D-1 | Вода | 60.00 | 65.50 | 1.00"),
                          QStringLiteral("D-1 | Стоки | 40.00 | 44.50 | 2.00"),
                          QStringLiteral("[ ] D-2 | ПОДИТОГ | 7.00 | 8.00 | 0.25"),
                          QStringLiteral("D-2 | Пени | 7.00 | 8.00 | 0.25"),
                          QStringLiteral(" | ИТОГО | 1500.00 | 2500.00 | 3.25")}));
    QVERIFY(!model.isReady());
    QVERIFY(model.documents().isEmpty());
}

void TestSRDocumentsModel::totalShowsParsedAmountsOfUntickedDocuments()
{
    SRDocumentsModel model;
    model.setDocuments(twoDocuments(), money("0"), money("0"));
    QCOMPARE(model.index(Total, SRDocumentsModel::DistributedColumn).data().toString(),
             latin("3.25"));
    tick(model, Second, Qt::Checked);
    // The other document keeps what it was parsed with, and the total counts it.
    QCOMPARE(model.index(Total, SRDocumentsModel::DistributedColumn).data().toString(),
             latin("11.00"));
    QCOMPARE(model.documents().size(), 1);
}

void TestSRDocumentsModel::singleDocumentStartsTickedAsParsed()
{
    SRDocumentsModel model;
    model.setDocuments(twoDocuments().mid(0, 1), money("0"), money("0"));
    QCOMPARE(rowsWithBoxes(model),
             QStringList({QStringLiteral("[x] D-1 | ПОДИТОГ | 100.00 | 110.00 | 3.00"),
                          QStringLiteral("D-1 | Вода | 60.00 | 65.50 | 1.00"),
                          QStringLiteral("D-1 | Стоки | 40.00 | 44.50 | 2.00"),
                          QStringLiteral(" | ИТОГО | 0.00 | 0.00 | 3.00")}));
    QVERIFY(model.isReady());
    QCOMPARE(model.documents(), twoDocuments().mid(0, 1));
}

void TestSRDocumentsModel::singleDocumentThatIsNotReady()
{
    SRDocumentsModel model;
    model.setDocuments({document(latin("D"), latin("1"), latin("2"),
                                 {service(latin("a"), latin("1"), latin("2"), latin("0"))})},
                       money("0"), money("0"));
    QVERIFY(!model.isReady());
    model.calcByDebt();
    QVERIFY(model.isReady());
}

void TestSRDocumentsModel::documentWithoutServices()
{
    SRDocumentsModel model;
    model.setDocuments({document(latin("D"), latin("1"), latin("2"), {}), twoDocuments().last()},
                       money("0"), money("0"));
    QCOMPARE(model.rowCount(), 4);
    QCOMPARE(rowsWithBoxes(model).first(), QStringLiteral("[ ] D | ПОДИТОГ | 1.00 | 2.00 | 0.00"));
    tick(model, 0, Qt::Checked);
    QVERIFY(model.isReady());
    QCOMPARE(model.documents().size(), 1);
}

void TestSRDocumentsModel::captionsAreThoseOfTheFirstDocument()
{
    SRDocumentsModel model;
    model.setDocuments({document(latin("D"), latin("1"), latin("2"), {}), twoDocuments().last()},
                       money("0"), money("0"));
    QCOMPARE(TableText::shown(model).first(), latin("T:num |  |  |  | "));
    model.setDocuments({}, money("0"), money("0"));
    QCOMPARE(TableText::shown(model).first(), latin(" |  |  |  | "));
}

void TestSRDocumentsModel::headersBeyondTheCaptionsAreTheBaseClasss()
{
    SRDocumentsModel model;
    model.setDocuments(twoDocuments(), money("0"), money("0"));
    QStandardItemModel plain(6, 6);
    const auto base = [&plain](int section, Qt::Orientation orientation, int role) {
        return plain.QAbstractItemModel::headerData(section, orientation, role);
    };
    QCOMPARE(model.headerData(0, Qt::Vertical), base(0, Qt::Vertical, Qt::DisplayRole));
    QCOMPARE(model.headerData(5, Qt::Horizontal), base(5, Qt::Horizontal, Qt::DisplayRole));
    QCOMPARE(model.headerData(-1, Qt::Horizontal), base(-1, Qt::Horizontal, Qt::DisplayRole));
    QCOMPARE(model.headerData(0, Qt::Horizontal, Qt::EditRole),
             base(0, Qt::Horizontal, Qt::EditRole));
}

void TestSRDocumentsModel::editValuesOfServicesOnly()
{
    SRDocumentsModel model;
    model.setDocuments(twoDocuments().mid(0, 1), money("9"), money("9"));
    QCOMPARE(TableText::values(model, Qt::EditRole),
             QStringList({latin("- | - | - | - | -"),
                          QStringLiteral("- | QString Вода | double 60 | double 65.5 | double 1"),
                          QStringLiteral("- | QString Стоки | double 40 | double 44.5 | double 2"),
                          latin("- | - | - | - | -")}));
}

void TestSRDocumentsModel::backgrounds()
{
    SRDocumentsModel model;
    model.setDocuments(twoDocuments().mid(1), money("0"), money("0"));
    const auto row = [](const char *color) {
        const QString cell = latin("QColor ") + latin(color);
        return QStringList({cell, cell, cell, cell, cell}).join(latin(" | "));
    };
    QCOMPARE(TableText::values(model, Qt::BackgroundRole),
             QStringList({row("#a0a0a4"), row("#ffffff"), row("#808080")}));
}

void TestSRDocumentsModel::onlyDocumentRowsHaveABox()
{
    SRDocumentsModel model;
    model.setDocuments(twoDocuments(), money("0"), money("0"));
    tick(model, Second, Qt::Checked);
    const QString none = latin("- | - | - | - | -");
    QCOMPARE(TableText::values(model, Qt::CheckStateRole),
             QStringList({latin("int 0 | - | - | - | -"), none, none,
                          latin("int 2 | - | - | - | -"), none, none}));
}

void TestSRDocumentsModel::otherRolesGiveNothing()
{
    SRDocumentsModel model;
    model.setDocuments(twoDocuments(), money("0"), money("0"));
    for (int role = 0; role <= Qt::UserRole + 1; ++role) {
        if (role == Qt::DisplayRole || role == Qt::EditRole || role == Qt::BackgroundRole
            || role == Qt::CheckStateRole)
            continue;
        for (const QString &line : TableText::values(model, role))
            QVERIFY2(line == latin("- | - | - | - | -"), qPrintable(QString::number(role)));
    }
}

void TestSRDocumentsModel::rowCountIsTheSameUnderEveryParent()
{
    SRDocumentsModel model;
    model.setDocuments(twoDocuments(), money("0"), money("0"));
    QCOMPARE(model.rowCount(), 6);
    QCOMPARE(model.rowCount(model.index(1, 1)), 6);
    QCOMPARE(model.columnCount(), 5);
    QCOMPARE(model.columnCount(model.index(1, 1)), 5);
}

void TestSRDocumentsModel::onlyBoxesAreCheckableAndNothingIsEditable()
{
    SRDocumentsModel model;
    model.setDocuments(twoDocuments(), money("0"), money("0"));
    const QString documentRow = latin("snc sn sn sn sn");
    const QString other = latin("sn sn sn sn sn");
    const QStringList expected{documentRow, other, other, documentRow, other, other};
    QCOMPARE(TableText::flags(model), expected);
    tick(model, First, Qt::Checked);
    QCOMPARE(TableText::flags(model), expected);
    QCOMPARE(model.flags(QModelIndex()), model.QAbstractTableModel::flags(QModelIndex()));
}

void TestSRDocumentsModel::rowsAndColumnsOutsideTheTable()
{
    SRDocumentsModel model;
    model.setDocuments(twoDocuments(), money("0"), money("9.00"));
    // Indexes from before the table shrank to 3 rows: a view may hold such.
    const QModelIndex atRowCount = model.index(3, SRDocumentsModel::ToPayColumn);
    const QModelIndex behind = model.index(4, SRDocumentsModel::ToPayColumn);
    model.setDocuments(twoDocuments().mid(1), money("0"), money("9.00"));
    QCOMPARE(atRowCount.data().toString(), latin("9.00"));
    QCOMPARE(atRowCount.data(Qt::BackgroundRole).value<QColor>(), QColor(Qt::darkGray));
    for (const int role : {Qt::DisplayRole, Qt::EditRole, Qt::BackgroundRole, Qt::CheckStateRole}) {
        QCOMPARE(behind.data(role), QVariant());
        QCOMPARE(model.data(QModelIndex(), role), QVariant());
    }
    QStandardItemModel wider(3, 7);
    for (int row = 0; row < 3; ++row) {
        for (const int role : {Qt::DisplayRole, Qt::EditRole, Qt::CheckStateRole})
            QCOMPARE(model.data(wider.index(row, 5), role), QVariant());
    }
}

void TestSRDocumentsModel::tickTakesEffectAlthoughSetDataIsFalse()
{
    SRDocumentsModel model;
    model.setDocuments(twoDocuments(), money("0"), money("0"));
    QSignalSpy valueChanged(&model, &SRDocumentsModel::valueChanged);
    QSignalSpy dataChanged(&model, &QAbstractItemModel::dataChanged);
    QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
    QCOMPARE(model.setData(model.index(First, 0), Qt::Checked, Qt::CheckStateRole), false);
    QCOMPARE(valueChanged.count(), 1);
    QCOMPARE(dataChanged.count(), 0);
    QCOMPARE(reset.count(), 0);
    QCOMPARE(rowsWithBoxes(model),
             QStringList({QStringLiteral("[x] D-1 | ПОДИТОГ | 100.00 | 110.00 | 110.00"),
                          QStringLiteral("D-1 | Вода | 60.00 | 65.50 | 65.50"),
                          QStringLiteral("D-1 | Стоки | 40.00 | 44.50 | 44.50"),
                          QStringLiteral("[ ] D-2 | ПОДИТОГ | 7.00 | 8.00 | 0.25"),
                          QStringLiteral("D-2 | Пени | 7.00 | 8.00 | 0.25"),
                          QStringLiteral(" | ИТОГО | 0.00 | 0.00 | 110.25")}));
    QVERIFY(model.isReady());
    QCOMPARE(model.documents().size(), 1);
    QCOMPARE(model.documents().first().amount().toString(), latin("110.00"));
}

void TestSRDocumentsModel::untickClearsTheDocument()
{
    SRDocumentsModel model;
    model.setDocuments(twoDocuments(), money("0"), money("0"));
    tick(model, First, Qt::Checked);
    tick(model, Second, Qt::Checked);
    tick(model, First, Qt::Unchecked);
    QCOMPARE(rowsWithBoxes(model),
             QStringList({QStringLiteral("[ ] D-1 | ПОДИТОГ | 100.00 | 110.00 | 0.00"),
                          QStringLiteral("D-1 | Вода | 60.00 | 65.50 | 0.00"),
                          QStringLiteral("D-1 | Стоки | 40.00 | 44.50 | 0.00"),
                          QStringLiteral("[x] D-2 | ПОДИТОГ | 7.00 | 8.00 | 8.00"),
                          QStringLiteral("D-2 | Пени | 7.00 | 8.00 | 8.00"),
                          QStringLiteral(" | ИТОГО | 0.00 | 0.00 | 8.00")}));
    QCOMPARE(model.documents().size(), 1);
    QCOMPARE(model.documents().first().docNumber(), latin("D-2"));
}

void TestSRDocumentsModel::everyValueButCheckedUnticks_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<bool>("ticked");
    QTest::newRow("checked") << QVariant(2) << true;
    QTest::newRow("checked as text") << QVariant(latin("2")) << true;
    QTest::newRow("partly checked") << QVariant(1) << false;
    QTest::newRow("unchecked") << QVariant(0) << false;
    QTest::newRow("true is not checked") << QVariant(true) << false;
    QTest::newRow("nothing") << QVariant() << false;
}

void TestSRDocumentsModel::everyValueButCheckedUnticks()
{
    QFETCH(QVariant, value);
    QFETCH(bool, ticked);
    SRDocumentsModel model;
    model.setDocuments(twoDocuments(), money("0"), money("0"));
    for (const Qt::CheckState before : {Qt::Unchecked, Qt::Checked}) {
        tick(model, Second, before);
        QVERIFY(!model.setData(model.index(Second, 0), value, Qt::CheckStateRole));
        QCOMPARE(!model.documents().isEmpty(), ticked);
        QCOMPARE(model.index(Second, SRDocumentsModel::DistributedColumn).data().toString(),
                 ticked ? latin("8.00") : latin("0.00"));
    }
}

void TestSRDocumentsModel::tickInAnyColumnOfTheDocumentRow()
{
    SRDocumentsModel model;
    model.setDocuments(twoDocuments(), money("0"), money("0"));
    QVERIFY(!model.setData(model.index(First, SRDocumentsModel::ToPayColumn), Qt::Checked,
                           Qt::CheckStateRole));
    QCOMPARE(model.documents().size(), 1);
}

void TestSRDocumentsModel::tickOfOtherRowsChangesNothing_data()
{
    QTest::addColumn<int>("row");
    QTest::newRow("service row") << int(FirstDrain);
    QTest::newRow("total row") << int(Total);
    QTest::newRow("behind the total row") << int(Total) + 1;
    QTest::newRow("far outside") << 50;
    QTest::newRow("invalid index") << -1;
}

void TestSRDocumentsModel::tickOfOtherRowsChangesNothing()
{
    QFETCH(int, row);
    SRDocumentsModel model;
    model.setDocuments(twoDocuments(), money("0"), money("0"));
    const QStringList before = rowsWithBoxes(model);
    QSignalSpy valueChanged(&model, &SRDocumentsModel::valueChanged);
    QStandardItemModel larger(60, 6);
    QCOMPARE(model.setData(larger.index(row, 0), Qt::Checked, Qt::CheckStateRole), false);
    QCOMPARE(valueChanged.count(), 0);
    QCOMPARE(rowsWithBoxes(model), before);
    QVERIFY(model.documents().isEmpty());
}

void TestSRDocumentsModel::tickIsLogged()
{
    SRDocumentsModel model;
    model.setDocuments(twoDocuments(), money("0"), money("0"));
    m_log->clear();
    tick(model, First, Qt::Checked);
    QCOMPARE(m_log->messages().size(), 1);
    const MessageLog::Message line = m_log->messages().first();
    QCOMPARE(line.type, QtWarningMsg);
    QCOMPARE(line.category, latin("default"));
    QVERIFY(line.text.contains(latin("SRDocumentsModel::setData")));
    QVERIFY(line.text.contains(latin("2")));
    QVERIFY(line.file.endsWith(latin("srdocumentsmodel.cpp")));
    QVERIFY(line.line > 0);
    QVERIFY(line.function.contains(latin("SRDocumentsModel::setData")));
    // A service's row has no box, but the attempt is traced as well.
    tick(model, FirstWater, Qt::Checked);
    QCOMPARE(m_log->messages().size(), 2);
}

void TestSRDocumentsModel::tickSkipsReadOnlyServices()
{
    SRDocumentsModel model;
    model.setDocuments({document(latin("A"), latin("1"), latin("2"),
                                 {service(latin("r"), latin("1"), latin("5"), latin("3"),
                                          {SrService::FIELD_DISTRIBUTED}),
                                  service(latin("w"), latin("1"), latin("7"), latin("0"))}),
                        twoDocuments().last()},
                       money("0"), money("0"));
    tick(model, 0, Qt::Checked);
    QCOMPARE(model.documents().first().amount().toString(), latin("10.00"));
    tick(model, 0, Qt::Unchecked);
    QCOMPARE(model.index(0, SRDocumentsModel::DistributedColumn).data().toString(), latin("3.00"));
}

void TestSRDocumentsModel::tickOfAnOverpaidDocumentIsNotReady()
{
    SRDocumentsModel model;
    model.setDocuments({document(latin("A"), latin("1"), latin("-2"),
                                 {service(latin("a"), latin("1"), latin("-2"), latin("0"))}),
                        twoDocuments().last()},
                       money("0"), money("0"));
    tick(model, 0, Qt::Checked);
    QCOMPARE(model.documents().first().amount().toString(), latin("-2.00"));
    QVERIFY(!model.isReady());
    tick(model, 2, Qt::Checked);
    QVERIFY(!model.isReady());
    tick(model, 0, Qt::Unchecked);
    QVERIFY(model.isReady());
}

void TestSRDocumentsModel::readinessWantsEveryTickedDocumentReady()
{
    SRDocumentsModel model;
    model.setDocuments(twoDocuments(), money("0"), money("0"));
    QVERIFY(!model.isReady());
    tick(model, First, Qt::Checked);
    tick(model, Second, Qt::Checked);
    QVERIFY(model.isReady());
    QVERIFY(model.setData(model.index(SecondPenalty, SRDocumentsModel::DistributedColumn), 0.0));
    QVERIFY(!model.isReady());
    QVERIFY(model.setData(model.index(SecondPenalty, SRDocumentsModel::ToPayColumn), 0.0));
    QVERIFY(model.isReady());
    // What is not ticked does not count.
    tick(model, Second, Qt::Unchecked);
    QVERIFY(model.setData(model.index(SecondPenalty, SRDocumentsModel::DistributedColumn), -1.0));
    QVERIFY(model.isReady());
}

void TestSRDocumentsModel::setDataOfServices_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("column");
    QTest::addColumn<int>("role");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("changed");

    const int edit = Qt::EditRole;
    const int drain = FirstDrain;
    QTest::newRow("number") << drain << 0 << edit << QVariant(latin("X")) << QString();
    QTest::newRow("name") << drain << 1 << edit << QVariant(QStringLiteral("Ливень"))
                          << QStringLiteral("D-1 | Ливень | 40.00 | 44.50 | 2.00");
    QTest::newRow("charge") << drain << 2 << edit << QVariant(41.5)
                            << QStringLiteral("D-1 | Стоки | 41.50 | 44.50 | 2.00");
    QTest::newRow("amount to pay") << drain << 3 << edit << QVariant(latin("45"))
                                   << QStringLiteral("D-1 | Стоки | 40.00 | 45.00 | 2.00");
    QTest::newRow("distributed") << drain << 4 << edit << QVariant(4)
                                 << QStringLiteral("D-1 | Стоки | 40.00 | 44.50 | 4.00");
    QTest::newRow("column outside") << drain << 5 << edit << QVariant(4) << QString();
    QTest::newRow("document row") << int(First) << 4 << edit << QVariant(4) << QString();
    QTest::newRow("total row") << int(Total) << 4 << edit << QVariant(4) << QString();
    QTest::newRow("display role") << drain << 4 << int(Qt::DisplayRole) << QVariant(4) << QString();
    QTest::newRow("display role of a box")
        << int(First) << 0 << int(Qt::DisplayRole) << QVariant(Qt::Checked) << QString();
    QTest::newRow("far outside") << 50 << 4 << edit << QVariant(4) << QString();
    QTest::newRow("invalid index") << -1 << -1 << edit << QVariant(4) << QString();
}

void TestSRDocumentsModel::setDataOfServices()
{
    QFETCH(int, row);
    QFETCH(int, column);
    QFETCH(int, role);
    QFETCH(QVariant, value);
    QFETCH(QString, changed);
    SRDocumentsModel model;
    model.setDocuments(twoDocuments(), money("0"), money("0"));
    QStringList expected = rowsWithBoxes(model);
    QSignalSpy valueChanged(&model, &SRDocumentsModel::valueChanged);
    QSignalSpy dataChanged(&model, &QAbstractItemModel::dataChanged);
    QStandardItemModel larger(60, 7);
    QCOMPARE(model.setData(larger.index(row, column), value, role), !changed.isEmpty());
    QCOMPARE(valueChanged.count(), changed.isEmpty() ? 0 : 1);
    QCOMPARE(dataChanged.count(), 0);
    if (!changed.isEmpty())
        expected[row] = changed;
    if (column == SRDocumentsModel::DistributedColumn && !changed.isEmpty()) {
        expected[First] = QStringLiteral("[ ] D-1 | ПОДИТОГ | 100.00 | 110.00 | 5.00");
        expected[Total] = QStringLiteral(" | ИТОГО | 0.00 | 0.00 | 5.25");
    }
    QCOMPARE(rowsWithBoxes(model), expected);
}

void TestSRDocumentsModel::calcByDebtRecomputesTickedAndClearsUnticked()
{
    SRDocumentsModel model;
    model.setDocuments(twoDocuments(), money("0"), money("0"));
    model.calcByDebt();
    QCOMPARE(rowsWithBoxes(model).last(), QStringLiteral(" | ИТОГО | 0.00 | 0.00 | 0.00"));
    QVERIFY(model.documents().isEmpty());
    tick(model, Second, Qt::Checked);
    QVERIFY(model.setData(model.index(SecondPenalty, SRDocumentsModel::DistributedColumn), 1.0));
    QVERIFY(model.setData(model.index(FirstWater, SRDocumentsModel::DistributedColumn), 1.0));
    model.calcByDebt();
    QCOMPARE(rowsWithBoxes(model),
             QStringList({QStringLiteral("[ ] D-1 | ПОДИТОГ | 100.00 | 110.00 | 0.00"),
                          QStringLiteral("D-1 | Вода | 60.00 | 65.50 | 0.00"),
                          QStringLiteral("D-1 | Стоки | 40.00 | 44.50 | 0.00"),
                          QStringLiteral("[x] D-2 | ПОДИТОГ | 7.00 | 8.00 | 8.00"),
                          QStringLiteral("D-2 | Пени | 7.00 | 8.00 | 8.00"),
                          QStringLiteral(" | ИТОГО | 0.00 | 0.00 | 8.00")}));
}

void TestSRDocumentsModel::calcByDebtIsAnnouncedAfterTheReset()
{
    SRDocumentsModel model;
    model.setDocuments(twoDocuments(), money("0"), money("0"));
    QStringList order;
    connect(&model, &QAbstractItemModel::modelAboutToBeReset, this,
            [&order] { order << latin("begin"); });
    connect(&model, &QAbstractItemModel::modelReset, this, [&order] { order << latin("end"); });
    connect(&model, &SRDocumentsModel::valueChanged, this, [&order] { order << latin("changed"); });
    model.calcByDebt();
    QCOMPARE(order, QStringList({latin("begin"), latin("end"), latin("changed")}));
}

void TestSRDocumentsModel::setDocumentsIsNoChangeByTheCashier()
{
    SRDocumentsModel model;
    QSignalSpy aboutToBeReset(&model, &QAbstractItemModel::modelAboutToBeReset);
    QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
    QSignalSpy valueChanged(&model, &SRDocumentsModel::valueChanged);
    model.setDocuments(twoDocuments(), money("0"), money("0"));
    model.setDocuments(twoDocuments().mid(1), money("0"), money("0"));
    QCOMPARE(aboutToBeReset.count(), 2);
    QCOMPARE(reset.count(), 2);
    QCOMPARE(valueChanged.count(), 0);
}

void TestSRDocumentsModel::newDocumentsForgetTheTicks()
{
    SRDocumentsModel model;
    model.setDocuments(twoDocuments(), money("0"), money("0"));
    tick(model, First, Qt::Checked);
    model.setDocuments(twoDocuments(), money("0"), money("0"));
    QVERIFY(!model.isReady());
    QVERIFY(model.documents().isEmpty());
    QCOMPARE(rowsWithBoxes(model).last(), QStringLiteral(" | ИТОГО | 0.00 | 0.00 | 3.25"));
    model.setDocuments(twoDocuments().mid(1), money("0"), money("0"));
    QVERIFY(model.isReady());
    // Nor is the one before it in the way if it could not be paid.
    model.setData(model.index(1, SRDocumentsModel::DistributedColumn), -1.0);
    QVERIFY(!model.isReady());
    model.setDocuments(twoDocuments().mid(1), money("0"), money("0"));
    QVERIFY(model.isReady());
    model.setDocuments({}, money("0"), money("0"));
    QVERIFY(!model.isReady());
}

void TestSRDocumentsModel::documentsAreCopies()
{
    SRDocumentsModel model;
    const QList<SrDocument> given = twoDocuments();
    model.setDocuments(given, money("0"), money("0"));
    tick(model, First, Qt::Checked);
    const QList<SrDocument> taken = model.documents();
    tick(model, First, Qt::Unchecked);
    QCOMPARE(given, twoDocuments());
    QCOMPARE(taken.first().amount().toString(), latin("110.00"));
}

void TestSRDocumentsModel::runningTotalsAfterRandomOperations()
{
    QRandomGenerator random(56042);
    const auto amount = [&random] { return FixNumber(100, random.bounded(-2, 4) * 25).toString(); };
    int readySeen = 0;
    for (int round = 0; round < 30; ++round) {
        Expected expected;
        const int documentCount = random.bounded(5);
        for (int d = 0; d < documentCount; ++d) {
            QList<SrService> services;
            const int serviceCount = random.bounded(4);
            for (int s = 0; s < serviceCount; ++s) {
                const QStringList readOnly = random.bounded(5) == 0
                    ? QStringList{SrService::FIELD_DISTRIBUTED}
                    : QStringList();
                services << service(QString::number(s), amount(), amount(), amount(), readOnly);
            }
            expected.documents << document(QString::number(d), amount(), amount(), services);
            expected.ticked << (documentCount == 1);
        }
        QVector<QPair<int, int>> rows;
        for (int d = 0; d < documentCount; ++d) {
            rows << qMakePair(d, -1);
            for (int s = 0; s < expected.documents.at(d).services().size(); ++s)
                rows << qMakePair(d, s);
        }
        rows << qMakePair(-1, -1);

        SRDocumentsModel model;
        model.setDocuments(expected.documents, money("1"), money("2"));
        for (int step = 0; step < 25; ++step) {
            const int row = random.bounded(rows.size());
            const auto place = rows.at(row);
            const int what = random.bounded(10);
            if (what == 0) {
                model.calcByDebt();
                for (int d = 0; d < documentCount; ++d)
                    expected.ticked.at(d) ? expected.documents[d].calcByDebt()
                                          : expected.documents[d].cleanDebt();
            } else if (what < 6) {
                const bool on = random.bounded(3) != 0;
                tick(model, row, on ? Qt::Checked : Qt::Unchecked);
                if (place.first >= 0 && place.second < 0) {
                    expected.ticked[place.first] = on;
                    on ? expected.documents[place.first].calcByDebt()
                       : expected.documents[place.first].cleanDebt();
                }
            } else {
                const int column = random.bounded(5);
                const double value = random.bounded(-1, 3) * 0.5;
                model.setData(model.index(row, column), value);
                if (place.second >= 0) {
                    SrDocument &of = expected.documents[place.first];
                    QList<SrService> services = of.services();
                    SrService &s = services[place.second];
                    if (column == SRDocumentsModel::NameColumn)
                        s.setName(QVariant(value).toString());
                    else if (column == SRDocumentsModel::ChargeColumn)
                        s.setCharge(FixNumber(100, value));
                    else if (column == SRDocumentsModel::ToPayColumn)
                        s.setTopay(FixNumber(100, value));
                    else if (column == SRDocumentsModel::DistributedColumn)
                        s.setDistributed(FixNumber(100, value));
                    of.setServices(services);
                }
            }
            QCOMPARE(rowsWithBoxes(model), expected.lines(latin("1.00"), latin("2.00")));
            QCOMPARE(model.isReady(), expected.ready());
            QCOMPARE(model.documents(), expected.handedOn());
            readySeen += model.isReady() ? 1 : 0;
        }
    }
    QVERIFY(readySeen > 30 && readySeen < 700);
}

void TestSRDocumentsModel::ticksLeaveTheDocumentsHandedOverAlone()
{
    const QList<SrDocument> handedOver = twoDocuments();
    SRDocumentsModel model;
    model.setDocuments(handedOver, money("1.00"), money("2.00"));
    model.setData(model.index(Second, 0), Qt::Checked, Qt::CheckStateRole);
    QCOMPARE(model.documents().constFirst().amount().toString(), latin("8.00"));
    QCOMPARE(handedOver, twoDocuments());

    // What was ticked belongs to the documents shown before.
    model.setDocuments(handedOver, money("1.00"), money("2.00"));
    QCOMPARE(model.documents(), QList<SrDocument>());
    QCOMPARE(model.index(SecondPenalty, SRDocumentsModel::DistributedColumn).data().toString(),
             latin("0.25"));
}

QTEST_GUILESS_MAIN(TestSRDocumentsModel)
#include "tst_srdocumentsmodel.moc"
