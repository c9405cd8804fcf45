#include <modalanswers.h>

#include <bills/codeencoding.h>
#include <bills/qrpicture.h>
#include <ui/scannerpage.h>

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPainter>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSpinBox>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>
#include <QVBoxLayout>

#include <memory>

namespace {

const QString text = QStringLiteral(
    "ST00012|Name=ООО Вода|PersonalAcc=40702810000000004107|BankName=Банк|BIC=040000999|"
    "CorrespAcc=30101810000000000999|Sum=150050|PersAcc=7001000101|PaymPeriod=10.2026");

QByteArray windowsBytes()
{
    return CodeEncodings::encode(
        QString(text).replace(QStringLiteral("ST00012"), QStringLiteral("ST00011")),
        CodeEncoding::Windows1251);
}

} // namespace

class TestScannerPage : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<ScannerPage> m_page;

    template<class Type>
    Type *child(const char *name) const
    {
        return m_page->findChild<Type *>(QLatin1String(name));
    }

    void click(const char *button)
    {
        QTest::mouseClick(child<QPushButton>(button), Qt::LeftButton);
    }
    QString summary() const { return child<QLabel>("lScannerSummary")->text(); }
    QString status() const { return child<QLabel>("lScannerStatus")->text(); }
    QString warnings() const { return child<QPlainTextEdit>("pteScannerWarnings")->toPlainText(); }

    QString fields() const
    {
        const auto *table = child<QTableWidget>("twScannerFields");
        QStringList rows;
        for (int row = 0; row < table->rowCount(); ++row)
            rows.append(table->item(row, 0)->text() + QLatin1Char('=')
                        + table->item(row, 2)->text());
        return rows.join(QLatin1Char('|'));
    }

    QString savedPicture(const QByteArray &bytes)
    {
        const QString file = m_folder->filePath(QStringLiteral("код.png"));
        return QrPicture::draw(bytes, 4).save(file) ? file : QString();
    }

