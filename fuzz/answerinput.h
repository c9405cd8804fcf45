#pragma once

#include <QByteArray>
#include <QVariantList>

#include <optional>

/// Billing's answers as inputs: the first line is the envelope, in which UID stands for the uid of
/// the request that is being answered and "DESCRIPTION" for the rest of the input as a JSON text.
namespace AnswerInput {

/// Asks for an account, hands the input to the exchange as the answer and checks what holds for
/// every answer: it is taken once, it touches no other request, a foreign message changes nothing,
/// a refusal never passes as data. The descriptors of the account, when there are any.
std::optional<QVariantList> payParamList(const QByteArray &input);

/// A number that depends on every byte of the input: what the cashier did with the answer.
quint64 choice(const QByteArray &input);

} // namespace AnswerInput
