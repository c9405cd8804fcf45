#include "srshowntext.h"

#include "srhtml.h"

#include <QTest>

namespace {

QString characters(std::initializer_list<ushort> codes)
{
    QString text;
    for (const ushort code : codes)
        text += QChar(code);
    return text;
}

} // namespace

class TestSrShownText : public QObject
{
    Q_OBJECT

private slots:
    void line_data();
    void line();
    void longLineLosesItsMiddle_data();
    void longLineLosesItsMiddle();
    void lineNeverCutsACharacterInTwo();
    void characterAtTheEndOfTheHeadIsLeftOut();
    void message_data();
    void message();
    void longWordsOfAMessageBreak_data();
    void longWordsOfAMessageBreak();
    void breakable_data();
    void breakable();
    void documentOfOrdinaryTextsIsUnchanged();
    void documentKeepsItsTagsAndTheAmountBehindALongTitle();
    void documentShowsMarkupInTextsAsText();
    void documentCutShort();
};

void TestSrShownText::line_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("shown");
    const auto same = [](const char *name, const QString &text) {
        QTest::newRow(name) << text << text;
    };
    same("empty", QString());
    same("company", QStringLiteral("ООО «Ромашка & Ко» — № 5, \"дом\""));
    same("markup", QStringLiteral("<b>%1 %2</b> &lt;"));
    same("Hebrew", QStringLiteral("שלום 12"));
    same("outside the basic plane", QStringLiteral("\U0001F4A7 вода"));
    same("letter with accents", QStringLiteral("e\u0301\u0302\u0303х"));
    same("blanks around", QStringLiteral("  вода  "));
    QTest::newRow("override") << QStringLiteral("Долг\u202E") << QStringLiteral("Долг");
    QTest::newRow("marks, embeddings and isolates")
        << characters({0x200e, 0x200f, 0x061c, 'a', 0x202a, 0x202b, 0x202c, 0x202d, 0x202e, 'b',
                       0x2066, 0x2067, 0x2068, 0x2069})
        << QStringLiteral("ab");
    QTest::newRow("soft hyphen, joiner, byte order mark")
        << characters({'a', 0xad, 0x200d, 0xfeff, 'b'}) << QStringLiteral("ab");
    QTest::newRow("controls") << characters({'a', 0, 7, 0x1b, 0x7f, 0x85, 'b'})
                              << QStringLiteral("a     b");
    QTest::newRow("line ends") << characters({'a', '\n', '\r', '\t', 0x2028, 0x2029, 'b'})
                               << QStringLiteral("a     b");
    QTest::newRow("line separator") << characters({'a', 0x2028, 'b'}) << QStringLiteral("a b");
    QTest::newRow("paragraph separator") << characters({'a', 0x2029, 'b'}) << QStringLiteral("a b");
    QTest::newRow("nothing but a line separator") << QString(QChar(0x2028)) << QStringLiteral(" ");
    QTest::newRow("place of an object") << characters({'a', 0xfffc}) << QStringLiteral("a\uFFFD");
    QTest::newRow("no characters")
        << characters({0xfdd0, 0xfdd1, 0xfffe, 0xffff, 0xfffc}) << QString(5, QChar(0xfffd));
    QTest::newRow("half characters")
        << characters({'a', 0xd800, 'b', 0xdc00}) << QStringLiteral("a\uFFFDb\uFFFD");
    QTest::newRow("heap of accents") << QLatin1Char('o') + QString(50, QChar(0x0336))
                                     << QLatin1Char('o') + QString(3, QChar(0x0336));
    QTest::newRow("heap of accents upon nothing")
        << QString(50, QChar(0x0336)) << QString(3, QChar(0x0336));
    QTest::newRow("enclosing marks") << QLatin1Char('o') + QString(50, QChar(0x20dd))
                                     << QLatin1Char('o') + QString(3, QChar(0x20dd));
}

void TestSrShownText::line()
{
    QFETCH(const QString, text);
    QTEST(SrShownText::line(text), "shown");
}

