#include "billinganswers.h"
#include "hostiletexts.h"
#include "paymentflow.h"
#include "sampleproviders.h"
#include "srshowntext.h"

#include <molvacore/paypack.h>

#include <QHeaderView>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QScreen>
#include <QTableView>
#include <QTest>
#include <QTextBlock>
#include <QTextBrowser>

#include <memory>

namespace {

/// All values of the fields called `name`, at any depth of a `paydata` text.
void collect(const QJsonValue &json, const QString &name, QStringList *values)
{
    if (json.isArray()) {
        for (const QJsonValue &element : json.toArray())
            collect(element, name, values);
        return;
    }
    const QJsonObject object = json.toObject();
    if (object.value(QStringLiteral("name")).toString() == name
        && object.contains(QStringLiteral("value")))
        values->append(object.value(QStringLiteral("value")).toString());
    if (object.contains(QStringLiteral("paramList")))
        collect(object.value(QStringLiteral("paramList")), name, values);
}

QStringList namesInPayData(const Payment &payment)
{
    const Provider provider = payment.providerData();
    QStringList names;
    for (const auto &parameter : provider.parameters()) {
        if (parameter->name() == QLatin1String("paydata"))
            collect(QJsonDocument::fromJson(parameter->value().toUtf8()).array(),
                    QStringLiteral("name"), &names);
    }
    return names;
}

/// Every title and every name of `record`, its nested records included, becomes `text`; amounts,
/// ids and readings stay.
QVariantList renamed(const QVariantList &record, const QString &text)
{
    static const QStringList texts = {QStringLiteral("fio"), QStringLiteral("address"),
                                      QStringLiteral("inn"), QStringLiteral("num")};
    QVariantList result;
    for (const QVariant &element : record) {
        QVariantMap field = element.toMap();
        const QString name = field.value(QStringLiteral("name")).toString();
        if (field.contains(QStringLiteral("title")))
            field.insert(QStringLiteral("title"), text);
        if (texts.contains(name)
            || (name == QLatin1String("name") && field.contains(QStringLiteral("value"))))
            field.insert(QStringLiteral("value"), text);
        if (field.contains(QStringLiteral("paramList")))
            field.insert(QStringLiteral("paramList"),
                         renamed(field.value(QStringLiteral("paramList")).toList(), text));
        result.append(field);
    }
    return result;
}

QtMessageHandler loggerOfTheTest = nullptr;

/// The plugin's trace holds the records as they came; printing it would take longer than all else.
void logShortened(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    constexpr int enoughToRead = 500;
    loggerOfTheTest(type, context, text.left(enoughToRead));
}

} // namespace

/// Whole payments, by keyboard alone, of accounts whose every name and title is hostile: the pages
/// stay usable, nothing is read or fetched, and what is printed and posted is what billing sent.
class TestHostileTexts : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { loggerOfTheTest = qInstallMessageHandler(logShortened); }
    void init();
    void cleanup();

    void individual_data() { texts(); }
    void individual();
    void legal_data() { texts(); }
    void legal();
    void refusals_data();
    void refusals();

private:
    static void texts();
    /// A step that looks at the current page before the flow goes on.
    void lookAtPage();
    void checkDocument(const QTextBrowser &view);
    void checkTable(const QTableView &table);
    QVariantMap receipt() const { return m_flow->fiscalRegister->receipts.first().document; }

    std::unique_ptr<PaymentFlow> m_flow;
    std::unique_ptr<Canary> m_canary;
    QString m_text;
    int m_seenPages = 0;
};

void TestHostileTexts::init()
{
    m_canary = std::make_unique<Canary>();
    m_flow = std::make_unique<PaymentFlow>();
    m_seenPages = 0;
}

void TestHostileTexts::cleanup()
{
    const QString problems = m_flow->problems();
    m_flow.reset();
    QVERIFY2(m_canary->untouched(), qPrintable(m_canary->report()));
    QCOMPARE(problems.left(1000), QString());
}

void TestHostileTexts::texts()
{
    QTest::addColumn<QString>("text");
    for (const HostileTexts::Named &row : HostileTexts::all())
        QTest::newRow(row.first) << row.second;
}

