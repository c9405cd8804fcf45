#include "answerinput.h"

#include "fuzztarget.h"

#include "srbillingexchange.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace {

using Outcome = SrAnswer::Outcome;

QString literal(const QString &text)
{
    const QByteArray array = QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(array.mid(1, array.size() - 2));
}

QString answerText(const QByteArray &input, const QString &uid)
{
    const int lineEnd = input.indexOf('\n');
    QString envelope = QString::fromUtf8(lineEnd < 0 ? input : input.left(lineEnd));
    const QString description = lineEnd < 0 ? QString() : QString::fromUtf8(input.mid(lineEnd + 1));
    envelope.replace(QStringLiteral("UID"), uid);
    return envelope.replace(QStringLiteral("\"DESCRIPTION\""), literal(description));
}

/// The envelope once more, read the long way round: billing says that the request failed.
bool refused(const QString &text)
{
    const QVariantMap envelope = QJsonDocument::fromJson(text.toUtf8()).toVariant().toMap();
    const QVariant result = envelope.value(QStringLiteral("result"));
    const bool failureCode = result.userType() == QMetaType::LongLong && result.toLongLong() != 0;
    const QVariantMap inner =
        QJsonDocument::fromJson(envelope.value(QStringLiteral("description")).toString().toUtf8())
            .toVariant()
            .toMap();
    return envelope.value(QStringLiteral("error")) == QVariant(true) || failureCode
        || inner.value(QStringLiteral("isError")) == QVariant(true);
}

} // namespace

std::optional<QVariantList> AnswerInput::payParamList(const QByteArray &input)
{
    const QVariantMap reply{{QStringLiteral("msgType"), SRRequest::REPLY}};
    const QVariantMap foreign{{QStringLiteral("msgType"), QStringLiteral("payPackStatus")}};
    const SrBillingExchange::Sender sender{1, 643, 18722};
    const QVector<SrBillingExchange::Parameter> parameters{
        {QStringLiteral("account"), QStringLiteral("0012345")}};

    SrBillingExchange exchange;
    const QString other = exchange.compose(sender, parameters).uid();
    const QString uid = exchange.compose(sender, parameters).uid();
    const QString text = answerText(input, uid);

    const auto before = exchange.pending();
    FUZZ_REQUIRE(exchange.read(foreign, text).outcome == Outcome::NotForUs
                     && exchange.pending() == before,
                 QStringLiteral("a message of another kind was taken for an answer"));

    const SrAnswer answer = exchange.read(reply, text);
    const auto after = exchange.pending();
    FUZZ_REQUIRE(after.contains(other), QStringLiteral("an answer settled another request"));
    FUZZ_REQUIRE(answer.matched != after.contains(uid),
                 QStringLiteral("a request is both answered and pending, or neither"));
    const bool outcomeIsOurs =
        answer.outcome == Outcome::Data || answer.outcome == Outcome::Failure;
    FUZZ_REQUIRE(answer.matched ? answer.outcome != Outcome::NotForUs : !outcomeIsOurs,
                 QStringLiteral("an answer to nothing that was asked has an outcome"));
    FUZZ_REQUIRE(!exchange.read(reply, text).matched, QStringLiteral("an answer was taken twice"));
    if (answer.outcome != Outcome::Data)
        return std::nullopt;
    FUZZ_REQUIRE(!refused(text), QStringLiteral("a refusal passed as data"));
    return answer.payParamList;
}

quint64 AnswerInput::choice(const QByteArray &input)
{
    quint64 hash = Q_UINT64_C(0xcbf29ce484222325);
    for (const char byte : input)
        hash = (hash ^ static_cast<unsigned char>(byte)) * Q_UINT64_C(0x100000001b3);
    return hash ^ (hash >> 29);
}
