#include "faultrun.h"

#include <recovery/faultpoint.h>

#include <QtTest>

using Place = FaultPoint::Place;

/// Every place where the workstation can die: whatever was promised before is there afterwards,
/// once.
class tst_FaultPoints : public QObject
{
    Q_OBJECT

private slots:
    void recoversFromEveryPlace_data();
    void recoversFromEveryPlace();
    void everyPlaceHasARow();
    void aMisspelledPlaceEndsTheProcess();

private:
    static QStringList rowsOf(Place place);
};

namespace {

/// What brings the workstation to the place: after an earlier crash at another place, or with packs
/// that were left to be posted "later", if that is needed.
struct Way
{
    QString before;
    QString mode;
};

Way wayTo(Place place)
{
    const QString pay = QStringLiteral("pay");
    const QString recover = QStringLiteral("recover");
    switch (place) {
    case Place::OutboxBeforeSend:
    case Place::OutboxAfterSend:
        return {QStringLiteral("later"), recover};
    case Place::RebuiltBeforeSave:
    case Place::RebuiltAfterSave:
        return {FaultPoint::name(Place::ReceiptAfterCommit), recover};
    case Place::RefundBeforeCommit:
    case Place::RefundAfterCommit:
        return {FaultPoint::name(Place::ChargeAfterCommit), recover};
    case Place::ChargeBeforeCommit:
    case Place::ChargeAfterCommit:
    case Place::ShiftAfterCommit:
    case Place::ReceiptBeforeCommit:
    case Place::ReceiptAfterCommit:
    case Place::LinkBeforeCommit:
    case Place::LinkAfterCommit:
    case Place::PackBeforeCommit:
    case Place::PackAfterCommit:
    case Place::HandOnBeforeCommit:
    case Place::HandOnAfterCommit:
    case Place::BillingAfterTaking:
    case Place::PostedAfterCommit:
    case Place::AcknowledgedBeforeCommit:
    case Place::AcknowledgedAfterCommit:
        break;
    }
    return {QString(), pay};
}

bool happensOnce(Place place)
{
    const QString before = wayTo(place).before;
    return place == Place::ShiftAfterCommit
        || (!before.isEmpty() && before != QLatin1String("later"));
}

} // namespace

QStringList tst_FaultPoints::rowsOf(Place place)
{
    const QString name = FaultPoint::name(place);
    return happensOnce(place) ? QStringList{name} : QStringList{name, name + QStringLiteral(":2")};
}

void tst_FaultPoints::recoversFromEveryPlace_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("mode");
    QTest::addColumn<QString>("faultPoint");
    for (const Place place : FaultPoint::places()) {
        const Way way = wayTo(place);
        const QStringList rows = rowsOf(place);
        for (const QString &row : rows)
            QTest::newRow(qPrintable(row)) << way.before << way.mode << row;
    }
}

void tst_FaultPoints::recoversFromEveryPlace()
{
    QFETCH(QString, before);
    QFETCH(QString, mode);
    QFETCH(QString, faultPoint);
    FaultRun run;
    QVERIFY(run.isReady());
    const QStringList pay{QStringLiteral("pay"), QStringLiteral("3")};
    if (before == QLatin1String("later"))
        QCOMPARE(run.run(pay + QStringList{QStringLiteral("--later")}).code, 0);
    else if (!before.isEmpty())
        QVERIFY(run.run(pay, before).killed);

    const auto hit = run.run(mode == QLatin1String("pay") ? pay : QStringList{mode}, faultPoint);
    QVERIFY2(hit.killed, "the place was not reached");

    const auto recovered = run.run({QStringLiteral("recover")});
    QVERIFY2(!recovered.killed && recovered.code == 0, recovered.output.constData());
    QVERIFY2(run.disagreement().isEmpty(), qPrintable(run.disagreement()));
    const QJsonObject figures = run.figures();

    const auto again = run.run({QStringLiteral("recover")});
    QCOMPARE(again.code, 0);
    QVERIFY2(!again.output.contains("rebuilt") && !again.output.contains("returned"),
             again.output.constData());
    QCOMPARE(run.figures(), figures);

    // The workstation goes on working.
    const auto next = run.run({QStringLiteral("pay"), QStringLiteral("1")});
    QVERIFY2(next.code == 0 && !next.output.contains("refused"), next.output.constData());
    QVERIFY2(run.disagreement().isEmpty(), qPrintable(run.disagreement()));
}

void tst_FaultPoints::everyPlaceHasARow()
{
    QStringList names;
    for (const Place place : FaultPoint::places()) {
        QVERIFY(!FaultPoint::name(place).isEmpty());
        QVERIFY(!names.contains(FaultPoint::name(place)));
        names.append(FaultPoint::name(place));
    }
    QCOMPARE(FaultPoint::places().last(), Place::RefundAfterCommit);
    QCOMPARE(names.size(), int(Place::RefundAfterCommit) + 1);
}

void tst_FaultPoints::aMisspelledPlaceEndsTheProcess()
{
    FaultRun run;
    for (const char *name : {"pack.comit", "pack.after-commit:0", "pack.after-commit:x", ":"}) {
        const auto ending =
            run.run({QStringLiteral("pay"), QStringLiteral("1")}, QString::fromLatin1(name));
        QVERIFY2(!ending.killed && ending.code == 4, name);
    }
}

QTEST_GUILESS_MAIN(tst_FaultPoints)
#include "tst_faultpoints.moc"
