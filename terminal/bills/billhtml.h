#pragma once

#include <bills/bill.h>

#include <QString>

/// The text of a bill, for a layout 180 mm wide at 96 units an inch.
namespace BillHtml {

QString html(const Bill &bill);
/// A text that stands in html() exactly once: where the picture of the code belongs.
QString codePlace();
/// "1 500,50", "−12,00".
QString money(qint64 kopecks);

} // namespace BillHtml
