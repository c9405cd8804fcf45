#include "billspage.h"

#include "billspreview.h"
#include "shownreason.h"

#include <billing/billingdatabase.h>
#include <bills/billhtml.h>
#include <bills/billwriter.h>
#include <bills/paymentcodereader.h>

#include <basixcore/fixnumber.h>

#include <QAbstractItemView>
#include <QClipboard>
#include <QComboBox>
#include <QDateEdit>
#include <QDoubleSpinBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr int previewDots = 120; // per inch
/// The only one that the payment plugin splits a code at.
const QChar pluginSeparator = QLatin1Char('|');
constexpr int numberRole = Qt::UserRole;
constexpr int payerRole = Qt::UserRole + 1;
constexpr int sampleDocumentRole = Qt::UserRole + 2;
constexpr int longestInFileName = 40; // two of them fit the 255 bytes that a file system takes

QString inFileName(const QString &number)
{
    static const QRegularExpression awkward(QStringLiteral("[/\\\\:*?\"<>|]"));
    return shownCell(number).left(longestInFileName).replace(awkward, QStringLiteral("-"));
}

} // namespace

BillsPage::BillsPage(BillingDatabase &billing, QWidget *parent)
    : QWidget(parent),
      m_billing(billing),
      m_account(new QComboBox(this)),
      m_document(new QComboBox(this)),
      m_documentLabel(new QLabel(tr("&Документ:"), this)),
      m_period(new QDateEdit(QDate::currentDate().addMonths(-1), this)),
      m_sumChoice(new QComboBox(this)),
      m_sum(new QDoubleSpinBox(this)),
      m_encoding(new QComboBox(this)),
      m_problems(new QLabel(this)),
      m_text(new QPlainTextEdit(this)),
      m_copy(new QPushButton(tr("С&копировать текст"), this)),
      m_save(new QPushButton(tr("&Сохранить PDF или PNG…"), this)),
      m_send(new QPushButton(tr("&Отправить в сканер"), this)),
      m_preview(new BillsPreview(this))
{
    m_account->setObjectName(QStringLiteral("cbBillAccount"));
    m_document->setObjectName(QStringLiteral("cbBillDocument"));
    m_period->setObjectName(QStringLiteral("deBillPeriod"));
    m_sumChoice->setObjectName(QStringLiteral("cbBillSum"));
    m_sum->setObjectName(QStringLiteral("dsbBillSum"));
    m_encoding->setObjectName(QStringLiteral("cbBillEncoding"));
    m_problems->setObjectName(QStringLiteral("lBillProblems"));
    m_text->setObjectName(QStringLiteral("pteBillText"));
    m_copy->setObjectName(QStringLiteral("pbBillCopy"));
    m_save->setObjectName(QStringLiteral("pbBillSave"));
    m_send->setObjectName(QStringLiteral("pbBillSend"));
    m_preview->setObjectName(QStringLiteral("saBillPreview"));

    for (QComboBox *box : {m_account, m_document}) {
        box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        box->setMinimumContentsLength(20);
    }
    m_period->setDisplayFormat(QStringLiteral("MM.yyyy"));
    m_sumChoice->addItem(tr("вся к оплате"), int(SumChoice::Due));
    m_sumChoice->addItem(tr("другая"), int(SumChoice::Own));
    m_sumChoice->addItem(tr("без суммы, наберёт кассир"), int(SumChoice::None));
    m_sum->setRange(0.01, 99999999.99);
    m_sum->setValue(100);
    m_sum->setSuffix(tr(" ₽"));
    m_sum->setEnabled(false);
    for (const CodeEncoding encoding : CodeEncodings::all())
        m_encoding->addItem(CodeEncodings::name(encoding), int(encoding));
    m_encoding->setCurrentIndex(m_encoding->findData(int(CodeEncoding::Utf8)));
    m_problems->setWordWrap(true);
    m_problems->setTextFormat(Qt::PlainText);
    m_problems->setStyleSheet(QStringLiteral("color: #a01010"));
    m_problems->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_text->setReadOnly(true);
    m_text->setTabChangesFocus(true);
    m_text->setAccessibleName(tr("Текст кода"));

    fillAccounts();
    makeLayout();
    connectInputs();
    // The bill itself is made when the page is shown: few who open the workstation look at it.
    fillDocuments();
}

