#include <ui/shownreason.h>

#include <actingcharacters.h>
#include <windows.h>

#include <app/terminalcontext.h>
#include <ui/mainwindow.h>

#include <QApplication>
#include <QJsonDocument>
#include <QLabel>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QScreen>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

namespace {

constexpr int megabyte = 1024 * 1024;

/// Reasons and names that a broken or hostile billing could give.
void hostileTexts()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("ordinary") << QStringLiteral("Счёт закрыт 01.11.2026. %1 <b>");
    QTest::newRow("markup") << QStringLiteral("<b>ОПЛАЧЕНО</b><img src=\"file:///etc/passwd\">");
    QTest::newRow("direction") << QStringLiteral("Долг\u202E\u200F150.50");
    QTest::newRow("controls") << QStringLiteral("a\u0001\u001B[2J\t\r\u2028b");
    QTest::newRow("a word of a megabyte") << QString(megabyte, QChar(0x0429));
    QTest::newRow("a megabyte of words") << QStringLiteral("Счёт закрыт. ").repeated(megabyte / 13);
    QTest::newRow("a megabyte of lines") << QString(megabyte, QLatin1Char('\n'));
}

} // namespace

/// What billing gives as a reason, and what it called things, on the terminal's own pages.
class TestShownReason : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { Windows::useFontOfTheTerminal(); }

    void ordinaryReasonsAreUnchanged_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("empty") << QString();
        QTest::newRow("a sentence") << QStringLiteral("Счёт «12» закрыт: <нет>, %1 & 100 %.");
        QTest::newRow("lines") << QStringLiteral("Первая\nвторая");
        QTest::newRow("longest") << QStringLiteral("слово ").repeated(100);
        QTest::newRow("longest word") << QString(36, QChar(0x0429));
    }
    void ordinaryReasonsAreUnchanged()
    {
        QFETCH(const QString, text);
        QCOMPARE(shownReason(text), text);
    }

    void reasonsAreBounded_data() { hostileTexts(); }
    void reasonsAreBounded()
    {
        QFETCH(const QString, text);
        const QString shown = shownReason(text);
        QVERIFY(shown.size() <= 602);
        QVERIFY(shown.count(QLatin1Char('\n')) < 13);
        QCOMPARE(actingCharacters(shown, QStringLiteral("\u200b\n")), QString());
        QCOMPARE(shown.contains(QChar(0x2026)), text.size() > 600);
    }

    void linesAreBoundedOneByOne()
    {
        const QString text = QStringLiteral("{\n") + QString(5000, QLatin1Char('x'))
            + QStringLiteral("\n\"a\": \"%1\"\n}");
        const QStringList shown = shownLines(text).split(QLatin1Char('\n'));
        QCOMPARE(shown.size(), 4);
        QVERIFY(shown.at(1).startsWith(QString(4000, QLatin1Char('x')) + QChar(0x2026)));
        QVERIFY(shown.at(1).contains(QStringLiteral("5000")));
        QCOMPARE(shown.at(2), QStringLiteral("\"a\": \"%1\""));
    }

    void warningsFitTheScreenAndAreNoMarkup_data() { hostileTexts(); }
    void warningsFitTheScreenAndAreNoMarkup()
    {
        QFETCH(const QString, text);
        QSize size;
        Qt::TextFormat format = Qt::AutoText;
        QTimer looks;
        connect(&looks, &QTimer::timeout, this, [&] {
            auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            if (!box || !box->isVisible())
                return;
            size = box->frameGeometry().size();
            format = box->textFormat();
            box->accept();
        });
        looks.start(5);
        showWarning(nullptr, QStringLiteral("Сверка"), text);
        const QSize screen = QApplication::primaryScreen()->availableSize();
        QVERIFY(size.isValid());
        QVERIFY(size.width() <= screen.width() && size.height() <= screen.height());
        QCOMPARE(format, Qt::PlainText);
    }

    void journalStaysUsable_data() { hostileTexts(); }
    void journalStaysUsable()
    {
        QFETCH(const QString, text);
        QTemporaryDir folder;
        QString error;
        const auto context = TerminalContext::open(folder.path(), &error);
        QVERIFY2(context, qPrintable(error));
        PaymentRecord record;
        record.packId = 42;
        record.created = QDateTime::currentDateTimeUtc();
        record.providerId = 18722;
        record.providerName = text;
        record.account = QStringLiteral("100200300");
        record.sum = basix::FixNumber(100, qint64(15050));
        record.cash = record.sum;
        const QVariantMap pack{{QStringLiteral("id"), QStringLiteral("42")},
                               {QStringLiteral("paydata"), text}};
        QVERIFY2(context->payments().save(record, pack),
                 qPrintable(context->payments().lastError()));
        QVERIFY(context->payments().setLastError(42, text));

        MainWindow window(*context);
        window.resize(1000, 700);
        window.show();
        window.showJournal();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        auto *table = window.findChild<QTableView *>(QStringLiteral("tvJournal"));
        table->selectRow(0);
        window.grab();
        QVERIFY(window.width() <= 1000 && window.height() <= 700);

        const auto *summary = window.findChild<QLabel *>(QStringLiteral("lPaymentDetails"));
        QVERIFY(summary->text().contains(shownReason(text)));
        QVERIFY(summary->text().size() < 1000);
        QCOMPARE(summary->textFormat(), Qt::PlainText);
        for (int column = 0; column < table->model()->columnCount(); ++column) {
            const QString tip = table->model()->index(0, column).data(Qt::ToolTipRole).toString();
            QVERIFY(tip.size() < 4000);
            QVERIFY(!tip.contains(QStringLiteral("<img")));
        }
        const auto *shownPack = window.findChild<QPlainTextEdit *>(QStringLiteral("ptePack"));
        QVERIFY(shownPack->toPlainText().contains(QStringLiteral("\"id\": \"42\"")));
        const QStringList lines = shownPack->toPlainText().split(QLatin1Char('\n'));
        for (const QString &line : lines)
            QVERIFY(line.size() < 4100);

        // What is stored is whole.
        QVERIFY(context->payments().record(42)->lastError == text);
        QVERIFY(context->payments().pack(42)->value(QStringLiteral("paydata")).toString() == text);
    }
};

QTEST_MAIN(TestShownReason)
#include "tst_shownreason.moc"
