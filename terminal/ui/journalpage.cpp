#include "journalpage.h"

#include "journalmodel.h"
#include "receiptpicture.h"
#include "receiptview.h"

#include <app/terminalcontext.h>
#include <fiscal/receipttext.h>

#include <QComboBox>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QScrollBar>
#include <QSplitter>
#include <QTableView>
#include <QVBoxLayout>

JournalPage::JournalPage(TerminalContext &context, QWidget *parent)
    : QWidget(parent),
      m_context(context),
      m_model(new JournalModel(context.payments(), this)),
      m_account(new QLineEdit(this)),
      m_state(new QComboBox(this)),
      m_table(new QTableView(this)),
      m_total(new QLabel(this)),
      m_details(new QLabel(this)),
      m_receipt(new ReceiptView(this)),
      m_save(new QPushButton(tr("&Сохранить картинку…"), this))
{
    m_account->setObjectName(QStringLiteral("leJournalAccount"));
    m_account->setClearButtonEnabled(true);
    m_account->setPlaceholderText(tr("любой"));
    m_state->setObjectName(QStringLiteral("cbJournalState"));
    m_state->addItem(tr("любое"), -1);
    for (const PackState state :
         {PackState::Saved, PackState::HandedOn, PackState::Posted, PackState::Acknowledged})
        m_state->addItem(packStateText(state), int(state));

    m_table->setObjectName(QStringLiteral("tvJournal"));
    m_table->setModel(m_model);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->setAlternatingRowColors(true);
    m_table->setWordWrap(false);
    m_table->setTabKeyNavigation(false);
    m_table->verticalHeader()->hide();
    QHeaderView *header = m_table->horizontalHeader();
    header->setSectionResizeMode(QHeaderView::ResizeToContents);
    header->setSectionResizeMode(JournalModel::ProviderName, QHeaderView::Stretch);
    header->setMinimumSectionSize(60);
    header->setHighlightSections(false);

    auto *accountLabel = new QLabel(tr("Сч&ёт:"), this);
    accountLabel->setBuddy(m_account);
    auto *stateLabel = new QLabel(tr("С&остояние:"), this);
    stateLabel->setBuddy(m_state);
    auto *filter = new QHBoxLayout;
    filter->addWidget(accountLabel);
    filter->addWidget(m_account, 1);
    filter->addWidget(stateLabel);
    filter->addWidget(m_state);
    filter->addWidget(m_total);

    auto *left = new QWidget(this);
    auto *leftLayout = new QVBoxLayout(left);
    leftLayout->setContentsMargins(0, 0, 0, 0);
    leftLayout->addWidget(m_table, 1);
    leftLayout->addWidget(m_details);
    m_details->setObjectName(QStringLiteral("lPaymentDetails"));
    m_details->setWordWrap(true);
    m_details->setTextFormat(Qt::PlainText);
    m_details->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);

    auto *right = new QWidget(this);
    auto *rightLayout = new QVBoxLayout(right);
    rightLayout->setContentsMargins(0, 0, 0, 0);
    rightLayout->addWidget(m_receipt, 1);
    rightLayout->addWidget(m_save);

    auto *splitter = new QSplitter(this);
    splitter->addWidget(left);
    splitter->addWidget(right);
    splitter->setStretchFactor(0, 1);
    splitter->setStretchFactor(1, 2);
    splitter->setChildrenCollapsible(false);
    splitter->setSizes({640, 340});
    // On the smallest screen, 800 pixels, the table keeps all its columns and the receipt gives
    // way.
    left->setMinimumWidth(570);
    right->setMinimumWidth(qMax(200, m_save->sizeHint().width()));
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(filter);
    layout->addWidget(splitter, 1);

    connect(m_account, &QLineEdit::textChanged, this, &JournalPage::applyFilter);
    connect(m_state, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &JournalPage::applyFilter);
    connect(m_model, &JournalModel::totalChanged, this, &JournalPage::showTotal);
    connect(m_model, &QAbstractItemModel::modelReset, this, &JournalPage::showReceipt);
    connect(m_model, &QAbstractItemModel::dataChanged, this, &JournalPage::showReceipt);
    connect(m_table->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &JournalPage::showReceipt);
    connect(m_save, &QPushButton::clicked, this, &JournalPage::savePicture);
    connect(&context.paysController(), &PaysController::changed, m_model, &JournalModel::refresh);
    showTotal(m_model->total());
    showReceipt();
}

void JournalPage::showNewest()
{
    if (m_model->rowCount() > 0)
        m_table->selectRow(0);
    m_table->setFocus();
}

void JournalPage::applyFilter()
{
    PaymentFilter filter;
    filter.account = m_account->text().trimmed();
    filter.state = m_state->currentData().toInt();
    m_model->setFilter(filter);
}

void JournalPage::showTotal(int total)
{
    m_total->setText(tr("Платежей: %1").arg(total));
}

void JournalPage::showReceipt()
{
    const PaymentRecord payment = m_model->record(m_table->currentIndex().row());
    m_save->setEnabled(false);
    if (payment.packId == 0) {
        m_details->setText(m_model->error());
        m_receipt->setReceipt(QImage(), tr("Выберите платёж, чтобы увидеть его чек."));
        return;
    }
    QString details =
        tr("Пачка %1 от %2. ФД %3, ФП %4.")
            .arg(QString::number(payment.packId),
                 payment.created.toLocalTime().toString(QStringLiteral("dd.MM.yyyy hh:mm:ss")),
                 payment.fiscalDocument, payment.fiscalSign);
    if (!payment.lastError.isEmpty())
        details += QLatin1Char('\n') + payment.lastError;
    m_details->setText(details);

    const auto fiscal = m_context.fiscalJournal().record(payment.fiscalDocument.toLongLong());
    if (!fiscal) {
        m_receipt->setReceipt(
            QImage(),
            tr("Чека с номером ФД «%1» в журнале кассы нет.").arg(payment.fiscalDocument));
        return;
    }
    const ReceiptText text(fiscal->document, fiscal->result.value(QStringLiteral("data")).toMap());
    m_receipt->setReceipt(ReceiptPicture::draw(text.text(), fiscal->qr), QString());
    m_save->setEnabled(true);
}

void JournalPage::savePicture()
{
    const PaymentRecord payment = m_model->record(m_table->currentIndex().row());
    const QString file = QFileDialog::getSaveFileName(this, tr("Сохранить чек"),
                                                      tr("чек-%1.png").arg(payment.fiscalDocument),
                                                      tr("Картинка PNG (*.png)"));
    if (file.isEmpty())
        return;
    if (!m_receipt->receipt().save(file)) {
        QMessageBox::warning(this, tr("Чек не сохранён"),
                             tr("Файл «%1» записать не удалось. Проверьте место на диске и права, "
                                "затем повторите.")
                                 .arg(file));
    }
}
