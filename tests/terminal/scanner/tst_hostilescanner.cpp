#include <actingcharacters.h>
#include <hostiletexts.h>

#include <bills/qrpicture.h>
#include <scanner/keyboardscanner.h>
#include <ui/scannerpage.h>

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTableWidget>
#include <QTest>

#include <memory>

namespace {

const QString ordinary = QStringLiteral("ST00012|Name=ООО Вода|PersAcc=7001000101");
/// A code of the lowest correction holds 2953 bytes.
constexpr int roomInCode = 2200;
constexpr int shownWidth = 900;

/// What a keyboard in a field would bring, control characters included.
class KeyCatcher final : public QWidget
{
public:
    KeyCatcher() { setFocusPolicy(Qt::StrongFocus); }
    QString typed() const { return m_typed; }

    bool event(QEvent *event) override
    {
        if (event->type() != QEvent::KeyPress
            || static_cast<QKeyEvent *>(event)->key() == Qt::Key_F9)
            return QWidget::event(event);
        m_typed += static_cast<QKeyEvent *>(event)->text();
        event->accept();
        return true;
    }

private:
    QString m_typed;
};

/// As much of `text` as fits a code.
QString fitting(const QString &text)
{
    QString cut = text.left(roomInCode);
    while (cut.toUtf8().size() > roomInCode)
        cut.chop(cut.size() > 20 ? 10 : 1);
    return cut;
}

} // namespace

/// Codes and clipboards that hold hostile texts: nothing is read or fetched, the page stays usable,
/// and what is typed is what the code holds.
class TestHostileScanner : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<Canary> m_canary;
    std::unique_ptr<ScannerPage> m_page;

    template<class Type>
    Type *child(const char *name) const
    {
        return m_page->findChild<Type *>(QLatin1String(name));
    }

    void readClipboard(bool picture, const QString &text)
    {
        auto *content = new QMimeData;
        if (picture)
            content->setImageData(QrPicture::draw(text.toUtf8(), 3));
        else
            content->setText(text);
        QApplication::clipboard()->setMimeData(content);
        QTest::mouseClick(child<QPushButton>("pbScannerClipboard"), Qt::LeftButton);
    }

    void verifyShownPlainly()
    {
        m_page->grab();
        QCOMPARE(m_page->width(), shownWidth);
        const auto *table = child<QTableWidget>("twScannerFields");
        for (int row = 0; row < table->rowCount(); ++row) {
            for (int column = 0; column < table->columnCount(); ++column) {
                const QTableWidgetItem *cell = table->item(row, column);
                QVERIFY2(cell->text().size() < 300, qPrintable(cell->text()));
                QCOMPARE(actingCharacters(cell->text()), QString());
                QVERIFY(!cell->toolTip().contains(QLatin1Char('<')));
                QVERIFY(cell->toolTip().size() < 10000);
            }
        }
        QCOMPARE(child<QLabel>("lScannerSummary")->textFormat(), Qt::PlainText);
    }

