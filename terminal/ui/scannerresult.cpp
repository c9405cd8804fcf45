#include "scannerresult.h"

#include "rowlist.h"

#include <bills/billhtml.h>
#include <bills/paymentcoderules.h>

#include <text/showntext.h>

#include <QHeaderView>
#include <QLabel>
#include <QPlainTextEdit>
#include <QTableWidget>
#include <QVBoxLayout>

namespace {

QString shownValue(const PaymentCode::Field &field)
{
    bool whole = false;
    const qint64 kopecks = field.value.toLongLong(&whole);
    const bool money =
        field.name == QLatin1String("Sum") || field.name == QLatin1String("AddAmount");
    return money && whole
        ? ScannerResult::tr("%1 (%2 ₽)").arg(field.value, BillHtml::money(kopecks))
        : field.value;
}

} // namespace

ScannerResult::ScannerResult(QWidget *parent)
    : QWidget(parent),
      m_summary(new QLabel(this)),
      m_fields(new QTableWidget(0, 3, this)),
      m_warnings(new QPlainTextEdit(this))
{
    m_summary->setObjectName(QStringLiteral("lScannerSummary"));
    m_summary->setTextFormat(Qt::PlainText);
    m_summary->setWordWrap(true);
    m_fields->setObjectName(QStringLiteral("twScannerFields"));
    m_fields->setHorizontalHeaderLabels({tr("Поле"), tr("Что это"), tr("Значение")});
    RowList::prepare(*m_fields);
    m_fields->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    m_fields->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_fields->horizontalHeader()->setStretchLastSection(true);
    m_warnings->setObjectName(QStringLiteral("pteScannerWarnings"));
    m_warnings->setReadOnly(true);
    m_warnings->setTabChangesFocus(true);
    m_warnings->setAccessibleName(tr("Замечания"));
    m_warnings->setMaximumHeight(5 * fontMetrics().height());

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_summary);
    layout->addWidget(m_fields, 1);
    layout->addWidget(m_warnings);
    m_warnings->hide();
}

void ScannerResult::setCode(const ReadCode &code, const QString &format)
{
    QString summary = ReadCode::kindText(code.kind);
    if (!format.isEmpty() && format != QLatin1String("QRCode"))
        summary += tr(" (вид штрихового кода: %1)").arg(format);
    if (code.kind == ReadCode::Kind::Payment)
        summary +=
            tr(", кодировка %1, полей: %2")
                .arg(CodeEncodings::name(code.encoding), QString::number(code.fields.size()));
    m_summary->setText(summary + QLatin1Char('.'));
    m_fields->setRowCount(code.fields.size());
    for (int row = 0; row < code.fields.size(); ++row) {
        const PaymentCode::Field &field = code.fields.at(row);
        RowList::put(*m_fields, row,
                     {field.name, PaymentCodeRules::title(field.name), shownValue(field)});
    }
    QStringList warnings;
    for (const QString &warning : code.warnings)
        warnings.append(shownReason(warning));
    m_warnings->setPlainText(warnings.join(QLatin1Char('\n')));
    m_warnings->setVisible(!code.warnings.isEmpty());
}

void ScannerResult::setNote(const QString &note)
{
    m_summary->setText(shownReason(note));
    m_fields->setRowCount(0);
    m_warnings->clear();
    m_warnings->hide();
}
