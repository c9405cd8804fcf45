#include "paymentpage.h"

#include "rowlist.h"

#include <app/terminalcontext.h>
#include <billing/sampleaccounts.h>

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace {

QTableWidget *makeTable(const QString &name, const QStringList &headers, QWidget *parent)
{
    auto *table = new QTableWidget(0, headers.size(), parent);
    table->setObjectName(name);
    table->setHorizontalHeaderLabels(headers);
    RowList::prepare(*table);
    table->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    table->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    table->horizontalHeader()->setStretchLastSection(true);
    return table;
}

void addRow(QTableWidget &table, const QStringList &texts)
{
    const int row = table.rowCount();
    table.insertRow(row);
    RowList::put(table, row, texts);
}

} // namespace

PaymentPage::PaymentPage(TerminalContext &context, QWidget *parent)
    : QWidget(parent),
      m_context(context),
      m_providers(makeTable(QStringLiteral("twProviders"),
                            {tr("Номер"), tr("ИНН"), tr("Поставщик")}, this)),
      m_start(new QPushButton(tr("&Начать платёж"), this)),
      m_hint(new QLabel(this)),
      m_samples(makeTable(QStringLiteral("twSamples"),
                          {tr("Номер"), tr("Документ"), tr("Что покажет")}, this))
{
    m_start->setObjectName(QStringLiteral("pbStartPayment"));
    QFont big = m_start->font();
    big.setPixelSize(18);
    big.setBold(true);
    m_start->setFont(big);
    m_start->setMinimumSize(230, 64);
    m_hint->setWordWrap(true);
    m_hint->setTextFormat(Qt::PlainText);

    auto *startColumn = new QVBoxLayout;
    startColumn->addWidget(m_start);
    startColumn->addWidget(m_hint);
    startColumn->addStretch();
    auto *top = new QHBoxLayout;
    top->addWidget(m_providers, 1);
    top->addLayout(startColumn);
    m_hint->setFixedWidth(230);

    auto *samples = new QGroupBox(tr("Что ввести для пробы"), this);
    auto *copy = new QPushButton(tr("&Копировать номер"), samples);
    copy->setObjectName(QStringLiteral("pbCopySample"));
    auto *samplesLayout = new QVBoxLayout(samples);
    samplesLayout->addWidget(m_samples, 1);
    samplesLayout->addWidget(copy, 0, Qt::AlignRight);

    auto *layout = new QVBoxLayout(this);
    layout->addLayout(top, 2);
    layout->addWidget(samples, 3);

    auto *copyAction = new QAction(tr("Копировать номер"), this);
    copyAction->setShortcut(QKeySequence::Copy);
    copyAction->setShortcutContext(Qt::WidgetShortcut);
    m_samples->addAction(copyAction);

    connect(copyAction, &QAction::triggered, this, &PaymentPage::copySample);
    connect(copy, &QPushButton::clicked, this, &PaymentPage::copySample);
    connect(m_start, &QPushButton::clicked, this, &PaymentPage::request);
    // Enter and double click alike.
    connect(m_providers, &QTableWidget::activated, this, &PaymentPage::request);
    connect(m_providers, &QTableWidget::currentCellChanged, this,
            [this](int row, int, int previous, int) {
                if (row != previous)
                    fillSamples();
            });
    refresh();
}

Provider PaymentPage::provider() const
{
    const int row = m_providers->currentRow();
    return row < 0 ? Provider() : m_context.providers().value(row);
}

bool PaymentPage::chooseProvider(qint64 id)
{
    const QVector<Provider> providers = m_context.providers();
    for (int row = 0; row < providers.size(); ++row) {
        if (providers.at(row).id() == id) {
            m_providers->selectRow(row);
            return true;
        }
    }
    return false;
}

void PaymentPage::refresh()
{
    fillProviders();
    const bool ready = m_context.pluginHost().isLoaded();
    m_start->setEnabled(ready && m_providers->rowCount() > 0);
    m_hint->setText(ready ? tr("Enter или двойной щелчок по поставщику тоже начинают платёж.")
                          : m_context.pluginHost().error());
}

void PaymentPage::fillProviders()
{
    const qint64 chosen = provider().id();
    m_providers->setRowCount(0);
    const QVector<Provider> providers = m_context.providers();
    for (const Provider &each : providers)
        addRow(*m_providers, {QString::number(each.id()), each.inn(), each.name()});
    if (!chooseProvider(chosen) && m_providers->rowCount() > 0)
        m_providers->selectRow(0);
}

void PaymentPage::fillSamples()
{
    const bool individual = provider().workProviderId() == BillingService::PROVIDER_INDIVIDUAL;
    const SampleAccount::Payer payer =
        individual ? SampleAccount::Payer::Individual : SampleAccount::Payer::Legal;
    m_samples->setRowCount(0);
    m_samples->setColumnHidden(1, individual);
    for (const SampleAccount &sample : sampleAccounts()) {
        if (sample.payer == payer)
            addRow(*m_samples, {sample.number, sample.document, sample.description});
    }
    if (m_samples->rowCount() > 0)
        m_samples->selectRow(0);
}

void PaymentPage::copySample()
{
    const int row = m_samples->currentRow();
    const int column = m_samples->currentColumn() == 1 ? 1 : 0;
    if (const QTableWidgetItem *item = row < 0 ? nullptr : m_samples->item(row, column))
        QApplication::clipboard()->setText(item->text());
}

void PaymentPage::request()
{
    if (m_start->isEnabled())
        emit paymentRequested();
}