void TestSrShownText::longLineLosesItsMiddle_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("limit");
    QTest::newRow("just short enough") << 300 << 300;
    QTest::newRow("one too long") << 301 << 300;
    QTest::newRow("a megabyte") << 1024 * 1024 << 300;
    QTest::newRow("limit of its own") << 61 << 60;
}

void TestSrShownText::longLineLosesItsMiddle()
{
    QFETCH(const int, size);
    QFETCH(const int, limit);
    QString text(size, QLatin1Char('x'));
    text.replace(0, 3, QStringLiteral("ООО"));
    text.replace(size - 6, 6, QStringLiteral("150.50"));
    const QString shown = SrShownText::line(text, limit);
    QCOMPARE(shown.size(), qMin(size, limit));
    QVERIFY(shown.startsWith(QStringLiteral("ООО")));
    QVERIFY(shown.endsWith(QStringLiteral("150.50")));
    QCOMPARE(shown.count(QChar(0x2026)), size > limit ? 1 : 0);
    // Two thirds for the name, one for the amount behind it.
    QCOMPARE(shown.indexOf(QChar(0x2026)), size > limit ? limit * 2 / 3 : -1);
}

void TestSrShownText::lineNeverCutsACharacterInTwo()
{
    const QString drop = QStringLiteral("\U0001F4A7");
    for (int before = 0; before < 4; ++before) {
        const QString shown =
            SrShownText::line(QString(before, QLatin1Char('x')) + drop.repeated(400));
        QVERIFY2(!shown.contains(QChar(0xfffd)), qPrintable(QString::number(before)));
        QVERIFY(shown.size() <= 300);
        QVERIFY(shown.size() >= 298);
    }
}

void TestSrShownText::characterAtTheEndOfTheHeadIsLeftOut()
{
    const QString head(199, QLatin1Char('x'));
    const QString tail(99, QLatin1Char('y'));
    QCOMPARE(SrShownText::line(head + QStringLiteral("\U0001F4A7zzz") + tail),
             head + QChar(0x2026) + tail);
}

void TestSrShownText::message_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("lines");
    QTest::addColumn<int>("size");
    QTest::newRow("empty") << QString() << 1 << 0;
    QTest::newRow("two lines") << QStringLiteral("Счёт не найден\nПроверьте номер") << 2 << 30;
    QTest::newRow("fifteen lines")
        << QStringLiteral("a\n").repeated(14) + QLatin1Char('b') << 15 << 29;
    QTest::newRow("sixteen lines")
        << QStringLiteral("a\n").repeated(15) + QLatin1Char('b') << 15 << 30;
    QTest::newRow("control characters") << characters({'a', 0, 0x1b, 0x202e, 'b'}) << 1 << 5;
    QTest::newRow("six hundred letters")
        << QStringLiteral("слово ").repeated(100).left(600) << 1 << 600;
    QTest::newRow("a megabyte") << QStringLiteral("слово ").repeated(200000) << 1 << 600;
    QTest::newRow("a megabyte of lines") << QString(1024 * 1024, QLatin1Char('\n')) << 15 << 15;
    QTest::newRow("half characters between the lines")
        << QStringLiteral("\n").repeated(20).prepend(QChar(0xd800)) << 15 << 16;
    QTest::newRow("a megabyte of line separators")
        << QString(1024 * 1024, QChar(0x2028)) << 15 << 15;
    QTest::newRow("a megabyte of paragraph separators")
        << QString(1024 * 1024, QChar(0x2029)) << 15 << 15;
}

void TestSrShownText::message()
{
    QFETCH(const QString, text);
    QFETCH(const int, lines);
    QFETCH(const int, size);
    const QString shown = SrShownText::message(text);
    QCOMPARE(shown.count(QLatin1Char('\n')) + shown.count(QChar::LineSeparator)
                 + shown.count(QChar::ParagraphSeparator) + 1,
             lines);
    QCOMPARE(shown.size(), size);
    if (text.size() <= size)
        QCOMPARE(shown, text);
    else
        QVERIFY(shown.contains(QChar(0x2026)));
}

