#pragma once

#include <QString>
#include <QtGlobal>

/// Amounts as a scenario writes them, "700,50" or "700.5", and as whole kopecks.
namespace Roubles {

/// Exact; `written` must be digits with at most two after a comma or a point.
qint64 kopecks(const QString &written);
/// As the number fields of this locale take it from the keyboard.
QString typed(QString written);
QString text(qint64 kopecks);

} // namespace Roubles
