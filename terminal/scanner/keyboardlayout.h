#pragma once

#include <QString>

/// What a keyboard scanner's keys turn into on the way to the field.
namespace KeyboardLayout {

enum class Mishap {
    None,
    /// The workstation has the Russian layout on while the scanner presses the keys of the American
    /// one: letters and most signs come out as what stands on the same key.
    RussianLayout,
    /// The scanner has no keys for characters beyond ASCII and leaves them out.
    DroppedCyrillic
};

QString typed(const QString &text, Mishap mishap);

} // namespace KeyboardLayout
