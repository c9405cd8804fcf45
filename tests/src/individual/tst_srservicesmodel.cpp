#include "individual/srservicesmodel.h"

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
using TestRecords::service;

namespace {

FixNumber money(const char *text)
{
    return FixNumber(100, QString::fromLatin1(text));
}

QList<SrService> threeServices()
{
    return {service(QStringLiteral("Холодная вода"), QStringLiteral("100.10"),
                    QStringLiteral("150.00"), QStringLiteral("1.00")),
            service(QStringLiteral("Водоотведение"), QStringLiteral("50"), QStringLiteral("49.9"),
                    QStringLiteral("0.50")),
            service(QStringLiteral("Пени"), QStringLiteral("0.01"), QStringLiteral("0.00"),
                    QStringLiteral("0.00"), {}, 3924990)};
}

/// Readiness as the rule words it, step by step, from a copy of the services.
bool readyByTheRule(const QList<SrService> &services)
{
    int positive = 0;
    int negative = 0;
    int due = 0;
    for (const SrService &s : services) {
        positive += s.distributed().value() > 0 ? 1 : 0;
        negative += s.distributed().value() < 0 ? 1 : 0;
        due += s.topay().value() != 0 ? 1 : 0;
    }
    if (positive == 0 && due > 0)
        return false;
    return negative == 0;
}

QString distributedTotal(const QList<SrService> &services)
{
    FixNumber total(100, 0);
    for (const SrService &s : services)
        total += s.distributed();
    return total.toString();
}

} // namespace

class TestSRServicesModel : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void metaObject();
    void satisfiesTheModelTester();
    void beforeTheFirstServicesOnlyTheTotalRow();
    void accountWithoutServicesShowsItsOwnTotals();
    void everyServiceAndTheTotalRow();
    void editValuesOfServicesOnly();
    void totalRowIsGray();
    void otherRolesGiveNothing();
    void rowCountIsTheSameUnderEveryParent();
    void captionsAreThoseOfTheFirstService();
    void captionsGoWithTheServices();
    void headersBeyondTheCaptionsAreTheBaseClasss();
    void rowsAndColumnsOutsideTheTable();
    void noCellIsEditable();

    void setData_data();
    void setData();
    void setDataOfReadOnlyFieldChangesNothingButIsAnnounced();

    void byCharge();
    void byDebt();
    void byDebtWithAnOverpaymentIsNotReady();
    void distributionSkipsReadOnlyServices();
    void distributionIsAnnouncedAfterTheReset();
    void setServicesIsNoChangeByTheCashier();
    void servicesAreACopy();

    void isReady_data();
    void isReady();
    void readinessAndTotalAfterRandomEdits();

private:
    std::unique_ptr<MessageLog> m_log;
};

void TestSRServicesModel::init()
{
    m_log = std::make_unique<MessageLog>();
}

void TestSRServicesModel::cleanup()
{
    const QStringList unexpected = m_log->unexpectedWarnings({});
    m_log.reset();
    QCOMPARE(unexpected, QStringList());
}

void TestSRServicesModel::metaObject()
{
    const QMetaObject &meta = SRServicesModel::staticMetaObject;
    QCOMPARE(meta.className(), "SRServicesModel");
    QCOMPARE(meta.superClass(), &QAbstractTableModel::staticMetaObject);
    QCOMPARE(meta.propertyCount(), meta.propertyOffset());
    QStringList methods;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        const QMetaMethod method = meta.method(i);
        methods << QStringLiteral("%1 %2").arg(method.methodType() == QMetaMethod::Signal
                                                   ? QStringLiteral("signal")
                                                   : QStringLiteral("slot"),
                                               QString::fromLatin1(method.methodSignature()));
        QCOMPARE(method.access(), QMetaMethod::Public);
    }
    QCOMPARE(
        methods,
        QStringList({QStringLiteral("signal valueChanged()"), QStringLiteral("slot calcByCharge()"),
                     QStringLiteral("slot calcByDebt()")}));
}

