#include <fiscal/fiscalrecord.h>

namespace FiscalData {
const QString STORAGE = QStringLiteral("fn");
const QString NUMBER = QStringLiteral("fd");
const QString SIGN = QStringLiteral("fp");
const QString SHIFT = QStringLiteral("shift");
const QString RECEIPT = QStringLiteral("receipt");
const QString TIME = QStringLiteral("time");
const QString QR = QStringLiteral("qr");
const QString DOCUMENT_NUMBER = QStringLiteral("documentNumber");
} // namespace FiscalData
