#include <billing/billingservice.h>

#include <billing/billinganswerwriter.h>
#include <billing/billingdatabase.h>

#include <basixcore/fixnumber.h>

#include <QJsonDocument>
#include <QJsonObject>

const QString BillingService::REQUEST_DESTINATION = QStringLiteral("/app/box_plugin_check_pay");
const QString BillingService::PACK_DESTINATION = QStringLiteral("/app/add_pay_pack");
const qint64 BillingService::PROVIDER_INDIVIDUAL = 18722;
const qint64 BillingService::PROVIDER_LEGAL = 18723;

namespace {

constexpr int SLOW_ANSWER_MS = 5000;
constexpr int REFUSAL_RESULT = 17;

QVariantMap requestParameters(const QVariantMap &request)
{
    QVariantMap params = request.value(QStringLiteral("params")).toMap();
    if (params.isEmpty()) {
        const QByteArray text = request.value(QStringLiteral("checkdata")).toString().toUtf8();
        params = QJsonDocument::fromJson(text).object().toVariantMap();
    }
    QVariantMap values;
    const QVariantList list = params.value(QStringLiteral("payParamList")).toList();
    for (const QVariant &entry : list) {
        const QVariantMap map = entry.toMap();
        values.insert(map.value(QStringLiteral("name")).toString(),
                      map.value(QStringLiteral("value")));
    }
    return values;
}

QString unknownNumberText(SampleAccount::Payer payer, const QString &number)
{
    const bool person = payer == SampleAccount::Payer::Individual;
    if (number.isEmpty()) {
        return person ? QStringLiteral("Не указан номер лицевого счёта.")
                      : QStringLiteral("Не указан номер договора.");
    }
    return person ? QStringLiteral("Лицевой счёт № %1 не найден. Проверьте номер по квитанции.")
                        .arg(number.left(40))
                  : QStringLiteral("Договор № %1 не найден. Проверьте номер по договору.")
                        .arg(number.left(40));
}

bool hasDocument(const BillingAccount &account, const QString &number)
{
    for (const BillingDocument &document : account.documents) {
        if (document.number == number)
            return true;
    }
    return false;
}

BillingAnswer answerOf(const QByteArray &body)
{
    return {{{QStringLiteral("msgType"), QStringLiteral("checkPayStatus")}}, body, false, 0};
}

/// How the account's behaviour bends the answer that it should have given.
BillingAnswer behave(AnswerBehaviour behaviour, const QString &uid, const QVariantList &description)
{
    using Writer = BillingAnswerWriter;
    switch (behaviour) {
    case AnswerBehaviour::Ordinary:
        return answerOf(Writer::success(uid, description));
    case AnswerBehaviour::OuterError:
        return answerOf(Writer::outerError(
            uid, QStringLiteral(
                     "Биллинг недоступен: идут регламентные работы. Повторите через 10 минут.")));
    case AnswerBehaviour::NonZeroResult:
        return answerOf(Writer::nonZeroResult(
            uid, REFUSAL_RESULT,
            QStringLiteral(
                "Приём платежей по этому счёту приостановлен. Обратитесь к поставщику.")));
    case AnswerBehaviour::InnerError:
        return answerOf(Writer::innerError(
            uid, QStringLiteral("Лицевой счёт закрыт. Новый номер указан в последней квитанции.")));
    case AnswerBehaviour::BrokenOuter: {
        const QByteArray whole = Writer::success(uid, description);
        return answerOf(whole.left(whole.size() / 2));
    }
    case AnswerBehaviour::BrokenInner:
        return answerOf(Writer::brokenInner(uid, description));
    case AnswerBehaviour::Silence: {
        BillingAnswer nothing;
        nothing.silent = true;
        return nothing;
    }
    case AnswerBehaviour::Slow: {
        BillingAnswer late = answerOf(Writer::success(uid, description));
        late.delay = SLOW_ANSWER_MS;
        return late;
    }
    }
    return answerOf(Writer::success(uid, description));
}

} // namespace

BillingService::BillingService(BillingDatabase &database) : m_database(database) {}

BillingAnswer BillingService::answer(const QVariantMap &request)
{
    using Writer = BillingAnswerWriter;
    const QString uid = request.value(QStringLiteral("uid")).toString();
    const QString code = request.value(QStringLiteral("code")).toString();
    if (code != QLatin1String("check"))
        return answerOf(Writer::outerError(
            uid, QStringLiteral("Запрос «%1» не поддерживается.").arg(code.left(40))));
    const qint64 provider = request.value(QStringLiteral("providerId")).toLongLong();
    if (provider != PROVIDER_INDIVIDUAL && provider != PROVIDER_LEGAL)
        return answerOf(Writer::outerError(
            uid, QStringLiteral("Поставщик %1 не обслуживается.").arg(provider)));

    const SampleAccount::Payer payer = provider == PROVIDER_INDIVIDUAL
                                           ? SampleAccount::Payer::Individual
                                           : SampleAccount::Payer::Legal;
    const QVariantMap parameters = requestParameters(request);
    const QString number = parameters.value(QStringLiteral("account")).toString().trimmed();
    const std::optional<BillingAccount> account = m_database.account(payer, number);
    if (!account) {
        if (!m_database.lastError().isEmpty())
            return answerOf(Writer::outerError(uid, m_database.lastError()));
        return answerOf(Writer::innerError(uid, unknownNumberText(payer, number)));
    }
    QString document;
    if (payer == SampleAccount::Payer::Legal)
        document = parameters.value(QStringLiteral("numdoc")).toString().trimmed();
    if (!document.isEmpty() && !hasDocument(*account, document)) {
        return answerOf(
            Writer::innerError(uid, QStringLiteral("Документ № %1 по договору № %2 не найден.")
                                        .arg(document.left(40), number)));
    }
    const qint64 planned =
        basix::FixNumber(100, request.value(QStringLiteral("summ")).toDouble()).value();
    BillingAnswerWriter writer(m_database);
    return behave(account->behaviour, uid, writer.describe(*account, planned, document));
}

BillingAnswer BillingService::takePayPack(const QVariantMap &pack)
{
    const BillingDatabase::Taking taking = m_database.takePack(pack);
    const bool refused = taking == BillingDatabase::Taking::Refused;
    const QString text =
        refused ? m_database.lastError() : QStringLiteral("Пачка платежей принята.");
    const QVariantMap body{
        {QStringLiteral("packId"), pack.value(QStringLiteral("id")).toString()},
        {QStringLiteral("error"), refused},
        {QStringLiteral("repeated"), taking == BillingDatabase::Taking::AlreadyTaken},
        {QStringLiteral("description"), text}};
    return {{{QStringLiteral("msgType"), QStringLiteral("payPackStatus")}},
            QJsonDocument(QJsonObject::fromVariantMap(body)).toJson(QJsonDocument::Compact),
            false,
            0};
}