void TestSRServicesModel::satisfiesTheModelTester()
{
    SRServicesModel model;
    FlatTableProxy proxy;
    proxy.setSourceModel(&model);
    QAbstractItemModelTester tester(&proxy, QAbstractItemModelTester::FailureReportingMode::QtTest);
    model.setServices(threeServices(), money("1.00"), money("2.00"));
    model.calcByCharge();
    model.setData(model.index(0, SRServicesModel::DistributedColumn), 5.0);
    model.calcByDebt();
    model.setServices({}, money("0.00"), money("0.00"));
    model.setServices(threeServices().mid(0, 1), money("0.00"), money("0.00"));
}

void TestSRServicesModel::beforeTheFirstServicesOnlyTheTotalRow()
{
    const SRServicesModel model;
    QCOMPARE(
        TableText::shown(model),
        QStringList({QStringLiteral(" |  |  | "), QStringLiteral("ИТОГО | 0.00 | 0.00 | 0.00")}));
    QVERIFY(model.isReady());
}

void TestSRServicesModel::accountWithoutServicesShowsItsOwnTotals()
{
    SRServicesModel model;
    model.setServices({}, money("500.00"), money("-12.30"));
    QCOMPARE(TableText::shown(model),
             QStringList(
                 {QStringLiteral(" |  |  | "), QStringLiteral("ИТОГО | 500.00 | -12.30 | 0.00")}));
    QVERIFY(model.isReady());
}

void TestSRServicesModel::everyServiceAndTheTotalRow()
{
    SRServicesModel model;
    model.setServices(threeServices(), money("500.00"), money("900.00"));
    QCOMPARE(TableText::shown(model),
             QStringList({QStringLiteral("T:name | T:charge | T:topay | T:distributed"),
                          QStringLiteral("Холодная вода | 100.10 | 150.00 | 1.00"),
                          QStringLiteral("Водоотведение | 50.00 | 49.90 | 0.50"),
                          QStringLiteral("Пени | 0.01 | 0.00 | 0.00"),
                          QStringLiteral("ИТОГО | 500.00 | 900.00 | 1.50")}));
}

void TestSRServicesModel::editValuesOfServicesOnly()
{
    SRServicesModel model;
    model.setServices(threeServices(), money("500.00"), money("900.00"));
    QCOMPARE(
        TableText::values(model, Qt::EditRole),
        QStringList({QStringLiteral("QString Холодная вода | double 100.1 | double 150 | double 1"),
                     QStringLiteral("QString Водоотведение | double 50 | double 49.9 | double 0.5"),
                     QStringLiteral("QString Пени | double 0.01 | double 0 | double 0"),
                     QStringLiteral("- | - | - | -")}));
}

void TestSRServicesModel::totalRowIsGray()
{
    SRServicesModel model;
    model.setServices(threeServices().mid(0, 2), money("0.00"), money("0.00"));
    const QString white =
        QStringLiteral("QColor #ffffff | QColor #ffffff | QColor #ffffff | QColor #ffffff");
    const QString gray =
        QStringLiteral("QColor #a0a0a4 | QColor #a0a0a4 | QColor #a0a0a4 | QColor #a0a0a4");
    QCOMPARE(TableText::values(model, Qt::BackgroundRole), QStringList({white, white, gray}));
}

void TestSRServicesModel::otherRolesGiveNothing()
{
    SRServicesModel model;
    model.setServices(threeServices(), money("0.00"), money("0.00"));
    for (int role = 0; role <= Qt::UserRole + 1; ++role) {
        if (role == Qt::DisplayRole || role == Qt::EditRole || role == Qt::BackgroundRole)
            continue;
        for (const QString &line : TableText::values(model, role))
            QVERIFY2(line == QLatin1String("- | - | - | -"), qPrintable(QString::number(role)));
    }
}

void TestSRServicesModel::rowCountIsTheSameUnderEveryParent()
{
    SRServicesModel model;
    model.setServices(threeServices(), money("0.00"), money("0.00"));
    QCOMPARE(model.rowCount(), 4);
    QCOMPARE(model.rowCount(model.index(1, 1)), 4);
    QCOMPARE(model.columnCount(), 4);
    QCOMPARE(model.columnCount(model.index(1, 1)), 4);
}

