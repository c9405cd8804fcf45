#pragma once

#include <QByteArray>
#include <QObject>
#include <QTextObjectInterface>

class QTextCursor;
class QTextDocument;

/// A QR code inside a text document, drawn module by module: as sharp on paper as on the screen.
class QrTextObject final : public QObject, public QTextObjectInterface
{
    Q_OBJECT
    Q_INTERFACES(QTextObjectInterface)

public:
    /// A child of `document`, whose layout draws the codes through it.
    explicit QrTextObject(QTextDocument *document);

    /// Puts the code of `data` at the cursor, `side` wide with its quiet zone, in the units of the
    /// document.
    static void insert(QTextCursor &cursor, const QByteArray &data, qreal side);

    QSizeF intrinsicSize(QTextDocument *document, int position, const QTextFormat &format) override;
    void drawObject(QPainter *painter, const QRectF &rect, QTextDocument *document, int position,
                    const QTextFormat &format) override;
};
