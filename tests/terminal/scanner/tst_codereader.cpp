#include <bills/codeencoding.h>
#include <bills/qrpicture.h>
#include <scanner/codereader.h>

#include <QBuffer>
#include <QFile>
#include <QPainter>
#include <QTemporaryDir>
#include <QTest>
#include <QTransform>
#include <QtEndian>

#include <functional>

namespace {

using Change = std::function<QImage(const QImage &)>;

QByteArray sample()
{
    return CodeEncodings::encode(
        QStringLiteral("ST00011|Name=АО «Селмар Ривенхолд»|PersonalAcc=40702810000000004107|"
                       "BankName=АО «Приреченский Банк», г. Приреченск|BIC=040000999|Sum=150050|"
                       "PersAcc=7001000101|PaymPeriod=10.2026"),
        CodeEncoding::Windows1251);
}

QImage onPage(const QImage &code, QPoint place, QSize size = QSize(1000, 1400))
{
    QImage page(size, QImage::Format_RGB32);
    page.fill(Qt::white);
    QPainter painter(&page);
    painter.drawImage(place, code);
    return page;
}

/// EAN-13 of 4006381333931, as printed on any pencil.
QImage pencil(int barWidth, int degrees)
{
    const QByteArray modules = QByteArrayLiteral("101"
                                                 "000110101001110101111011110100010010110011"
                                                 "01010"
                                                 "100001010000101000010111010010000101100110"
                                                 "101");
    QImage picture(int(modules.size()) * barWidth + 80, 60 * barWidth, QImage::Format_RGB32);
    picture.fill(Qt::white);
    QPainter painter(&picture);
    for (int i = 0; i < modules.size(); ++i) {
        if (modules.at(i) == '1')
            painter.fillRect(40 + i * barWidth, 20, barWidth, picture.height() - 40, Qt::black);
    }
    painter.end();
    const QImage turned =
        picture.transformed(QTransform().rotate(degrees), Qt::SmoothTransformation);
    return onPage(turned, {0, 0}, turned.size());
}

QImage scaled(const QImage &picture, double factor)
{
    return picture.scaled(picture.size() * factor, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

} // namespace

Q_DECLARE_METATYPE(Change)

class TestCodeReader : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_folder;

private slots:
    void readableWhateverHappenedToThePicture_data()
    {
        QTest::addColumn<Change>("change");
        const auto row = [](const char *title, const Change &change) {
            QTest::newRow(title) << change;
        };
        row("as drawn", [](const QImage &code) { return code; });
        row("on a page", [](const QImage &code) { return onPage(code, {500, 300}); });
        for (const int degrees : {5, 17, 45, 90, 180, 270, 333}) {
            row(qPrintable(QStringLiteral("turned by %1").arg(degrees)),
                [degrees](const QImage &code) {
                    const QImage page =
                        onPage(code, {150, 150}, {code.width() + 300, code.height() + 300});
                    const QImage turned =
                        page.transformed(QTransform().rotate(degrees), Qt::SmoothTransformation);
                    return onPage(turned, {0, 0}, turned.size());
                });
        }
        for (const double factor : {0.5, 0.73, 1.37, 3.0, 6.0})
            row(qPrintable(QStringLiteral("scaled by %1").arg(factor)),
                [factor](const QImage &code) { return scaled(code, factor); });
        for (const int quality : {90, 60, 30}) {
            row(qPrintable(QStringLiteral("JPEG of quality %1").arg(quality)),
                [quality](const QImage &code) {
                    QByteArray bytes;
                    QBuffer buffer(&bytes);
                    code.save(&buffer, "JPEG", quality);
                    return QImage::fromData(bytes);
                });
        }
        row("cut to the last module",
            [](const QImage &code) { return code.copy(code.rect().adjusted(16, 16, -16, -16)); });
        row("on a transparent ground", [](const QImage &code) {
            QImage result = code.convertToFormat(QImage::Format_ARGB32);
            for (int y = 0; y < result.height(); ++y) {
                for (int x = 0; x < result.width(); ++x) {
                    if (qGray(result.pixel(x, y)) > 128)
                        result.setPixel(x, y, qRgba(0, 0, 0, 0));
                }
            }
            return result;
        });
        row("white on black", [](const QImage &code) {
            QImage result = code.convertToFormat(QImage::Format_RGB32);
            result.invertPixels();
            return onPage(result, {0, 0}, result.size());
        });
        row("pale on coloured paper", [](const QImage &code) {
            QImage result(code.size(), QImage::Format_RGB32);
            for (int y = 0; y < result.height(); ++y) {
                for (int x = 0; x < result.width(); ++x)
                    result.setPixel(x, y,
                                    qGray(code.pixel(x, y)) < 128 ? qRgb(110, 90, 120)
                                                                  : qRgb(250, 240, 190));
            }
            return result;
        });
    }

    void readableWhateverHappenedToThePicture()
    {
        QFETCH(Change, change);
        const QVector<CodeReader::Code> codes =
            CodeReader::read(change(QrPicture::draw(sample(), 4)));
        QCOMPARE(codes.size(), 1);
        QCOMPARE(codes.constFirst().format, QStringLiteral("QRCode"));
        QCOMPARE(codes.constFirst().bytes, sample());
    }

    void severalCodesAreFound()
    {
        QImage page = onPage(QrPicture::draw(sample(), 4), {50, 50});
        QPainter painter(&page);
        painter.drawImage(500, 800, QrPicture::draw(QByteArrayLiteral("https://example.org/"), 5));
        painter.end();
        const QVector<CodeReader::Code> codes = CodeReader::read(page);
        QCOMPARE(codes.size(), 2);
        QVERIFY(codes.at(0).bytes == sample() || codes.at(1).bytes == sample());
        QVERIFY(codes.at(0).bytes != codes.at(1).bytes);
    }

    void theSameCodeTwiceIsOneCode()
    {
        QImage page = onPage(QrPicture::draw(sample(), 3), {50, 50});
        QPainter painter(&page);
        painter.drawImage(500, 800, QrPicture::draw(sample(), 3));
        painter.end();
        QCOMPARE(CodeReader::read(page).size(), 1);
    }

    void linearCodeIsReported_data()
    {
        QTest::addColumn<int>("barWidth");
        QTest::addColumn<int>("degrees");
        for (const int width : {2, 3, 4, 9})
            QTest::newRow(qPrintable(QStringLiteral("bars of %1 pixels").arg(width))) << width << 0;
        for (const int degrees : {10, 90, 180})
            QTest::newRow(qPrintable(QStringLiteral("turned by %1").arg(degrees))) << 4 << degrees;
    }

    void linearCodeIsReported()
    {
        QFETCH(int, barWidth);
        QFETCH(int, degrees);
        const QVector<CodeReader::Code> codes = CodeReader::read(pencil(barWidth, degrees));
        QCOMPARE(codes.size(), 1);
        QCOMPARE(codes.constFirst().format, QStringLiteral("EAN-13"));
        QCOMPARE(codes.constFirst().bytes, QByteArrayLiteral("4006381333931"));
        QVERIFY(!codes.constFirst().isQr());
    }

    void sameLinearCodeManyTimes_data()
    {
        QTest::addColumn<int>("degrees");
        for (const int degrees : {0, 30, 45, 60, 90})
            QTest::newRow(qPrintable(QStringLiteral("turned by %1").arg(degrees))) << degrees;
    }

    void sameLinearCodeManyTimes()
    {
        QFETCH(int, degrees);
        QImage page = onPage(pencil(4, 0), {40, 40}, {1400, 1800});
        QPainter painter(&page);
        painter.drawImage(300, 600, pencil(4, degrees));
        painter.drawImage(40, 1300, pencil(3, 180));
        painter.drawImage(900, 1300, QrPicture::draw(sample(), 4));
        painter.end();
        const QVector<CodeReader::Code> codes = CodeReader::read(page);
        QCOMPARE(codes.size(), 2);
        QCOMPARE(codes.at(0).bytes, sample());
        QCOMPARE(codes.at(1).format, QStringLiteral("EAN-13"));
    }

    /// Some rows of these large codes look like a number in bars: Codabar, UPC-A, EAN-13.
    void rowOfACodeIsNoCode_data()
    {
        QTest::addColumn<int>("number");
        for (const int number : {430, 949, 2086})
            QTest::addRow("%d", number) << number;
    }

    void rowOfACodeIsNoCode()
    {
        QFETCH(int, number);
        const QByteArray purpose = QByteArray::number(qulonglong(number) * 2654435761u)
                                       .toBase64()
                                       .repeated(1 + number % 60);
        const QByteArray text = QStringLiteral("ST00012|Name=ООО Вода|PersAcc=%1|Purpose=")
                                    .arg(7001000101 + number)
                                    .toUtf8()
            + purpose;
        const QVector<CodeReader::Code> codes = CodeReader::read(QrPicture::draw(text, 3));
        QCOMPARE(codes.size(), 1);
        QCOMPARE(codes.constFirst().bytes, text);
    }

    void nothingInAPictureWithoutACode()
    {
        QVERIFY(CodeReader::read(QImage()).isEmpty());
        QImage blank(300, 300, QImage::Format_RGB32);
        blank.fill(Qt::white);
        QVERIFY(CodeReader::read(blank).isEmpty());
        QImage damaged = QrPicture::draw(sample(), 4);
        QPainter(&damaged).fillRect(damaged.width() / 3, 0, damaged.width() / 3, damaged.height(),
                                    Qt::white);
        QVERIFY(CodeReader::read(damaged).isEmpty());
    }

    void filesAreRead_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("PNG") << QStringLiteral("код оплаты.png");
        QTest::newRow("JPEG") << QStringLiteral("code.jpg");
        QTest::newRow("BMP") << QStringLiteral("code.bmp");
    }

