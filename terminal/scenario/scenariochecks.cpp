#include "scenariochecks.h"

#include "buspacks.h"
#include "cashierhands.h"
#include "roubles.h"

#include <app/terminalcontext.h>
#include <ui/journalmodel.h>

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QLabel>
#include <QLineEdit>
#include <QTableView>
#include <QTextBrowser>

using Relation = BusJournalEntry::Relation;
using Verb = ScenarioCommand::Verb;

namespace {

QString textOf(QWidget *widget)
{
    if (const auto *browser = qobject_cast<QTextBrowser *>(widget))
        return browser->toPlainText();
    if (const auto *edit = qobject_cast<QLineEdit *>(widget))
        return edit->text();
    if (const auto *box = qobject_cast<QAbstractSpinBox *>(widget))
        return box->text();
    return widget ? widget->property("text").toString() : QString();
}

BusPacks::Pack partsOf(const PaymentRecord &record)
{
    return {record.packId, record.sum.value(), record.cash.value(), record.card.value()};
}

QString textOf(const BusPacks::Pack &pack)
{
    const QString parts =
        QStringLiteral("%1 = %2 наличными + %3 картой")
            .arg(Roubles::text(pack.amount), Roubles::text(pack.cash), Roubles::text(pack.card));
    if (pack.sums.size() < 2)
        return parts;
    QStringList sums;
    for (const qint64 sum : pack.sums)
        sums.append(Roubles::text(sum));
    return QStringLiteral("%1 (платежи %2)").arg(parts, sums.join(QStringLiteral(" и ")));
}

} // namespace

ScenarioChecks::ScenarioChecks(TerminalContext &context) : m_context(context) {}

void ScenarioChecks::begin()
{
    m_before = DemoCount::now(m_context);
    m_busMoment = BusPacks::moment(m_context.busJournal());
}

QWizard *ScenarioChecks::frontWizard()
{
    return qobject_cast<QWizard *>(CashierHands::front());
}

bool ScenarioChecks::buttonEnabled(QWizard::WizardButton which)
{
    const QWizard *wizard = frontWizard();
    return wizard && wizard->button(which)->isEnabled();
}

ScenarioChecks::Check ScenarioChecks::checkOf(const ScenarioCommand &command)
{
    const QString first = command.arguments.value(0);
    const QString second = command.arguments.value(1);
    if (command.verb == Verb::CheckCount)
        return [this, first, second] { return count(first, second.toInt()); };
    if (command.verb == Verb::CheckSum)
        return [this, first, second] { return sum(first, Roubles::kopecks(second)); };
    if (command.verb == Verb::CheckWizard) {
        return [first] {
            const bool open = frontWizard() != nullptr;
            return Found{open == (first == QLatin1String("1")),
                         open ? QStringLiteral("мастер открыт") : QStringLiteral("мастер закрыт")};
        };
    }
    if (command.verb == Verb::CheckButton) {
        return [first, second] {
            const bool enabled = buttonEnabled(QWizard::WizardButton(first.toInt()));
            return Found{frontWizard() && enabled == (second == QLatin1String("1")),
                         enabled ? QStringLiteral("кнопка доступна")
                                 : QStringLiteral("кнопка недоступна")};
        };
    }
    if (command.verb == Verb::CheckText) {
        return [first, second] {
            const QString text = textOf(CashierHands::find(first));
            return Found{text.contains(second), QStringLiteral("там «%1»").arg(text)};
        };
    }
    return [first, second] {
        const QWidget *widget = CashierHands::find(second);
        if (first == QLatin1String("hidden"))
            return Found{!widget, QStringLiteral("видно")};
        if (!widget)
            return Found{false, QStringLiteral("на экране нет «%1»").arg(second)};
        const bool wanted = first != QLatin1String("disabled");
        return Found{first == QLatin1String("shown") || widget->isEnabled() == wanted,
                     widget->isEnabled() ? QStringLiteral("доступно")
                                         : QStringLiteral("недоступно")};
    };
}

ScenarioChecks::Found ScenarioChecks::count(const QString &what, int expected)
{
    const DemoCount added = DemoCount::now(m_context).since(m_before);
    const int found = what == QLatin1String("receipts") ? added.receipts
        : what == QLatin1String("saved")                ? added.saved
        : what == QLatin1String("posted")               ? added.posted
        : what == QLatin1String("repeated")
        ? messages(Relation::Repeated)
        : messages(Relation::Unmatched) + messages(Relation::Unreadable);
    return {found == expected, QStringLiteral("найдено %1").arg(found)};
}

int ScenarioChecks::messages(Relation relation) const
{
    const BusJournal &journal = m_context.busJournal();
    int found = 0;
    for (int i = 0; i < journal.size(); ++i) {
        const BusJournalEntry &entry = journal.at(i);
        found += entry.number > m_busMoment && entry.relation == relation ? 1 : 0;
    }
    return found;
}

