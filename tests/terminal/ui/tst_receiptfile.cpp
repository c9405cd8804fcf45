#include "qrdecoder.h"

#include <ui/receiptfile.h>
#include <ui/receiptpicture.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

namespace {

const QString code =
    QStringLiteral("t=20261121T1200&s=1500.50&fn=9999078900004792&i=12&fp=3522207165&n=1");
const QString receipt = QStringLiteral("                  КАССОВЫЙ ЧЕК\n1. Холодное водоснабжение\n"
                                       "1.000 x 1500.50                         =1500.50\n"
                                       "ИТОГ                                    =1500.50\n"
                                       "ФП                                    3522207165");

QByteArray contentOf(const QString &file)
{
    QFile opened(file);
    return opened.open(QIODevice::ReadOnly) ? opened.readAll() : QByteArray();
}

} // namespace

class TestReceiptFile : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_folder;

    QString path(const QString &name) const { return m_folder.filePath(name); }

    static bool canLookIntoPdf()
    {
        for (const char *tool : {"pdftotext", "pdftoppm", "pdfinfo"}) {
            if (QStandardPaths::findExecutable(QLatin1String(tool)).isEmpty())
                return false;
        }
        return true;
    }

    static QString output(const char *tool, const QStringList &arguments)
    {
        QProcess process;
        process.start(QLatin1String(tool), arguments);
        if (!process.waitForFinished() || process.exitCode() != 0)
            return QStringLiteral("failed: ") + QString::fromUtf8(process.readAllStandardError());
        return QString::fromUtf8(process.readAllStandardOutput());
    }

    /// Page at the printer's own 203 dots an inch.
    QImage page(const QString &file, int number) const
    {
        const QString picture = path(QStringLiteral("page%1").arg(number));
        output("pdftoppm",
               {QStringLiteral("-r"), QStringLiteral("203"), QStringLiteral("-f"),
                QString::number(number), QStringLiteral("-l"), QString::number(number),
                QStringLiteral("-png"), QStringLiteral("-singlefile"), file, picture});
        return QImage(picture + QStringLiteral(".png"));
    }

private slots:
    void text()
    {
        QString error;
        QVERIFY(
            ReceiptFile(receipt, code, QString()).save(path(QStringLiteral("чек.txt")), &error));
        QVERIFY(error.isEmpty());
        QCOMPARE(contentOf(path(QStringLiteral("чек.txt"))), receipt.toUtf8() + '\n');
    }

    void picture()
    {
        QString error;
        QVERIFY(
            ReceiptFile(receipt, code, QString()).save(path(QStringLiteral("чек.PNG")), &error));
        const QImage image(path(QStringLiteral("чек.PNG")));
        QCOMPARE(decodeQr(image), code.toLatin1());
        QCOMPARE(image.size(), ReceiptPicture::draw(receipt, code).size());
    }

    void pdfHoldsTextAndCode()
    {
        if (!canLookIntoPdf())
            QSKIP("poppler-utils is not installed: a PDF file cannot be looked into");
        const QString file = path(QStringLiteral("чек.pdf"));
        QString error;
        QVERIFY2(ReceiptFile(receipt, code, QStringLiteral("Чек ФД 12")).save(file, &error),
                 qPrintable(error));
        const QString text =
            output("pdftotext", {QStringLiteral("-layout"), file, QStringLiteral("-")});
        for (const QString &line : receipt.split(QLatin1Char('\n'))) {
            const QString part = line.simplified().section(QLatin1Char(' '), 0, 0);
            QVERIFY2(text.contains(part), qPrintable(text));
        }
        QVERIFY2(text.contains(QRegularExpression(QStringLiteral("ИТОГ +=1500\\.50"))),
                 qPrintable(text));
        const QString facts = output("pdfinfo", {file});
        QVERIFY2(facts.contains(QStringLiteral("Чек ФД 12")), qPrintable(facts));
        QVERIFY2(facts.contains(QRegularExpression(QStringLiteral("Pages: +1\n"))),
                 qPrintable(facts));
        // 80 mm are 226.77 points.
        const QRegularExpressionMatch width =
            QRegularExpression(QStringLiteral("Page size: +([0-9.]+) x")).match(facts);
        QVERIFY2(qAbs(width.captured(1).toDouble() - 226.77) < 1, qPrintable(facts));
        QCOMPARE(decodeQr(page(file, 1)), code.toLatin1());
    }

    void longPdfGoesOnOnTheNextPage()
    {
        if (!canLookIntoPdf())
            QSKIP("poppler-utils is not installed: a PDF file cannot be looked into");
        QStringList lines;
        for (int i = 1; i <= 700; ++i)
            lines.append(QStringLiteral("строка-%1").arg(i));
        const QString file = path(QStringLiteral("long.pdf"));
        QString error;
        QVERIFY(ReceiptFile(lines.join(QLatin1Char('\n')), code, QString()).save(file, &error));
        const QString facts = output("pdfinfo", {file});
        QVERIFY2(facts.contains(QRegularExpression(QStringLiteral("Pages: +3\n"))),
                 qPrintable(facts));
        const QString text =
            output("pdftotext", {QStringLiteral("-layout"), file, QStringLiteral("-")});
        QStringList found;
        auto words = QRegularExpression(QStringLiteral("строка-\\d+")).globalMatch(text);
        while (words.hasNext())
            found.append(words.next().captured());
        QCOMPARE(found, lines);
        QVERIFY(decodeQr(page(file, 1)).isEmpty());
        QCOMPARE(decodeQr(page(file, 3)), code.toLatin1());
    }

    void refused_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("part");
        QTest::newRow("no such kind")
            << path(QStringLiteral("чек.docx")) << QStringLiteral(".pdf, .png или .txt");
        QTest::newRow("no kind") << path(QStringLiteral("чек")) << QStringLiteral(".txt");
        QTest::newRow("no such folder")
            << path(QStringLiteral("нет/чек.txt")) << QStringLiteral("не записан");
    }

    void refused()
    {
        QFETCH(QString, name);
        QFETCH(QString, part);
        QString error;
        QVERIFY(!ReceiptFile(receipt, code, QString()).save(name, &error));
        QVERIFY2(error.contains(part) && error.contains(name), qPrintable(error));
        QVERIFY(!QFile::exists(name));
    }

    void whatStoodThereBeforeStaysUntilTheNewFileIsComplete()
    {
        QString error;
        const QString file = path(QStringLiteral("twice.txt"));
        QVERIFY(ReceiptFile::write(file, "first", &error));
        QVERIFY(ReceiptFile::write(file, "second", &error));
        QCOMPARE(contentOf(file), QByteArray("second"));
        QVERIFY(!ReceiptFile::write(m_folder.path(), "a folder stands here", &error));
        QVERIFY(!error.isEmpty());
        QVERIFY(QDir(m_folder.path()).exists());
    }
};

QTEST_MAIN(TestReceiptFile)
#include "tst_receiptfile.moc"
