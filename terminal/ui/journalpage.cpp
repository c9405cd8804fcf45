#include "journalpage.h"

#include "journalmodel.h"
#include "paymentdetails.h"
#include "rowlist.h"
#include "shownreason.h"

#include <app/terminalcontext.h>

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QSplitter>
#include <QTableView>
#include <QVBoxLayout>

#include <utility>

namespace {

constexpr int columnRole = Qt::UserRole;
constexpr int wayRole = Qt::UserRole + 1;

QString timeText(const QDateTime &time)
{
    return time.toLocalTime().toString(QStringLiteral("dd.MM.yyyy hh:mm:ss"));
}

/// When the pack reached each of its states, and what went wrong last.
QString summaryOf(const PaymentRecord &payment)
{
    QStringList lines{JournalPage::tr("Пачка %1 от %2. ФД %3, ФП %4.")
                          .arg(QString::number(payment.packId), timeText(payment.created),
                               payment.fiscalDocument, payment.fiscalSign)};
    QStringList states;
    const auto reached = [&states](PackState state, const QDateTime &time) {
        if (time.isValid())
            states.append(JournalPage::tr("%1 %2").arg(packStateText(state), timeText(time)));
    };
    reached(PackState::HandedOn, payment.handedOn);
    reached(PackState::Posted, payment.posted);
    reached(PackState::Acknowledged, payment.acknowledged);
    if (!states.isEmpty())
        lines.append(states.join(QStringLiteral(", ")) + QLatin1Char('.'));
    if (payment.recovered)
        lines.append(JournalPage::tr("Пачка восстановлена по чеку."));
    if (!payment.lastError.isEmpty())
        lines.append(shownReason(payment.lastError));
    return lines.join(QLatin1Char('\n'));
}

} // namespace

JournalPage::JournalPage(TerminalContext &context, QWidget *parent)
    : QWidget(parent),
      m_model(new JournalModel(context.payments(), this)),
      m_account(new QLineEdit(this)),
      m_oneDay(new QCheckBox(tr("&День:"), this)),
      m_day(new QDateEdit(QDate::currentDate(), this)),
      m_state(new QComboBox(this)),
      m_order(new QComboBox(this)),
      m_table(new QTableView(this)),
      m_extent(new QLabel(this)),
      m_summary(new QLabel(this)),
      m_payment(new PaymentDetails(context, this))
{
    makeFilter();
    makeTable();
    makeLayout();

    connect(m_model, &JournalModel::extentChanged, this, &JournalPage::showExtent);
    connect(m_model, &QAbstractItemModel::modelReset, this, &JournalPage::showPayment);
    connect(m_model, &QAbstractItemModel::dataChanged, this,
            [this](const QModelIndex &first, const QModelIndex &last) {
                const int row = m_table->currentIndex().row();
                if (row >= first.row() && row <= last.row())
                    showPayment();
            });
    connect(m_table->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &JournalPage::showPayment);
    connect(&context.paysController(), &PaysController::changed, m_model, &JournalModel::refresh);
    showExtent();
    showPayment();
}

void JournalPage::makeFilter()
{
    m_account->setObjectName(QStringLiteral("leJournalAccount"));
    m_account->setClearButtonEnabled(true);
    m_account->setPlaceholderText(tr("номер или его начало"));
    m_oneDay->setObjectName(QStringLiteral("cbJournalOneDay"));
    m_day->setObjectName(QStringLiteral("deJournalDay"));
    m_day->setAccessibleName(tr("День"));
    m_day->setDisplayFormat(QStringLiteral("dd.MM.yyyy"));
    m_day->setCalendarPopup(true);
    m_day->setEnabled(false);
    m_state->setObjectName(QStringLiteral("cbJournalState"));
    m_state->addItem(tr("любое"), -1);
    for (const PackState state :
         {PackState::Saved, PackState::HandedOn, PackState::Posted, PackState::Acknowledged})
        m_state->addItem(packStateText(state), int(state));
    m_order->setObjectName(QStringLiteral("cbJournalOrder"));
    m_order->setAccessibleName(tr("Порядок"));
    addOrders(JournalModel::Time, Qt::DescendingOrder, tr("сначала новые"), tr("сначала старые"));
    addOrders(JournalModel::ProviderName, Qt::AscendingOrder, tr("поставщик, А–Я"),
              tr("поставщик, Я–А"));
    addOrders(JournalModel::Account, Qt::AscendingOrder, tr("счёт, по возрастанию"),
              tr("счёт, по убыванию"));
    addOrders(JournalModel::Sum, Qt::DescendingOrder, tr("сумма, сначала большие"),
              tr("сумма, сначала малые"));
    addOrders(JournalModel::Cash, Qt::DescendingOrder, tr("наличные, сначала большие"),
              tr("наличные, сначала малые"));
    addOrders(JournalModel::Card, Qt::DescendingOrder, tr("картой, сначала большие"),
              tr("картой, сначала малые"));
    addOrders(JournalModel::State, Qt::AscendingOrder, tr("состояние, сначала сохранённые"),
              tr("состояние, сначала проведённые"));
    // The shortest orders are the usual ones; the list itself is as wide as it needs.
    m_order->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_order->setMinimumContentsLength(m_order->itemText(1).size());
    m_order->view()->setMinimumWidth(m_order->view()->sizeHintForColumn(0)
                                     + m_order->fontMetrics().height());

    const auto chosen = QOverload<int>::of(&QComboBox::currentIndexChanged);
    connect(m_account, &QLineEdit::textChanged, this, &JournalPage::applyFilter);
    connect(m_oneDay, &QCheckBox::toggled, m_day, &QWidget::setEnabled);
    connect(m_oneDay, &QCheckBox::toggled, this, &JournalPage::applyFilter);
    connect(m_day, &QDateEdit::dateChanged, this, &JournalPage::applyFilter);
    connect(m_state, chosen, this, &JournalPage::applyFilter);
    connect(m_order, chosen, this, &JournalPage::applyOrder);
}

