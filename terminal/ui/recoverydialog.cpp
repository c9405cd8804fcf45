#include "recoverydialog.h"

#include "recoverydialogmodel.h"
#include "rowlist.h"
#include "shownreason.h"

#include <app/terminalcontext.h>
#include <payments/payscontroller.h>
#include <recovery/paymentreconciler.h>

#include <QDialogButtonBox>
#include <QElapsedTimer>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMessageBox>
#include <QProgressDialog>
#include <QPushButton>
#include <QTableView>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr int QUIET_MS = 500;
/// How long the outbox may take at the start before what it has not posted is shown.
constexpr int OUTBOX_CHANCE_MS = 5000;
constexpr int POLL_MS = 250;
constexpr int SHOWN_ERRORS = 10;

} // namespace

RecoveryDialog::RecoveryDialog(PaymentReconciler &reconciler, PaysController &controller,
                               QWidget *parent)
    : QDialog(parent),
      m_reconciler(reconciler),
      m_model(new RecoveryDialogModel(this)),
      m_summary(new QLabel(this)),
      m_table(new QTableView(this)),
      m_details(new QLabel(this))
{
    setWindowTitle(tr("Сверка платежей"));
    setObjectName(QStringLiteral("RecoveryDialog"));
    resize(760, 460);
    m_summary->setObjectName(QStringLiteral("lRecoverySummary"));
    m_summary->setWordWrap(true);
    m_summary->setTextFormat(Qt::PlainText);
    m_table->setObjectName(QStringLiteral("tvRecovery"));
    m_table->setModel(m_model);
    RowList::prepare(*m_table);
    m_table->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_table->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_table->horizontalHeader()->setStretchLastSection(true);
    m_details->setObjectName(QStringLiteral("lRecoveryDetails"));
    m_details->setWordWrap(true);
    m_details->setTextFormat(Qt::PlainText);
    m_details->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    m_details->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_details->setMinimumHeight(m_details->fontMetrics().lineSpacing() * 6);

    m_save = makeButton(QStringLiteral("pbSaveByReceipt"), tr("&Сохранить по чеку"));
    m_post = makeButton(QStringLiteral("pbPost"), tr("&Отправить"));
    m_refund = makeButton(QStringLiteral("pbRefund"), tr("&Возврат по карте"));
    m_postpone = makeButton(QStringLiteral("pbPostpone"), tr("О&тложить"));
    auto *box = new QDialogButtonBox(this);
    QPushButton *close = box->addButton(tr("&Закрыть"), QDialogButtonBox::RejectRole);
    close->setDefault(true);
    connect(box, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto *buttons = new QHBoxLayout;
    for (QPushButton *button : {m_save, m_post, m_refund, m_postpone})
        buttons->addWidget(button);
    buttons->addStretch(1);
    buttons->addWidget(box);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_summary);
    layout->addWidget(m_table, 1);
    layout->addWidget(m_details);
    layout->addLayout(buttons);

    connect(m_save, &QPushButton::clicked, this, [this] {
        act(tr("Сохранить платежи по чекам: %1 на сумму %2 р.?\n\nСохраняйте только то, за что "
               "плательщик действительно заплатил по этому чеку."),
            &PaymentCase::canSaveByReceipt, [this](const PaymentCase &payment, QString *error) {
                return m_reconciler.saveByReceipt(payment, error);
            });
    });
    connect(m_post, &QPushButton::clicked, this, [this] {
        act(QString(), &PaymentCase::canPost, [this](const PaymentCase &payment, QString *error) {
            return m_reconciler.post(payment, error);
        });
    });
    connect(m_refund, &QPushButton::clicked, this, [this] {
        act(tr("Вернуть деньги на карту: списаний %1 на сумму %2 р.?"), &PaymentCase::canRefund,
            [this](const PaymentCase &payment, QString *error) {
                return m_reconciler.refund(payment, error);
            });
    });
    connect(m_postpone, &QPushButton::clicked, this, &RecoveryDialog::postpone);
    connect(m_table->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &RecoveryDialog::showSelected);
    connect(m_model, &QAbstractItemModel::rowsRemoved, this, &RecoveryDialog::showSelected);
    connect(m_model, &QAbstractItemModel::dataChanged, this, &RecoveryDialog::showSelected);
    connect(&controller, &PaysController::changed, this, &RecoveryDialog::onPackChanged);
    showSelected();
}

RecoveryDialog::~RecoveryDialog() = default;

QPushButton *RecoveryDialog::makeButton(const QString &name, const QString &text)
{
    auto *button = new QPushButton(text, this);
    button->setObjectName(name);
    // Enter closes; money moves only by a button that was meant.
    button->setAutoDefault(false);
    return button;
}

bool RecoveryDialog::load()
{
    QProgressDialog progress(tr("Сверяются платежи…"), tr("Прервать"), 0, 0, parentWidget());
    progress.setWindowTitle(windowTitle());
    progress.setWindowModality(Qt::WindowModal);
    progress.setMinimumDuration(QUIET_MS);
    const auto advance = [&progress](int done, int total) {
        progress.setMaximum(std::max(1, total));
        progress.setValue(done);
        return !progress.wasCanceled();
    };
    const PaymentReconciler::Report report =
        m_reconciler.reconcile(PaymentReconciler::Scope::Open, advance);
    progress.reset();
    m_agreed = report.agreed + report.refunded;
    m_problem = report.error;
    if (!report.complete)
        m_problem = tr("Сверка прервана: показано не всё.");
    m_model->setCases(report.cases);
    if (m_model->rowCount() > 0)
        m_table->selectRow(0);
    m_table->setFocus();
    showSelected();
    return report.complete && report.error.isEmpty();
}