void TestSRServicesModel::captionsAreThoseOfTheFirstService()
{
    QVariantList fields = TestRecords::serviceFields(QStringLiteral("б"), QStringLiteral("1"),
                                                     QStringLiteral("2"), QStringLiteral("3"));
    for (QVariant &field : fields) {
        QVariantMap map = field.toMap();
        map.insert(QStringLiteral("title"), QStringLiteral("другой"));
        field = map;
    }
    SrService other;
    other.parseCheckList(fields);
    SrService untitled;
    untitled.parseCheckList({TestRecords::field(SrService::FIELD_NAME, QStringLiteral("в"))});

    SRServicesModel model;
    model.setServices({threeServices().first(), other}, money("0"), money("0"));
    QCOMPARE(TableText::shown(model).first(),
             QStringLiteral("T:name | T:charge | T:topay | T:distributed"));
    model.setServices({other, threeServices().first()}, money("0"), money("0"));
    QCOMPARE(TableText::shown(model).first(), QStringLiteral("другой | другой | другой | другой"));
    model.setServices({untitled, other}, money("0"), money("0"));
    QCOMPARE(TableText::shown(model).first(), QStringLiteral("T:name |  |  | "));
}

void TestSRServicesModel::captionsGoWithTheServices()
{
    SRServicesModel model;
    model.setServices(threeServices(), money("0"), money("0"));
    model.setServices({}, money("0"), money("0"));
    QCOMPARE(TableText::shown(model).first(), QStringLiteral(" |  |  | "));
}

void TestSRServicesModel::headersBeyondTheCaptionsAreTheBaseClasss()
{
    SRServicesModel model;
    model.setServices(threeServices(), money("0"), money("0"));
    QStandardItemModel plain(4, 4);
    const auto base = [&plain](int section, Qt::Orientation orientation, int role) {
        return plain.QAbstractItemModel::headerData(section, orientation, role);
    };
    QCOMPARE(model.headerData(0, Qt::Vertical), base(0, Qt::Vertical, Qt::DisplayRole));
    QCOMPARE(model.headerData(4, Qt::Horizontal), base(4, Qt::Horizontal, Qt::DisplayRole));
    QCOMPARE(model.headerData(-1, Qt::Horizontal), base(-1, Qt::Horizontal, Qt::DisplayRole));
    QCOMPARE(model.headerData(0, Qt::Horizontal, Qt::EditRole),
             base(0, Qt::Horizontal, Qt::EditRole));
    QCOMPARE(model.headerData(0, Qt::Horizontal, Qt::ToolTipRole),
             base(0, Qt::Horizontal, Qt::ToolTipRole));
    QCOMPARE(model.headerData(0, Qt::Horizontal).toString(), QStringLiteral("T:name"));
}

void TestSRServicesModel::rowsAndColumnsOutsideTheTable()
{
    SRServicesModel model;
    model.setServices(threeServices() + threeServices(), money("0"), money("9.00"));
    // Indexes from before the table shrank: a view may hold such.
    const QModelIndex atRowCount = model.index(3, SRServicesModel::ToPayColumn);
    const QModelIndex behind = model.index(4, SRServicesModel::ToPayColumn);
    model.setServices(threeServices().mid(0, 2), money("0"), money("9.00"));
    QCOMPARE(model.rowCount(), 3);
    QCOMPARE(atRowCount.data().toString(), QStringLiteral("9.00"));
    QCOMPARE(atRowCount.data(Qt::BackgroundRole).value<QColor>(), QColor(Qt::gray));
    QCOMPARE(atRowCount.data(Qt::EditRole), QVariant());
    for (const int role : {Qt::DisplayRole, Qt::EditRole, Qt::BackgroundRole})
        QCOMPARE(behind.data(role), QVariant());

    QStandardItemModel wider(3, 6);
    for (const int role : {Qt::DisplayRole, Qt::EditRole}) {
        QCOMPARE(model.data(wider.index(0, 4), role), QVariant());
        QCOMPARE(model.data(wider.index(2, 5), role), QVariant());
        QCOMPARE(model.data(QModelIndex(), role), QVariant());
    }
    QCOMPARE(model.data(QModelIndex(), Qt::BackgroundRole), QVariant());
}

void TestSRServicesModel::noCellIsEditable()
{
    SRServicesModel model;
    model.setServices(threeServices(), money("0"), money("0"));
    const QString row = QStringLiteral("sn sn sn sn");
    QCOMPARE(TableText::flags(model), QStringList({row, row, row, row}));
}

