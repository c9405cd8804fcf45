#pragma once

#include <QVariant>
#include <QVariantMap>

#include <optional>

/// What the far side of a wire gets of a message, found without making the text.
namespace CrossedFields {

/// Exactly what WireText::decode() makes of the text that WireText::encode() makes of `data`: every
/// integer a 64-bit one, or text beyond 2^53; nothing at all a null; a null text an empty one.
///
/// Nothing when only the text can tell: `data` is no map, holds a type that JSON has no form for, a
/// floating point number, text that is not valid UTF-16 or one name twice, or is very deep. Such a
/// message may cross altered or not at all.
std::optional<QVariantMap> of(const QVariant &data);

} // namespace CrossedFields
