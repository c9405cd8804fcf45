#include "keyboardlayout.h"

namespace {

// Keys of the American layout from top to bottom, without and with Shift, and what the Russian
// layout of Windows has on them.
const QString american = QStringLiteral("`qwertyuiop[]asdfghjkl;'zxcvbnm,./\\"
                                        "~QWERTYUIOP{}ASDFGHJKL:\"ZXCVBNM<>?|"
                                        "@#$^&");
const QString russian = QStringLiteral("ёйцукенгшщзхъфывапролджэячсмитьбю.\\"
                                       "ЁЙЦУКЕНГШЩЗХЪФЫВАПРОЛДЖЭЯЧСМИТЬБЮ,/"
                                       "\"№;:?");

} // namespace

QString KeyboardLayout::typed(const QString &text, Mishap mishap)
{
    QString result;
    switch (mishap) {
    case Mishap::None:
        return text;
    case Mishap::RussianLayout:
        for (const QChar c : text) {
            const int key = american.indexOf(c);
            result += key < 0 ? c : russian.at(key);
        }
        return result;
    case Mishap::DroppedCyrillic:
        for (const QChar c : text) {
            if (c.unicode() < 0x80)
                result += c;
        }
        return result;
    }
    return text;
}
