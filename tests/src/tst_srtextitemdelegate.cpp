#include "srtextitemdelegate.h"

#include <QLocale>
#include <QStandardItemModel>
#include <QStyleOptionViewItem>
#include <QTest>

class TestSrTextItemDelegate : public QObject
{
    Q_OBJECT

private slots:
    void displayText_data();
    void displayText();
    void numbersFollowTheLanguage();
    void measuresWhatIsShown();
};

void TestSrTextItemDelegate::displayText_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("shown");
    QTest::newRow("ordinary") << QVariant(QStringLiteral("Вода <b>%1</b>"))
                              << QStringLiteral("Вода <b>%1</b>");
    QTest::newRow("line ends and override")
        << QVariant(QStringLiteral("a\nb\u202E")) << QStringLiteral("a b");
    QTest::newRow("reading of a meter") << QVariant(qint64(1234567)) << QStringLiteral("1234567");
    QTest::newRow("nothing") << QVariant() << QString();
}

void TestSrTextItemDelegate::displayText()
{
    QFETCH(const QVariant, value);
    QLocale locale = QLocale::c();
    locale.setNumberOptions(QLocale::OmitGroupSeparator);
    QTEST(SrTextItemDelegate().displayText(value, locale), "shown");
}

void TestSrTextItemDelegate::numbersFollowTheLanguage()
{
    const QLocale russian(QLocale::Russian, QLocale::Russia);
    QCOMPARE(SrTextItemDelegate().displayText(1.5, russian), QStringLiteral("1,5"));
}

void TestSrTextItemDelegate::measuresWhatIsShown()
{
    QStandardItemModel model(2, 1);
    model.setData(model.index(0, 0), QString(1024 * 1024, QLatin1Char('x')));
    model.setData(model.index(1, 0), QString(300, QLatin1Char('x')));
    const SrTextItemDelegate delegate;
    const QStyleOptionViewItem option;
    const QSize longest = delegate.sizeHint(option, model.index(0, 0));
    const QSize allowed = delegate.sizeHint(option, model.index(1, 0));
    QCOMPARE(longest.height(), allowed.height());
    // The ellipsis is at most twice as wide as the letter in whose place it stands.
    QVERIFY(longest.width()
            <= allowed.width() + option.fontMetrics.horizontalAdvance(QStringLiteral("xx")));
}

QTEST_MAIN(TestSrTextItemDelegate)
#include "tst_srtextitemdelegate.moc"