void TestSRServicesModel::setData_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("column");
    QTest::addColumn<int>("role");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("changed");

    const int edit = Qt::EditRole;
    QTest::newRow("name") << 1 << 0 << edit << QVariant(QStringLiteral("Другое имя"))
                          << QStringLiteral("Другое имя | 50.00 | 49.90 | 0.50");
    QTest::newRow("charge") << 1 << 1 << edit << QVariant(7.25)
                            << QStringLiteral("Водоотведение | 7.25 | 49.90 | 0.50");
    QTest::newRow("amount to pay") << 1 << 2 << edit << QVariant(QStringLiteral("8.5"))
                                   << QStringLiteral("Водоотведение | 50.00 | 8.50 | 0.50");
    QTest::newRow("distributed") << 1 << 3 << edit << QVariant(9)
                                 << QStringLiteral("Водоотведение | 50.00 | 49.90 | 9.00");
    QTest::newRow("negative distributed")
        << 1 << 3 << edit << QVariant(-9.005)
        << QStringLiteral("Водоотведение | 50.00 | 49.90 | -9.01");
    QTest::newRow("no number counts as zero")
        << 1 << 3 << edit << QVariant(QStringLiteral("семь"))
        << QStringLiteral("Водоотведение | 50.00 | 49.90 | 0.00");
    QTest::newRow("display role") << 1 << 3 << int(Qt::DisplayRole) << QVariant(9) << QString();
    QTest::newRow("check state role")
        << 1 << 0 << int(Qt::CheckStateRole) << QVariant(2) << QString();
    QTest::newRow("total row") << 3 << 3 << edit << QVariant(9) << QString();
    QTest::newRow("total row, name")
        << 3 << 0 << edit << QVariant(QStringLiteral("x")) << QString();
    QTest::newRow("column outside") << 1 << 4 << edit << QVariant(9) << QString();
    QTest::newRow("row far outside") << 50 << 3 << edit << QVariant(9) << QString();
    QTest::newRow("invalid index") << -1 << -1 << edit << QVariant(9) << QString();
}

void TestSRServicesModel::setData()
{
    QFETCH(int, row);
    QFETCH(int, column);
    QFETCH(int, role);
    QFETCH(QVariant, value);
    QFETCH(QString, changed);

    SRServicesModel model;
    model.setServices(threeServices(), money("0"), money("0"));
    const QStringList before = TableText::shown(model);
    QSignalSpy valueChanged(&model, &SRServicesModel::valueChanged);
    QSignalSpy dataChanged(&model, &QAbstractItemModel::dataChanged);
    QStandardItemModel larger(60, 6);

    QCOMPARE(model.setData(larger.index(row, column), value, role), !changed.isEmpty());
    QCOMPARE(valueChanged.count(), changed.isEmpty() ? 0 : 1);
    QCOMPARE(dataChanged.count(), 0);
    QStringList expected = before;
    if (!changed.isEmpty()) {
        expected[2] = changed;
        expected.last() =
            QStringLiteral("ИТОГО | 0.00 | 0.00 | ") + distributedTotal(model.services());
    }
    QCOMPARE(TableText::shown(model), expected);
}

void TestSRServicesModel::setDataOfReadOnlyFieldChangesNothingButIsAnnounced()
{
    SRServicesModel model;
    model.setServices(
        {service(QStringLiteral("а"), QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3"),
                 {SrService::FIELD_DISTRIBUTED, SrService::FIELD_NAME})},
        money("0"), money("0"));
    QSignalSpy valueChanged(&model, &SRServicesModel::valueChanged);
    QVERIFY(model.setData(model.index(0, SRServicesModel::DistributedColumn), 77.0));
    QVERIFY(model.setData(model.index(0, SRServicesModel::NameColumn), QStringLiteral("другое")));
    QCOMPARE(valueChanged.count(), 2);
    QCOMPARE(TableText::shown(model).at(1), QStringLiteral("а | 1.00 | 2.00 | 3.00"));
    QCOMPARE(TableText::shown(model).at(2), QStringLiteral("ИТОГО | 0.00 | 0.00 | 3.00"));
}

