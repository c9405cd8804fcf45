#include "paymentdetails.h"

#include "receiptfile.h"
#include "receiptpicture.h"
#include "receiptview.h"
#include "shownreason.h"

#include <app/terminalcontext.h>
#include <fiscal/receipttext.h>

#include <molvacore/fiscaltag.h>

#include <QFileDialog>
#include <QFileInfo>
#include <QFont>
#include <QJsonDocument>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

namespace {

QPlainTextEdit *makeText(const QString &objectName, const QString &accessibleName, QWidget *parent)
{
    auto *text = new QPlainTextEdit(parent);
    text->setObjectName(objectName);
    text->setAccessibleName(accessibleName);
    text->setReadOnly(true);
    text->setTabChangesFocus(true);
    text->setLineWrapMode(QPlainTextEdit::NoWrap);
    text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    QFont font(QStringLiteral("DejaVu Sans Mono"));
    font.setStyleHint(QFont::Monospace);
    font.setPixelSize(11);
    text->setFont(font);
    return text;
}

} // namespace

PaymentDetails::PaymentDetails(TerminalContext &context, QWidget *parent)
    : QWidget(parent),
      m_context(context),
      m_views(new QTabWidget(this)),
      m_receipt(new ReceiptView(this)),
      m_text(makeText(QStringLiteral("pteReceiptText"), tr("Текст чека"), this)),
      m_pack(makeText(QStringLiteral("ptePack"), tr("Пачка платежа"), this)),
      m_address(new QLabel(this)),
      m_saveReceipt(new QPushButton(tr("&Сохранить чек…"), this)),
      m_savePack(new QPushButton(tr("Сохранить &пачку…"), this))
{
    m_views->setObjectName(QStringLiteral("twPaymentViews"));
    m_views->addTab(m_receipt, tr("Чек"));
    m_views->addTab(m_text, tr("Текст"));
    m_views->addTab(m_pack, tr("Пачка"));
    m_address->setObjectName(QStringLiteral("lReceiptAddress"));
    m_address->setTextFormat(Qt::PlainText);
    m_address->setWordWrap(true);
    m_address->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_saveReceipt->setObjectName(QStringLiteral("pbSaveReceipt"));
    m_savePack->setObjectName(QStringLiteral("pbSavePack"));

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_views, 1);
    layout->addWidget(m_address);
    layout->addWidget(m_saveReceipt);
    layout->addWidget(m_savePack);

    connect(m_saveReceipt, &QPushButton::clicked, this, &PaymentDetails::saveReceipt);
    connect(m_savePack, &QPushButton::clicked, this, &PaymentDetails::savePack);
    setPayment(PaymentRecord());
}

void PaymentDetails::setPayment(const PaymentRecord &payment)
{
    m_payment = payment;
    showPack();
    showReceipt();
}

void PaymentDetails::showPack()
{
    m_pack->clear();
    m_packJson.clear();
    m_savePack->setEnabled(false);
    if (m_payment.packId == 0)
        return;
    const std::optional<QVariantMap> pack = m_context.payments().pack(m_payment.packId);
    if (!pack) {
        m_pack->setPlainText(
            tr("Пачка № %1 не прочитана. %2")
                .arg(QString::number(m_payment.packId), m_context.payments().lastError()));
        return;
    }
    m_packJson = QJsonDocument::fromVariant(*pack).toJson();
    m_pack->setPlainText(shownLines(QString::fromUtf8(m_packJson)));
    m_savePack->setEnabled(true);
}

void PaymentDetails::showReceipt()
{
    if (m_payment.packId == 0) {
        showNoReceipt(tr("Выберите платёж, чтобы увидеть его чек."));
        return;
    }
    const auto fiscal = m_context.fiscalJournal().record(m_payment.fiscalDocument.toLongLong());
    const QString error = m_context.fiscalJournal().lastError();
    if (!fiscal && !error.isEmpty()) {
        showNoReceipt(tr("Чек этого платежа (ФН %1, ФД %2) прочитать не удалось, но это не значит, "
                         "что он не пробит. %3")
                          .arg(m_payment.fiscalStorage, m_payment.fiscalDocument, error));
        return;
    }
    // Another storage counts its documents from one again: the same number is another receipt.
    if (!fiscal || fiscal->storage != m_payment.fiscalStorage) {
        showNoReceipt(tr("Чека этого платежа (ФН %1, ФД %2) в журнале кассы нет.")
                          .arg(m_payment.fiscalStorage, m_payment.fiscalDocument));
        return;
    }
    const ReceiptText text(fiscal->document, fiscal->result.value(QStringLiteral("data")).toMap());
    m_qr = fiscal->qr;
    m_text->setPlainText(text.text());
    m_receipt->setReceipt(ReceiptPicture::draw(text.text(), m_qr), QString());
    const QString address =
        fiscal->document.value(FiscalTag::key(FiscalTag::ClientContact)).toString();
    m_address->setText(address.isEmpty() ? tr("Электронный чек: покупатель не просил.")
                                         : tr("Электронный чек: %1").arg(address));
    m_saveReceipt->setEnabled(true);
}

void PaymentDetails::showNoReceipt(const QString &reason)
{
    m_qr.clear();
    m_text->clear();
    m_receipt->setReceipt(QImage(), reason);
    m_address->clear();
    m_saveReceipt->setEnabled(false);
}

void PaymentDetails::saveReceipt()
{
    const QString pdf = tr("Документ PDF (*.pdf)");
    const QString picture = tr("Картинка PNG (*.png)");
    const QString text = tr("Текст (*.txt)");
    QString filter = pdf;
    QString file = QFileDialog::getSaveFileName(
        this, tr("Сохранить чек"), tr("чек-%1.pdf").arg(m_payment.fiscalDocument),
        QStringList({pdf, picture, text}).join(QStringLiteral(";;")), &filter);
    if (file.isEmpty())
        return;
    if (QFileInfo(file).suffix().isEmpty())
        file += filter == picture ? QStringLiteral(".png")
            : filter == text      ? QStringLiteral(".txt")
                                  : QStringLiteral(".pdf");
    QString error;
    const ReceiptFile receipt(m_text->toPlainText(), m_qr,
                              tr("Чек ФД %1").arg(m_payment.fiscalDocument));
    if (!receipt.save(file, &error))
        showWarning(this, tr("Чек не сохранён"), error);
}

void PaymentDetails::savePack()
{
    QString file = QFileDialog::getSaveFileName(this, tr("Сохранить пачку"),
                                                tr("пачка-%1.json").arg(m_payment.packId),
                                                tr("Пачка JSON (*.json)"));
    if (file.isEmpty())
        return;
    if (QFileInfo(file).suffix().isEmpty())
        file += QStringLiteral(".json");
    QString error;
    if (!ReceiptFile::write(file, m_packJson, &error))
        showWarning(this, tr("Пачка не сохранена"), error);
}