void TestSrShownText::longWordsOfAMessageBreak_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("shown");
    const QString word(36, QLatin1Char('x'));
    const QString space(1, QChar(0x200b));
    const QString lines = QStringLiteral("a\n").repeated(14);
    QTest::newRow("longest word") << word << word;
    QTest::newRow("one letter more") << word + QLatin1Char('y') << word + space + QLatin1Char('y');
    QTest::newRow("longest word where lines are left out")
        << lines + word.left(35) + QLatin1Char('\n') << lines + word.left(35) + QChar(0x2026);
    QTest::newRow("one letter more where lines are left out")
        << lines + word + QLatin1Char('\n') << lines + word + space + QChar(0x2026);
}

void TestSrShownText::longWordsOfAMessageBreak()
{
    QFETCH(const QString, text);
    QTEST(SrShownText::message(text), "shown");
}

void TestSrShownText::breakable_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("shown");
    const QString word(25, QLatin1Char('x'));
    const QString drops = QStringLiteral("\U0001F4A7").repeated(12);
    const QString space(1, QChar(0x200b));
    QTest::newRow("empty") << QString() << QString();
    QTest::newRow("longest word") << word << word;
    QTest::newRow("two longest words")
        << word + QLatin1Char(' ') + word << word + QLatin1Char(' ') + word;
    QTest::newRow("lines") << word + QLatin1Char('\n') + word << word + QLatin1Char('\n') + word;
    QTest::newRow("one letter more") << word + QLatin1Char('y') << word + space + QLatin1Char('y');
    QTest::newRow("three words in one") << word + word + word << word + space + word + space + word;
    QTest::newRow("between surrogate pairs")
        << QLatin1Char('a') + drops + drops << QLatin1Char('a') + drops + space + drops;
    QTest::newRow("never inside a surrogate pair") << drops + drops.left(2)
            + QLatin1Char('y') << drops + drops.left(2) + space + QLatin1Char('y');
}

void TestSrShownText::breakable()
{
    QFETCH(const QString, text);
    QTEST(SrShownText::breakable(text, 25), "shown");
}

void TestSrShownText::documentOfOrdinaryTextsIsUnchanged()
{
    const QString html =
        QStringList{SrHtml::documentStart(),
                    SrHtml::payerName(QStringLiteral("ООО «Ручей» & \"Ко\"")),
                    SrHtml::heading(QStringLiteral("&lt; <1> %1")),
                    SrHtml::totalToPay(QStringLiteral("ИТОГО"), {}), SrHtml::documentEnd()}
            .join(QLatin1Char('\n'));
    QCOMPARE(SrShownText::document(html), html);
}

void TestSrShownText::documentKeepsItsTagsAndTheAmountBehindALongTitle()
{
    const QString title = QString(1024 * 1024, QLatin1Char('&')) + QChar(0x202e);
    const QString html = QStringLiteral("<td align=\"left\">%1: 150.50</td>\n<td>2.00</td>")
                             .arg(SrHtml::escaped(title));
    const QString shown = SrShownText::document(html);
    QVERIFY(shown.startsWith(QStringLiteral("<td align=\"left\">&amp;&amp;")));
    QVERIFY(shown.endsWith(QStringLiteral("&amp;: 150.50</td>\n<td>2.00</td>")));
    QCOMPARE(shown.count(QStringLiteral("&amp;")), shown.count(QLatin1Char('&')));
    QVERIFY(shown.size() < 300 * 5 + 60);
}

void TestSrShownText::documentShowsMarkupInTextsAsText()
{
    const QString html =
        SrHtml::heading(QStringLiteral("\u202E<img src=\"file:///etc/passwd\"> &amp;lt;b&gt;"));
    QCOMPARE(SrShownText::document(html),
             SrHtml::heading(QStringLiteral("<img src=\"file:///etc/passwd\"> &amp;lt;b&gt;")));
}

void TestSrShownText::documentCutShort()
{
    QCOMPARE(SrShownText::document(QString()), QString());
    QCOMPARE(SrShownText::document(QStringLiteral("text")), QStringLiteral("text"));
    QCOMPARE(SrShownText::document(QStringLiteral("a<b")), QStringLiteral("a<b"));
}

QTEST_APPLESS_MAIN(TestSrShownText)
#include "tst_srshowntext.moc"
