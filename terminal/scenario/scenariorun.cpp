#include "scenariorun.h"

#include "roubles.h"

#include <app/terminalcontext.h>
#include <ui/mainwindow.h>

#include <basixcore/fixnumber.h>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QDir>
#include <QDoubleSpinBox>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QInputDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QTextBrowser>

#include <algorithm>
#include <cstdio>
#include <memory>

namespace {

using Verb = ScenarioCommand::Verb;

constexpr int checkDeadline = 5000; // ms until a check that does not hold yet has failed
constexpr int currentReadingColumn = 2;

QWizard *frontWizard()
{
    return qobject_cast<QWizard *>(CashierHands::front());
}

bool buttonEnabled(QWizard::WizardButton which)
{
    const QWizard *wizard = frontWizard();
    return wizard && wizard->button(which)->isEnabled();
}

bool accountShown()
{
    const auto *summary =
        qobject_cast<QTextBrowser *>(CashierHands::find(QStringLiteral("tbSummary")));
    return summary && !CashierHands::find(QStringLiteral("progressBar"))
        && !summary->toPlainText().isEmpty();
}

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

qint64 valueOf(const QString &name)
{
    const auto *box = qobject_cast<QDoubleSpinBox *>(CashierHands::find(name));
    return box ? basix::FixNumber(100, box->value()).value() : 0;
}

} // namespace

ScenarioRun::ScenarioRun(TerminalContext &context, MainWindow &window, const Options &options)
    : m_context(context),
      m_window(window),
      m_options(options),
      m_runner(options.pause),
      m_conditions(context)
{
    connect(&m_runner, &StepRunner::stepStarted, this, &ScenarioRun::say);
    connect(&context.bus(), &MessageBus::incomingMessage, this, [this] { ++m_incoming; });
}

bool ScenarioRun::run(const ScenarioCommands &commands)
{
    if (!m_options.outFolder.isEmpty() && !QDir().mkpath(m_options.outFolder)) {
        m_failures.append(tr("Папку «%1» создать не удалось.").arg(m_options.outFolder));
        return false;
    }
    m_before = DemoCount::now(m_context);
    for (const ScenarioCommand &command : commands)
        plan(command);

    QEventLoop loop;
    connect(&m_runner, &StepRunner::finished, &loop, &QEventLoop::quit);
    m_runner.start();
    loop.exec();

    if (m_runner.failed())
        m_failures.prepend(m_runner.failure());
    else
        compareSums();
    return m_failures.isEmpty();
}

void ScenarioRun::plan(const ScenarioCommand &command)
{
    const QString first = command.arguments.value(0);
    const QString second = command.arguments.value(1);
    if (ScenarioConditions::isCondition(command.verb)) {
        step(command, {},
             [this, command] { return m_conditions.apply(command) || no(m_conditions.error()); });
        return;
    }
    const auto widgetReady = [](const QString &name) {
        return [name] {
            const QWidget *widget = CashierHands::find(name);
            return widget && widget->isEnabled();
        };
    };
    const auto button = QWizard::WizardButton(first.toInt());
    switch (command.verb) {
    case Verb::Title:
        step(command, {}, [] { return true; });
        return;
    case Verb::Provider:
        step(
            command, [] { return !QApplication::activeModalWidget(); },
            [this, first] {
                startPayment(first.toLongLong());
                return m_error.isEmpty();
            });
        return;
    case Verb::Fill:
        step(command, widgetReady(second), [this, first, second] { return fill(first, second); });
        return;
    case Verb::Scan:
        step(command, widgetReady(second),
             [this, first, second] { return m_hands.click(second) && m_hands.scan(first); });
        return;
    case Verb::Press:
        step(command, widgetReady(first), [this, first] { return m_hands.click(first); });
        return;
    case Verb::AwaitAccount:
        step(command, accountShown, [this] {
            m_incoming = 0;
            return true;
        });
        return;
    case Verb::AwaitMessage:
        step(
            command, [this] { return m_incoming > 0; },
            [this] {
                m_incoming = 0;
                return true;
            });
        return;
    case Verb::WizardButton:
        step(
            command, [button] { return buttonEnabled(button); },
            [this, button] { return clickWizard(button); });
        return;
    case Verb::CloseWindow:
        step(
            command, [] { return frontWizard() != nullptr; },
            [] { return CashierHands::front()->close(); });
        return;
    case Verb::Reading:
        step(command, widgetReady(QStringLiteral("tvCounters")),
             [this, first, second] { return enterReading(first.toInt(), second); });
        return;
    case Verb::Tick:
        step(command, widgetReady(QStringLiteral("tvServices")),
             [this, first] { return tick(first); });
        return;
    case Verb::CardAmount: {
        step(command, widgetReady(QStringLiteral("pbCard")), [this] {
            m_takingCard = true;
            const bool clicked = m_hands.click(QStringLiteral("pbCard"));
            m_takingCard = false;
            return clicked;
        });
        ScenarioCommand amount = command;
        amount.text.clear();
        step(
            amount, [] { return qobject_cast<QInputDialog *>(CashierHands::front()) != nullptr; },
            [this, first] { return m_hands.enterAmount(Roubles::typed(first)); });
        // The plugin lets events through between the dialog and the charge: no step may slip in.
        StepRunner::Step taken;
        taken.expectsMessage = true;
        taken.ready = [this] {
            return !m_takingCard || qobject_cast<QMessageBox *>(CashierHands::front());
        };
        m_runner.add(taken);
        return;
    }
    case Verb::Message:
        answerMessage(command);
        return;
    case Verb::ExpectSums:
        m_expectedSums = command.arguments;
        return;
    case Verb::CheckCount:
    case Verb::CheckSum:
    case Verb::CheckButton:
    case Verb::CheckWidget:
    case Verb::CheckText:
    case Verb::CheckWizard:
        planCheck(command);
        return;
    case Verb::State:
    case Verb::CardTerminal:
    case Verb::BusLink:
    case Verb::BusDelay:
    case Verb::RepeatAnswer:
    case Verb::Without:
    case Verb::StoreRefuses:
        return;
    }
}

