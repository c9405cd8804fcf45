#include "samplebills.h"

#include <bills/billhtml.h>
#include <bills/billwriter.h>
#include <scanner/codereader.h>

#include <QFile>
#include <QFileInfo>
#include <QFontDatabase>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

namespace {

QByteArray codeOf(const Bill &bill, CodeEncoding encoding)
{
    return bill.code(encoding).toBytes(encoding);
}

QByteArray decoded(const QImage &picture)
{
    const QVector<CodeReader::Code> codes = CodeReader::read(picture);
    return codes.size() == 1 && codes.constFirst().isQr() ? codes.constFirst().bytes : QByteArray();
}

} // namespace

class TestBillWriter : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_folder;

    QString path(const QString &name) const { return m_folder.filePath(name); }

    void addEncodings()
    {
        QTest::addColumn<int>("digit");
        QTest::addColumn<bool>("legal");
        for (const CodeEncoding encoding : CodeEncodings::all()) {
            const QString name = CodeEncodings::name(encoding);
            QTest::newRow(qPrintable(name + QStringLiteral(", person"))) << int(encoding) << false;
            QTest::newRow(qPrintable(name + QStringLiteral(", firm"))) << int(encoding) << true;
        }
    }

private slots:
    void initTestCase()
    {
        QVERIFY(m_folder.isValid());
        QVERIFY2(!QFontDatabase().families(QFontDatabase::Cyrillic).isEmpty(),
                 "no font with Cyrillic letters");
    }

    void codeOfAPngIsRead_data() { addEncodings(); }

    void codeOfAPngIsRead()
    {
        QFETCH(int, digit);
        QFETCH(bool, legal);
        const Bill bill = legal ? firmBill() : personBill();
        const QByteArray code = codeOf(bill, CodeEncoding(digit));
        QVERIFY(!code.isEmpty());
        const QString file = path(QStringLiteral("счёт с пробелом %1.png").arg(digit));
        QString error;
        QVERIFY2(BillWriter(bill, code).save(file, &error), qPrintable(error));
        QCOMPARE(decoded(QImage(file)), code);
    }

    void codeOfAPdfIsRead_data() { addEncodings(); }

    void codeOfAPdfIsRead()
    {
        const QString renderer = QStandardPaths::findExecutable(QStringLiteral("pdftoppm"));
        if (renderer.isEmpty())
            QSKIP("pdftoppm (poppler-utils) is not installed: a PDF page cannot be looked at");
        QFETCH(int, digit);
        QFETCH(bool, legal);
        const Bill bill = legal ? firmBill() : personBill();
        const QByteArray code = codeOf(bill, CodeEncoding(digit));
        const QString file = path(
            QStringLiteral("bill%1%2.pdf").arg(QString::number(digit), QString::number(legal)));
        QString error;
        QVERIFY2(BillWriter(bill, code).save(file, &error), qPrintable(error));
        const QString page = path(QStringLiteral("page"));
        QCOMPARE(
            QProcess::execute(renderer,
                              {QStringLiteral("-r"), QStringLiteral("150"), QStringLiteral("-png"),
                               QStringLiteral("-singlefile"), file, page}),
            0);
        const QImage image(page + QStringLiteral(".png"));
        // A4 at 150 dots an inch: the page is drawn at its true size.
        QVERIFY2(qAbs(image.width() - 1240) <= 2 && qAbs(image.height() - 1754) <= 2,
                 qPrintable(QStringLiteral("%1x%2").arg(image.width()).arg(image.height())));
        QCOMPARE(decoded(image), code);
    }

    void codeIsLargeEnough()
    {
        const Bill bill = personBill();
        QVERIFY(BillWriter(bill, QByteArrayLiteral("ST00012|x=1")).codeSide() >= 30);
        const QByteArray code = codeOf(bill, CodeEncoding::Utf8);
        const BillWriter writer(bill, code);
        QVERIFY(writer.codeSide() >= 30);
        // Measured on the picture: dark modules with their quiet zone of four modules on either
        // side.
        const QImage picture = writer.picture(127);
        int left = picture.width();
        int right = 0;
        for (int y = 0; y < picture.height() / 3; ++y) {
            for (int x = picture.width() / 2; x < picture.width(); ++x) {
                // The finder patterns are the only black runs of 3 mm in the upper right of the
                // page.
                bool run = x + 15 < picture.width();
                for (int i = 0; run && i < 15; ++i)
                    run = qGray(picture.pixel(x + i, y)) < 40;
                if (run) {
                    left = qMin(left, x);
                    right = qMax(right, x + 15);
                }
            }
        }
        const double millimetres = (right - left) / 5.0;
        QVERIFY2(millimetres >= 30 && millimetres <= writer.codeSide(),
                 qPrintable(QString::number(millimetres)));
    }

    void largeBillTakesTwoPages()
    {
        const Bill bill = personBill(SampleNumber::LARGE);
        const QByteArray code = codeOf(bill, CodeEncoding::Windows1251);
        const BillWriter writer(bill, code);
        QCOMPARE(writer.pageCount(), 2);
        const QImage picture = writer.picture(150);
        QVERIFY(picture.height() > picture.width() * 2);
        QCOMPARE(decoded(picture.copy(0, 0, picture.width(), picture.height() / 2)), code);
        QCOMPARE(
            decoded(picture.copy(0, picture.height() / 2, picture.width(), picture.height() / 2)),
            QByteArray());
    }

    void usualBillTakesOnePage()
    {
        QCOMPARE(BillWriter(personBill(), QByteArrayLiteral("1")).pageCount(), 1);
        QCOMPARE(BillWriter(firmBill(), QByteArrayLiteral("1")).pageCount(), 1);
    }

    void withoutACodeThereIsStillABill()
    {
        const BillWriter writer(personBill(), QByteArray());
        QCOMPARE(writer.codeSide(), 0.0);
        QVERIFY(!writer.picture(100).isNull());
    }

    void textIsThere()
    {
        const QString html = BillHtml::html(personBill());
        for (const QString &part :
             {QStringLiteral("Квитанция за октябрь 2026"), QStringLiteral("7001000101"),
              QStringLiteral("Кравцова Мария Петровна"), QStringLiteral("Холодное водоснабжение"),
              QStringLiteral("482,60"), QStringLiteral("ХВС кухня № 18234501"),
              QStringLiteral("215"), QStringLiteral("платить по нему нельзя")})
            QVERIFY2(html.contains(part), qPrintable(part));
        QCOMPARE(html.count(BillHtml::codePlace()), 1);
        const QString firm = BillHtml::html(firmBill());
        QVERIFY(firm.contains(QStringLiteral("Счёт на оплату № 2026/0101")));
        QVERIFY(firm.contains(QStringLiteral("0012005010")));
        QVERIFY(!firm.contains(QStringLiteral("Счётчики")));
    }

    void namesCannotChangeTheLayout()
    {
        BillingAccount account = sampleAccount(SampleNumber::ORDINARY);
        account.fio = QStringLiteral("<b>%1</b> & <img src=x>");
        account.services[0].name = QStringLiteral("</table>%2");
        const QString html = BillHtml::html(Bill::forPerson(account, wishFor(2026, 1)));
        QVERIFY(html.contains(QStringLiteral("&lt;b&gt;%1&lt;/b&gt; &amp; &lt;img src=x&gt;")));
        QVERIFY(html.contains(QStringLiteral("&lt;/table&gt;%2")));
    }

    void money_data()
    {
        QTest::addColumn<qint64>("kopecks");
        QTest::addColumn<QString>("expected");
        QTest::newRow("zero") << qint64(0) << QStringLiteral("0,00");
        QTest::newRow("kopecks") << qint64(5) << QStringLiteral("0,05");
        QTest::newRow("roubles") << qint64(150050) << QStringLiteral("1\u00a0500,50");
        QTest::newRow("negative") << qint64(-75025) << QStringLiteral("−750,25");
        QTest::newRow("less than a rouble owed back") << qint64(-5) << QStringLiteral("−0,05");
    }

    void money()
    {
        QFETCH(qint64, kopecks);
        QTEST(BillHtml::money(kopecks), "expected");
    }

    void refusesWhatCannotBeWritten_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("part");
        QTest::newRow("other kind of file")
            << path(QStringLiteral("bill.docx")) << QStringLiteral("на .pdf или .png");
        QTest::newRow("no ending")
            << path(QStringLiteral("bill")) << QStringLiteral("на .pdf или .png");
        QTest::newRow("no such folder")
            << path(QStringLiteral("нет/bill.pdf")) << QStringLiteral("не записана");
        QTest::newRow("a folder") << m_folder.path() + QStringLiteral("/folder.png")
                                  << QStringLiteral("не записана");
    }

    void refusesWhatCannotBeWritten()
    {
        QFETCH(QString, file);
        QFETCH(QString, part);
        QDir(m_folder.path()).mkdir(QStringLiteral("folder.png"));
        QString error;
        QVERIFY(!BillWriter(personBill(), QByteArrayLiteral("1")).save(file, &error));
        QVERIFY2(error.contains(part), qPrintable(error));
    }

    void anOldFileIsReplaced()
    {
        const QString file = path(QStringLiteral("old.png"));
        QString error;
        QVERIFY(BillWriter(personBill(), QByteArrayLiteral("1")).save(file, &error));
        QCOMPARE(error, QString());
        const qint64 size = QFileInfo(file).size();
        QVERIFY(BillWriter(firmBill(), QByteArrayLiteral("22")).save(file, &error));
        QVERIFY(QFileInfo(file).size() != size);
        QCOMPARE(decoded(QImage(file)), QByteArrayLiteral("22"));
    }
};

QTEST_MAIN(TestBillWriter)
#include "tst_billwriter.moc"
