#include <devices/devicestates.h>

#include <billing/sampleaccounts.h>
#include <fiscal/emulatedregister.h>

#include <molvacore/posactivity.h>
#include <molvacore/postestoutcome.h>

namespace {

using States = QVector<DeviceState>;

States registerStates()
{
    using Condition = EmulatedRegister::Condition;
    const auto state = [](Condition condition, const char *key, const QString &phrase,
                          const QString &effect) {
        return DeviceState{QLatin1String(key), phrase, EmulatedRegister::conditionText(condition),
                           effect, int(condition)};
    };
    return {
        state(Condition::Ready, "ready", QStringLiteral("исправна"),
              QStringLiteral("Чеки печатаются.")),
        state(Condition::NoConnection, "no-connection", QStringLiteral("нет связи"),
              QStringLiteral("Состояние кассы не читается. Чек не пробит.")),
        state(Condition::NotReady, "not-ready", QStringLiteral("не готова"),
              QStringLiteral("Касса отвечает, что печатать не может. Чек не пробит.")),
        state(Condition::ShiftExpired, "shift-expired", QStringLiteral("смена истекла"),
              QStringLiteral("Чек не пробит. Исправляет «Работа — Закрыть смену».")),
        state(Condition::PaperOut, "paper-out", QStringLiteral("нет бумаги"),
              QStringLiteral("Обнаружено до печати. Чек не пробит.")),
        state(Condition::FailsWhilePrinting, "fails-while-printing",
              QStringLiteral("сбой при печати"),
              QStringLiteral("Касса готова, но печать обрывается. Чек не пробит.")),
        state(Condition::FailsAfterPrinting, "fails-after-printing",
              QStringLiteral("сбой после печати"),
              QStringLiteral("Чек пробит, а рабочее место получает ошибку. Повтор того же чека "
                             "второй раз не печатает.")),
        state(Condition::StorageFull, "storage-full", QStringLiteral("накопитель заполнен"),
              QStringLiteral("Чек не пробит.")),
    };
}

DeviceState cardState(const PosTestOutcome &outcome)
{
    using Outcome = PosTestAmount::Outcome;
    const PosTestAmount &amount = outcome.amount;
    if (!outcome.initialises)
        return {outcome.name, QStringLiteral("нет инициализации"),
                QStringLiteral("Не инициализируется"),
                QStringLiteral("Терминал не отвечает ещё до суммы. Карта не списана."), 0};
    switch (amount.outcome) {
    case Outcome::Approve:
        return {outcome.name, QStringLiteral("одобрить"), QStringLiteral("Одобряет любую сумму"),
                QStringLiteral("Карта списана."), 0};
    case Outcome::ApproveSlowly:
        return {outcome.name, QStringLiteral("медленно"), QStringLiteral("Одобряет медленно"),
                QStringLiteral("Карта списана через %1 с; до тех пор окна не слушаются клавиш и "
                               "мыши.")
                    .arg(PosActivity::slowTime() / 1000),
                0};
    case Outcome::Decline:
        return {outcome.name,
                outcome.name == QLatin1String("decline")
                    ? QStringLiteral("отказ")
                    : QStringLiteral("отказ %1").arg(amount.digits),
                amount.text,
                QStringLiteral("Терминал отказывает с этими словами. Карта не "
                               "списана."),
                0};
    case Outcome::LostBeforeCharge:
        return {outcome.name, QStringLiteral("нет связи"),
                QStringLiteral("Связь теряется до списания"), QStringLiteral("Карта не списана."),
                0};
    case Outcome::LostAfterCharge:
        return {outcome.name, QStringLiteral("нет связи после списания"),
                QStringLiteral("Связь теряется после списания"),
                QStringLiteral("Карта списана, а кассир об этом не знает. Второй раз списывать "
                               "нельзя."),
                0};
    case Outcome::Timeout:
        return {outcome.name, QStringLiteral("не поднесена"), QStringLiteral("Карту не поднесли"),
                QStringLiteral("Карта не списана."), 0};
    }
    return {};
}

States cardStates()
{
    States list{{QStringLiteral("by-amount"), QStringLiteral("по сумме"),
                 QStringLiteral("По копейкам суммы"),
                 QStringLiteral("Что сделает терминал, говорит таблица сумм; остальные суммы "
                                "одобряются."),
                 0}};
    for (const PosTestOutcome &outcome : PosTestOutcome::table())
        list.append(cardState(outcome));
    return list;
}

States billingStates()
{
    using Behaviour = AnswerBehaviour;
    const auto state = [](Behaviour behaviour, const char *key, const QString &phrase,
                          const QString &title, const QString &effect) {
        return DeviceState{QLatin1String(key), phrase, title, effect, int(behaviour)};
    };
    return {
        state(Behaviour::Ordinary, "normal", QStringLiteral("исправен"),
              QStringLiteral("Отвечает как положено"),
              QStringLiteral("У счетов для пробы остаётся собственное поведение.")),
        state(Behaviour::Slow, "slow", QStringLiteral("отвечает медленно"),
              QStringLiteral("Отвечает через 5 с"), QStringLiteral("Ответ верный.")),
        state(Behaviour::Silence, "silence", QStringLiteral("молчит"),
              QStringLiteral("Не отвечает"), QStringLiteral("Ответа не будет.")),
        state(Behaviour::OuterError, "error", QStringLiteral("признак ошибки"),
              QStringLiteral("Признак ошибки"),
              QStringLiteral("В ответе error = true и текст для кассира.")),
        state(Behaviour::NonZeroResult, "result", QStringLiteral("ненулевой результат"),
              QStringLiteral("Ненулевой результат"),
              QStringLiteral("В ответе result = 17 и текст для кассира.")),
        state(Behaviour::InnerError, "inner-error", QStringLiteral("внутренняя ошибка"),
              QStringLiteral("Ошибка внутри описания"),
              QStringLiteral("В описании isError = true и текст для кассира.")),
        state(Behaviour::BrokenOuter, "broken-answer", QStringLiteral("ответ оборван"),
              QStringLiteral("Ответ оборван"),
              QStringLiteral("Весь ответ обрывается посередине и не разбирается.")),
        state(Behaviour::EnvelopeNotObject, "list-answer", QStringLiteral("ответ списком"),
              QStringLiteral("Ответ — список"),
              QStringLiteral("Ответ разбирается, но вместо набора полей в нём список.")),
        state(Behaviour::BrokenInner, "broken-description", QStringLiteral("описание оборвано"),
              QStringLiteral("Описание оборвано"),
              QStringLiteral("Текст внутри description обрывается посередине.")),
        state(Behaviour::InnerNotObject, "list-description", QStringLiteral("описание списком"),
              QStringLiteral("Описание — список"),
              QStringLiteral("В description список вместо набора полей.")),
        state(Behaviour::FieldsNotList, "broken-fields", QStringLiteral("поля не списком"),
              QStringLiteral("Поля счёта не списком"),
              QStringLiteral("В payParamList текст вместо списка.")),
        state(Behaviour::WrongUid, "wrong-uid", QStringLiteral("чужой номер"),
              QStringLiteral("Чужой номер запроса"),
              QStringLiteral("Ответ на запрос, которого никто не отправлял.")),
        state(Behaviour::Twice, "twice", QStringLiteral("отвечает дважды"),
              QStringLiteral("Отвечает дважды"), QStringLiteral("Тот же ответ приходит ещё раз.")),
        state(Behaviour::Late, "late", QStringLiteral("опаздывает"),
              QStringLiteral("Опаздывает на один запрос"),
              QStringLiteral("Первый запрос остаётся без ответа; после ответа на второй приходит "
                             "и он.")),
    };
}

} // namespace