void ScenarioRun::planCheck(const ScenarioCommand &command)
{
    const Check check = checkOf(command);
    const auto since = std::make_shared<QElapsedTimer>();
    StepRunner::Step planned;
    planned.title = QStringLiteral("%1. %2").arg(QString::number(command.line), command.text);
    planned.ready = [check, since] {
        if (!since->isValid())
            since->start();
        return check().holds || since->elapsed() > checkDeadline;
    };
    planned.act = [this, check, command] {
        const Found found = check();
        if (!found.holds)
            m_runner.fail(tr("Строка %1 «%2» не выполнена: %3")
                              .arg(QString::number(command.line), command.text, found.text));
        m_chargesChecked =
            m_chargesChecked || command.arguments.value(0) == QLatin1String("charged");
    };
    planned.deadline = checkDeadline * 2;
    m_runner.add(planned);
}

void ScenarioRun::step(const ScenarioCommand &command, const std::function<bool()> &ready,
                       const std::function<bool()> &act)
{
    StepRunner::Step planned;
    if (!command.text.isEmpty())
        planned.title = QStringLiteral("%1. %2").arg(QString::number(command.line), command.text);
    planned.ready = ready;
    planned.act = [this, act, command] {
        if (!savePicture())
            m_runner.fail(
                tr("Картинку в папку «%1» записать не удалось.").arg(m_options.outFolder));
        m_error.clear();
        if (!act())
            m_runner.fail(tr("Строка %1 «%2» не вышла: %3")
                              .arg(QString::number(command.line), command.text,
                                   m_error.isEmpty() ? m_hands.error() : m_error));
    };
    m_runner.add(planned);
}

void ScenarioRun::answerMessage(const ScenarioCommand &command)
{
    StepRunner::Step planned;
    planned.title = QStringLiteral("%1. %2").arg(QString::number(command.line), command.text);
    planned.expectsMessage = true;
    planned.ready = [] { return qobject_cast<QMessageBox *>(CashierHands::front()) != nullptr; };
    planned.act = [this, command] {
        const QString shown = qobject_cast<QMessageBox *>(CashierHands::front())->text();
        m_incoming = 0;
        if (!shown.contains(command.arguments.value(0)))
            m_runner.fail(tr("Строка %1 «%2»: показано другое сообщение: «%3»")
                              .arg(QString::number(command.line), command.text, shown));
        else if (!savePicture() || !m_hands.confirmMessage())
            m_runner.fail(m_hands.error());
    };
    m_runner.add(planned);
}

void ScenarioRun::startPayment(qint64 providerId)
{
    const QVector<Provider> providers = m_context.providers();
    const auto provider =
        std::find_if(providers.cbegin(), providers.cend(),
                     [providerId](const Provider &each) { return each.id() == providerId; });
    if (provider == providers.cend()) {
        no(tr("поставщика %1 в базе рабочего места нет").arg(providerId));
        return;
    }
    m_accepted = m_window.startPayment(*provider).accepted;
    m_error.clear();
}

bool ScenarioRun::fill(const QString &text, const QString &name)
{
    const bool number = qobject_cast<QAbstractSpinBox *>(CashierHands::find(name)) != nullptr;
    return m_hands.fill(name, number ? Roubles::typed(text) : text);
}

bool ScenarioRun::enterReading(int meter, const QString &value)
{
    auto *view =
        qobject_cast<QAbstractItemView *>(CashierHands::find(QStringLiteral("tvCounters")));
    if (!view || meter < 1 || meter > view->model()->rowCount())
        return no(tr("счётчика %1 на экране нет").arg(meter));
    return m_hands.enterCell(*view, view->model()->index(meter - 1, currentReadingColumn), value);
}

