#include <devices/devicecontrol.h>

#include <billing/billingservice.h>
#include <bus/inprocessbus.h>
#include <fiscal/emulatedregister.h>

#include <molvacore/cardreadersettings.h>

namespace {

QString keyOf(Device device, int value)
{
    for (const DeviceState &state : DeviceStates::of(device)) {
        if (state.value == value)
            return state.key;
    }
    return QString();
}

const QString &byAmount()
{
    return DeviceStates::of(Device::Card).constFirst().key;
}

bool store(const CardReaderSettings &settings, QString *error)
{
    CardReaderSettings saved = settings;
    if (saved.save())
        return true;
    *error =
        QStringLiteral("Настройки карточного терминала записать не удалось. Проверьте место на "
                       "диске и права на папку данных.");
    return false;
}

} // namespace

DeviceControl::DeviceControl(EmulatedRegister &fiscalRegister, BillingService *service,
                             InProcessBus *bus, QObject *parent)
    : QObject(parent), m_register(fiscalRegister), m_service(service), m_bus(bus)
{
    connect(&fiscalRegister, &EmulatedRegister::conditionChanged, this, &DeviceControl::changed);
    if (bus)
        connect(bus, &MessageBus::stateChanged, this, &DeviceControl::changed);
}

bool DeviceControl::controls(Device device) const
{
    return device != Device::Billing || m_service;
}

QString DeviceControl::state(Device device) const
{
    switch (device) {
    case Device::Register:
        return keyOf(device, int(m_register.condition()));
    case Device::Card: {
        const QString outcome = CardReaderSettings().outcome();
        return outcome.isEmpty() ? byAmount() : outcome;
    }
    case Device::Billing:
        break;
    }
    return keyOf(Device::Billing, int(m_service ? m_service->forced() : AnswerBehaviour::Ordinary));
}

QString DeviceControl::stateTitle(Device device) const
{
    const QString key = state(device);
    const DeviceState *known = DeviceStates::find(device, key);
    return known ? known->title : key;
}

bool DeviceControl::isFaulty(Device device) const
{
    return state(device) != DeviceStates::of(device).constFirst().key;
}

bool DeviceControl::setState(Device device, const QString &key, bool once)
{
    const DeviceState *state = DeviceStates::find(device, key);
    if (!state) {
        m_error = QStringLiteral("%1: состояния «%2» нет. Есть %3.")
                      .arg(DeviceStates::title(device), key,
                           DeviceStates::keys(device).join(QStringLiteral(", ")));
        return false;
    }
    if (!controls(device)) {
        m_error = QStringLiteral("Биллинг работает за сервером сообщений, его состояния отсюда не "
                                 "меняются.");
        return false;
    }
    switch (device) {
    case Device::Register:
        m_register.setCondition(EmulatedRegister::Condition(state->value), once);
        break;
    case Device::Card: {
        CardReaderSettings settings;
        settings.setOutcome(key == byAmount() ? QString() : key);
        if (!store(settings, &m_error))
            return false;
        break;
    }
    case Device::Billing:
        m_service->force(AnswerBehaviour(state->value));
        break;
    }
    emit changed();
    return true;
}

bool DeviceControl::reset()
{
    bool done = true;
    for (const Device device : DeviceStates::devices()) {
        if (isFaulty(device))
            done = setState(device, DeviceStates::of(device).constFirst().key) && done;
    }
    setBillingLink(true);
    return done;
}

int DeviceControl::cardTerminal() const
{
    return CardReaderSettings().type();
}

bool DeviceControl::setCardTerminal(int type)
{
    CardReaderSettings settings;
    settings.setType(type);
    if (!store(settings, &m_error))
        return false;
    emit changed();
    return true;
}

bool DeviceControl::billingLink() const
{
    return !m_bus || m_bus->connected();
}

void DeviceControl::setBillingLink(bool connected)
{
    if (m_bus)
        m_bus->setConnected(connected);
}
