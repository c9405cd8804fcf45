#include "srreceiptaddress.h"

QString SrReceiptAddress::normalized(const QString &text)
{
    if (text.contains(QLatin1Char('@')))
        return text;
    QString phone = text;
    for (const char decoration : {'-', '(', ')', ' '})
        phone.remove(QLatin1Char(decoration));
    if (phone.startsWith(QLatin1Char('+')))
        phone = phone.mid(1).trimmed();
    return phone;
}
