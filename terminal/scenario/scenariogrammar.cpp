#include "scenariogrammar.h"

#include <devices/devicestates.h>

#include <QRegularExpression>
#include <QWizard>

#include <algorithm>

namespace {

using Verb = ScenarioCommand::Verb;
using Phrases = QVector<ScenarioGrammar::Phrase>;

void add(Phrases &list, const char *pattern, Verb verb, const QStringList &meant = {})
{
    list.append({QString::fromUtf8(pattern), verb, meant});
}

void addConditions(Phrases &list)
{
    for (const Device device : DeviceStates::devices()) {
        const QString option = DeviceStates::option(device);
        for (const DeviceState &state : DeviceStates::of(device)) {
            const QString phrase = DeviceStates::word(device) + QLatin1Char(' ') + state.phrase;
            list.append({phrase, Verb::State, {option, state.key, QString()}});
            if (device == Device::Register)
                list.append({phrase + QStringLiteral(" один раз"),
                             Verb::State,
                             {option, state.key, QStringLiteral("once")}});
        }
    }
    add(list, "терминал карт {число}", Verb::CardTerminal);
    add(list, "биллинг связь есть", Verb::BusLink, {QStringLiteral("1")});
    add(list, "биллинг связи нет", Verb::BusLink, {QStringLiteral("0")});
    add(list, "биллинг задержка {число}", Verb::BusDelay);
    add(list, "без данных кассы", Verb::Without, {QStringLiteral("box")});
    add(list, "без профиля комиссии", Verb::Without, {QStringLiteral("commission_profile")});
    add(list, "без профиля касс", Verb::Without, {QStringLiteral("online_profile")});
    add(list, "без кассы", Verb::Without, {QStringLiteral("register")});
    add(list, "хранилище отказывает", Verb::StoreRefuses, {QStringLiteral("1")});
    add(list, "хранилище исправно", Verb::StoreRefuses, {QStringLiteral("0")});
}

void addActions(Phrases &list)
{
    add(list, "сценарий {текст}", Verb::Title);
    add(list, "поставщик {число}", Verb::Provider);
    add(list, "ввести {текст} в {имя}", Verb::Fill);
    add(list, "сканировать {текст} в {имя}", Verb::Scan);
    add(list, "нажать {имя}", Verb::Press);
    add(list, "клавиша {имя}", Verb::PressKey);
    add(list, "ждать ответ", Verb::AwaitAccount);
    add(list, "ждать сообщение биллинга", Verb::AwaitMessage);
    add(list, "повторить ответ", Verb::RepeatAnswer);
    const QVector<QPair<const char *, QWizard::WizardButton>> buttons{
        {"далее", QWizard::NextButton},
        {"назад", QWizard::BackButton},
        {"завершить", QWizard::FinishButton},
        {"отменить", QWizard::CancelButton}};
    for (const auto &button : buttons) {
        const QString number = QString::number(int(button.second));
        const QByteArray check = QByteArray("проверить ").append(button.first);
        add(list, button.first, Verb::WizardButton, {number});
        add(list, QByteArray(check).append(" доступно").constData(), Verb::CheckButton,
            {number, QStringLiteral("1")});
        add(list, QByteArray(check).append(" недоступно").constData(), Verb::CheckButton,
            {number, QStringLiteral("0")});
    }
    add(list, "закрыть окно", Verb::CloseWindow);
    add(list, "показание {число} = {число}", Verb::Reading);
    add(list, "отметить {текст}", Verb::Tick);
    add(list, "оплатить картой {сумма}", Verb::CardAmount);
    add(list, "сообщение {текст}", Verb::Message);
}

void addChecks(Phrases &list)
{
    add(list, "проверить чеков {число}", Verb::CheckCount, {QStringLiteral("receipts")});
    add(list, "проверить сохранено {число}", Verb::CheckCount, {QStringLiteral("saved")});
    add(list, "проверить проведено {число}", Verb::CheckCount, {QStringLiteral("posted")});
    add(list, "проверить ответов повторных {число}", Verb::CheckCount,
        {QStringLiteral("repeated")});
    add(list, "проверить ответов ничьих {число}", Verb::CheckCount, {QStringLiteral("foreign")});
    add(list, "проверить картой {сумма}", Verb::CheckSum, {QStringLiteral("card")});
    add(list, "проверить наличными {сумма}", Verb::CheckSum, {QStringLiteral("cash")});
    add(list, "проверить списано {сумма}", Verb::CheckSum, {QStringLiteral("charged")});
    add(list, "проверить мастер открыт", Verb::CheckWizard, {QStringLiteral("1")});
    add(list, "проверить мастер закрыт", Verb::CheckWizard, {QStringLiteral("0")});
    add(list, "проверить доступно {имя}", Verb::CheckWidget, {QStringLiteral("enabled")});
    add(list, "проверить недоступно {имя}", Verb::CheckWidget, {QStringLiteral("disabled")});
    add(list, "проверить видно {имя}", Verb::CheckWidget, {QStringLiteral("shown")});
    add(list, "проверить скрыто {имя}", Verb::CheckWidget, {QStringLiteral("hidden")});
    add(list, "проверить поле {имя} = {текст}", Verb::CheckText);
    add(list, "суммы экран {сумма} касса {сумма} база {сумма} шина {сумма} биллинг {сумма}",
        Verb::ExpectSums);
}

int distance(const QString &a, const QString &b)
{
    QVector<int> row(b.size() + 1);
    for (int i = 0; i <= b.size(); ++i)
        row[i] = i;
    for (int i = 1; i <= a.size(); ++i) {
        int diagonal = row[0];
        row[0] = i;
        for (int j = 1; j <= b.size(); ++j) {
            const int changed = diagonal + (a.at(i - 1) == b.at(j - 1) ? 0 : 1);
            diagonal = row[j];
            row[j] = std::min({changed, row[j] + 1, row[j - 1] + 1});
        }
    }
    return row.last();
}

} // namespace

