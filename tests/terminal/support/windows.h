#pragma once

#include <QWidget>

/// What tests of the terminal's windows look at.
namespace Windows {

/// Gives the texts the font of the terminal: what fits, and what is cut, is a question of it.
void useFontOfTheTerminal();
/// The window of that object name, or null; it may be hidden.
QWidget *window(const char *name);
/// The same, null too while it is hidden.
QWidget *shownWindow(const char *name);

} // namespace Windows