bool ScenarioRun::tick(const QString &document)
{
    auto *view =
        qobject_cast<QAbstractItemView *>(CashierHands::find(QStringLiteral("tvServices")));
    for (int row = 0; view && row < view->model()->rowCount(); ++row) {
        const QModelIndex cell = view->model()->index(row, 0);
        if (cell.data(Qt::CheckStateRole).isValid() && cell.data().toString() == document)
            return m_hands.tickCell(*view, cell);
    }
    return no(tr("документа «%1» на экране нет").arg(document));
}

bool ScenarioRun::clickWizard(QWizard::WizardButton button)
{
    if (button == QWizard::FinishButton)
        m_screen = valueOf(QStringLiteral("dsbCash")) + valueOf(QStringLiteral("dsbCard"));
    return m_hands.clickWizard(button);
}

bool ScenarioRun::no(const QString &error)
{
    m_error = error;
    return false;
}

ScenarioRun::Check ScenarioRun::checkOf(const ScenarioCommand &command)
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
                         open ? tr("мастер открыт") : tr("мастер закрыт")};
        };
    }
    if (command.verb == Verb::CheckButton) {
        return [first, second] {
            const bool enabled = buttonEnabled(QWizard::WizardButton(first.toInt()));
            return Found{frontWizard() && enabled == (second == QLatin1String("1")),
                         enabled ? tr("кнопка доступна") : tr("кнопка недоступна")};
        };
    }
    if (command.verb == Verb::CheckText) {
        return [first, second] {
            const QString text = textOf(CashierHands::find(first));
            return Found{text.contains(second), tr("там «%1»").arg(text)};
        };
    }
    return [first, second] {
        const QWidget *widget = CashierHands::find(second);
        if (first == QLatin1String("hidden"))
            return Found{!widget, tr("видно")};
        if (!widget)
            return Found{false, tr("на экране нет «%1»").arg(second)};
        const bool wanted = first != QLatin1String("disabled");
        return Found{first == QLatin1String("shown") || widget->isEnabled() == wanted,
                     widget->isEnabled() ? tr("доступно") : tr("недоступно")};
    };
}

ScenarioRun::Found ScenarioRun::count(const QString &what, int expected)
{
    const DemoCount added = DemoCount::now(m_context).since(m_before);
    const int found = what == QLatin1String("receipts") ? added.receipts
        : what == QLatin1String("saved")                ? added.saved
                                                        : added.posted;
    return {found == expected, tr("найдено %1").arg(found)};
}

ScenarioRun::Found ScenarioRun::sum(const QString &what, qint64 expected)
{
    const qint64 found = what == QLatin1String("charged")
        ? DemoCount::now(m_context).since(m_before).charged
        : packSum(what == QLatin1String("cash"), what == QLatin1String("card"));
    return {found == expected, tr("найдено %1").arg(Roubles::text(found))};
}

qint64 ScenarioRun::packSum(bool cash, bool card)
{
    const int added = DemoCount::now(m_context).since(m_before).saved;
    qint64 sum = 0;
    for (const PaymentRecord &pack : m_context.payments().records(PaymentFilter(), 0, added))
        sum += cash ? pack.cash.value() : card ? pack.card.value() : pack.sum.value();
    return sum;
}

qint64 ScenarioRun::billingSum()
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

void ScenarioRun::compareSums()
{
    const DemoCount added = DemoCount::now(m_context).since(m_before);
    const qint64 screen = m_accepted ? m_screen : 0;
    const auto expected = [&](int which) {
        return m_expectedSums.isEmpty() ? screen : Roubles::kopecks(m_expectedSums.at(which));
    };
    compare(tr("на экране"), expected(0), screen);
    compare(tr("в журнале кассы"), expected(1), added.receiptTotal);
    compare(tr("в хранилище"), expected(2), packSum(false, false));
    compare(tr("у биллинга"), expected(3), billingSum());
    if (!m_chargesChecked)
        compare(tr("списано с карты, против пачек"), packSum(false, true), added.charged);
}

void ScenarioRun::compare(const QString &what, qint64 expected, qint64 found)
{
    if (expected != found)
        m_failures.append(tr("Суммы не сошлись, %1: ожидалось %2, найдено %3")
                              .arg(what, Roubles::text(expected), Roubles::text(found)));
}

bool ScenarioRun::savePicture()
{
    if (m_options.outFolder.isEmpty())
        return true;
    QWidget *front =
        QApplication::activeModalWidget() ? QApplication::activeModalWidget() : &m_window;
    const QString file = QStringLiteral("%1.png").arg(++m_pictures, 2, 10, QLatin1Char('0'));
    return front->grab().save(QDir(m_options.outFolder).filePath(file));
}

void ScenarioRun::say(const QString &text)
{
    std::fprintf(stdout, "%s\n", qUtf8Printable(text));
    std::fflush(stdout);
}