void TestSRServicesModel::byCharge()
{
    SRServicesModel model;
    model.setServices(threeServices(), money("500.00"), money("900.00"));
    model.calcByCharge();
    QCOMPARE(TableText::shown(model).mid(1),
             QStringList({QStringLiteral("Холодная вода | 100.10 | 150.00 | 100.10"),
                          QStringLiteral("Водоотведение | 50.00 | 49.90 | 50.00"),
                          QStringLiteral("Пени | 0.01 | 0.00 | 0.01"),
                          QStringLiteral("ИТОГО | 500.00 | 900.00 | 150.11")}));
}

void TestSRServicesModel::byDebt()
{
    SRServicesModel model;
    model.setServices(threeServices(), money("500.00"), money("900.00"));
    model.calcByDebt();
    QCOMPARE(TableText::shown(model).mid(1),
             QStringList({QStringLiteral("Холодная вода | 100.10 | 150.00 | 150.00"),
                          QStringLiteral("Водоотведение | 50.00 | 49.90 | 49.90"),
                          QStringLiteral("Пени | 0.01 | 0.00 | 0.00"),
                          QStringLiteral("ИТОГО | 500.00 | 900.00 | 199.90")}));
}

void TestSRServicesModel::byDebtWithAnOverpaymentIsNotReady()
{
    SRServicesModel model;
    model.setServices({service(QStringLiteral("а"), QStringLiteral("10"), QStringLiteral("100"),
                               QStringLiteral("0")),
                       service(QStringLiteral("б"), QStringLiteral("10"), QStringLiteral("-30"),
                               QStringLiteral("0"))},
                      money("0"), money("0"));
    model.calcByDebt();
    QCOMPARE(model.services().at(1).distributed().toString(), QStringLiteral("-30.00"));
    QVERIFY(!model.isReady());
    model.calcByCharge();
    QVERIFY(model.isReady());
}

void TestSRServicesModel::distributionSkipsReadOnlyServices()
{
    SRServicesModel model;
    model.setServices({service(QStringLiteral("а"), QStringLiteral("10"), QStringLiteral("20"),
                               QStringLiteral("5"), {SrService::FIELD_DISTRIBUTED}),
                       service(QStringLiteral("б"), QStringLiteral("30"), QStringLiteral("40"),
                               QStringLiteral("0"))},
                      money("0"), money("0"));
    model.calcByCharge();
    QCOMPARE(TableText::shown(model).mid(1),
             QStringList({QStringLiteral("а | 10.00 | 20.00 | 5.00"),
                          QStringLiteral("б | 30.00 | 40.00 | 30.00"),
                          QStringLiteral("ИТОГО | 0.00 | 0.00 | 35.00")}));
}

void TestSRServicesModel::distributionIsAnnouncedAfterTheReset()
{
    SRServicesModel model;
    model.setServices(threeServices(), money("0"), money("0"));
    QStringList order;
    QString totalAtAnnouncement;
    connect(&model, &QAbstractItemModel::modelAboutToBeReset, this,
            [&order] { order << QStringLiteral("begin"); });
    connect(&model, &QAbstractItemModel::modelReset, this,
            [&order] { order << QStringLiteral("end"); });
    connect(&model, &SRServicesModel::valueChanged, this, [&] {
        order << QStringLiteral("changed");
        totalAtAnnouncement =
            model.index(model.rowCount() - 1, SRServicesModel::DistributedColumn).data().toString();
    });
    const QStringList once{QStringLiteral("begin"), QStringLiteral("end"),
                           QStringLiteral("changed")};
    model.calcByCharge();
    QCOMPARE(order, once);
    QCOMPARE(totalAtAnnouncement, QStringLiteral("150.11"));
    order.clear();
    model.calcByDebt();
    QCOMPARE(order, once);
    QCOMPARE(totalAtAnnouncement, QStringLiteral("199.90"));
}

