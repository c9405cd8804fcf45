#include "scenarioconditions.h"

#include <app/terminalcontext.h>

#include <molvacore/frhandler.h>
#include <molvacore/ipaybyproviderplugin.h>

#include <QDir>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>

using Verb = ScenarioCommand::Verb;

ScenarioConditions::ScenarioConditions(TerminalContext &context) : m_context(context) {}

bool ScenarioConditions::isCondition(Verb verb)
{
    return verb == Verb::State || verb == Verb::CardTerminal || verb == Verb::BusLink
        || verb == Verb::BusDelay || verb == Verb::RepeatAnswer || verb == Verb::Without
        || verb == Verb::StoreRefuses;
}

bool ScenarioConditions::apply(const ScenarioCommand &command)
{
    const QString first = command.arguments.value(0);
    if (command.verb == Verb::State)
        return setState(command.arguments);
    if (command.verb == Verb::CardTerminal) {
        const bool set = m_context.devices().setCardTerminal(first.toInt());
        m_error = m_context.devices().error();
        return set;
    }
    if (command.verb == Verb::RepeatAnswer)
        return repeatAnswer();
    if (command.verb == Verb::BusLink) {
        m_context.ownBus().setConnected(first == QLatin1String("1"));
        return true;
    }
    if (command.verb == Verb::BusDelay) {
        m_context.ownBus().setDelay(first.toInt());
        return true;
    }
    if (command.verb == Verb::StoreRefuses) {
        return run("payments.sqlite",
                   first == QLatin1String("1")
                       ? QStringLiteral("CREATE TRIGGER scenario_refusal BEFORE INSERT ON packs "
                                        "BEGIN SELECT RAISE(FAIL, 'scenario'); END")
                       : QStringLiteral("DROP TRIGGER IF EXISTS scenario_refusal"));
    }
    return takeAway(first);
}

bool ScenarioConditions::setState(const QStringList &arguments)
{
    DeviceControl &control = m_context.devices();
    for (const Device device : DeviceStates::devices()) {
        if (DeviceStates::option(device) != arguments.value(0))
            continue;
        const bool set =
            control.setState(device, arguments.value(1), !arguments.value(2).isEmpty());
        m_error = control.error();
        return set;
    }
    m_error = QStringLiteral("такого устройства нет");
    return false;
}

bool ScenarioConditions::repeatAnswer()
{
    const BusJournal &journal = m_context.busJournal();
    for (int i = journal.size() - 1; i >= 0; --i) {
        const BusMessage message = journal.at(i).message;
        if (message.direction == BusMessage::Direction::Incoming) {
            m_context.bus().replay(message);
            return true;
        }
    }
    m_error = QStringLiteral("биллинг ещё ничего не ответил");
    return false;
}

bool ScenarioConditions::takeAway(const QString &what)
{
    if (what == QLatin1String("register"))
        return removeRegister();
    return run("host.sqlite", QStringLiteral("UPDATE host_state SET %1 = NULL").arg(what));
}

bool ScenarioConditions::removeRegister()
{
    // The plugin owns the register that it was given and holds it by a guarded pointer.
    auto *owner = dynamic_cast<QObject *>(m_context.pluginHost().plugin());
    FrHandler *given = owner ? owner->findChild<FrHandler *>() : nullptr;
    m_error = QStringLiteral("у модуля нет кассы, которую можно отнять");
    delete given;
    return given != nullptr;
}

bool ScenarioConditions::run(const char *file, const QString &sql)
{
    const QString connection = QStringLiteral("scenario");
    bool ok = false;
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection);
        database.setDatabaseName(QDir(m_context.dataFolder()).filePath(QLatin1String(file)));
        if (database.open()) {
            QSqlQuery query(database);
            ok = query.exec(sql);
            m_error = query.lastError().text();
        } else {
            m_error = database.lastError().text();
        }
    }
    QSqlDatabase::removeDatabase(connection);
    return ok;
}
