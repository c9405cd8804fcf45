#include "srdecimalinput.h"

#include <QClipboard>
#include <QDoubleSpinBox>
#include <QGuiApplication>
#include <QLineEdit>
#include <QTest>
#include <QValidator>

class TestSrDecimalInput : public QObject
{
    Q_OBJECT

private slots:
    void amount_data();
    void amount();
    void eitherSignIsWritten_data();
    void eitherSignIsWritten();
    void unitStaysAsItIs();
    void boxMendsAnUnfinishedAmount();
};

/// Notes what it is asked to mend.
class MendingBox : public QDoubleSpinBox
{
    Q_OBJECT

public:
    mutable QStringList mended;

protected:
    void fixup(QString &input) const override
    {
        mended.append(input);
        input = QStringLiteral("7");
    }
};

void TestSrDecimalInput::amount_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("expected");
    for (const char *language : {"C", "ru_RU", "en_US"}) {
        const auto row = [language](const char *name, const char *text, double expected) {
            QTest::addRow("%s: %s", language, name)
                << QString::fromLatin1(language) << QString::fromLatin1(text) << expected;
        };
        row("point", "12.34", 12.34);
        row("comma", "12,34", 12.34);
        row("whole", "1234", 1234.0);
        row("less than one", ".34", 0.34);
        row("second sign is dropped", "12.,34", 12.34);
        row("third decimal is dropped", "12,345", 12.34);
    }
}

void TestSrDecimalInput::amount()
{
    QFETCH(QString, language);
    QFETCH(QString, text);
    QFETCH(double, expected);
    QDoubleSpinBox box;
    box.setLocale(QLocale(language));
    box.setMaximum(1000000.0);
    box.setSuffix(QStringLiteral(", р."));
    srAcceptBothDecimalSigns(&box);
    box.show();
    QVERIFY(QTest::qWaitForWindowExposed(&box));

    box.setFocus();
    box.selectAll();
    QTest::keyClicks(&box, text);
    QTest::keyClick(&box, Qt::Key_Return);
    QCOMPARE(box.value(), expected);

    if (text.count(QLatin1Char('.')) + text.count(QLatin1Char(',')) > 1 || text.size() > 5)
        return; // a paste is taken whole or not at all
    box.setValue(0.0);
    QGuiApplication::clipboard()->setText(text);
    box.selectAll();
    QTest::keySequence(box.findChild<QLineEdit *>(), QKeySequence::Paste);
    QTest::keyClick(&box, Qt::Key_Return);
    QCOMPARE(box.value(), expected);
}

void TestSrDecimalInput::eitherSignIsWritten_data()
{
    QTest::addColumn<QString>("input");
    QTest::addColumn<QString>("written");
    const auto row = [](const char *name, const QString &input, const QString &written) {
        QTest::newRow(name) << input << written;
    };
    row("in the middle", QStringLiteral("1,5, р."), QStringLiteral("1.5, р."));
    row("at the beginning", QStringLiteral(",5, р."), QStringLiteral(".5, р."));
    row("at the end", QStringLiteral("1,, р."), QStringLiteral("1., р."));
    // The box puts the unit behind what came without it.
    row("at the end, without a unit", QStringLiteral("1,"), QStringLiteral("1., р."));
    row("in the middle, without a unit", QStringLiteral("1,50"), QStringLiteral("1.50, р."));
}

void TestSrDecimalInput::eitherSignIsWritten()
{
    QFETCH(QString, input);
    QDoubleSpinBox box;
    box.setLocale(QLocale::c());
    box.setSuffix(QStringLiteral(", р."));
    srAcceptBothDecimalSigns(&box);
    int cursor = 1;
    const auto state = box.findChild<QLineEdit *>()->validator()->validate(input, cursor);
    QVERIFY(state != QValidator::Invalid);
    QTEST(input, "written");
}

void TestSrDecimalInput::unitStaysAsItIs()
{
    QDoubleSpinBox box;
    box.setLocale(QLocale(QStringLiteral("ru_RU")));
    box.setSuffix(QStringLiteral(", р."));
    srAcceptBothDecimalSigns(&box);
    box.setValue(1.5);
    QCOMPARE(box.text(), QStringLiteral("1,50, р."));
    QTest::keyClick(&box, Qt::Key_Up);
    QCOMPARE(box.text(), QStringLiteral("2,50, р."));
}

void TestSrDecimalInput::boxMendsAnUnfinishedAmount()
{
    MendingBox box;
    box.setLocale(QLocale::c());
    box.setRange(5.0, 100.0);
    srAcceptBothDecimalSigns(&box);
    auto *line = box.findChild<QLineEdit *>();
    line->setText(QStringLiteral("1"));
    QVERIFY(!line->hasAcceptableInput());
    QString input = line->text();
    line->validator()->fixup(input);
    QCOMPARE(input, QStringLiteral("7"));
    QCOMPARE(box.mended.last(), QStringLiteral("1"));
}

QTEST_MAIN(TestSrDecimalInput)
#include "tst_srdecimalinput.moc"
