#include "scenariorun.h"

#include "roubles.h"

#include <app/terminalcontext.h>
#include <ui/buspage.h>
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
#include <QKeySequence>
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

bool accountShown()
{
    const auto *summary =
        qobject_cast<QTextBrowser *>(CashierHands::find(QStringLiteral("tbSummary")));
    return summary && !CashierHands::find(QStringLiteral("progressBar"))
        && !summary->toPlainText().isEmpty();
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
      m_conditions(context),
      m_checks(context)
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
    m_checks.begin();
    for (const ScenarioCommand &command : commands)
        plan(command);

    QEventLoop loop;
    connect(&m_runner, &StepRunner::finished, &loop, &QEventLoop::quit);
    m_runner.start();
    loop.exec();

    if (m_runner.failed())
        m_failures.prepend(m_runner.failure());
    else
        compare();
    return m_failures.isEmpty();
}

void ScenarioRun::compare()
{
    m_failures =
        m_checks.disagreements(m_accepted ? m_screen : 0, m_expectedSums, m_chargesChecked);
    m_window.showJournal();
    m_failures += m_checks.journalDisagreements(m_window);
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
    case Verb::PressKey:
        step(
            command, [] { return CashierHands::front() != nullptr; },
            [this, first] { return pressKey(first); });
        return;
    case Verb::AwaitAccount:
        step(command, accountShown, [this] { return takeMessage(); });
        return;
    case Verb::AwaitMessage:
        step(
            command, [this] { return m_incoming > 0; }, [this] { return takeMessage(); });
        return;
    case Verb::WizardButton:
        step(
            command, [button] { return ScenarioChecks::buttonEnabled(button); },
            [this, button] { return clickWizard(button); });
        return;
    case Verb::CloseWindow:
        step(
            command, [] { return ScenarioChecks::frontWizard() != nullptr; },
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
    const ScenarioChecks::Check check = m_checks.checkOf(command);
    const auto since = std::make_shared<QElapsedTimer>();
    StepRunner::Step planned;
    planned.title = QStringLiteral("%1. %2").arg(QString::number(command.line), command.text);
    planned.ready = [check, since] {
        if (!since->isValid())
            since->start();
        return check().holds || since->elapsed() > checkDeadline;
    };
    planned.act = [this, check, command] {
        const ScenarioChecks::Found found = check();
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

bool ScenarioRun::takeMessage()
{
    // One only: a late answer may have come before the account of the timely one was on the screen.
    m_incoming = std::max(0, m_incoming - 1);
    return true;
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

bool ScenarioRun::pressKey(const QString &name)
{
    const QKeySequence sequence = QKeySequence::fromString(name, QKeySequence::PortableText);
    const int key = sequence.isEmpty() ? int(Qt::Key_unknown) : sequence[0];
    if (key == Qt::Key_unknown)
        return no(tr("клавиши «%1» нет").arg(name));
    return m_hands.press(Qt::Key(key));
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

bool ScenarioRun::savePicture()
{
    if (m_options.outFolder.isEmpty())
        return true;
    QWidget *front =
        QApplication::activeModalWidget() ? QApplication::activeModalWidget() : &m_window;
    const QDir folder(m_options.outFolder);
    const QString number = QStringLiteral("%1").arg(++m_pictures, 2, 10, QLatin1Char('0'));
    bool saved = front->grab().save(folder.filePath(number + QStringLiteral(".png")));
    // The windows beside the payment tell their part of it.
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (window == front || window == &m_window || !window->isVisible() || window->parentWidget()
            || window->windowType() != Qt::Window)
            continue;
        if (auto *bus = qobject_cast<BusPage *>(window))
            bus->settle();
        const QString name = QStringLiteral("%1-%2.png").arg(number, window->objectName());
        saved = window->grab().save(folder.filePath(name)) && saved;
    }
    return saved;
}

void ScenarioRun::say(const QString &text)
{
    std::fprintf(stdout, "%s\n", qUtf8Printable(text));
    std::fflush(stdout);
}