void JournalPage::addOrders(int column, Qt::SortOrder first, const QString &firstTitle,
                            const QString &secondTitle)
{
    const Qt::SortOrder second =
        first == Qt::AscendingOrder ? Qt::DescendingOrder : Qt::AscendingOrder;
    for (const auto &each :
         {std::make_pair(first, firstTitle), std::make_pair(second, secondTitle)}) {
        m_order->addItem(each.second);
        m_order->setItemData(m_order->count() - 1, column, columnRole);
        m_order->setItemData(m_order->count() - 1, int(each.first), wayRole);
    }
}

void JournalPage::makeTable()
{
    m_table->setObjectName(QStringLiteral("tvJournal"));
    m_table->setModel(m_model);
    RowList::prepare(*m_table);
    QHeaderView *header = m_table->horizontalHeader();
    header->setSectionResizeMode(QHeaderView::ResizeToContents);
    header->setSectionResizeMode(JournalModel::ProviderName, QHeaderView::Stretch);
    header->setMinimumSectionSize(60);
    header->setSectionsClickable(true);
    connect(header, &QHeaderView::sectionClicked, this, [this](int section) {
        // The two ways of a column stand one below the other.
        const int first = m_order->findData(section, columnRole);
        m_order->setCurrentIndex(m_order->currentIndex() == first ? first + 1 : first);
    });
}

void JournalPage::makeLayout()
{
    auto *accountLabel = new QLabel(tr("Сч&ёт или договор:"), this);
    accountLabel->setBuddy(m_account);
    auto *stateLabel = new QLabel(tr("С&остояние:"), this);
    stateLabel->setBuddy(m_state);
    auto *filter = new QHBoxLayout;
    filter->addWidget(accountLabel);
    filter->addWidget(m_account, 1);
    filter->addWidget(m_oneDay);
    filter->addWidget(m_day);
    filter->addWidget(stateLabel);
    filter->addWidget(m_state);
    filter->addWidget(m_order);

    m_extent->setObjectName(QStringLiteral("lJournalExtent"));
    m_extent->setTextFormat(Qt::PlainText);
    m_extent->setWordWrap(true);
    m_summary->setObjectName(QStringLiteral("lPaymentDetails"));
    m_summary->setWordWrap(true);
    m_summary->setTextFormat(Qt::PlainText);
    m_summary->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);

    auto *left = new QWidget(this);
    auto *leftLayout = new QVBoxLayout(left);
    leftLayout->setContentsMargins(0, 0, 0, 0);
    leftLayout->addWidget(m_table, 1);
    leftLayout->addWidget(m_extent);
    leftLayout->addWidget(m_summary);

    auto *splitter = new QSplitter(this);
    splitter->addWidget(left);
    splitter->addWidget(m_payment);
    splitter->setStretchFactor(0, 1);
    splitter->setStretchFactor(1, 2);
    splitter->setChildrenCollapsible(false);
    splitter->setSizes({640, 340});
    // On the smallest screen, 800 pixels, the table keeps all its columns and the receipt gives
    // way.
    left->setMinimumWidth(570);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(filter);
    layout->addWidget(splitter, 1);
}

void JournalPage::showNewest()
{
    m_order->setCurrentIndex(0);
    if (m_model->rowCount() > 0)
        m_table->selectRow(0);
    m_table->setFocus();
}

void JournalPage::applyFilter()
{
    PaymentFilter filter;
    filter.account = m_account->text().trimmed();
    filter.state = m_state->currentData().toInt();
    if (m_oneDay->isChecked()) {
        filter.from = m_day->date().startOfDay();
        filter.until = m_day->date().addDays(1).startOfDay();
    }
    m_model->setFilter(filter);
}

void JournalPage::applyOrder()
{
    m_model->sort(m_order->currentData(columnRole).toInt(),
                  Qt::SortOrder(m_order->currentData(wayRole).toInt()));
}

void JournalPage::showExtent()
{
    const PaymentOrder order = m_model->order();
    m_table->horizontalHeader()->setSortIndicator(JournalModel::columnOf(order.key),
                                                  order.descending ? Qt::DescendingOrder
                                                                   : Qt::AscendingOrder);
    if (!m_model->error().isEmpty())
        m_extent->setText(tr("Журнал прочитан не весь. %1").arg(m_model->error()));
    else if (m_model->rowCount() == 0)
        m_extent->setText(tr("Таких платежей нет."));
    else if (m_model->hasMore())
        m_extent->setText(tr("Показано платежей: %1, ниже есть ещё.").arg(m_model->rowCount()));
    else
        m_extent->setText(tr("Платежей: %1.").arg(m_model->rowCount()));
    if (m_model->tooManyToSort())
        m_extent->setText(m_extent->text() + QLatin1Char(' ')
                          + tr("Платежей слишком много, чтобы упорядочить их так: показаны сначала "
                               "новые. Выберите день, счёт или состояние."));
}

void JournalPage::showPayment()
{
    const PaymentRecord payment = m_model->record(m_table->currentIndex().row());
    m_summary->setText(payment.packId == 0 ? QString() : summaryOf(payment));
    m_payment->setPayment(payment);
}