    void filesAreRead()
    {
        QFETCH(QString, name);
        const QString file = m_folder.filePath(name);
        QVERIFY(QrPicture::draw(sample(), 4).save(file));
        QString error = QStringLiteral("old");
        const QVector<CodeReader::Code> codes = CodeReader::readFile(file, &error);
        QCOMPARE(error, QString());
        QCOMPARE(codes.size(), 1);
        QCOMPARE(readCodeFromPicture(file, &error),
                 CodeEncodings::decode(sample(), CodeEncoding::Windows1251));
    }

    void wrongEndingDoesNotMatter()
    {
        const QString file = m_folder.filePath(QStringLiteral("really a png.jpg"));
        QVERIFY(QrPicture::draw(sample(), 4).save(file, "PNG"));
        QString error;
        QCOMPARE(CodeReader::readFile(file, &error).size(), 1);
    }

    void unreadableFilesAreExplained_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("part");
        QTest::newRow("text") << QByteArrayLiteral("not a picture")
                              << QStringLiteral("как картинка не читается");
        QTest::newRow("empty") << QByteArray() << QStringLiteral("как картинка не читается");
        QTest::newRow("cut PNG") << QByteArrayLiteral("\x89PNG\r\n\x1a\n\0\0\0\rIHDR")
                                 << QStringLiteral("как картинка не читается");
    }

    void unreadableFilesAreExplained()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, part);
        const QString name = m_folder.filePath(QStringLiteral("broken.png"));
        QFile file(name);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
        file.close();
        QString error;
        QVERIFY(CodeReader::readFile(name, &error).isEmpty());
        QVERIFY2(error.contains(part), qPrintable(error));
        QCOMPARE(readCodeFromPicture(name, &error), QString());
        QVERIFY(!error.isEmpty());
        QVERIFY(CodeReader::readFile(m_folder.filePath(QStringLiteral("нет такого.png")), &error)
                    .isEmpty());
        QVERIFY2(error.contains(QStringLiteral("нет такого.png")), qPrintable(error));
    }

    void aPictureThatIsTooLargeIsExplained()
    {
        // Only the head of a file: 16,000 by 16,000 points would be a gigabyte.
        QImage small(1, 1, QImage::Format_RGB32);
        small.fill(Qt::white);
        const QString name = m_folder.filePath(QStringLiteral("huge.bmp"));
        QVERIFY(small.save(name));
        QFile file(name);
        QVERIFY(file.open(QIODevice::ReadWrite) && file.seek(18));
        const quint32 side = qToLittleEndian<quint32>(16000);
        file.write(reinterpret_cast<const char *>(&side), sizeof side);
        file.write(reinterpret_cast<const char *>(&side), sizeof side);
        file.close();
        QString error;
        QVERIFY(CodeReader::readFile(name, &error).isEmpty());
        QVERIFY2(error.contains(QStringLiteral("huge.bmp» слишком велика: 16000 на 16000")),
                 qPrintable(error));
    }

    void theSearchIsStopped()
    {
        const QImage picture = QrPicture::draw(sample(), 4);
        int looks = 0;
        const auto countLooks = [&looks](int done, int total) {
            ++looks;
            return done < total;
        };
        QCOMPARE(CodeReader::read(picture, countLooks).size(), 1);
        QCOMPARE(looks, 1);
        QVERIFY(CodeReader::read(picture, [](int, int) { return false; }).isEmpty());
        QImage blank(300, 300, QImage::Format_RGB32);
        blank.fill(Qt::white);
        looks = 0;
        QVERIFY(CodeReader::read(blank, [&looks](int, int) { return ++looks < 3; }).isEmpty());
        QCOMPARE(looks, 3);
    }

    void aPictureWithoutACodeIsExplained()
    {
        QImage blank(300, 300, QImage::Format_RGB32);
        blank.fill(Qt::white);
        const QString file = m_folder.filePath(QStringLiteral("blank.png"));
        QVERIFY(blank.save(file));
        QString error;
        QCOMPARE(readCodeFromPicture(file, &error), QString());
        QCOMPARE(error, CodeReader::nothingFoundText());
    }

    void paymentCodeIsPreferred()
    {
        QImage page =
            onPage(QrPicture::draw(QByteArrayLiteral("https://example.org/"), 5), {50, 50});
        QPainter painter(&page);
        painter.drawImage(400, 700, QrPicture::draw(sample(), 4));
        painter.end();
        const QString file = m_folder.filePath(QStringLiteral("two.png"));
        QVERIFY(page.save(file));
        QString error;
        QVERIFY(readCodeFromPicture(file, &error).startsWith(QStringLiteral("ST00011|")));
    }
};

QTEST_GUILESS_MAIN(TestCodeReader)
#include "tst_codereader.moc"
