#pragma once

#include <QString>

/// A reason given by billing, the bus or a file, as it is put on screen: bounded, so that a label
/// or a box with it fits, and without characters that turn the text around or break it up. An
/// ordinary text comes back unchanged; what is stored stays as it came.
QString shownReason(const QString &text);

/// The same for a cell of a table: one line, of which no cell shows more than the beginning.
QString shownCell(const QString &text);

/// The same for a long text that is only read, such as a pack: every line of it bounded.
QString shownLines(const QString &text);
