#include "sraccountview.h"

#include "srshowntext.h"

#include <QByteArray>
#include <QImage>
#include <QVariant>

void SrAccountView::showAccount(const QString &html)
{
    setHtml(SrShownText::document(html));
}

QVariant SrAccountView::loadResource(int type, const QUrl &)
{
    // Something empty instead of nothing: what its viewer does not have, the document would read
    // from the file itself.
    if (type == QTextDocument::ImageResource)
        return QImage(1, 1, QImage::Format_ARGB32);
    return QByteArray("");
}
