#pragma once

#include <QString>

namespace SrReceiptAddress {

/// Where an electronic receipt goes. A text with "@" is an e-mail address and stays as it is; any
/// other is a phone number and loses its hyphens, brackets and spaces and then a leading "+".
/// Nothing is validated.
QString normalized(const QString &text);

} // namespace SrReceiptAddress