void TestHostileTexts::checkDocument(const QTextBrowser &view)
{
    const QTextDocument *document = view.document();
    int shown = 0;
    for (QTextBlock block = document->begin(); block.isValid(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextCharFormat format = it.fragment().charFormat();
            QVERIFY(!format.isImageFormat());
            QVERIFY(!format.isAnchor());
            // White letters on white paper would hide an amount.
            QVERIFY(!format.hasProperty(QTextFormat::ForegroundBrush));
        }
        shown += block.text().contains(SrShownText::line(m_text).simplified().left(60)) ? 1 : 0;
        for (const QChar c : block.text())
            QVERIFY2(c.category() != QChar::Other_Format, qPrintable(QString::number(c.unicode())));
    }
    QVERIFY2(shown >= 3, "the texts of billing are not on the page");
    QVERIFY(document->toPlainText().contains(QStringLiteral("150.50")));
    QVERIFY(document->size().width() <= view.width());
    QVERIFY(document->characterCount() < 20000);
}

void TestHostileTexts::checkTable(const QTableView &table)
{
    const QAbstractItemModel *model = table.model();
    for (int column = 0; column < model->columnCount(); ++column) {
        const QString title = model->headerData(column, Qt::Horizontal).toString();
        QVERIFY(title.size() <= 300);
        QVERIFY(!title.contains(QLatin1Char('\n')));
        // Every column begins within the window.
        QVERIFY(table.columnViewportPosition(column) < table.viewport()->width());
    }
    QVERIFY(table.horizontalHeader()->height() < 60);
    QVERIFY(table.rowHeight(0) < 60);
}

void TestHostileTexts::lookAtPage()
{
    m_flow->step([this] {
        ++m_seenPages;
        const QWizard *wizard = m_flow->wizard();
        const QSize screen = QApplication::primaryScreen()->availableSize();
        QVERIFY2(wizard->width() <= screen.width() && wizard->height() <= screen.height(),
                 qPrintable(QStringLiteral("%1 x %2").arg(QString::number(wizard->width()),
                                                          QString::number(wizard->height()))));
        m_flow->wizard()->grab();
        const QWizardPage *page = wizard->currentPage();
        for (const QTextBrowser *view : page->findChildren<QTextBrowser *>())
            checkDocument(*view);
        for (const QTableView *table : page->findChildren<QTableView *>()) {
            if (table->isVisible())
                checkTable(*table);
        }
    });
}

void TestHostileTexts::individual()
{
    QFETCH(const QString, text);
    m_text = HostileTexts::pointingAt(*m_canary, text);
    m_flow->scan(QStringLiteral("ST00012|PersAcc=100200300|Sum=15050"))
        .billingAnswers(renamed(BillingAnswers::individual(), m_text));
    lookAtPage();
    m_flow->tabTo(QWizard::NextButton).pause().press(Qt::Key_Space);
    lookAtPage();
    m_flow->tabTo("pbByDebt").press(Qt::Key_Space).tabTo(QWizard::NextButton).press(Qt::Key_Space);
    lookAtPage();
    m_flow->tabTo(QWizard::FinishButton).press(Qt::Key_Space).enterInDialog();
    QVERIFY(m_flow->execute(SampleProviders::individuals()));
    QCOMPARE(m_seenPages, 3);

    const QVariantList lines = receipt().value(QStringLiteral("1059")).toList();
    QCOMPARE(lines.size(), 2);
    for (const QVariant &line : lines)
        QVERIFY(line.toMap().value(QStringLiteral("1030")).toString() == m_text);
    QCOMPARE(receipt().value(QStringLiteral("1020")).toInt(), 15050);
    const QStringList printed = receipt().value(QStringLiteral("printable")).toStringList();
    QVERIFY(printed.first() == m_text);
    QVERIFY(printed.last() == m_text + QStringLiteral("\t80/80"));

    const Payment payment = m_flow->pays->packs.first().payments().first();
    QCOMPARE(payment.summ().toString(), QStringLiteral("150.50"));
    const QStringList names = namesInPayData(payment);
    QCOMPARE(names.size(), 4);
    for (const QString &name : names)
        QVERIFY(name == m_text);
}

