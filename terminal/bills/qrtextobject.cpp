#include "qrtextobject.h"

#include "qrpicture.h"

#include <QAbstractTextDocumentLayout>
#include <QPainter>
#include <QPainterPath>
#include <QTextCursor>
#include <QTextDocument>

namespace {

constexpr int codeObject = QTextFormat::UserObject + 1;
constexpr int dataProperty = QTextFormat::UserProperty + 1;
constexpr int sideProperty = QTextFormat::UserProperty + 2;

} // namespace

QrTextObject::QrTextObject(QTextDocument *document) : QObject(document)
{
    document->documentLayout()->registerHandler(codeObject, this);
}

void QrTextObject::insert(QTextCursor &cursor, const QByteArray &data, qreal side)
{
    QTextCharFormat format;
    format.setObjectType(codeObject);
    format.setProperty(dataProperty, data);
    format.setProperty(sideProperty, side);
    cursor.insertText(QString(QChar::ObjectReplacementCharacter), format);
}

QSizeF QrTextObject::intrinsicSize(QTextDocument *, int, const QTextFormat &format)
{
    const qreal side = format.doubleProperty(sideProperty);
    return QSizeF(side, side);
}

void QrTextObject::drawObject(QPainter *painter, const QRectF &rect, QTextDocument *, int,
                              const QTextFormat &format)
{
    const QImage modules = QrPicture::draw(format.property(dataProperty).toByteArray(), 1);
    if (modules.isNull())
        return;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing, false);
    painter->fillRect(rect, Qt::white);
    // One shape for the whole code: a viewer that smooths edges shows no hairlines between the
    // modules.
    QPainterPath dark;
    dark.setFillRule(Qt::WindingFill);
    const qreal module = rect.width() / modules.width();
    for (int row = 0; row < modules.height(); ++row) {
        for (int first = 0; first < modules.width(); ++first) {
            int end = first;
            while (end < modules.width() && qGray(modules.pixel(end, row)) < 128)
                ++end;
            if (end == first)
                continue;
            dark.addRect(rect.left() + first * module, rect.top() + row * module,
                         (end - first) * module, module);
            first = end;
        }
    }
    painter->fillPath(dark, Qt::black);
    painter->restore();
}
