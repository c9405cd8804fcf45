#include "srtextitemdelegate.h"

#include "srshowntext.h"

QString SrTextItemDelegate::displayText(const QVariant &value, const QLocale &locale) const
{
    if (value.userType() == QMetaType::QString)
        return SrShownText::line(value.toString());
    return QStyledItemDelegate::displayText(value, locale);
}