void TestHostileTexts::legal()
{
    QFETCH(const QString, text);
    m_text = HostileTexts::pointingAt(*m_canary, text);
    QVariantList account = BillingAnswers::legal();
    account.append(BillingAnswers::field(QStringLiteral("inn"), QStringLiteral("7701000001"),
                                         QStringLiteral("ИНН")));
    m_flow->tabTo("leAccount")
        .type(QStringLiteral("77/1"))
        .tabTo("pbGetData")
        .pause()
        .press(Qt::Key_Space)
        .billingAnswers(renamed(account, m_text));
    lookAtPage();
    m_flow->tabTo(QWizard::NextButton).press(Qt::Key_Space);
    lookAtPage();
    m_flow->tabTo("tvServices")
        .press(Qt::Key_Space)
        .tabTo(QWizard::NextButton)
        .press(Qt::Key_Space);
    lookAtPage();
    m_flow->tabTo("cbAttornayDoc")
        .press(Qt::Key_Space)
        .tabTo(QWizard::FinishButton)
        .press(Qt::Key_Space)
        .enterInDialog();
    QVERIFY(m_flow->execute(SampleProviders::legalEntities()));
    QCOMPARE(m_seenPages, 3);

    const QVariantList lines = receipt().value(QStringLiteral("1059")).toList();
    QCOMPARE(lines.size(), 2);
    for (const QVariant &line : lines) {
        // A blank name is the only one that is replaced.
        QVERIFY(line.toMap().value(QStringLiteral("1030")).toString() == m_text);
    }
    const QStringList printed = receipt().value(QStringLiteral("printable")).toStringList();
    QVERIFY(printed.first() == m_text);
    QVERIFY(printed.last() == QStringLiteral("Документ №\t") + m_text);
    QVERIFY(receipt().value(QStringLiteral("1227")).toString() == m_text);

    const Payment payment = m_flow->pays->packs.first().payments().first();
    QCOMPARE(payment.summ().toString(), QStringLiteral("150.50"));
    const QStringList names = namesInPayData(payment);
    QCOMPARE(names.size(), 2);
    for (const QString &name : names)
        QVERIFY(name == m_text);
}

void TestHostileTexts::refusals_data()
{
    QTest::addColumn<bool>("isLegal");
    QTest::addColumn<QString>("text");
    for (const bool isLegal : {false, true}) {
        for (const HostileTexts::Named &row : HostileTexts::all())
            QTest::addRow("%s %s", isLegal ? "legal" : "individual", row.first)
                << isLegal << row.second;
    }
}

void TestHostileTexts::refusals()
{
    QFETCH(const bool, isLegal);
    QFETCH(const QString, text);
    m_text = HostileTexts::pointingAt(*m_canary, text);
    QStringList problems;
    const QSize screen = QApplication::primaryScreen()->availableSize();
    m_flow->guard.answers.run([&](QDialog *dialog) {
        dialog->grab();
        if (dialog->frameGeometry().width() > screen.width()
            || dialog->frameGeometry().height() > screen.height())
            problems << QStringLiteral("the box leaves the screen");
        if (qobject_cast<QMessageBox *>(dialog)->textFormat() != Qt::PlainText)
            problems << QStringLiteral("the text may become markup");
        QTest::keyClick(dialog, Qt::Key_Return);
    });
    m_flow->tabTo("leAccount")
        .type(QStringLiteral("77"))
        .tabTo("pbGetData")
        .pause()
        .press(Qt::Key_Space)
        .step(
            [this] {
                emit m_flow->host.incomingMessage(
                    BillingAnswers::headers(),
                    BillingAnswers::innerError(m_flow->host.lastUid(), m_text));
            },
            [this] { return !m_flow->host.sent().isEmpty(); })
        .press(Qt::Key_Escape);
    QVERIFY(!m_flow->execute(isLegal ? SampleProviders::legalEntities()
                                     : SampleProviders::individuals()));
    QCOMPARE(problems, QStringList());
    QCOMPARE(m_flow->guard.answers.seen().size(), 1);
}

QTEST_MAIN(TestHostileTexts)
#include "tst_hostiletexts.moc"