private slots:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        QApplication::clipboard()->clear();
        m_page = std::make_unique<ScannerPage>();
        m_page->resize(1000, 600);
        m_page->show();
        QVERIFY(QTest::qWaitForWindowActive(m_page.get()));
    }

    void cleanup()
    {
        m_page.reset();
        QVERIFY(QApplication::topLevelWidgets().isEmpty());
    }

    void nothingToTypeAtFirst()
    {
        QVERIFY(!child<QPushButton>("pbScannerType")->isEnabled());
        QVERIFY(!child<QPushButton>("pbScannerStop")->isEnabled());
        QVERIFY(!child<QComboBox>("cbScannerCode")->isVisible());
    }

    void codeIsReadFromAFile()
    {
        const QString file = savedPicture(windowsBytes());
        ModalAnswers answers;
        answers.run([file](QDialog *dialog) {
            auto *name = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
            name->setText(file);
            QTest::keyClick(name, Qt::Key_Return);
        });
        click("pbScannerFile");
        QCOMPARE(answers.problems(), QStringList());
        QCOMPARE(summary(),
                 QStringLiteral("Платёжный код квитанции, кодировка windows-1251, полей: 8."));
        QVERIFY2(
            fields().contains(QStringLiteral("Sum=150050 (1\u00a0500,50 ₽)|PersAcc=7001000101")),
            qPrintable(fields()));
        QCOMPARE(m_page->text(),
                 QString(text).replace(QStringLiteral("ST00012"), QStringLiteral("ST00011")));
        QCOMPARE(child<QPlainTextEdit>("pteScannerText")->toPlainText(), m_page->text());
        QVERIFY(!child<QPlainTextEdit>("pteScannerWarnings")->isVisible());
        QVERIFY(child<QPushButton>("pbScannerType")->isEnabled());
    }

    void codeIsReadFromTheClipboard_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::newRow("picture") << QStringLiteral("picture");
        QTest::newRow("file") << QStringLiteral("file");
        QTest::newRow("text") << QStringLiteral("text");
    }

    void codeIsReadFromTheClipboard()
    {
        QFETCH(QString, kind);
        auto *content = new QMimeData;
        if (kind == QLatin1String("picture"))
            content->setImageData(QrPicture::draw(text.toUtf8(), 4));
        else if (kind == QLatin1String("file"))
            content->setUrls({QUrl::fromLocalFile(savedPicture(text.toUtf8()))});
        else
            content->setText(text);
        QApplication::clipboard()->setMimeData(content);
        click("pbScannerClipboard");
        QVERIFY2(summary().startsWith(QStringLiteral("Платёжный код квитанции, кодировка UTF-8")),
                 qPrintable(summary()));
        QCOMPARE(m_page->text(), text);
    }

    void emptyClipboardIsExplained()
    {
        m_page->setCode(text.toUtf8());
        click("pbScannerClipboard");
        QVERIFY2(summary().contains(QStringLiteral("нет ни картинки, ни текста")),
                 qPrintable(summary()));
        // What was read before must not be typed by mistake.
        QCOMPARE(m_page->text(), QString());
        QCOMPARE(child<QPlainTextEdit>("pteScannerText")->toPlainText(), QString());
        QVERIFY(!child<QPushButton>("pbScannerType")->isEnabled());
    }

    void codeIsReadFromTheScreen()
    {
        QImage first(1280, 800, QImage::Format_RGB32);
        first.fill(Qt::gray);
        QImage second = first;
        QPainter(&second).drawImage(700, 300, QrPicture::draw(text.toUtf8(), 3));
        m_page->setScreenGrabber([&] { return QVector<QImage>{first, second}; });
        click("pbScannerScreen");
        QCOMPARE(m_page->text(), text);
    }

    void screenWithoutACodeIsExplained_data()
    {
        QTest::addColumn<QImage>("screen");
        QTest::addColumn<QString>("part");
        QImage blank(640, 480, QImage::Format_RGB32);
        blank.fill(Qt::white);
        QTest::newRow("no code") << blank << CodeReader::nothingFoundText();
        QTest::newRow("no picture") << QImage() << QStringLiteral("не даёт снять экран");
    }

    void screenWithoutACodeIsExplained()
    {
        QFETCH(QImage, screen);
        QFETCH(QString, part);
        m_page->setCode(text.toUtf8());
        m_page->setScreenGrabber([screen] { return QVector<QImage>{screen}; });
        click("pbScannerScreen");
        QVERIFY2(summary().contains(part), qPrintable(summary()));
        QCOMPARE(m_page->text(), QString());
    }

    void pictureWithoutACodeIsExplained()
    {
        QImage blank(200, 200, QImage::Format_RGB32);
        blank.fill(Qt::white);
        const QString file = m_folder->filePath(QStringLiteral("blank.png"));
        QVERIFY(blank.save(file));
        m_page->readFile(file);
        QCOMPARE(summary(), CodeReader::nothingFoundText());
        m_page->readFile(m_folder->filePath(QStringLiteral("нет.png")));
        QVERIFY2(summary().contains(QStringLiteral("нет.png")), qPrintable(summary()));
    }

    void codeSentWhileAPictureIsReadStays()
    {
        QImage huge(7000, 7000, QImage::Format_Grayscale8);
        huge.fill(Qt::white);
        m_page->setScreenGrabber([huge] { return QVector<QImage>{huge}; });
        ModalAnswers answers;
        answers.run([this](QDialog *dialog) {
            m_page->setCode(text.toUtf8());
            QTest::mouseClick(dialog->findChild<QPushButton *>(), Qt::LeftButton);
        });
        click("pbScannerScreen");
        QCOMPARE(answers.problems(), QStringList());
        QCOMPARE(answers.pending(), 0);
        QCOMPARE(m_page->text(), text);
        // The next picture counts again.
        const QImage small = huge.copy(0, 0, 50, 50);
        m_page->setScreenGrabber([small] { return QVector<QImage>{small}; });
        click("pbScannerScreen");
        QCOMPARE(m_page->text(), QString());
    }

    void readingAHugePictureIsStopped()
    {
        m_page->setCode(text.toUtf8());
        QImage huge(7000, 7000, QImage::Format_Grayscale8);
        huge.fill(Qt::white);
        m_page->setScreenGrabber([huge] { return QVector<QImage>{huge}; });
        ModalAnswers answers;
        QLineEdit *target = nullptr;
        answers.run([&target](QDialog *dialog) {
            // The trigger types nothing while it is not known what the code is.
            target = new QLineEdit(dialog);
            QTest::keyClick(target, Qt::Key_F9);
            QCOMPARE(target->text(), QString());
            QTest::mouseClick(dialog->findChild<QPushButton *>(), Qt::LeftButton);
        });
        click("pbScannerScreen");
        QCOMPARE(answers.problems(), QStringList());
        QCOMPARE(answers.pending(), 0);
        QVERIFY2(summary().startsWith(QStringLiteral("Чтение прервано")), qPrintable(summary()));
        QCOMPARE(m_page->text(), QString());
        QVERIFY(!child<QPushButton>("pbScannerType")->isEnabled());
    }

    void oneOfSeveralCodesIsChosen()
    {
        QImage page(900, 900, QImage::Format_RGB32);
        page.fill(Qt::white);
        QPainter painter(&page);
        painter.drawImage(20, 20, QrPicture::draw(QByteArrayLiteral("https://example.org/"), 5));
        painter.drawImage(400, 400, QrPicture::draw(text.toUtf8(), 4));
        painter.end();
        const QString file = m_folder->filePath(QStringLiteral("two.png"));
        QVERIFY(page.save(file));
        m_page->resize(700, 600);
        m_page->readFile(file);
        auto *which = child<QComboBox>("cbScannerCode");
        QVERIFY(which->isVisible());
        m_page->grab();
        QCOMPARE(m_page->width(), 700);
        QCOMPARE(which->count(), 2);
        QCOMPARE(m_page->text(), text);
        which->setCurrentIndex(1 - which->currentIndex());
        QCOMPARE(m_page->text(), QStringLiteral("https://example.org/"));
        QCOMPARE(summary(), QStringLiteral("Ссылка, а не платёжный код."));
        m_page->setCode(text.toUtf8());
        QVERIFY(!which->isVisible());
    }

    void warningsAreShown()
    {
        m_page->setCode(
            QString(text).replace(QStringLiteral("150050"), QStringLiteral("1500.50")).toUtf8());
        QVERIFY(child<QPlainTextEdit>("pteScannerWarnings")->isVisible());
        QVERIFY2(warnings().contains(QStringLiteral("целое число копеек")), qPrintable(warnings()));
    }

    void textCanBeEdited()
    {
        m_page->setCode(windowsBytes());
        auto *editor = child<QPlainTextEdit>("pteScannerText");
        editor->moveCursor(QTextCursor::End);
        editor->insertPlainText(QStringLiteral("|LastName=Ёлкин"));
        QVERIFY(m_page->text().endsWith(QStringLiteral("10.2026|LastName=Ёлкин")));
        QVERIFY(fields().endsWith(QStringLiteral("|LastName=Ёлкин")));
        QCOMPARE(warnings(), QString());
        editor->clear();
        QVERIFY(!child<QPushButton>("pbScannerType")->isEnabled());
        QCOMPARE(summary(), QStringLiteral("Код пустой."));
    }

    void specialBlanksSurviveTheEditor()
    {
        const QString special = text + QStringLiteral("|Purpose=a\u00a0b");
        m_page->setCode(special.toUtf8());
        QCOMPARE(m_page->text(), special);
    }

    void typedAfterTheCountdown()
    {
        m_page->setCode(text.toUtf8());
        child<QSpinBox>("sbScannerDelay")->setValue(1);
        child<QSpinBox>("sbScannerPause")->setValue(0);
        QLineEdit target;
        target.show();
        QVERIFY(QTest::qWaitForWindowExposed(&target));
        m_page->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_page.get()));
        click("pbScannerType");
        QVERIFY(status().contains(QStringLiteral("через 1 с")));
        QVERIFY(!child<QPushButton>("pbScannerType")->isEnabled());
        QVERIFY(child<QPushButton>("pbScannerStop")->isEnabled());
        target.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&target));
        QCOMPARE(target.text(), QString());
        QTRY_COMPARE(status(), KeyboardScanner::outcomeText(KeyboardScanner::Outcome::Done));
        QCOMPARE(target.text(), text);
        QCOMPARE(child<QProgressBar>("prScanner")->value(), text.size() + 1);
        QVERIFY(child<QPushButton>("pbScannerType")->isEnabled());
    }

    void cursorLeftOnThePageIsExplained()
    {
        m_page->setCode(text.toUtf8());
        child<QSpinBox>("sbScannerDelay")->setValue(1);
        child<QPlainTextEdit>("pteScannerText")->setFocus();
        click("pbScannerType");
        QTRY_VERIFY2(status().contains(QStringLiteral("Курсор остался на этой странице")),
                     qPrintable(status()));
        QCOMPARE(m_page->text(), text);
        QVERIFY(child<QPushButton>("pbScannerType")->isEnabled());
    }

    void countdownIsStopped()
    {
        m_page->setCode(text.toUtf8());
        click("pbScannerType");
        click("pbScannerStop");
        QVERIFY(status().contains(QStringLiteral("ничего не введено")));
        QVERIFY(child<QPushButton>("pbScannerType")->isEnabled());
        QVERIFY(!child<QPushButton>("pbScannerStop")->isEnabled());
    }

    void triggerKeyTypesIntoAModalDialog_data()
    {
        QTest::addColumn<int>("layout");
        QTest::addColumn<int>("suffix");
        QTest::addColumn<QString>("start");
        QTest::addColumn<int>("result");
        QTest::newRow("Enter") << 0 << 0 << QStringLiteral("ST00012|Name=ООО Вода|")
                               << int(QDialog::Accepted);
        QTest::newRow("Russian layout")
            << 1 << 0 << QStringLiteral("ЫЕ00012/Тфьу=ООО Вода/") << int(QDialog::Accepted);
        QTest::newRow("dropped Cyrillic, no suffix")
            << 2 << 1 << QStringLiteral("ST00012|Name= |") << int(QDialog::Rejected);
    }

    void triggerKeyTypesIntoAModalDialog()
    {
        QFETCH(int, layout);
        QFETCH(int, suffix);
        QFETCH(QString, start);
        m_page->setCode(text.toUtf8());
        child<QComboBox>("cbScannerLayout")->setCurrentIndex(layout);
        child<QComboBox>("cbScannerSuffix")->setCurrentIndex(suffix);
        child<QSpinBox>("sbScannerPause")->setValue(0);
        QDialog dialog;
        auto *field = new QLineEdit;
        auto *button = new QPushButton;
        auto *box = new QVBoxLayout(&dialog);
        box->addWidget(field);
        box->addWidget(button);
        button->setDefault(true);
        connect(button, &QPushButton::clicked, &dialog, &QDialog::accept);
        ModalAnswers answers;
        const int done = suffix;
        answers.run([this, field, done](QDialog *shown) {
            QTRY_VERIFY(field->hasFocus());
            QTest::keyClick(field, Qt::Key_F9);
            QTRY_VERIFY(status() == KeyboardScanner::outcomeText(KeyboardScanner::Outcome::Done));
            if (done != 0)
                shown->reject();
        });
        QTEST(dialog.exec(), "result");
        QCOMPARE(answers.problems(), QStringList());
        QVERIFY2(field->text().startsWith(start), qPrintable(field->text()));
    }

    void triggerKeyWithoutACodeIsLeftAlone()
    {
        QLineEdit target;
        target.show();
        QVERIFY(QTest::qWaitForWindowActive(&target));
        QTest::keyClick(&target, Qt::Key_F9);
        QCOMPARE(target.text(), QString());
        QCOMPARE(status(), QString());
    }

    void pageMayGoWhileTyping()
    {
        m_page->setCode(text.toUtf8());
        QLineEdit target;
        target.show();
        QVERIFY(QTest::qWaitForWindowActive(&target));
        QTest::keyClick(&target, Qt::Key_F9);
        QTRY_VERIFY(!target.text().isEmpty());
        m_page.reset();
        const QString typed = target.text();
        QVERIFY(typed.size() < text.size());
        QCoreApplication::processEvents();
        QVERIFY(text.startsWith(target.text()));
    }

    void tabReachesEverything()
    {
        m_page->setCode(QString(text + QStringLiteral("|Sum=1")).toUtf8());
        child<QPushButton>("pbScannerFile")->setFocus();
        QStringList order;
        for (int i = 0; i < 14; ++i) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            order.append(QApplication::focusWidget()->objectName());
        }
        for (const char *name :
             {"pbScannerClipboard", "pbScannerScreen", "twScannerFields", "pteScannerWarnings",
              "pteScannerText", "cbScannerSuffix", "sbScannerPause", "cbScannerBurst",
              "cbScannerLayout", "sbScannerDelay", "pbScannerType"})
            QVERIFY2(order.contains(QLatin1String(name)),
                     qPrintable(QLatin1String(name) + QStringLiteral(" not in ")
                                + order.join(QLatin1Char(' '))));
    }
};

QTEST_MAIN(TestScannerPage)
#include "tst_scannerpage.moc"
