#include "scenariochecks.h"

#include "cashierhands.h"
#include "roubles.h"

#include <app/terminalcontext.h>

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QLineEdit>
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

} // namespace

ScenarioChecks::ScenarioChecks(TerminalContext &context) : m_context(context) {}

void ScenarioChecks::begin()
{
    m_before = DemoCount::now(m_context);
    const BusJournal &journal = m_context.busJournal();
    m_lastMessage = journal.size() > 0 ? journal.at(journal.size() - 1).number : 0;
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
        found += entry.number > m_lastMessage && entry.relation == relation ? 1 : 0;
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

qint64 ScenarioChecks::packSum(bool cash, bool card)
{
    const int added = DemoCount::now(m_context).since(m_before).saved;
    qint64 sum = 0;
    for (const PaymentRecord &pack : m_context.payments().records(PaymentFilter(), 0, added))
        sum += cash ? pack.cash.value() : card ? pack.card.value() : pack.sum.value();
    return sum;
}

qint64 ScenarioChecks::billingSum()
{
    const int added = DemoCount::now(m_context).since(m_before).saved;
    qint64 sum = 0;
    for (const PaymentRecord &pack : m_context.payments().records(PaymentFilter(), 0, added)) {
        const auto payments = m_context.billing().takenPayments(QString::number(pack.packId));
        for (const TakenPayment &payment : payments)
            sum += payment.sum;
    }
    return sum;
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
    compare(QStringLiteral("у биллинга"), wanted(3), billingSum());
    if (!chargesChecked)
        compare(QStringLiteral("списано с карты, против пачек"), packSum(false, true),
                added.charged);
    return wrong;
}
