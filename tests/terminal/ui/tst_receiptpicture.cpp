#include "qrdecoder.h"

#include <ui/receiptpicture.h>

#include <QFontDatabase>
#include <QTest>

namespace {

/// Dark pixels of the horizontal band from `top` to `bottom`.
int ink(const QImage &image, int top, int bottom)
{
    int count = 0;
    for (int y = top; y < bottom; ++y) {
        for (int x = 0; x < image.width(); ++x)
            count += qGray(image.pixel(x, y)) < 96 ? 1 : 0;
    }
    return count;
}

/// Columns of the paper's printed area that hold a dark pixel: from the first to the last.
QPair<int, int> inkedColumns(const QImage &image)
{
    int first = image.width();
    int last = -1;
    for (int x = 0; x < image.width(); ++x) {
        for (int y = 0; y < image.height(); ++y) {
            if (qGray(image.pixel(x, y)) < 96) {
                first = qMin(first, x);
                last = qMax(last, x);
            }
        }
    }
    return {first, last};
}

const QString qrText =
    QStringLiteral("t=20261121T1200&s=1500.50&fn=9999078900004792&i=12&fp=3522207165&n=1");

} // namespace

class TestReceiptPicture : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY2(!QFontDatabase().families(QFontDatabase::Cyrillic).isEmpty(),
                 "no font with Cyrillic letters");
    }

    void codeUnderTheTextIsReadable()
    {
        const QImage image =
            ReceiptPicture::draw(QStringLiteral("КАССОВЫЙ ЧЕК\nИТОГ 1500.50"), qrText);
        QCOMPARE(decodeQr(image), qrText.toLatin1());
    }

    void withoutACodeThePictureIsShorter()
    {
        const QString text = QStringLiteral("КАССОВЫЙ ЧЕК");
        const QImage with = ReceiptPicture::draw(text, qrText);
        const QImage without = ReceiptPicture::draw(text, QString());
        QCOMPARE(without.width(), with.width());
        QVERIFY(without.height() < with.height());
        QVERIFY(decodeQr(without).isEmpty());
    }

    void fullLineStaysOnThePaper()
    {
        const QString line(ReceiptPicture::columns, QLatin1Char('#'));
        const QImage image = ReceiptPicture::draw(line, QString());
        const QPair<int, int> columns = inkedColumns(image);
        QVERIFY2(columns.first > 40 && columns.second < image.width() - 40,
                 qPrintable(QStringLiteral("%1..%2 of %3")
                                .arg(columns.first)
                                .arg(columns.second)
                                .arg(image.width())));
    }

    void longLineIsWrappedNotCut()
    {
        const QString line(ReceiptPicture::columns, QLatin1Char('#'));
        const QImage one = ReceiptPicture::draw(line, QString());
        const QImage three = ReceiptPicture::draw(line + line + line, QString());
        QCOMPARE(ink(three, 0, three.height()), 3 * ink(one, 0, one.height()));
        QCOMPARE(inkedColumns(three), inkedColumns(one));
    }

    void lettersAreDrawn_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("Cyrillic") << QStringLiteral("Щёлково");
        QTest::newRow("number sign") << QStringLiteral("№");
        QTest::newRow("identity sign of sums") << QStringLiteral("≡");
    }

    void lettersAreDrawn()
    {
        QFETCH(QString, text);
        const QImage empty = ReceiptPicture::draw(QStringLiteral(" \n \n."), QString());
        const QImage image = ReceiptPicture::draw(text + QStringLiteral("\n \n."), QString());
        QVERIFY(ink(image, 0, image.height()) > ink(empty, 0, empty.height()));
    }

    void veryLongReceiptIsDrawnToItsEnd()
    {
        // As tall as a payment of hundreds of documents: above 32,767 dots.
        const QString line(ReceiptPicture::columns, QLatin1Char('#'));
        const QImage one = ReceiptPicture::draw(line, QString());
        QStringList lines;
        for (int i = 0; i < 1600; ++i)
            lines.append(line);
        const QImage image = ReceiptPicture::draw(lines.join(QLatin1Char('\n')), qrText);
        QVERIFY(image.height() > 35000);
        QCOMPARE(decodeQr(image.copy(0, image.height() - 700, image.width(), 700)),
                 qrText.toLatin1());
        const int height = one.height() - ReceiptPicture::draw(QString(), QString()).height();
        const auto rowOf = [height](int number) { return 48 + number * height; };
        const int inkOfLine = ink(image, rowOf(0), rowOf(1));
        QVERIFY(inkOfLine > 0);
        for (int number = 1; number < lines.size(); ++number)
            QCOMPARE(ink(image, rowOf(number), rowOf(number + 1)), inkOfLine);
    }

    void emptyLinesInsideAreKept()
    {
        const QImage two = ReceiptPicture::draw(QStringLiteral("А\nБ"), QString());
        const QImage three = ReceiptPicture::draw(QStringLiteral("А\n\nБ\n\n"), QString());
        QVERIFY(three.height() > two.height());
    }
};

QTEST_MAIN(TestReceiptPicture)
#include "tst_receiptpicture.moc"