void TestSRServicesModel::setServicesIsNoChangeByTheCashier()
{
    SRServicesModel model;
    QSignalSpy aboutToBeReset(&model, &QAbstractItemModel::modelAboutToBeReset);
    QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
    QSignalSpy valueChanged(&model, &SRServicesModel::valueChanged);
    model.setServices(threeServices(), money("0"), money("0"));
    QCOMPARE(aboutToBeReset.count(), 1);
    QCOMPARE(reset.count(), 1);
    model.setServices(model.services(), money("3.00"), money("4.00"));
    QCOMPARE(reset.count(), 2);
    QCOMPARE(TableText::shown(model).last(), QStringLiteral("ИТОГО | 3.00 | 4.00 | 1.50"));
    QCOMPARE(valueChanged.count(), 0);
}

void TestSRServicesModel::servicesAreACopy()
{
    SRServicesModel model;
    const QList<SrService> given = threeServices();
    model.setServices(given, money("0"), money("0"));
    const QList<SrService> taken = model.services();
    model.calcByCharge();
    QCOMPARE(distributedTotal(given), QStringLiteral("1.50"));
    QCOMPARE(distributedTotal(taken), QStringLiteral("1.50"));
    QCOMPARE(distributedTotal(model.services()), QStringLiteral("150.11"));
}

void TestSRServicesModel::isReady_data()
{
    QTest::addColumn<QStringList>("toPay");
    QTest::addColumn<QStringList>("distributed");
    QTest::addColumn<bool>("ready");

    const auto texts = [](const char *list) {
        return QString::fromLatin1(list).split(QLatin1Char(' '));
    };
    QTest::newRow("nothing due, nothing distributed") << texts("0 0") << texts("0 0") << true;
    QTest::newRow("nothing due, something distributed") << texts("0 0") << texts("0 5") << true;
    QTest::newRow("something due, nothing distributed") << texts("0 0.01") << texts("0 0") << false;
    QTest::newRow("overpaid, nothing distributed") << texts("0 -0.01") << texts("0 0") << false;
    QTest::newRow("something due, one hundredth distributed")
        << texts("5 7") << texts("0 0.01") << true;
    QTest::newRow("more distributed than due") << texts("5 7") << texts("100 200") << true;
    QTest::newRow("one negative among positive") << texts("5 7") << texts("9 -0.01") << false;
    QTest::newRow("only negative, something due") << texts("5 7") << texts("0 -1") << false;
    QTest::newRow("only negative, nothing due") << texts("0 0") << texts("0 -1") << false;
}

void TestSRServicesModel::isReady()
{
    QFETCH(QStringList, toPay);
    QFETCH(QStringList, distributed);
    QFETCH(bool, ready);
    QList<SrService> services;
    for (int i = 0; i < toPay.size(); ++i)
        services << service(QStringLiteral("с"), QStringLiteral("1"), toPay.at(i),
                            distributed.at(i));
    SRServicesModel model;
    model.setServices(services, money("0"), money("0"));
    QCOMPARE(model.isReady(), ready);
}

void TestSRServicesModel::readinessAndTotalAfterRandomEdits()
{
    QRandomGenerator random(20260911);
    int readySeen = 0;
    for (int round = 0; round < 40; ++round) {
        QList<SrService> services;
        const int count = random.bounded(5);
        for (int i = 0; i < count; ++i) {
            const auto amount = [&random] {
                return FixNumber(100, random.bounded(-2, 3) * 50).toString();
            };
            const QStringList readOnly =
                random.bounded(4) == 0 ? QStringList{SrService::FIELD_DISTRIBUTED} : QStringList();
            services << service(QString::number(i), amount(), amount(), amount(), readOnly);
        }
        SRServicesModel model;
        model.setServices(services, money("0"), money("0"));
        for (int step = 0; step < 20; ++step) {
            const int what = random.bounded(8);
            if (what == 0)
                model.calcByCharge();
            else if (what == 1)
                model.calcByDebt();
            else
                model.setData(model.index(random.bounded(count + 1), random.bounded(4)),
                              random.bounded(-2, 3) * 0.01);
            QCOMPARE(model.isReady(), readyByTheRule(model.services()));
            QCOMPARE(model.index(count, SRServicesModel::DistributedColumn).data().toString(),
                     distributedTotal(model.services()));
            readySeen += model.isReady() ? 1 : 0;
        }
    }
    QVERIFY(readySeen > 100 && readySeen < 700);
}

QTEST_GUILESS_MAIN(TestSRServicesModel)
#include "tst_srservicesmodel.moc"
