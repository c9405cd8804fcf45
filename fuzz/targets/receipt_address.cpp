// Where an electronic receipt goes, as the cashier types it.
#include "fuzztarget.h"

#include "srreceiptaddress.h"

#include <algorithm>

FUZZ_TARGET(receipt_address)
{
    const QString text = QString::fromUtf8(input.constData(), input.size());
    const QString address = SrReceiptAddress::normalized(text);
    if (text.contains(QLatin1Char('@'))) {
        FUZZ_REQUIRE(address == text,
                     QStringLiteral("an e-mail address was changed: %1").arg(text));
        return;
    }
    const auto digits = [](const QString &whole) {
        QString found;
        std::copy_if(whole.cbegin(), whole.cend(), std::back_inserter(found),
                     [](QChar c) { return c.isDigit(); });
        return found;
    };
    FUZZ_REQUIRE(digits(address) == digits(text), QStringLiteral("digits lost: %1").arg(text));
    for (const char mark : {'-', '(', ')', ' '}) {
        FUZZ_REQUIRE(!address.contains(QLatin1Char(mark)),
                     QStringLiteral("a decoration was kept: %1").arg(text));
    }
    // A second "+" is no part of any telephone number and is left for the register to refuse.
    if (text.count(QLatin1Char('+')) <= 1) {
        FUZZ_REQUIRE(SrReceiptAddress::normalized(address) == address,
                     QStringLiteral("a number changes each time it is read: %1").arg(text));
    }
}