BillsPage::~BillsPage() = default;

void BillsPage::fillAccounts()
{
    for (const SampleAccount &sample : sampleAccounts()) {
        const QString kind =
            sample.payer == SampleAccount::Payer::Individual ? tr("счёт") : tr("договор");
        m_account->addItem(tr("%1 %2 — %3").arg(kind, sample.number, sample.description),
                           sample.number);
        const int row = m_account->count() - 1;
        m_account->setItemData(row, int(sample.payer), payerRole);
        m_account->setItemData(row, sample.document, sampleDocumentRole);
        m_account->setItemData(row, sample.description, Qt::ToolTipRole);
    }
    // The list may be wider than its box: descriptions tell the accounts apart.
    QAbstractItemView *list = m_account->view();
    list->setMinimumWidth(list->sizeHintForColumn(0) + 2 * list->fontMetrics().height());
}

void BillsPage::makeLayout()
{
    auto *form = new QFormLayout;
    form->setRowWrapPolicy(QFormLayout::WrapLongRows);
    form->addRow(tr("Кто п&латит:"), m_account);
    m_documentLabel->setBuddy(m_document);
    form->addRow(m_documentLabel, m_document);
    form->addRow(tr("&Период:"), m_period);
    form->addRow(tr("С&умма в коде:"), m_sumChoice);
    form->addRow(QString(), m_sum);
    form->addRow(tr("Код&ировка кода:"), m_encoding);

    auto *textLabel = new QLabel(tr("&Текст кода:"), this);
    textLabel->setBuddy(m_text);
    auto *left = new QVBoxLayout;
    left->addLayout(form);
    left->addWidget(m_problems);
    left->addWidget(textLabel);
    left->addWidget(m_text, 1);
    for (QPushButton *button : {m_copy, m_send, m_save})
        left->addWidget(button);

    auto *layout = new QHBoxLayout(this);
    layout->addLayout(left, 3);
    layout->addWidget(m_preview, 4);
}

void BillsPage::connectInputs()
{
    const auto chosen = QOverload<int>::of(&QComboBox::currentIndexChanged);
    connect(m_account, chosen, this, &BillsPage::chooseAccount);
    for (QComboBox *box : {m_document, m_encoding})
        connect(box, chosen, this, &BillsPage::refresh);
    connect(m_sumChoice, chosen, this, [this] {
        m_sum->setEnabled(m_sumChoice->currentData().toInt() == int(SumChoice::Own));
        refresh();
    });
    connect(m_sum, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this, &BillsPage::refresh);
    connect(m_period, &QDateEdit::dateChanged, this, &BillsPage::refresh);
    connect(m_copy, &QPushButton::clicked, this,
            [this] { QGuiApplication::clipboard()->setText(m_codeText); });
    connect(m_save, &QPushButton::clicked, this, &BillsPage::save);
    connect(m_send, &QPushButton::clicked, this, [this] { emit sentToScanner(m_code); });
}

SampleAccount::Payer BillsPage::payer() const
{
    return SampleAccount::Payer(m_account->currentData(payerRole).toInt());
}

QString BillsPage::number() const
{
    return m_account->currentData(numberRole).toString();
}

CodeEncoding BillsPage::encoding() const
{
    return CodeEncoding(m_encoding->currentData().toInt());
}

void BillsPage::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    refresh();
}

void BillsPage::chooseAccount()
{
    fillDocuments();
    refresh();
}

void BillsPage::fillDocuments()
{
    const bool legal = payer() == SampleAccount::Payer::Legal;
    m_document->setVisible(legal);
    m_documentLabel->setVisible(legal);
    {
        const QSignalBlocker quiet(m_document);
        m_document->clear();
        if (const auto contract = legal ? m_billing.account(payer(), number()) : std::nullopt) {
            for (const BillingDocument &document : contract->documents)
                m_document->addItem(
                    tr("%1 — %2 ₽")
                        .arg(shownCell(document.number), BillHtml::money(document.topay)),
                    document.number);
        }
        const int sample = m_document->findData(m_account->currentData(sampleDocumentRole));
        if (sample >= 0)
            m_document->setCurrentIndex(sample);
    }
}

