#include <fiscal/printertext.h>

#include <QtTest>

class tst_PrinterText : public QObject
{
    Q_OBJECT

private slots:
    void prints_data();
    void prints();
};

void tst_PrinterText::prints_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("printed");
    QTest::addColumn<bool>("loses");
    const auto row = [](const char *name, const char *text, const char *printed, bool loses) {
        QTest::newRow(name) << QString::fromUtf8(text) << QString::fromUtf8(printed) << loses;
    };
    row("empty", "", "", false);
    row("plain", "Вода x 1.000 ~", "Вода x 1.000 ~", false);
    row("Ё and №", "Ёлка ё № 5", "Ёлка ё № 5", false);
    row("quotes and dash", "АО «Вода» — “сток”", "АО \"Вода\" - \"сток\"", false);
    row("hard blank",
        "1\xc2\xa0"
        "234",
        "1 234", false);
    row("line break and tab", "a\nb\tc\r", "a b c ", false);
    row("question stays one", "что?", "что?", false);
    row("rouble", "5 ₽", "5 ?", true);
    row("accent", "café", "caf?", true);
    row("emoji is one sign", "вода 💧!", "вода ?!", true);
    row("decomposed й", "и\xcc\x86", "й", false);
    row("right-to-left mark", "a\xe2\x80\xae", "a?", true);
}

void tst_PrinterText::prints()
{
    QFETCH(QString, text);
    QFETCH(QString, printed);
    QFETCH(bool, loses);
    QCOMPARE(PrinterText::printed(text), printed);
    QCOMPARE(PrinterText::losesCharacters(text), loses);
    QCOMPARE(PrinterText::length(text), printed.size());
}

QTEST_GUILESS_MAIN(tst_PrinterText)
#include "tst_printertext.moc"