const QVector<Device> &DeviceStates::devices()
{
    static const QVector<Device> list{Device::Register, Device::Card, Device::Billing};
    return list;
}

QString DeviceStates::option(Device device)
{
    switch (device) {
    case Device::Register:
        return QStringLiteral("register");
    case Device::Card:
        return QStringLiteral("card");
    case Device::Billing:
        return QStringLiteral("billing");
    }
    return QString();
}

QString DeviceStates::word(Device device)
{
    switch (device) {
    case Device::Register:
        return QStringLiteral("касса");
    case Device::Card:
        return QStringLiteral("карта");
    case Device::Billing:
        return QStringLiteral("биллинг");
    }
    return QString();
}

QString DeviceStates::title(Device device)
{
    switch (device) {
    case Device::Register:
        return QStringLiteral("Касса");
    case Device::Card:
        return QStringLiteral("Карточный терминал");
    case Device::Billing:
        return QStringLiteral("Биллинг");
    }
    return QString();
}

const QVector<DeviceState> &DeviceStates::of(Device device)
{
    static const States ofRegister = registerStates();
    static const States ofCard = cardStates();
    static const States ofBilling = billingStates();
    switch (device) {
    case Device::Register:
        return ofRegister;
    case Device::Card:
        return ofCard;
    case Device::Billing:
        break;
    }
    return ofBilling;
}

QStringList DeviceStates::keys(Device device)
{
    QStringList list;
    for (const DeviceState &state : of(device))
        list.append(state.key);
    return list;
}

const DeviceState *DeviceStates::find(Device device, const QString &key)
{
    for (const DeviceState &state : of(device)) {
        if (state.key == key)
            return &state;
    }
    return nullptr;
}
