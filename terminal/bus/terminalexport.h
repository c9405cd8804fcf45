#pragma once

#include <QtGlobal>

/// Marks what the terminal offers to its own modules: they carry no copy of it and find it in the
/// program that loads them, so that both sides see one meta-object of each class.
#define TERMINAL_EXPORT Q_DECL_EXPORT
