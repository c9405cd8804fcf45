#include <billing/sampleaccounts.h>
#include <bills/samplebill.h>
#include <scanner/codereader.h>

#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

class TestSampleBill : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_folder;

private slots:
    void writtenAndReadBack_data()
    {
        QTest::addColumn<QString>("account");
        QTest::addColumn<QString>("document");
        QTest::addColumn<int>("digit");
        QTest::addColumn<QString>("part");
        QTest::newRow("person") << SampleNumber::ORDINARY << QString() << 1
                                << QStringLiteral("|PersAcc=7001000101|");
        QTest::newRow("contract") << SampleNumber::LEGAL_ONE_DOCUMENT << QString() << 2
                                  << QStringLiteral("|BarCode=2026/0101|");
        QTest::newRow("chosen document")
            << SampleNumber::LEGAL_SEVERAL << QStringLiteral("2026/0203") << 3
            << QStringLiteral("|BarCode=2026/0203|");
        QTest::newRow("first unpaid document") << SampleNumber::LEGAL_SEVERAL << QString() << 2
                                               << QStringLiteral("|BarCode=2026/0201|");
    }

    void writtenAndReadBack()
    {
        QFETCH(QString, account);
        QFETCH(QString, document);
        QFETCH(int, digit);
        QFETCH(QString, part);
        const QString file = m_folder.filePath(QStringLiteral("bill.png"));
        QString error;
        QVERIFY2(writeSampleBill(account, CodeEncoding(digit), file, &error, document),
                 qPrintable(error));
        const QString text = readCodeFromPicture(file, &error);
        QCOMPARE(error, QString());
        QVERIFY2(text.startsWith(QStringLiteral("ST0001%1|Name=АО ").arg(digit)), qPrintable(text));
        QVERIFY2(text.contains(part), qPrintable(text));
    }

    void refused_data()
    {
        QTest::addColumn<QString>("account");
        QTest::addColumn<QString>("document");
        QTest::addColumn<QString>("part");
        QTest::newRow("unknown account")
            << SampleNumber::UNKNOWN << QString() << QStringLiteral("7001000101");
        QTest::newRow("unknown document") << SampleNumber::LEGAL_SEVERAL << QStringLiteral("1")
                                          << QStringLiteral("нет документа «1»");
    }

    void refused()
    {
        QFETCH(QString, account);
        QFETCH(QString, document);
        QFETCH(QString, part);
        const QString file = m_folder.filePath(QStringLiteral("refused.pdf"));
        QString error;
        QVERIFY(!writeSampleBill(account, CodeEncoding::Utf8, file, &error, document));
        QVERIFY2(error.contains(part), qPrintable(error));
        QVERIFY(!QFileInfo::exists(file));
    }
};

QTEST_MAIN(TestSampleBill)
#include "tst_samplebill.moc"
