#include "billingsamples.h"
#include "srservicecells.h"

#include <QTest>

class TestSrServiceCells : public QObject
{
    Q_OBJECT

private slots:
    void cells_data();
    void cells();
    void noSuchCell();
    void readOnlyCellStays();
};

namespace {

SrService service()
{
    SrService made;
    made.parseCheckList(BillingSamples::service(5, QStringLiteral("Вода"), QStringLiteral("10.50"),
                                                QStringLiteral("20.25"), QStringLiteral("5.75")));
    return made;
}

} // namespace

void TestSrServiceCells::cells_data()
{
    QTest::addColumn<int>("cell");
    QTest::addColumn<QString>("field");
    QTest::addColumn<QVariant>("text");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QVariant>("edited");
    QTest::addColumn<QVariant>("after");

    QTest::newRow("name") << int(SrServiceCells::Name) << "name" << QVariant(QStringLiteral("Вода"))
                          << QVariant(QStringLiteral("Вода")) << QVariant(QStringLiteral("Сток"))
                          << QVariant(QStringLiteral("Сток"));
    QTest::newRow("charge") << int(SrServiceCells::Charge) << "charge"
                            << QVariant(QStringLiteral("10.50")) << QVariant(10.5) << QVariant(0.07)
                            << QVariant(QStringLiteral("0.07"));
    QTest::newRow("to pay") << int(SrServiceCells::ToPay) << "topay"
                            << QVariant(QStringLiteral("20.25")) << QVariant(20.25)
                            << QVariant(30.1) << QVariant(QStringLiteral("30.10"));
    QTest::newRow("distributed") << int(SrServiceCells::Distributed) << "distributed"
                                 << QVariant(QStringLiteral("5.75")) << QVariant(5.75)
                                 << QVariant(1234.56) << QVariant(QStringLiteral("1234.56"));
}

void TestSrServiceCells::cells()
{
    QFETCH(int, cell);
    QFETCH(QString, field);
    QFETCH(QVariant, text);
    QFETCH(QVariant, value);
    QFETCH(QVariant, edited);
    QFETCH(QVariant, after);

    SrService record = service();
    QCOMPARE(SrServiceCells::field(cell), field);
    QCOMPARE(SrServiceCells::text(record, cell), text);
    QCOMPARE(SrServiceCells::value(record, cell), value);
    QVERIFY(SrServiceCells::edit(record, cell, edited));
    QCOMPARE(SrServiceCells::text(record, cell), after);
    // Nothing but the one cell has changed.
    const SrService before = service();
    for (int other = SrServiceCells::Name; other <= SrServiceCells::Distributed; ++other) {
        if (other != cell)
            QCOMPARE(SrServiceCells::text(record, other), SrServiceCells::text(before, other));
    }
}

void TestSrServiceCells::noSuchCell()
{
    for (const int cell : {-1, int(SrServiceCells::Distributed) + 1}) {
        SrService record = service();
        QVERIFY(SrServiceCells::field(cell).isEmpty());
        QVERIFY(!SrServiceCells::text(record, cell).isValid());
        QVERIFY(!SrServiceCells::value(record, cell).isValid());
        QVERIFY(!SrServiceCells::edit(record, cell, QVariant(1.0)));
        QVERIFY(record == service());
    }
}

void TestSrServiceCells::readOnlyCellStays()
{
    QVariantList fields;
    const QVariantList editable =
        BillingSamples::service(5, QStringLiteral("Вода"), QStringLiteral("1.00"),
                                QStringLiteral("2.00"), QStringLiteral("3.00"));
    for (const QVariant &element : editable) {
        QVariantMap field = element.toMap();
        field.insert(QStringLiteral("isEditable"), false);
        fields.append(field);
    }
    SrService record;
    record.parseCheckList(fields);
    const SrService before = record;
    for (int cell = SrServiceCells::Name; cell <= SrServiceCells::Distributed; ++cell) {
        QVERIFY(SrServiceCells::edit(record, cell, QVariant(9.0)));
        QVERIFY(record == before);
    }
}

QTEST_GUILESS_MAIN(TestSrServiceCells)
#include "tst_srservicecells.moc"