int RecoveryDialog::openCount() const
{
    return m_model->rowCount();
}

QVector<int> RecoveryDialog::selectedRows() const
{
    QVector<int> rows;
    const QModelIndexList selected = m_table->selectionModel()->selectedRows();
    for (const QModelIndex &index : selected)
        rows.append(index.row());
    std::sort(rows.begin(), rows.end(), std::greater<int>());
    return rows;
}

void RecoveryDialog::act(const QString &question, bool (PaymentCase::*fits)() const,
                         const Action &action)
{
    QVector<PaymentCase> chosen;
    basix::FixNumber sum;
    const QVector<int> rows = selectedRows();
    for (const int row : rows) {
        const PaymentCase payment = m_model->at(row);
        if ((payment.*fits)()) {
            chosen.append(payment);
            sum += payment.sum;
        }
    }
    if (chosen.isEmpty())
        return;
    if (!question.isEmpty()
        && QMessageBox::question(this, windowTitle(),
                                 question.arg(QString::number(chosen.size()), sum.toString()),
                                 QMessageBox::Yes | QMessageBox::No, QMessageBox::No)
            != QMessageBox::Yes)
        return;

    QProgressDialog progress(tr("Выполняется…"), tr("Прервать"), 0, chosen.size(), this);
    progress.setWindowTitle(windowTitle());
    progress.setWindowModality(Qt::WindowModal);
    progress.setMinimumDuration(QUIET_MS);
    QStringList errors;
    for (int i = 0; i < chosen.size() && !progress.wasCanceled(); ++i) {
        progress.setValue(i);
        QString error;
        if (!action(chosen.at(i), &error) && !errors.contains(error))
            errors.append(error);
        refresh(chosen.at(i));
    }
    progress.reset();
    if (!errors.isEmpty()) {
        showWarning(this, windowTitle(),
                    QStringList(errors.mid(0, SHOWN_ERRORS)).join(QLatin1Char('\n')));
    }
    showSelected();
}

void RecoveryDialog::postpone()
{
    const QVector<int> rows = selectedRows();
    for (const int row : rows)
        m_model->remove(row);
    if (m_model->rowCount() == 0)
        accept();
}

void RecoveryDialog::refresh(const PaymentCase &payment)
{
    // Looking again may move a pack on, which changes the list before it returns.
    const PaymentCase now = m_reconciler.again(payment);
    for (int row = m_model->rowCount() - 1; row >= 0; --row) {
        if (m_model->at(row).isSameAs(payment))
            m_model->update(row, now);
    }
}

void RecoveryDialog::onPackChanged(qint64 packId)
{
    const QVector<PaymentCase> cases = m_model->cases();
    for (const PaymentCase &payment : cases) {
        if (payment.packId == packId)
            refresh(payment);
    }
}

void RecoveryDialog::showSelected()
{
    const QVector<int> rows = selectedRows();
    const auto any = [&](bool (PaymentCase::*fits)() const) {
        return std::any_of(rows.cbegin(), rows.cend(),
                           [&](int row) { return (m_model->at(row).*fits)(); });
    };
    m_save->setEnabled(any(&PaymentCase::canSaveByReceipt));
    m_post->setEnabled(any(&PaymentCase::canPost));
    m_refund->setEnabled(any(&PaymentCase::canRefund));
    m_postpone->setEnabled(!rows.isEmpty());
    const PaymentCase payment = rows.size() == 1 ? m_model->at(rows.constFirst()) : PaymentCase();
    m_details->setText(shownReason(payment.story) + QLatin1Char('\n') + payment.wayOut);
    if (rows.size() > 1)
        m_details->setText(tr("Выбрано платежей: %1.").arg(rows.size()));
    QString summary = m_model->rowCount() == 0
        ? tr("Все платежи сошлись: %1.").arg(m_agreed)
        : tr("Платежей, которые не прошли до конца: %1. Выберите платёж и решите, что с ним "
             "делать. Отложенные появятся здесь при следующем запуске.")
              .arg(m_model->rowCount());
    if (!m_problem.isEmpty())
        summary = shownReason(m_problem);
    m_summary->setText(summary);
}

void RecoveryDialog::offerAtStart(TerminalContext &context, QWidget *window)
{
    auto *timer = new QTimer(window);
    QElapsedTimer since;
    since.start();
    connect(timer, &QTimer::timeout, window, [&context, window, timer, since] {
        const bool outboxWorks = !context.paysController().outbox().idle();
        if (context.pluginHost().isDialogOpen()
            || (outboxWorks && since.elapsed() < OUTBOX_CHANCE_MS))
            return;
        timer->stop();
        timer->deleteLater();
        auto *dialog = new RecoveryDialog(context.reconciler(), context.paysController(), window);
        dialog->setAttribute(Qt::WA_DeleteOnClose);
        const bool read = dialog->load();
        if (!read || dialog->openCount() > 0)
            dialog->open();
        else
            dialog->deleteLater();
    });
    timer->start(POLL_MS);
}
