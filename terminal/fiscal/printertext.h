#pragma once

#include <QString>

/// What the receipt printer makes of a text: it prints in CP866, one byte a character.
class PrinterText final
{
public:
    /// Typographic quotes, dashes and blanks become plain ones, line breaks and tabs become blanks,
    /// what is still not in CP866 becomes "?".
    static QString printed(const QString &text);
    /// True when printed() has to put a "?" for something.
    static bool losesCharacters(const QString &text);
    /// Characters, which are bytes, of the printed text.
    static int length(const QString &text) { return printed(text).size(); }
};
