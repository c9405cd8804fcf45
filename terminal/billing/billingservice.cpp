#include <billing/billingservice.h>

#include <billing/billinganswerwriter.h>
#include <billing/billingdatabase.h>

#include <basixcore/fixnumber.h>

#include <QJsonDocument>
#include <QJsonObject>

const qint64 BillingService::PROVIDER_INDIVIDUAL = 18722;
const qint64 BillingService::PROVIDER_LEGAL = 18723;

namespace {

constexpr int SLOW_ANSWER_MS = 5000;
constexpr int LATE_ANSWER_MS = 1000;
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

/// A number that no request has: those have no more than 64 bits.
QString foreignUid()
{
    return QStringLiteral("99999999999999999999");
}

BillingAnswer answerOf(const QByteArray &body)
{
    BillingAnswer answer;
    answer.headers = {{QStringLiteral("msgType"), QStringLiteral("checkPayStatus")}};
    answer.body = body;
    return answer;
}

} // namespace

BillingService::BillingService(BillingDatabase &database) : m_database(database) {}

void BillingService::force(AnswerBehaviour behaviour)
{
    m_forced = behaviour;
    m_held.reset();
}

BillingAnswer BillingService::answer(const QVariantMap &request)
{
    const Finding finding = find(request);
    const bool forced = m_forced != AnswerBehaviour::Ordinary;
    return behave(forced ? m_forced : finding.behaviour,
                  request.value(QStringLiteral("uid")).toString(), finding);
}

BillingService::Finding BillingService::find(const QVariantMap &request)
{
    Finding finding;
    const QString code = request.value(QStringLiteral("code")).toString();
    if (code != QLatin1String("check")) {
        finding.outerError = QStringLiteral("Запрос «%1» не поддерживается.").arg(code.left(40));
        return finding;
    }
    const qint64 provider = request.value(QStringLiteral("providerId")).toLongLong();
    if (provider != PROVIDER_INDIVIDUAL && provider != PROVIDER_LEGAL) {
        finding.outerError = QStringLiteral("Поставщик %1 не обслуживается.").arg(provider);
        return finding;
    }
    const SampleAccount::Payer payer = provider == PROVIDER_INDIVIDUAL
        ? SampleAccount::Payer::Individual
        : SampleAccount::Payer::Legal;
    const QVariantMap parameters = requestParameters(request);
    const QString number = parameters.value(QStringLiteral("account")).toString().trimmed();
    const std::optional<BillingAccount> account = m_database.account(payer, number);
    if (!account) {
        finding.outerError = m_database.lastError();
        if (finding.outerError.isEmpty())
            finding.innerError = unknownNumberText(payer, number);
        return finding;
    }
    QString document;
    if (payer == SampleAccount::Payer::Legal)
        document = parameters.value(QStringLiteral("numdoc")).toString().trimmed();
    if (!document.isEmpty() && !hasDocument(*account, document)) {
        finding.innerError = QStringLiteral("Документ № %1 по договору № %2 не найден.")
                                 .arg(document.left(40), number);
        return finding;
    }
    const qint64 planned =
        basix::FixNumber(100, request.value(QStringLiteral("summ")).toDouble()).value();
    BillingAnswerWriter writer(m_database);
    finding.fields = writer.describe(*account, planned, document);
    finding.behaviour = account->behaviour;
    return finding;
}

BillingAnswer BillingService::behave(AnswerBehaviour behaviour, const QString &uid,
                                     const Finding &finding)
{
    using Writer = BillingAnswerWriter;
    const auto ordinary = [&finding](const QString &id) {
        if (!finding.outerError.isEmpty())
            return answerOf(Writer::outerError(id, finding.outerError));
        if (!finding.innerError.isEmpty())
            return answerOf(Writer::innerError(id, finding.innerError));
        return answerOf(Writer::success(id, finding.fields));
    };
    BillingAnswer answer;
    switch (behaviour) {
    case AnswerBehaviour::Ordinary:
        return ordinary(uid);
    case AnswerBehaviour::OuterError:
        return answerOf(Writer::outerError(
            uid,
            QStringLiteral(
                "Биллинг недоступен: идут регламентные работы. Повторите через 10 минут.")));
    case AnswerBehaviour::NonZeroResult:
        return answerOf(Writer::nonZeroResult(
            uid, REFUSAL_RESULT,
            QStringLiteral(
                "Приём платежей по этому счёту приостановлен. Обратитесь к поставщику.")));
    case AnswerBehaviour::InnerError:
        return answerOf(Writer::innerError(
            uid, QStringLiteral("Лицевой счёт закрыт. Новый номер указан в последней квитанции.")));
    case AnswerBehaviour::BrokenOuter:
        answer = ordinary(uid);
        answer.body.truncate(answer.body.size() / 2);
        return answer;
    case AnswerBehaviour::BrokenInner:
        return answerOf(Writer::brokenInner(uid, finding.fields));
    case AnswerBehaviour::Silence:
        answer.silent = true;
        return answer;
    case AnswerBehaviour::Slow:
        answer = ordinary(uid);
        answer.delay = SLOW_ANSWER_MS;
        return answer;
    case AnswerBehaviour::EnvelopeNotObject:
        return answerOf('[' + ordinary(uid).body + ']');
    case AnswerBehaviour::InnerNotObject:
        return answerOf(Writer::innerNotObject(uid, finding.fields));
    case AnswerBehaviour::FieldsNotList:
        return answerOf(Writer::fieldsNotList(uid));
    case AnswerBehaviour::WrongUid:
        return ordinary(foreignUid());
    case AnswerBehaviour::Twice:
        answer = ordinary(uid);
        answer.others.push_back(ordinary(uid));
        return answer;
    case AnswerBehaviour::Late:
        return late(ordinary(uid));
    }
    return ordinary(uid);
}

BillingAnswer BillingService::late(const BillingAnswer &answer)
{
    if (!m_held) {
        m_held = answer;
        BillingAnswer nothing;
        nothing.silent = true;
        return nothing;
    }
    BillingAnswer first = answer;
    first.others.push_back(*m_held);
    first.others.back().delay = LATE_ANSWER_MS;
    m_held.reset();
    return first;
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
    BillingAnswer answer;
    answer.headers = {{QStringLiteral("msgType"), QStringLiteral("payPackStatus")}};
    answer.body = QJsonDocument(QJsonObject::fromVariantMap(body)).toJson(QJsonDocument::Compact);
    return answer;
}
