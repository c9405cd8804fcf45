#pragma once

#include <QString>

/// The characters of `text` that act on the text around them instead of standing in it - controls
/// and marks of direction - as hexadecimal numbers; empty for a text that is shown as it reads.
/// Those in `allowed` do not count.
QString actingCharacters(const QString &text, const QString &allowed = QString());
