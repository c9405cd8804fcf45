#include "srmessagebox.h"

#include "guitestguard.h"
#include "markingtranslator.h"

#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QScreen>
#include <QTest>

#include <memory>

class TestSrMessageBox : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_guard = std::make_unique<GuiTestGuard>(); }
    void cleanup()
    {
        const QStringList problems = m_guard->problems();
        m_guard.reset();
        QCOMPARE(problems, QStringList());
    }

    void kinds_data();
    void kinds();
    void errorWithATitleOfItsOwn();
    void textIsNeverMarkup_data();
    void textIsNeverMarkup();
    void errorWordPassesThroughTranslation();
    void closesBy_data();
    void closesBy();
    void isModalToItsParent();
    void everyTextLeavesTheButtonOnTheScreen_data();
    void everyTextLeavesTheButtonOnTheScreen();

private:
    std::unique_ptr<GuiTestGuard> m_guard;
};

void TestSrMessageBox::kinds_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("title");
    QTest::addColumn<int>("icon");
    QTest::newRow("0 error") << 0 << QStringLiteral("Ошибка Вода ФЛ") << int(QMessageBox::Critical);
    QTest::newRow("1 warning") << 1 << QStringLiteral("Вода ФЛ") << int(QMessageBox::Warning);
    QTest::newRow("2 information")
        << 2 << QStringLiteral("Вода ФЛ") << int(QMessageBox::Information);
    QTest::newRow("any other value is information")
        << 3 << QStringLiteral("Вода ФЛ") << int(QMessageBox::Information);
}

void TestSrMessageBox::kinds()
{
    QFETCH(const int, type);
    QFETCH(const QString, title);
    QFETCH(const int, icon);

    m_guard->answers.ok();
    SrMessageBox::show(nullptr, QStringLiteral("Вода ФЛ"),
                       static_cast<ISrIWizardPage::MsgType>(type), QStringLiteral("Что случилось"));
    QCOMPARE(m_guard->answers.seen().size(), 1);
    const ModalAnswers::Seen box = m_guard->answers.seen().first();
    QCOMPARE(box.title, title);
    QCOMPARE(box.text, QStringLiteral("Что случилось"));
    QCOMPARE(int(box.icon), icon);
    QCOMPARE(box.buttons.size(), 1);
    QVERIFY(box.enabled);
}

void TestSrMessageBox::errorWithATitleOfItsOwn()
{
    m_guard->answers.ok();
    SrMessageBox::showError(nullptr, QStringLiteral("Заголовок"), QStringLiteral("Текст"));
    QCOMPARE(m_guard->answers.seen().first().title, QStringLiteral("Заголовок"));
    QCOMPARE(m_guard->answers.seen().first().icon, QMessageBox::Critical);
}

void TestSrMessageBox::textIsNeverMarkup_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("markup") << QStringLiteral("<b>Долг</b> <img src=\"file:///etc/passwd\">");
    QTest::newRow("link") << QStringLiteral("<a href=\"https://example.org\">сюда</a>");
    QTest::newRow("ampersand and percent") << QStringLiteral("A & B %1 %2");
    QTest::newRow("empty") << QString();
    QTest::newRow("line feeds") << QStringLiteral("раз\nдва");
    QTest::newRow("NUL") << QStringLiteral("раз%1два").arg(QChar(0));
}

void TestSrMessageBox::textIsNeverMarkup()
{
    QFETCH(const QString, text);
    Qt::TextFormat format = Qt::AutoText;
    QString shown;
    m_guard->answers.run([&](QDialog *dialog) {
        const auto *box = qobject_cast<QMessageBox *>(dialog);
        format = box->textFormat();
        if (const auto *label = dialog->findChild<QLabel *>(QStringLiteral("qt_msgbox_label")))
            shown = label->text();
        dialog->reject();
    });
    SrMessageBox::show(nullptr, QString(), ISrIWizardPage::MsgError, text);
    QCOMPARE(format, Qt::PlainText);
    QCOMPARE(shown, text);
}

void TestSrMessageBox::errorWordPassesThroughTranslation()
{
    const MarkingTranslator translator(QStringLiteral("SrMessageBox"));
    m_guard->answers.ok();
    SrMessageBox::show(nullptr, QStringLiteral("Вода"), ISrIWizardPage::MsgError, QString());
    // The trailing blank is part of the translated text.
    QCOMPARE(m_guard->answers.seen().first().title, QStringLiteral("SrMessageBox:Ошибка Вода"));
}

void TestSrMessageBox::closesBy_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("Enter") << int(Qt::Key_Return);
    QTest::newRow("Enter of the number block") << int(Qt::Key_Enter);
    QTest::newRow("Space") << int(Qt::Key_Space);
    QTest::newRow("Esc") << int(Qt::Key_Escape);
}

void TestSrMessageBox::closesBy()
{
    QFETCH(const int, key);
    m_guard->answers.run([key](QDialog *dialog) {
        QWidget *target = dialog->focusWidget() ? dialog->focusWidget() : dialog;
        QTest::keyClick(target, static_cast<Qt::Key>(key));
    });
    SrMessageBox::show(nullptr, QStringLiteral("Вода"), ISrIWizardPage::MsgWarning,
                       QStringLiteral("Текст"));
    QCOMPARE(m_guard->answers.seen().size(), 1);
}

void TestSrMessageBox::isModalToItsParent()
{
    QWidget window;
    window.show();
    QWidget *parent = nullptr;
    bool modal = false;
    m_guard->answers.run([&](QDialog *dialog) {
        parent = dialog->parentWidget();
        modal = dialog->isModal();
        dialog->reject();
    });
    SrMessageBox::show(&window, QStringLiteral("Вода"), ISrIWizardPage::MsgInformation,
                       QStringLiteral("Текст"));
    QCOMPARE(parent, &window);
    QVERIFY(modal);
    QVERIFY(window.findChildren<QDialog *>().isEmpty());
}

void TestSrMessageBox::everyTextLeavesTheButtonOnTheScreen_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("a long explanation") << QStringLiteral("Счёт закрыт. ").repeated(46);
    QTest::newRow("a word of a megabyte") << QString(1024 * 1024, QChar(0x0429));
    QTest::newRow("a megabyte of lines") << QString(1024 * 1024, QLatin1Char('\n'));
    QTest::newRow("controls and overrides") << QStringLiteral("\u202E\u001B").repeated(10000);
}

void TestSrMessageBox::everyTextLeavesTheButtonOnTheScreen()
{
    QFETCH(const QString, text);
    QSize size;
    QString shown;
    m_guard->answers.run([&](QDialog *dialog) {
        size = dialog->frameGeometry().size();
        shown = qobject_cast<QMessageBox *>(dialog)->text();
        dialog->accept();
    });
    SrMessageBox::show(nullptr, QStringLiteral("Вода"), ISrIWizardPage::MsgError, text);
    const QSize screen = QApplication::primaryScreen()->availableSize();
    QVERIFY2(size.width() <= screen.width() && size.height() <= screen.height(),
             qPrintable(QStringLiteral("%1 x %2").arg(QString::number(size.width()),
                                                      QString::number(size.height()))));
    QVERIFY(!shown.isEmpty());
    if (text.size() <= 600)
        QCOMPARE(shown, text);
}

QTEST_MAIN(TestSrMessageBox)
#include "tst_srmessagebox.moc"
