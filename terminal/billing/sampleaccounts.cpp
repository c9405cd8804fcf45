#include <billing/sampleaccounts.h>

namespace SampleNumber {
const QString ORDINARY = QStringLiteral("7001000101");
const QString PENALTY = QStringLiteral("7001000102");
const QString DEBT = QStringLiteral("7001000103");
const QString OVERPAID = QStringLiteral("7001000104");
const QString ADVANCE = QStringLiteral("7001000105");
const QString NEGATIVE_REMAINDER = QStringLiteral("7001000106");
const QString NO_METERS = QStringLiteral("7001000107");
const QString READ_ONLY = QStringLiteral("7001000108");
const QString LARGE = QStringLiteral("7001000109");
const QString UNKNOWN = QStringLiteral("7009999999");
const QString OUTER_ERROR = QStringLiteral("7001000901");
const QString NON_ZERO_RESULT = QStringLiteral("7001000902");
const QString INNER_ERROR = QStringLiteral("7001000903");
const QString BROKEN_OUTER = QStringLiteral("7001000904");
const QString BROKEN_INNER = QStringLiteral("7001000905");
const QString SILENCE = QStringLiteral("7001000906");
const QString SLOW = QStringLiteral("7001000907");

const QString LEGAL_ONE_DOCUMENT = QStringLiteral("50101");
const QString LEGAL_ONE_DOCUMENT_NUMBER = QStringLiteral("2026/0101");
const QString LEGAL_SEVERAL = QStringLiteral("50102");
const QString LEGAL_MANY = QStringLiteral("50103");
const QString LEGAL_PENALTY = QStringLiteral("50104");
const QString LEGAL_SINGLE_FORMAT = QStringLiteral("50105");
const QString LEGAL_SINGLE_FORMAT_NUMBER = QStringLiteral("2026/0501");
const QString LEGAL_UNDER_VALUE = QStringLiteral("50106");
const QString LEGAL_UNKNOWN = QStringLiteral("59999");
const QString LEGAL_OUTER_ERROR = QStringLiteral("50901");
const QString LEGAL_NON_ZERO_RESULT = QStringLiteral("50902");
const QString LEGAL_INNER_ERROR = QStringLiteral("50903");
const QString LEGAL_BROKEN_OUTER = QStringLiteral("50904");
const QString LEGAL_BROKEN_INNER = QStringLiteral("50905");
const QString LEGAL_SILENCE = QStringLiteral("50906");
} // namespace SampleNumber

namespace {

SampleAccount individual(const QString &number, const QString &description,
                         AnswerBehaviour behaviour = AnswerBehaviour::Ordinary)
{
    return {SampleAccount::Payer::Individual, number, QString(), behaviour, description};
}

SampleAccount legal(const QString &number, const QString &document, const QString &description,
                    AnswerBehaviour behaviour = AnswerBehaviour::Ordinary)
{
    return {SampleAccount::Payer::Legal, number, document, behaviour, description};
}

} // namespace

const QVector<SampleAccount> &sampleAccounts()
{
    using namespace SampleNumber;
    static const QVector<SampleAccount> list{
        individual(ORDINARY,
                   QStringLiteral("Обычный: четыре услуги, два счётчика, к оплате 1500.50")),
        individual(PENALTY, QStringLiteral("С начисленными пени отдельной строкой")),
        individual(DEBT, QStringLiteral("Долг за полгода, больше начисления")),
        individual(OVERPAID,
                   QStringLiteral("Переплата: к оплате отрицательные суммы, платить нечего")),
        individual(ADVANCE, QStringLiteral("Сверх услуг предложен аванс 250.00")),
        individual(NEGATIVE_REMAINDER,
                   QStringLiteral("Отрицательный остаток: сумма чека не сойдётся, касса откажет")),
        individual(NO_METERS, QStringLiteral("Без счётчиков, по нормативу")),
        individual(READ_ONLY,
                   QStringLiteral("Суммы и показания менять нельзя: платится ровно долг")),
        individual(LARGE, QStringLiteral("Сорок услуг и восемь счётчиков")),
        individual(UNKNOWN, QStringLiteral("Такого лицевого счёта нет")),
        individual(OUTER_ERROR, QStringLiteral("Ошибка биллинга (признак error)"),
                   AnswerBehaviour::OuterError),
        individual(NON_ZERO_RESULT, QStringLiteral("Отказ биллинга (result не ноль)"),
                   AnswerBehaviour::NonZeroResult),
        individual(INNER_ERROR, QStringLiteral("Отказ внутри описания (isError)"),
                   AnswerBehaviour::InnerError),
        individual(BROKEN_OUTER, QStringLiteral("Ответ оборван"), AnswerBehaviour::BrokenOuter),
        individual(BROKEN_INNER, QStringLiteral("Описание внутри ответа оборвано"),
                   AnswerBehaviour::BrokenInner),
        individual(SILENCE, QStringLiteral("Ответа нет"), AnswerBehaviour::Silence),
        individual(SLOW, QStringLiteral("Ответ через пять секунд"), AnswerBehaviour::Slow),

        legal(LEGAL_ONE_DOCUMENT, LEGAL_ONE_DOCUMENT_NUMBER, QStringLiteral("Один документ")),
        legal(LEGAL_SEVERAL, QString(), QStringLiteral("Пять документов, два уже оплачены")),
        legal(LEGAL_MANY, QString(), QStringLiteral("Триста документов")),
        legal(LEGAL_PENALTY, QString(), QStringLiteral("Документ с пени отдельной строкой")),
        legal(LEGAL_SINGLE_FORMAT, LEGAL_SINGLE_FORMAT_NUMBER,
              QStringLiteral("По номеру документа ответ приходит в формате одного документа")),
        legal(LEGAL_UNDER_VALUE, QString(), QStringLiteral("Список документов внутри поля value")),
        legal(LEGAL_UNKNOWN, QString(), QStringLiteral("Такого договора нет")),
        legal(LEGAL_OUTER_ERROR, QString(), QStringLiteral("Ошибка биллинга (признак error)"),
              AnswerBehaviour::OuterError),
        legal(LEGAL_NON_ZERO_RESULT, QString(), QStringLiteral("Отказ биллинга (result не ноль)"),
              AnswerBehaviour::NonZeroResult),
        legal(LEGAL_INNER_ERROR, QString(), QStringLiteral("Отказ внутри описания (isError)"),
              AnswerBehaviour::InnerError),
        legal(LEGAL_BROKEN_OUTER, QString(), QStringLiteral("Ответ оборван"),
              AnswerBehaviour::BrokenOuter),
        legal(LEGAL_BROKEN_INNER, QString(), QStringLiteral("Описание внутри ответа оборвано"),
              AnswerBehaviour::BrokenInner),
        legal(LEGAL_SILENCE, QString(), QStringLiteral("Ответа нет"), AnswerBehaviour::Silence)};
    return list;
}
