#include "../ui/qrdecoder.h"

#include <bills/qrpicture.h>

#include <QTest>

class TestQrPicture : public QObject
{
    Q_OBJECT

private slots:
    void decodesToTheSameBytes_data()
    {
        QTest::addColumn<QByteArray>("data");
        QTest::newRow("one byte") << QByteArrayLiteral("7");
        QTest::newRow("receipt") << QByteArrayLiteral(
            "t=20261121T1200&s=1500.50&fn=9999078900004792&i=12&fp=3522207165&n=1");
        QTest::newRow("bill in UTF-8")
            << QStringLiteral("ST00012|Name=АО «Водоканал»|PersAcc=100200|Sum=150050").toUtf8();
        QTest::newRow("bill in windows-1251")
            << QByteArrayLiteral("ST00011|Name=\xc0\xce|PersAcc=100200");
        QTest::newRow("zero byte") << QByteArray("a\0b", 3);
        QTest::newRow("long") << QByteArray(1000, 'x');
    }

    void decodesToTheSameBytes()
    {
        QFETCH(QByteArray, data);
        QCOMPARE(decodeQr(QrPicture::draw(data, 4)), data);
    }

    void quietZoneIsWhite()
    {
        const QImage image = QrPicture::draw(QByteArrayLiteral("12345"), 3);
        for (int i = 0; i < image.width(); ++i) {
            for (int edge = 0; edge < 4 * 3; ++edge) {
                QCOMPARE(image.pixelColor(i, edge), QColor(Qt::white));
                QCOMPARE(image.pixelColor(edge, i), QColor(Qt::white));
            }
        }
        QCOMPARE(image.pixelColor(4 * 3, 4 * 3), QColor(Qt::black));
    }

    void noCodeForNothingOrTooMuch()
    {
        QVERIFY(QrPicture::draw(QByteArray(), 4).isNull());
        QVERIFY(QrPicture::draw(QByteArray(5000, 'x'), 4).isNull());
        QVERIFY(QrPicture::draw(QByteArrayLiteral("1"), 0).isNull());
    }
};

QTEST_MAIN(TestQrPicture)
#include "tst_qrpicture.moc"
