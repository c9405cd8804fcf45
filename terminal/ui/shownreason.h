#pragma once

#include <text/showntext.h>

class QWidget;

/// A warning in a modal box. `text` is never taken for markup and is bounded as shownReason() does.
void showWarning(QWidget *parent, const QString &title, const QString &text);