ScenarioChecks::Found ScenarioChecks::sum(const QString &what, qint64 expected)
{
    const qint64 found = what == QLatin1String("charged")
        ? DemoCount::now(m_context).since(m_before).charged
        : packSum(what == QLatin1String("cash"), what == QLatin1String("card"));
    return {found == expected, QStringLiteral("найдено %1").arg(Roubles::text(found))};
}

QVector<PaymentRecord> ScenarioChecks::newPacks()
{
    const int added = DemoCount::now(m_context).since(m_before).saved;
    return m_context.payments().records(PaymentFilter(), 0, added);
}

qint64 ScenarioChecks::packSum(bool cash, bool card)
{
    qint64 sum = 0;
    for (const PaymentRecord &pack : newPacks())
        sum += cash ? pack.cash.value() : card ? pack.card.value() : pack.sum.value();
    return sum;
}

qint64 ScenarioChecks::billingSum()
{
    qint64 sum = 0;
    for (const PaymentRecord &pack : newPacks()) {
        const auto payments = m_context.billing().takenPayments(QString::number(pack.packId));
        for (const TakenPayment &payment : payments)
            sum += payment.sum;
    }
    return sum;
}

QStringList ScenarioChecks::busDisagreements(const BusPacks &bus)
{
    QStringList wrong = bus.problems();
    for (const BusPacks::Pack &pack : bus.packs()) {
        const QString id = QString::number(pack.id);
        const std::optional<PaymentRecord> stored = m_context.payments().record(pack.id);
        if (!stored) {
            wrong.append(QStringLiteral("Пачка № %1 есть на шине, в хранилище её нет.").arg(id));
            continue;
        }
        BusPacks::Pack same = partsOf(*stored);
        same.sums = BusPacks::sumsOf(m_context.payments().pack(pack.id).value_or(QVariantMap()));
        if (!(pack == same))
            wrong.append(QStringLiteral("Пачка № %1 на шине %2, в хранилище %3.")
                             .arg(id, textOf(pack), textOf(same)));
    }
    for (const PaymentRecord &stored : newPacks()) {
        if (stored.state >= PackState::Posted && !bus.find(stored.packId))
            wrong.append(
                QStringLiteral("Пачка № %1 проведена, а на шине её не было.").arg(stored.packId));
    }
    return wrong;
}

QStringList ScenarioChecks::disagreements(qint64 screen, const QStringList &expected,
                                          bool chargesChecked)
{
    QStringList wrong;
    const auto compare = [&wrong](const QString &what, qint64 wanted, qint64 found) {
        if (wanted != found)
            wrong.append(QStringLiteral("Суммы не сошлись, %1: ожидалось %2, найдено %3")
                             .arg(what, Roubles::text(wanted), Roubles::text(found)));
    };
    const DemoCount added = DemoCount::now(m_context).since(m_before);
    const auto wanted = [&](int which) {
        return expected.isEmpty() ? screen : Roubles::kopecks(expected.at(which));
    };
    compare(QStringLiteral("на экране"), wanted(0), screen);
    compare(QStringLiteral("в журнале кассы"), wanted(1), added.receiptTotal);
    compare(QStringLiteral("в хранилище"), wanted(2), packSum(false, false));
    const BusPacks bus = BusPacks::since(m_context.busJournal(), m_busMoment);
    compare(QStringLiteral("на шине"), wanted(3), bus.amount());
    compare(QStringLiteral("у биллинга"), wanted(4), billingSum());
    if (!chargesChecked)
        compare(QStringLiteral("списано с карты, против пачек"), packSum(false, true),
                added.charged);
    return wrong + busDisagreements(bus);
}

QStringList ScenarioChecks::journalDisagreements(QWidget &window)
{
    auto *table = window.findChild<QTableView *>(QStringLiteral("tvJournal"));
    auto *summary = window.findChild<QLabel *>(QStringLiteral("lPaymentDetails"));
    const QVector<PaymentRecord> packs = newPacks();
    if (!table || !summary || table->model()->rowCount() < packs.size())
        return {QStringLiteral("В окне нет журнала платежей или новых строк в нём.")};
    QStringList wrong;
    for (int row = 0; row < packs.size(); ++row) {
        const PaymentRecord &pack = packs.at(row);
        const auto text = [table, row](JournalModel::Column column) {
            return table->model()->index(row, column).data().toString();
        };
        const BusPacks::Pack shown{pack.packId, Roubles::kopecks(text(JournalModel::Sum)),
                                   Roubles::kopecks(text(JournalModel::Cash)),
                                   Roubles::kopecks(text(JournalModel::Card))};
        const BusPacks::Pack stored = partsOf(pack);
        table->selectRow(row);
        const QString number = QString::number(pack.packId);
        if (!(shown == stored) || text(JournalModel::Account) != pack.account
            || text(JournalModel::State) != packStateText(pack.state)
            || !summary->text().contains(number))
            wrong.append(QStringLiteral(
                             "Пачка № %1 в журнале на экране: %2, %3, %4, в хранилище: %5, %6, %7.")
                             .arg(number, text(JournalModel::Account), textOf(shown),
                                  text(JournalModel::State), pack.account, textOf(stored),
                                  packStateText(pack.state)));
    }
    return wrong;
}