const QVector<ScenarioGrammar::Phrase> &ScenarioGrammar::phrases()
{
    static const Phrases list = [] {
        Phrases made;
        addActions(made);
        addConditions(made);
        addChecks(made);
        return made;
    }();
    return list;
}

bool ScenarioGrammar::matches(const QString &part, const QString &word, bool quoted)
{
    static const QRegularExpression number(QStringLiteral("\\A\\d{1,9}\\z"));
    static const QRegularExpression sum(QStringLiteral("\\A\\d{1,9}(?:[.,]\\d{1,2})?\\z"));
    static const QRegularExpression name(QStringLiteral("\\A[A-Za-z_][A-Za-z0-9_]*\\z"));
    if (part == QString::fromUtf8("{текст}"))
        return true;
    if (quoted)
        return false;
    if (part == QString::fromUtf8("{число}"))
        return number.match(word).hasMatch();
    if (part == QString::fromUtf8("{сумма}"))
        return sum.match(word).hasMatch();
    if (part == QString::fromUtf8("{имя}"))
        return name.match(word).hasMatch();
    return part.compare(word, Qt::CaseInsensitive) == 0;
}

QString ScenarioGrammar::describe(const QString &part)
{
    if (part == QString::fromUtf8("{текст}"))
        return QStringLiteral("текст");
    if (part == QString::fromUtf8("{число}"))
        return QStringLiteral("целое число");
    if (part == QString::fromUtf8("{сумма}"))
        return QStringLiteral("сумма вида 700,50");
    if (part == QString::fromUtf8("{имя}"))
        return QStringLiteral("имя поля или кнопки");
    return QStringLiteral("«%1»").arg(part);
}

QString ScenarioGrammar::nearest(const QString &word, const QStringList &known)
{
    QString best;
    int bestDistance = std::max(2, word.size() / 3) + 1;
    for (const QString &each : known) {
        const int found = distance(word.toLower(), each);
        if (found < bestDistance) {
            bestDistance = found;
            best = each;
        }
    }
    return best;
}
