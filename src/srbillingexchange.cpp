#include "srbillingexchange.h"

#include "srjson.h"

#include <QDebug>
#include <QJsonDocument>
#include <QJsonParseError>

#include <optional>

namespace {

const QString keyPayParamList = QStringLiteral("payParamList");

/// The object in `text`; no value, and a line in the log, when the text is no JSON. An array counts
/// as an object without keys.
std::optional<QVariantMap> parsed(const QString &text)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(text.toUtf8(), &error);
    if (error.error != QJsonParseError::NoError) {
        qWarning() << error.errorString() << text;
        return std::nullopt;
    }
    return document.toVariant().toMap();
}

/// Anything but zero is a failure, also a number that an int cannot hold: such a code must not wrap
/// around to success.
bool isFailureCode(const QVariant &result)
{
    return result.toDouble() != 0.0;
}

SrAnswer failure(const QVariant &text)
{
    SrAnswer answer;
    answer.outcome = SrAnswer::Outcome::Failure;
    answer.failureText = text.toString();
    return answer;
}

SrAnswer malformed()
{
    SrAnswer answer;
    answer.outcome = SrAnswer::Outcome::Malformed;
    return answer;
}

SrAnswer accountData(const QVariantMap &envelope)
{
    if (envelope.value(QStringLiteral("error")).toBool())
        return failure(envelope.value(QStringLiteral("description")));
    if (isFailureCode(envelope.value(QStringLiteral("result"))))
        return failure(envelope.value(QStringLiteral("resultDescription")));

    const auto inner = parsed(envelope.value(QStringLiteral("description")).toString());
    if (!inner)
        return malformed();
    if (inner->value(QStringLiteral("isError")).toBool())
        return failure(inner->value(QStringLiteral("statusDescription")));

    SrAnswer answer;
    answer.outcome = SrAnswer::Outcome::Data;
    answer.data = *inner;
    answer.payParamList = inner->value(keyPayParamList).toList();
    return answer;
}

} // namespace

SRRequest SrBillingExchange::compose(const Sender &sender, const QVector<Parameter> &parameters,
                                     const basix::FixNumber &sum)
{
    QVariantList list;
    for (const Parameter &parameter : parameters) {
        list.append(QVariantMap{{QStringLiteral("name"), parameter.name},
                                {QStringLiteral("value"), parameter.value}});
    }
    const QVariantMap params{{keyPayParamList, list}};

    SRRequest request;
    request.setType(SRRequest::AccountData);
    request.setFunction(SRRequest::GET_DATA);
    request.setCurrencyId(sender.currencyId);
    request.setProviderId(sender.workProviderId);
    request.setSum(sum);
    request.setData({{QStringLiteral("checkdata"), SrJson::compact(params)},
                     {QStringLiteral("params"), params}});
    request.generateUid(sender.boxId);
    m_pending.insert(request.uid(), request);
    return request;
}

SrAnswer SrBillingExchange::read(const QVariantMap &headers, const QString &text)
{
    if (headers.value(QStringLiteral("msgType")).toString() != SRRequest::REPLY)
        return {};

    const auto envelope = parsed(text);
    if (!envelope)
        return malformed();
    const SRRequest request = m_pending.take(envelope->value(QStringLiteral("uid")).toString());
    if (request.type() != SRRequest::AccountData)
        return {};

    SrAnswer answer = accountData(*envelope);
    answer.matched = true;
    return answer;
}