private slots:
    void init()
    {
        m_canary = std::make_unique<Canary>();
        m_page = std::make_unique<ScannerPage>();
        m_page->resize(shownWidth, 600);
        m_page->show();
        QVERIFY(QTest::qWaitForWindowActive(m_page.get()));
    }

    void cleanup()
    {
        m_page.reset();
        QApplication::clipboard()->clear();
        QVERIFY2(m_canary->untouched(), qPrintable(m_canary->report()));
        QVERIFY(QApplication::topLevelWidgets().isEmpty());
    }

    void isTypedAsTheCodeHoldsIt_data()
    {
        QTest::addColumn<bool>("picture");
        QTest::addColumn<QString>("hostile");
        QVector<HostileTexts::Named> texts = HostileTexts::all();
        texts.append({"a placeholder in a name", QStringLiteral("|%1=%2|Name=%99")});
        texts.append({"many fields", QStringLiteral("|a=b").repeated(roomInCode / 4)});
        texts.append({"many pieces without a sign", QStringLiteral("|").repeated(roomInCode)});
        for (const HostileTexts::Named &text : qAsConst(texts)) {
            for (const bool picture : {true, false})
                QTest::addRow("%s, %s", text.first, picture ? "picture" : "text")
                    << picture << text.second;
        }
    }

    void isTypedAsTheCodeHoldsIt()
    {
        QFETCH(bool, picture);
        QFETCH(QString, hostile);
        const QString text = ordinary + QStringLiteral("|Purpose=")
            + fitting(HostileTexts::pointingAt(*m_canary, hostile));
        readClipboard(picture, text);
        QCOMPARE(m_page->text(), text);
        verifyShownPlainly();

        KeyCatcher field;
        field.show();
        QVERIFY(QTest::qWaitForWindowActive(&field));
        field.setFocus();
        child<QSpinBox>("sbScannerPause")->setValue(0);
        auto *suffix = child<QComboBox>("cbScannerSuffix");
        suffix->setCurrentIndex(suffix->findData(int(KeyboardScanner::Suffix::None)));
        QTest::keyClick(&field, Qt::Key_F9);
        QTRY_COMPARE_WITH_TIMEOUT(child<QLabel>("lScannerStatus")->text(),
                                  KeyboardScanner::outcomeText(KeyboardScanner::Outcome::Done),
                                  60000);
        // The key for a line end is Enter.
        const QString keys = QString(text)
                                 .replace(QLatin1String("\r\n"), QLatin1String("\r"))
                                 .replace(QLatin1Char('\n'), QLatin1Char('\r'));
        QCOMPARE(field.typed(), keys);
        QApplication::setActiveWindow(m_page.get());
        readClipboard(false, ordinary);
        QCOMPARE(m_page->text(), ordinary);
    }

    void moreThanACodeHoldsIsRefused_data()
    {
        QTest::addColumn<QString>("text");
        const int megabyte = 1024 * 1024;
        QTest::newRow("a word") << QString(megabyte, QLatin1Char('W'));
        QTest::newRow("Russian letters") << QString(megabyte / 2, QChar(0x0429));
        QTest::newRow("fields") << ordinary + QStringLiteral("|a=b").repeated(megabyte / 4);
        QTest::newRow("lines") << QString(megabyte, QLatin1Char('\n'));
        QString pieces = ordinary;
        for (int i = 0; pieces.size() < megabyte; ++i)
            pieces += QLatin1Char('|') + QString::number(i);
        QTest::newRow("pieces without a sign") << pieces;
    }

    void moreThanACodeHoldsIsRefused()
    {
        QFETCH(QString, text);
        readClipboard(false, text);
        QVERIFY(child<QLabel>("lScannerSummary")->text().contains(QStringLiteral("длиннее")));
        QCOMPARE(m_page->text(), QString());
        QVERIFY(!child<QPushButton>("pbScannerType")->isEnabled());

        // Pasted over a code, it leaves the code.
        m_page->setCode(ordinary.toUtf8());
        auto *editor = child<QPlainTextEdit>("pteScannerText");
        QApplication::clipboard()->setText(text);
        editor->setFocus();
        editor->paste();
        QCOMPARE(m_page->text(), ordinary);
        QCOMPARE(editor->toPlainText(), ordinary);
        QVERIFY(child<QLabel>("lScannerStatus")->text().contains(QStringLiteral("длиннее")));
        QVERIFY(child<QPushButton>("pbScannerType")->isEnabled());
        verifyShownPlainly();
        editor->moveCursor(QTextCursor::End);
        QTest::keyClicks(editor, QStringLiteral("2"));
        QCOMPARE(m_page->text(), ordinary + QLatin1Char('2'));
        QCOMPARE(child<QLabel>("lScannerStatus")->text(), QString());
    }

    void theMostThatACodeHoldsIsTaken()
    {
        const QString digits(7089, QLatin1Char('7'));
        readClipboard(false, digits);
        QCOMPARE(m_page->text(), digits);
        child<QPlainTextEdit>("pteScannerText")->setPlainText(digits.left(7000));
        QCOMPARE(m_page->text(), digits.left(7000));
    }
};

QTEST_MAIN(TestHostileScanner)
#include "tst_hostilescanner.moc"