std::optional<Bill> BillsPage::chosenBill(QString *reason)
{
    const auto account = m_billing.account(payer(), number());
    if (!account) {
        *reason = m_billing.lastError().isEmpty()
            ? tr("Биллинг не знает «%1», квитанции для него нет. Это образец для проверки отказа: "
                 "наберите номер вручную.")
                  .arg(number())
            : m_billing.lastError();
        return std::nullopt;
    }
    Bill::Wish wish;
    wish.period = m_period->date();
    const auto choice = SumChoice(m_sumChoice->currentData().toInt());
    wish.withoutSum = choice == SumChoice::None;
    if (choice == SumChoice::Own)
        wish.sum = basix::FixNumber(100, m_sum->value()).value();
    if (payer() == SampleAccount::Payer::Individual)
        return Bill::forPerson(*account, wish);
    const QString wanted = m_document->currentData().toString();
    const auto document = std::find_if(
        account->documents.cbegin(), account->documents.cend(),
        [&wanted](const BillingDocument &candidate) { return candidate.number == wanted; });
    if (document == account->documents.cend()) {
        *reason = tr("В договоре «%1» нет документов.").arg(number());
        return std::nullopt;
    }
    return Bill::forDocument(*account, *document, wish);
}

void BillsPage::refresh()
{
    QString reason;
    const std::optional<Bill> bill = chosenBill(&reason);
    if (!bill) {
        showNothing(reason);
        return;
    }
    const PaymentCode code = bill->code(encoding());
    QStringList problems = code.problems(encoding());
    m_code = code.toBytes(encoding());
    const QChar separator = PaymentCodeReader::read(m_code).separator;
    if (!m_code.isEmpty() && separator != pluginSeparator) {
        problems.append(tr("В реквизитах встречается знак «%1», поэтому поля кода разделены знаком "
                           "«%2». Модуль приёма платежей такой код не разберёт: счёт, период и "
                           "сумму кассиру придётся набрать.")
                            .arg(pluginSeparator, separator));
    }
    m_problems->setText(shownReason(problems.join(QLatin1Char('\n'))));
    m_problems->setVisible(!problems.isEmpty());
    m_codeText = m_code.isEmpty() ? QString() : code.toText(encoding());
    m_text->setPlainText(m_codeText);
    m_writer = std::make_unique<BillWriter>(*bill, m_code);
    m_fileName = bill->isLegal()
        ? tr("счёт-%1-%2").arg(inFileName(bill->number()), inFileName(bill->documentNumber()))
        : tr("квитанция-%1").arg(inFileName(bill->number()));
    m_preview->setBill(m_writer->picture(previewDots));
    for (QPushButton *button : {m_copy, m_send, m_save})
        button->setEnabled(!m_code.isEmpty());
}

void BillsPage::showNothing(const QString &reason)
{
    m_writer.reset();
    m_code.clear();
    m_codeText.clear();
    m_text->clear();
    m_problems->hide();
    m_preview->setNote(shownReason(reason));
    for (QPushButton *button : {m_copy, m_send, m_save})
        button->setEnabled(false);
}

void BillsPage::save()
{
    const QString pdf = tr("Документ PDF (*.pdf)");
    QString filter = pdf;
    QString file = QFileDialog::getSaveFileName(this, tr("Сохранить квитанцию"),
                                                m_fileName + QStringLiteral(".pdf"),
                                                tr("%1;;Картинка PNG (*.png)").arg(pdf), &filter);
    if (file.isEmpty())
        return;
    if (QFileInfo(file).suffix().isEmpty())
        file += filter == pdf ? QStringLiteral(".pdf") : QStringLiteral(".png");
    QString error;
    if (!m_writer->save(file, &error))
        showWarning(this, tr("Квитанция не сохранена"), error);
}
