#pragma once

#include <QString>
#include <QStringList>

#include <optional>

/// What the standard says about the single fields of a payment code.
namespace PaymentCodeRules {

/// Bytes of the mandatory block, separators included.
constexpr int MAXIMUM_BLOCK = 300;

/// Names of the mandatory block in their order.
QStringList mandatoryNames();
/// Names of the standard; others are allowed.
QStringList knownNames();
/// What the field is called on a bill; empty for a name that is not known.
QString title(const QString &name);
/// Why the value cannot stand in this field, in Russian.
std::optional<QString> problem(const QString &name, const QString &value);
/// Why this cannot be the name of a field.
std::optional<QString> nameProblem(const QString &name);
/// MM.YYYY.
bool isPeriod(const QString &value);

} // namespace PaymentCodeRules
